#include "ui/find/StatisticalQueries.h"

#include "app/Session.h"
#include "calc/Dates.h"
#include "calc/DescendantCounting.h"
#include "core/Fault.h"

namespace tav {

const char* const queryNames[15] = {
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

bool queryTakesNumber(int index) { return index == 4 || index == 5 || index == 6 || index == 8; }

namespace {

using Table = FindResults::Table;

void store(Table& table, int32_t position, int32_t slot)
{
    if (position > FindResults::capacity) {
        table.count = FindResults::capacity;
        raiseFault(RuntimeFault::SubscriptOutOfRange);
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

int32_t birthOf(const RecordStore& r, int32_t id, QString* date = nullptr)
{
    const int32_t slot = r.indIndexFromId(id);
    if (date)
        *date = r.individual(slot).birthDate;
    return slot;
}

bool parses(const QString& date)
{
    int32_t d = 0, m = 0, y = 0;
    return parseDate(date, d, m, y) != 0;
}

// Queries 0 and 1: each birth is compared with the last best or tied one,
// starting from today (earliest) or from 15 June 100 (latest).
void byBirth(Session& session, bool earliest)
{
    const RecordStore& r = session.records;
    Table& table = session.findResults[FindResults::Individuals];
    Best best(table, session.curInd, 1, 0);
    QString reference = earliest ? dateText(session.today()) : QStringLiteral("15 JUN 100");
    for (int32_t i = 1; i <= r.individualCount(); ++i) {
        const QString& birth = r.individual(i).birthDate;
        const int32_t order = compareDates(reference, birth);
        if (order == (earliest ? 2 : 0))
            best.better(i, 0);
        else if (order == 1)
            best.equal(i);
        else
            continue;
        reference = birth;
    }
    best.finish();
}

// Queries 2 and 3: ages at death from one year up.
void byAgeAtDeath(Session& session, bool oldest)
{
    const RecordStore& r = session.records;
    Best best(session.findResults[FindResults::Individuals], session.curInd, 1, oldest ? 0 : 2000);
    QString label;  // kept from one person to the next, as the age routine leaves it
    const QDate today = session.today();
    for (int32_t i = 1; i <= r.individualCount(); ++i) {
        const Individual& p = r.individual(i);
        const int32_t age = calcAge(p.birthDate, p.deathDate, label, today);
        if (label == QLatin1String("at death") && age >= 1 && (!oldest || age < 200))
            best.offer(i, age, oldest);
    }
    best.finish();
}

// Queries 10 and 11: age at each marriage.
void byAgeAtMarriage(Session& session, bool oldest)
{
    const RecordStore& r = session.records;
    Best best(session.findResults[FindResults::Individuals], session.curInd, 1, oldest ? 0 : 2000);
    for (int32_t i = 1; i <= r.individualCount(); ++i) {
        const Individual& p = r.individual(i);
        for (int k = 1; k <= p.storedSpouseFamilies(); ++k) {
            const Family& f = r.family(r.famIndexFromId(p.spouseFamilyId[size_t(k)]));
            const int32_t age = yearsBetween(p.birthDate, f.marriageDate);
            if (age != -1)
                best.offer(i, age, oldest);
        }
    }
    best.finish();
}

template <typename Test>
void everyFamily(Session& session, Test test)
{
    const RecordStore& r = session.records;
    Table& table = session.findResults[FindResults::Families];
    for (int32_t f = 1; f <= r.familyCount(); ++f) {
        if (test(r.family(f)))
            append(table, f);
    }
}

template <typename Test>
void everyIndividual(Session& session, Test test)
{
    RecordStore& r = session.records;
    Table& table = session.findResults[FindResults::Individuals];
    for (int32_t i = 1; i <= r.individualCount(); ++i) {
        if (test(i))
            append(table, i);
    }
}

}  // namespace

void runQuery(Session& session, int index, int32_t n)
{
    RecordStore& r = session.records;
    FindResults& results = session.findResults;
    switch (index) {
    case 0:
    case 1: byBirth(session, index == 0); break;
    case 2:
    case 3: byAgeAtDeath(session, index == 2); break;
    case 4:
        results[FindResults::Families].count = 0;
        everyFamily(session, [n](const Family& f) { return f.childCount > n; });
        break;
    case 5:
        results[FindResults::Families].count = 0;
        everyFamily(session, [n](const Family& f) { return f.childCount < n; });
        break;
    case 6:
        results[FindResults::Individuals].count = 0;
        everyIndividual(session, [&](int32_t i) { return r.individual(i).spouseFamilyCount > n; });
        break;
    case 7: {
        Table& table = results[FindResults::Individuals];
        table.count = 0;
        int32_t most = -1;
        for (int32_t i = 1; i <= r.individualCount(); ++i) {
            const int32_t d = countDescendants(r, i);
            if (d > most) {
                most = d;
                table.count = 0;
            }
            if (d == most)
                append(table, i);
        }
        break;
    }
    case 8:  // adds to what the individual table holds already
        everyIndividual(session, [&](int32_t i) { return countDescendants(r, i) > n; });
        break;
    case 9: {
        Best best(results[FindResults::Families], session.curFam, 1, 0);
        const QDate today = session.today();
        for (int32_t f = 1; f <= r.familyCount(); ++f) {
            QString husbandBirth, wifeBirth;
            birthOf(r, r.family(f).husbandId, &husbandBirth);
            birthOf(r, r.family(f).wifeId, &wifeBirth);
            QString label;
            const int32_t gap = calcAge(husbandBirth, wifeBirth, label, today);
            if (gap >= 0 && parses(husbandBirth) && parses(wifeBirth))
                best.offer(f, gap, true);
        }
        best.finish();
        break;
    }
    case 10:
    case 11: byAgeAtMarriage(session, index == 10); break;
    case 12:
        everyFamily(session, [&](const Family& f) {
            QString birth;
            birthOf(r, f.childId[1], &birth);
            return compareDates(f.marriageDate, birth) > 0;
        });
        break;
    case 13:
        everyFamily(session, [&](const Family& f) {
            for (int k = 1; k < f.storedChildren(); ++k) {
                QString first, second;
                birthOf(r, f.childId[size_t(k)], &first);
                birthOf(r, f.childId[size_t(k + 1)], &second);
                if (compareDates(first, second) == 1)
                    return true;
            }
            return false;
        });
        break;
    case 14: {
        Best best(results[FindResults::Families], session.curFam, 0, -200);
        for (int32_t f = 1; f <= r.familyCount(); ++f) {
            const Family& family = r.family(f);
            QString first, last;
            birthOf(r, family.childId[1], &first);
            birthOf(r, family.childId[size_t(family.storedChildren())], &last);
            const int32_t gap = yearsBetween(first, last);
            if (gap > -1)
                best.offer(f, gap, true);
        }
        best.finish();
        break;
    }
    default: break;
    }
}

}  // namespace tav
