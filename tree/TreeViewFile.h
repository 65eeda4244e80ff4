#pragma once

#include <QString>
#include <QStringList>

namespace tav {

class Messages;
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
// at all. False, with a message naming the file and the reason, when it
// cannot be written.
bool treeSaveToFile(const TreeModel& model, QString* failure = nullptr,
                    const QString& path = treeViewFileName());

// Reads a view and shows it in the model, after keeping the view on screen
// for "GoBack". The saved geometry is taken as it stands (no layout); the
// family fields the file does not carry are made afresh. A view saved with
// another GEDCOM file is shown only when the user agrees; false when not.
// A file that cannot be read whole raises the fault that says why (53 no
// file, 62 an early end, 13 a bad number, 9 an index outside the loaded
// file or the tree), and the model is left exactly as it was.
bool treeReadFromFile(TreeModel& model, Messages& messages,
                      const QString& path = treeViewFileName());
// The same, from the file's text.
bool treeReadFromText(TreeModel& model, Messages& messages, const QString& text);

}  // namespace tav
