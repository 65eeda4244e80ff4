// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/TableText.h"

namespace tav {

namespace {

// The cell as it stands, or in double quotes with its quotes doubled when
// it holds one of `special`.
QString field(const QString& cell, QLatin1String special)
{
    bool quote = false;
    for (const QChar c : special)
        quote = quote || cell.contains(c);
    if (!quote)
        return cell;
    QString quoted = cell;
    quoted.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

QString joined(const TextTable& rows, QLatin1Char separator, QLatin1String special,
               QLatin1String rowEnd)
{
    QString text;
    for (const QStringList& row : rows) {
        for (qsizetype k = 0; k < row.size(); ++k) {
            if (k > 0)
                text += separator;
            text += field(row[k], special);
        }
        text += rowEnd;
    }
    return text;
}

}  // namespace

QByteArray csvBytes(const TextTable& rows)
{
    return joined(rows, QLatin1Char(','), QLatin1String(",\"\r\n"), QLatin1String("\r\n")).toUtf8();
}

QString tabSeparated(const TextTable& rows)
{
    return joined(rows, QLatin1Char('\t'), QLatin1String("\t\"\r\n"), QLatin1String("\n"));
}

}  // namespace tav
