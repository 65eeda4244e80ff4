// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/NameTallies.h"

#include "core/RecordStore.h"

#include <QHash>
#include <algorithm>

namespace tav {

QString surnamePart(QStringView name)
{
    const qsizetype open = name.indexOf(u'/');
    if (open < 0)
        return QString();
    const qsizetype close = name.indexOf(u'/', open + 1);
    const QStringView inner = close < 0 ? name.mid(open + 1) : name.mid(open + 1, close - open - 1);
    return inner.trimmed().toString();
}

QString firstGivenName(QStringView name)
{
    const qsizetype slash = name.indexOf(u'/');
    const QStringView given = (slash < 0 ? name : name.left(slash)).trimmed();
    qsizetype end = 0;
    while (end < given.size() && !given[end].isSpace())
        ++end;
    return given.left(end).toString();
}

namespace {

// Counts names into one tally; the hash maps a name, case folded, to its
// slot (0 once the table is full).
class Tallier {
public:
    explicit Tallier(NameTally& tally) : tally_(tally) {}

    void add(const QString& name)
    {
        const QString key = name.toCaseFolded();
        auto entry = slotOf_.constFind(key);
        if (entry == slotOf_.constEnd()) {
            if (!name.isEmpty())
                ++tally_.distinct;
            int32_t slot = 0;
            if (tally_.count < NameTally::capacity) {
                slot = ++tally_.count;
                tally_.entries.push_back(TalliedName{name, 0});
            }
            entry = slotOf_.insert(key, slot);
        }
        ++tally_.entries[size_t(entry.value())].count;
    }

private:
    NameTally& tally_;
    QHash<QString, int32_t> slotOf_;
};

}  // namespace

void NameTally::clear()
{
    entries.assign(1, TalliedName{});
    count = 0;
    distinct = 0;
}

void NameTallies::clear()
{
    surnames.clear();
    maleGivenNames.clear();
    femaleGivenNames.clear();
}

void tallyNames(const RecordStore& records, NameTallies& tallies)
{
    tallies.clear();
    Tallier surnames(tallies.surnames);
    Tallier men(tallies.maleGivenNames);
    Tallier women(tallies.femaleGivenNames);
    for (int32_t slot = 1; slot <= records.individualCount(); ++slot) {
        const Individual& person = records.individual(slot);
        surnames.add(surnamePart(person.name));
        if (person.sex == QLatin1String("M"))
            men.add(firstGivenName(person.name));
        else if (person.sex == QLatin1String("F"))
            women.add(firstGivenName(person.name));
    }
}

std::vector<int32_t> slotsByFrequency(const NameTally& tally)
{
    std::vector<int32_t> order(size_t(tally.count));
    for (int32_t k = 0; k < tally.count; ++k)
        order[size_t(k)] = k + 1;
    std::sort(order.begin(), order.end(), [&tally](int32_t a, int32_t b) {
        const TalliedName& x = tally.entries[size_t(a)];
        const TalliedName& y = tally.entries[size_t(b)];
        if (x.count != y.count)
            return x.count > y.count;
        const int byName = x.name.compare(y.name, Qt::CaseInsensitive);
        return byName != 0 ? byName < 0 : a < b;
    });
    return order;
}

}  // namespace tav
