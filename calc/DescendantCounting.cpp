// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/DescendantCounting.h"

#include "core/Fault.h"
#include "core/RecordStore.h"
#include "core/TextNumbers.h"

#include <algorithm>
#include <array>

namespace tav {

namespace {

constexpr int maxLevels = 100;

struct Totals {
    int64_t descendants = 0;
    int64_t spouses = 0;
    int32_t generations = 0;

    // Adds the totals of a child, given in the child's own numbering.
    void addChild(int64_t childDescendants, int64_t childSpouses, int32_t childGenerations)
    {
        descendants += childDescendants;
        spouses += childSpouses;
        generations = std::max(generations, 1 + childGenerations);
    }
};

// One level of the walk: the person there, the family and child being
// visited, and the totals of the person's line so far.
struct Level {
    int32_t person = 0;
    int family = 0;  // spouse-family slot being visited, 0 before the first
    int child = 0;   // child slot within that family
    int32_t familyIndex = 0;
    Totals totals;
};

DescendantTotals narrowed(const Totals& totals)
{
    return {toLong(double(totals.descendants)), toLong(double(totals.spouses)), totals.generations};
}

// Walks down from the person without recursion, one level per generation.
// Everyone whose line the walk finishes is cached, so a person met again
// (on another line, or asked about later) costs nothing.
Totals walk(const RecordStore& records, DescendantCache& cache, int32_t root)
{
    std::array<Level, maxLevels + 1> levels;
    int depth = 1;
    levels[1] = Level{root, 0, 0, 0, Totals{0, records.individual(root).spouseFamilyCount, 0}};
    for (;;) {
        Level& level = levels[size_t(depth)];
        const Individual& person = records.individual(level.person);
        int32_t next = 0;
        while (next == 0) {
            const Family& family = records.family(level.familyIndex);
            if (level.family == 0 || level.child >= family.childCount) {
                if (level.family >= person.spouseFamilyCount)
                    break;
                ++level.family;
                level.child = 0;
                level.familyIndex = records.spouseFamilyOf(person, level.family);
                const int32_t children = records.family(level.familyIndex).childCount;
                level.totals.descendants += children;
                if (children > 0)
                    level.totals.generations = std::max(level.totals.generations, 1);
                continue;
            }
            ++level.child;
            const int32_t child = records.childOf(family, level.child);
            if (child == 0)
                continue;
            if (const DescendantTotals* known = cache.find(child))
                level.totals.addChild(known->descendants, known->spouses, known->generations);
            else
                next = child;
        }
        if (next != 0) {
            if (depth == maxLevels)
                raiseFault(RuntimeFault::SubscriptOutOfRange);
            ++depth;
            levels[size_t(depth)] =
                Level{next, 0, 0, 0, Totals{0, records.individual(next).spouseFamilyCount, 0}};
            continue;
        }
        const Totals done = level.totals;
        if (level.person >= 1 && level.person <= records.individualCount())
            cache.store(level.person, narrowed(done));
        if (depth == 1)
            return done;
        --depth;
        levels[size_t(depth)].totals.addChild(done.descendants, done.spouses, done.generations);
    }
}

DescendantTotals counted(const RecordStore& records, DescendantCache& cache, int32_t individual)
{
    if (const DescendantTotals* known = cache.find(individual))
        return *known;
    return narrowed(walk(records, cache, individual));
}

}  // namespace

void DescendantCache::clear()
{
    totals_.clear();
    counted_.clear();
}

const DescendantTotals* DescendantCache::find(int32_t individual) const
{
    const size_t slot = size_t(individual);
    return individual >= 0 && slot < counted_.size() && counted_[slot] ? &totals_[slot] : nullptr;
}

void DescendantCache::store(int32_t individual, const DescendantTotals& totals)
{
    const size_t slot = size_t(individual);
    if (slot >= counted_.size()) {
        counted_.resize(slot + 1);
        totals_.resize(slot + 1);
    }
    totals_[slot] = totals;
    counted_[slot] = 1;
}

int32_t countDescendants(const RecordStore& records, DescendantCache& cache, int32_t individual)
{
    return counted(records, cache, individual).descendants;
}

int32_t countDescendantSpouses(const RecordStore& records, DescendantCache& cache,
                               int32_t individual)
{
    return counted(records, cache, individual).spouses;
}

int32_t countGenerations(const RecordStore& records, DescendantCache& cache, int32_t individual)
{
    return counted(records, cache, individual).generations;
}

int32_t largestFamilySlot(const RecordStore& records, DescendantCache& cache, int32_t individual)
{
    const Individual& person = records.individual(individual);
    int32_t best = 0;
    int64_t bestValue = 0;
    for (int k = 1; k <= person.spouseFamilyCount; ++k) {
        const Family& family = records.family(records.spouseFamilyOf(person, k));
        for (int c = 1; c <= family.childCount; ++c) {
            const int64_t value = int64_t(family.childCount) +
                                  countDescendants(records, cache, records.childOf(family, c));
            if (value > bestValue) {
                bestValue = value;
                best = k;
            }
        }
    }
    return best;
}

int32_t individualWithMostDescendants(const RecordStore& records, DescendantCache& cache)
{
    // The best score starts below any count, so the first individual always
    // qualifies.
    int32_t best = 0;
    int64_t bestScore = -1;
    for (int32_t slot = 1; slot <= records.individualCount(); ++slot) {
        const int64_t score = countDescendants(records, cache, slot);
        if (score > bestScore) {
            bestScore = score;
            best = slot;
        }
    }
    return best;
}

}  // namespace tav
