// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/TableText.h"

#include <QKeySequence>
#include <QString>
#include <functional>

class QAbstractItemView;
class QMenu;

namespace tav {

class Messages;

// What a grid or list gives to Copy, Copy all and "Save as CSV...": its
// whole table, heading row first, and the rows of what is selected.
struct CopiedTable {
    std::function<TextTable()> all;
    std::function<TextTable()> selected;
    QString fileName;  // suggested for the CSV file, without its folder
};

// Puts Copy (the selected cells or rows, tab-separated), Copy all and
// "Save as CSV..." (UTF-8, RFC 4180) on a view: in a context menu, and on
// keys that work while the view has the focus (Copy on `copyKey`, Copy all
// on Ctrl+Shift+C, Save on Ctrl+Shift+S). A file that cannot be written is
// told through `messages`. Returns the menu, to add to.
QMenu* addTableCopying(QAbstractItemView* view, CopiedTable table, Messages& messages,
                       const QKeySequence& copyKey = QKeySequence::Copy);

// The folder the last file was saved in, this session; the user's home at first.
QString lastSaveFolder();
void setLastSaveFolder(const QString& folder);

}  // namespace tav
