// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/ReportLabels.h"

#include "app/Session.h"
#include "calc/Names.h"
#include "core/TextNumbers.h"

namespace tav {

QString personLabel(const Session& session, int32_t slot)
{
    return listName(session.records, slot, session.nameStyle()) + QStringLiteral(" (%1)").arg(slot);
}

QString familyLabel(const Session& session, int32_t slot)
{
    // A spouse the family does not name reads as slot 0, whose name is "?".
    const RecordStore& records = session.records;
    const Family& family = records.family(slot);
    return listName(records, records.husbandOf(family), session.nameStyle()) +
           QStringLiteral(" & ") + listName(records, records.wifeOf(family), session.nameStyle()) +
           QStringLiteral(" (%1)").arg(slot);
}

QString crossReference(const QString& xref) { return QLatin1Char('@') + xref + QLatin1Char('@'); }

QString counted(int64_t n, const char* one, const char* many)
{
    return QString::number(n) + QLatin1Char(' ') + QLatin1String(n == 1 ? one : many);
}

QString shareText(int64_t part, int64_t whole)
{
    const int32_t percent = whole > 0 ? toLong(100.0 * double(part) / double(whole)) : 0;
    return QStringLiteral("%1 of %2 (%3%)").arg(part).arg(whole).arg(percent);
}

}  // namespace tav
