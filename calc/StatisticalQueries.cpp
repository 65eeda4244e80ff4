// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/StatisticalQueries.h"

#include "calc/Dates.h"
#include "calc/DescendantCounting.h"
#include "core/Fault.h"
#include "core/RecordStore.h"

#include <exception>

namespace tav {

namespace {

const char* const queryNames[queryCount] = {
    "Earliest born",
    "Latest born",
    "Oldest person at death",
    "Youngest person at death",
    "Families with more than N children",
    "Families with less than N children",
    "People who married more than N times",
    "Person with most descendents",
    "People with more than N descendents",
    "Largest age gap at marriage",
    "Oldest person at marriage",
    "Youngest person at marriage",
    "Families with children born before marriage",
    "Families with twins",
    "Largest age gap btw 1st and last child",
};

}  // namespace

QString queryName(Query query) { return QString::fromLatin1(queryNames[queryIndex(query)]); }

bool queryTakesNumber(Query query)
{
    return query == Query::FamiliesWithMoreChildren || query == Query::FamiliesWithFewerChildren ||
           query == Query::MarriedMoreTimes || query == Query::MoreDescendants;
}

bool queryListsFamilies(Query query)
{
    switch (query) {
    case Query::FamiliesWithMoreChildren:
    case Query::FamiliesWithFewerChildren:
    case Query::LargestAgeGapAtMarriage:
    case Query::ChildrenBeforeMarriage:
    case Query::Twins:
    case Query::LargestGapBetweenChildren: return true;
    default: return false;
    }
}

namespace {

using Table = FindResults::Table;

// Thrown when a result table is full: the query stops with the 200 it has.
struct ResultsFull : std::exception {};

void store(Table& table, int32_t position, int32_t slot)
{
    if (position > FindResults::capacity) {
        table.count = FindResults::capacity;
        throw ResultsFull{};
    }
    table.entries[size_t(position)] = slot;
}

void append(Table& table, int32_t slot)
{
    store(table, table.count + 1, slot);
    ++table.count;
}

// A best value and every record that shares it, in table order. The newest
// of them is held as the candidate (in the current individual or family),
// the earlier ones in the table; the candidate takes the last place at the end.
class Best {
public:
    Best(Table& table, int32_t& candidate, int32_t initialCount, int32_t initialValue)
        : table_(table), candidate_(candidate), value_(initialValue)
    {
        table_.count = initialCount;
    }

    // Offers a record with a value; `larger` says which way is better.
    void offer(int32_t slot, int32_t value, bool larger)
    {
        if (larger ? value > value_ : value < value_)
            better(slot, value);
        else if (value == value_)
            equal(slot);
    }
    void better(int32_t slot, int32_t value)
    {
        value_ = value;
        table_.count = 1;
        candidate_ = slot;
    }
    void equal(int32_t slot)
    {
        if (table_.count >= 1)
            store(table_, table_.count, candidate_);
        ++table_.count;
        candidate_ = slot;
    }
    void finish()
    {
        if (table_.count >= 1)
            store(table_, table_.count, candidate_);
    }

private:
    Table& table_;
    int32_t& candidate_;
    int32_t value_;
};

QStringView birthOf(const RecordStore& r, int32_t individual)
{
    return r.individual(individual).birthDate;
}

bool parses(QStringView date)
{
    int32_t d = 0, m = 0, y = 0;
    return parseDate(date, d, m, y) != 0;
}

// What every query works on.
struct QueryRun {
    const RecordStore& r;
    DescendantCache& descendants;
    FindResults& results;
    QueryCandidates candidates;
    QDate today;

