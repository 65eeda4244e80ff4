// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Outcome.h"
#include "tree/TreeTables.h"

#include <QString>
#include <QStringList>

namespace tav {

class TreeModel;

// A tree view kept as text, so that a view built by hand can be shown again:
// "TREEVIEW", the GEDCOM file's full path, the two counts, one line per
// person, one per family, "ENDTREEVIEW". Strings are in double quotes,
// items are separated by commas, the text is UTF-8. The file holds
// record-store slots, so it only means something with its own GEDCOM file.

// The one view file, "temp.gds", in the current directory.
QString treeViewFileName();

// The lines of the file for the model's view.
QStringList treeViewLines(const TreeModel& model);

// Writes the view (lines ended by CR LF), replacing the file whole or not
// at all; a failure's message names the file and the reason.
Outcome treeSaveToFile(const TreeModel& model, const QString& path = treeViewFileName());

// A view read from a view file and not yet shown: its tables with the
// saved geometry as it stands (no layout), the family fields the file does
// not carry made afresh from the loaded file and the font size.
struct SavedView {
    QString gedcomPath;           // the GEDCOM file the view was saved with
    bool sameGedcomFile = false;  // ... is the one loaded now
    TreeTables tables;

    // Asked before a view saved with another GEDCOM file is shown.
    QString otherFileQuestion() const;
};

// The largest view file read: a view of the tree's capacity with labels of
// any length the tree shows takes a few megabytes.
constexpr qint64 largestTreeViewFile = 64 * 1024 * 1024;

// Reads a view for the model's loaded file. A file that cannot be read
// whole raises the fault that says why (53 no file, or no regular file, or
// one larger than largestTreeViewFile; 62 an early end, 13 a bad number, 9
// an index outside the loaded file or the tree, or a place, size or count
// that layout cannot make); the model is never touched.
SavedView treeReadFromFile(const TreeModel& model, const QString& path = treeViewFileName());
// The same, from the file's text.
SavedView treeReadFromText(const TreeModel& model, const QString& text);

// Shows a view that was read, after keeping the view on screen for "GoBack".
void showSavedView(TreeModel& model, SavedView view);

}  // namespace tav
