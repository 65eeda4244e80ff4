// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/TreeLabels.h"

#include "calc/Names.h"
#include "core/DisplayText.h"
#include "core/RecordStore.h"
#include "settings/Settings.h"

namespace tav {

QString treeLabel(const RecordStore& records, int32_t individual, TreeLabelRole role,
                  const Settings& settings, QDate today)
{
    if (individual == 0)
        return QStringLiteral("?");
    int flags = NameFirstGiven | NameSecondInitial;  // 18
    if (role == TreeLabelRole::TopOrSpouse || settings.ViewSurnames)
        flags |= NameSurname;  // 19
    QString label =
        shortenedText(formatName(records.individual(individual).name, flags,
                                 NameStyle{settings.SurnameStyle, settings.SurnamePosn}));
    if (settings.ViewDates) {
        const QString years = personYears(records, individual, today);
        if (!years.isEmpty())
            label += QLatin1Char(' ') + years;
    }
    return label;
}

}  // namespace tav
