// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/GivenNamesReport.h"

#include "app/Session.h"
#include "calc/NameTallies.h"
#include "core/FileNames.h"

namespace tav {

namespace {

void addSection(QStringList& lines, const NameTally& tally, const char* heading,
                const QString& noName)
{
    lines << QString();
    lines << QStringLiteral("%1: %2 distinct").arg(QLatin1String(heading)).arg(tally.distinct);
    for (const int32_t slot : slotsByFrequency(tally)) {
        const TalliedName& entry = tally.entries[size_t(slot)];
        lines << QStringLiteral("%1\t%2")
                     .arg(entry.count)
                     .arg(entry.name.isEmpty() ? noName : entry.name);
    }
    if (tally.entries[0].count > 0)
        lines << QStringLiteral("%1\t(other names)").arg(tally.entries[0].count);
}

}  // namespace

QStringList givenNamesReport(Session& session)
{
    const NameTallies& tallies = session.nameTallies;
    tallyNames(session.records, session.nameTallies);
    QStringList lines{QStringLiteral("File: ") + shownFileName(session.records.fileName)};
    const QString noGivenName = QStringLiteral("(no given name)");
    addSection(lines, tallies.surnames, "Surnames", QStringLiteral("(no surname)"));
    addSection(lines, tallies.maleGivenNames, "Given names of men", noGivenName);
    addSection(lines, tallies.femaleGivenNames, "Given names of women", noGivenName);
    return lines;
}

}  // namespace tav
