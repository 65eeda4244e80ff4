// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/BasicStatistics.h"

#include "app/Session.h"
#include "calc/Dates.h"
#include "calc/DescendantCounting.h"
#include "calc/NameTallies.h"
#include "calc/ReadDate.h"
#include "core/Fault.h"
#include "core/FileNames.h"
#include "reports/LineageGraph.h"
#include "reports/ReportLabels.h"

#include <algorithm>
#include <optional>

namespace tav {

namespace {

constexpr int topListLength = 10;

QString twoBlanks(QStringView value, const QString& who)
{
    return value.toString() + QStringLiteral("  ") + who;
}

void addCounts(QStringList& lines, const RecordStore& records)
{
    int32_t males = 0, females = 0;
    for (int32_t slot = 1; slot <= records.individualCount(); ++slot) {
        const QStringView sex = records.individual(slot).sex;
        if (sex == QLatin1String("M"))
            ++males;
        else if (sex == QLatin1String("F"))
            ++females;
    }
    lines << QStringLiteral("File: ") + shownFileName(records.fileName)
          << QStringLiteral("Individuals: %1").arg(records.individualCount())
          << QStringLiteral("Males: %1").arg(males) << QStringLiteral("Females: %1").arg(females)
          << QStringLiteral("Sex unknown: %1").arg(records.individualCount() - males - females)
          << QStringLiteral("Families: %1").arg(records.familyCount())
          << QStringLiteral("Sources: %1").arg(records.sourceCount())
          << QStringLiteral("Notes: %1").arg(records.noteCount());
}

void addDates(QStringList& lines, const Session& session)
{
    const RecordStore& records = session.records;
    // Date texts written, and how many of them can be read.
    enum { Births, Deaths, Marriages };
    int32_t written[3] = {}, readable[3] = {};
    const auto count = [&](int what, QStringView text) -> std::optional<ReadDate> {
        if (text.isEmpty())
            return std::nullopt;
        ++written[what];
        const ReadDate date(text);
        if (!date.valid)
            return std::nullopt;
        ++readable[what];
        return date;
    };
    int32_t earliest = 0, latest = 0;
    std::optional<ReadDate> earliestDate, latestDate;
    for (int32_t slot = 1; slot <= records.individualCount(); ++slot) {
        const Individual& person = records.individual(slot);
        count(Deaths, person.deathDate);
        const std::optional<ReadDate> birth = count(Births, person.birthDate);
        if (!birth)
            continue;
        // The first of equal dates stays.
        if (!earliestDate || *birth < *earliestDate) {
            earliestDate = birth;
            earliest = slot;
        }
        if (!latestDate || *latestDate < *birth) {
            latestDate = birth;
            latest = slot;
        }
    }
    for (int32_t slot = 1; slot <= records.familyCount(); ++slot)
        count(Marriages, records.family(slot).marriageDate);

    lines << QString();
    const char* const what[3] = {"Birth", "Death", "Marriage"};
    for (int k : {Births, Deaths, Marriages})
        lines << QStringLiteral("%1 dates: %2 (%3 readable)")
                     .arg(QLatin1String(what[k]))
                     .arg(written[k])
                     .arg(readable[k]);
    const auto birth = [&](int32_t slot) {
        return slot == 0
                   ? QStringLiteral("none")
                   : twoBlanks(records.individual(slot).birthDate, personLabel(session, slot));
    };
    lines << QStringLiteral("Earliest birth: ") + birth(earliest)
          << QStringLiteral("Latest birth: ") + birth(latest);
}

void addAges(QStringList& lines, const Session& session)
{
    const RecordStore& records = session.records;
    int64_t total = 0;
    int32_t people = 0, oldest = 0, oldestAge = 0;
    for (int32_t slot = 1; slot <= records.individualCount(); ++slot) {
        const Individual& person = records.individual(slot);
        QString label;
        int32_t age = 0;
        try {
            age = calcAge(person.birthDate, person.deathDate, label, session.today());
        } catch (const RuntimeFault&) {
            continue;  // a year past 32 bits: no age to count
        }
        // Infants under a year and impossible ages of 200 and more would skew
        // the average: they are left out.
        if (label != QLatin1String("at death") || age < 1 || age > 199)
            continue;
        total += age;
        ++people;
        if (age > oldestAge) {
            oldestAge = age;
            oldest = slot;
        }
    }
    lines << QString();
    if (people == 0) {
        lines << QStringLiteral("Average age at death: no one with a birth and a death date");
        return;
    }
    lines << QStringLiteral("Average age at death: %1 years (%2)")
                 .arg(double(total) / people, 0, 'f', 1)
                 .arg(counted(people, "person", "people"))
          << QStringLiteral("Oldest at death: ") +
                 twoBlanks(counted(oldestAge, "year", "years"), personLabel(session, oldest));
}

void addFamilies(QStringList& lines, const Session& session)
{
    const RecordStore& records = session.records;
    int64_t children = 0;
    int32_t largest = 0;
    for (int32_t slot = 1; slot <= records.familyCount(); ++slot) {
        const int32_t count = records.family(slot).childCount;
        children += count;
        if (count > records.family(largest).childCount)
            largest = slot;
    }
    lines << QString();
    if (records.familyCount() == 0) {
        lines << QStringLiteral("Average children per family: no families");
        return;
    }
    lines << QStringLiteral("Average children per family: %1")
                 .arg(double(children) / records.familyCount(), 0, 'f', 2);
    lines << QStringLiteral("Largest family: ") +
                 (largest == 0
                      ? QStringLiteral("no family has children")
                      : twoBlanks(counted(records.family(largest).childCount, "child", "children"),
                                  familyLabel(session, largest)));
}

void addMarriages(QStringList& lines, const Session& session)
{
    const RecordStore& records = session.records;
    std::vector<int32_t> married;
    for (int32_t slot = 1; slot <= records.individualCount(); ++slot) {
        if (records.individual(slot).spouseFamilyCount > 1)
            married.push_back(slot);
    }
    const auto marriages = [&](int32_t slot) { return records.individual(slot).spouseFamilyCount; };
    const size_t shown = std::min(married.size(), size_t(topListLength));
    std::partial_sort(married.begin(), married.begin() + ptrdiff_t(shown), married.end(),
                      [&](int32_t a, int32_t b) {
                          return marriages(a) != marriages(b) ? marriages(a) > marriages(b) : a < b;
                      });
    lines << QString() << QStringLiteral("People married more than once: %1").arg(married.size());
    if (!married.empty())
        lines << QStringLiteral("Most marriages:");
    for (size_t k = 0; k < shown; ++k)
        lines << QStringLiteral("%1\t%2")
                     .arg(marriages(married[k]))
                     .arg(personLabel(session, married[k]));
}

void addSurnames(QStringList& lines, Session& session)
{
    tallyNames(session.records, session.nameTallies);
    const NameTally& tally = session.nameTallies.surnames;
    lines << QString() << QStringLiteral("Surnames: %1 distinct").arg(tally.distinct);
    int shown = 0;
    for (const int32_t slot : slotsByFrequency(tally)) {
        const TalliedName& entry = tally.entries[size_t(slot)];
        if (entry.name.isEmpty())
            continue;  // no surname is not a surname
        if (shown == 0)
            lines << QStringLiteral("Most common surnames:");
        lines << QStringLiteral("%1\t%2").arg(entry.count).arg(entry.name);
        if (++shown == topListLength)
            break;
    }
}

void addDescendants(QStringList& lines, Session& session)
{
    const RecordStore& records = session.records;
    // Lines too deep to count are known beforehand, so the counting (and
    // its cache) is asked only about the others.
    const LineageGraph descent(records, Lineage::Descent);
    int32_t most = 0, mostCount = 0, deepest = 0, deepestCount = 0;
    for (int32_t slot = 1; slot <= records.individualCount(); ++slot) {
        if (descent.depth(slot) > countableLevels)
            continue;
        try {
            const int32_t count = countDescendants(records, session.descendantCache, slot);
            const int32_t generations = countGenerations(records, session.descendantCache, slot);
            if (count > mostCount) {
                mostCount = count;
                most = slot;
            }
            if (generations > deepestCount) {
                deepestCount = generations;
                deepest = slot;
            }
        } catch (const RuntimeFault&) {
            // A family beyond the reach of the family lookup: the integrity
            // report names it; this person is left out.
        }
    }
    const std::vector<int32_t> deep = descent.deepLineHeads(countableLevels);
    const QString none = deep.empty() ? QStringLiteral("no one has descendants")
                                      : QStringLiteral("none that can be counted");
    lines << QString()
          << QStringLiteral("Most descendants: ") +
                 (most == 0 ? none
                            : twoBlanks(QString::number(mostCount), personLabel(session, most)));
    if (!deep.empty()) {
        lines << QStringLiteral("Deepest line: deeper than %1 levels  %2")
                     .arg(countableLevels)
                     .arg(personLabel(session, deep.front()));
        lines << QStringLiteral("Lines deeper than %1 levels: %2 (see GEDCOM integrity)")
                     .arg(countableLevels)
                     .arg(deep.size());
    } else {
        lines << QStringLiteral("Deepest line: ") +
                     (deepest == 0 ? none
                                   : twoBlanks(counted(deepestCount, "generation", "generations"),
                                               personLabel(session, deepest)));
    }
}

}  // namespace

QStringList basicStatistics(Session& session)
{
    QStringList lines;
    addCounts(lines, session.records);
    addDates(lines, session);
    addAges(lines, session);
    addFamilies(lines, session);
    addMarriages(lines, session);
    addSurnames(lines, session);
    addDescendants(lines, session);
    return lines;
}

}  // namespace tav