    Table& individuals() { return results[FindResults::Individuals]; }
    Table& families() { return results[FindResults::Families]; }
};

// Queries 0 and 1: each birth is compared with the last best or tied one,
// starting from today (earliest) or from 15 June 100 (latest).
void byBirth(QueryRun& run, bool earliest)
{
    Best best(run.individuals(), run.candidates.individual, 1, 0);
    QString reference = earliest ? dateText(run.today) : QStringLiteral("15 JUN 100");
    for (int32_t i = 1; i <= run.r.individualCount(); ++i) {
        const QStringView birth = run.r.individual(i).birthDate;
        const int32_t order = compareDates(reference, birth);
        if (order == (earliest ? 2 : 0))
            best.better(i, 0);
        else if (order == 1)
            best.equal(i);
        else
            continue;
        reference = birth.toString();
    }
    best.finish();
}

// Queries 2 and 3: ages at death from one year up.
void byAgeAtDeath(QueryRun& run, bool oldest)
{
    Best best(run.individuals(), run.candidates.individual, 1, oldest ? 0 : 2000);
    QString label;  // kept from one person to the next, as the age routine leaves it
    for (int32_t i = 1; i <= run.r.individualCount(); ++i) {
        const Individual& p = run.r.individual(i);
        const int32_t age = calcAge(p.birthDate, p.deathDate, label, run.today);
        if (label == QLatin1String("at death") && age >= 1 && (!oldest || age < 200))
            best.offer(i, age, oldest);
    }
    best.finish();
}

// Queries 10 and 11: age at each marriage.
void byAgeAtMarriage(QueryRun& run, bool oldest)
{
    const RecordStore& r = run.r;
    Best best(run.individuals(), run.candidates.individual, 1, oldest ? 0 : 2000);
    for (int32_t i = 1; i <= r.individualCount(); ++i) {
        const Individual& p = r.individual(i);
        for (int k = 1; k <= p.spouseFamilyCount; ++k) {
            const Family& f = r.family(r.spouseFamilyOf(p, k));
            const int32_t age = yearsBetween(p.birthDate, f.marriageDate);
            if (age != -1)
                best.offer(i, age, oldest);
        }
    }
    best.finish();
}

template <typename Test>
void everyFamily(QueryRun& run, Test test)
{
    for (int32_t f = 1; f <= run.r.familyCount(); ++f) {
        if (test(run.r.family(f)))
            append(run.families(), f);
    }
}

template <typename Test>
void everyIndividual(QueryRun& run, Test test)
{
    for (int32_t i = 1; i <= run.r.individualCount(); ++i) {
        if (test(i))
            append(run.individuals(), i);
    }
}

// Query 7: everyone who shares the largest number of descendants.
void mostDescendants(QueryRun& run)
{
    Table& table = run.individuals();
    table.count = 0;
    int32_t most = -1;
    for (int32_t i = 1; i <= run.r.individualCount(); ++i) {
        const int32_t d = countDescendants(run.r, run.descendants, i);
        if (d > most) {
            most = d;
            table.count = 0;
        }
        if (d == most)
            append(table, i);
    }
}

// Query 9: the husband's birth to the wife's, where the wife is the younger.
void largestAgeGapAtMarriage(QueryRun& run)
{
    const RecordStore& r = run.r;
    Best best(run.families(), run.candidates.family, 1, 0);
    for (int32_t f = 1; f <= r.familyCount(); ++f) {
        const QStringView husbandBirth = birthOf(r, r.husbandOf(r.family(f)));
        const QStringView wifeBirth = birthOf(r, r.wifeOf(r.family(f)));
        QString label;
        const int32_t gap = calcAge(husbandBirth, wifeBirth, label, run.today);
        if (gap >= 0 && parses(husbandBirth) && parses(wifeBirth))
            best.offer(f, gap, true);
    }
    best.finish();
}

// Query 14: the first listed child's birth to the last's.
void largestGapBetweenChildren(QueryRun& run)
{
    const RecordStore& r = run.r;
    Best best(run.families(), run.candidates.family, 0, -200);
    for (int32_t f = 1; f <= r.familyCount(); ++f) {
        const Family& family = r.family(f);
        const int32_t gap = yearsBetween(birthOf(r, r.childOf(family, 1)),
                                         birthOf(r, r.childOf(family, family.childCount)));
        if (gap > -1)
            best.offer(f, gap, true);
    }
    best.finish();
}

bool childrenBornBeforeMarriage(const RecordStore& r, const Family& f)
{
    return compareDates(f.marriageDate, birthOf(r, r.childOf(f, 1))) > 0;
}

bool hasTwins(const RecordStore& r, const Family& f)
{
    for (int k = 1; k < f.childCount; ++k) {
        if (compareDates(birthOf(r, r.childOf(f, k)), birthOf(r, r.childOf(f, k + 1))) == 1)
            return true;
    }
    return false;
}

// Computes a query into the results; stops with ResultsFull at the 201st.
void runQueryToTheEnd(QueryRun run, Query query, int32_t n)
{
    const RecordStore& r = run.r;
    switch (query) {
    case Query::EarliestBorn:
    case Query::LatestBorn: byBirth(run, query == Query::EarliestBorn); break;
    case Query::OldestAtDeath:
    case Query::YoungestAtDeath: byAgeAtDeath(run, query == Query::OldestAtDeath); break;
    case Query::FamiliesWithMoreChildren:
        run.families().count = 0;
        everyFamily(run, [n](const Family& f) { return f.childCount > n; });
        break;
    case Query::FamiliesWithFewerChildren:
        run.families().count = 0;
        everyFamily(run, [n](const Family& f) { return f.childCount < n; });
        break;
    case Query::MarriedMoreTimes:
        run.individuals().count = 0;
        everyIndividual(run, [&](int32_t i) { return r.individual(i).spouseFamilyCount > n; });
        break;
    case Query::MostDescendants: mostDescendants(run); break;
    case Query::MoreDescendants:  // adds to what the individual table holds already
        everyIndividual(run,
                        [&](int32_t i) { return countDescendants(r, run.descendants, i) > n; });
        break;
    case Query::LargestAgeGapAtMarriage: largestAgeGapAtMarriage(run); break;
    case Query::OldestAtMarriage:
    case Query::YoungestAtMarriage: byAgeAtMarriage(run, query == Query::OldestAtMarriage); break;
    case Query::ChildrenBeforeMarriage:
        everyFamily(run, [&](const Family& f) { return childrenBornBeforeMarriage(r, f); });
        break;
    case Query::Twins: everyFamily(run, [&](const Family& f) { return hasTwins(r, f); }); break;
    case Query::LargestGapBetweenChildren: largestGapBetweenChildren(run); break;
    }
}

}  // namespace

bool runQuery(const RecordStore& records, DescendantCache& descendants, FindResults& results,
              QueryCandidates candidates, QDate today, Query query, int32_t n)
{
    try {
        runQueryToTheEnd(QueryRun{records, descendants, results, candidates, today}, query, n);
        return true;
    } catch (const ResultsFull&) {
        return false;
    }
}

}  // namespace tav
