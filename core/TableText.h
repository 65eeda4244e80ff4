// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

// A table of texts written out for other programs: as a CSV file, and as
// the tab-separated text a spreadsheet takes from the clipboard.
namespace tav {

using TextTable = QList<QStringList>;

// RFC 4180: fields separated by commas, records ended by CR LF; a field
// holding a comma, a double quote, CR or LF is put in double quotes, its
// quotes doubled. UTF-8, without a byte order mark.
QByteArray csvBytes(const TextTable& rows);

// Cells separated by tabs, rows ended by a newline; a cell holding a tab, a
// double quote or a line break is quoted as in CSV, as spreadsheets read it.
QString tabSeparated(const TextTable& rows);

}  // namespace tav
