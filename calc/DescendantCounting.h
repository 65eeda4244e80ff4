// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

namespace tav {

class RecordStore;

// The three descendant-counting numbers of one person.
struct DescendantTotals {
    int32_t descendants = 0;
    int32_t spouses = 0;
    int32_t generations = 0;
};

// The numbers of every person whose line a walk has finished, so that a
// person met again, or asked about later, costs nothing. The numbers hold
// for one loaded file: the session clears the cache on every load.
class DescendantCache {
public:
    void clear();
    // The person's numbers, or null while they are not counted.
    const DescendantTotals* find(int32_t individual) const;
    void store(int32_t individual, const DescendantTotals& totals);

private:
    std::vector<DescendantTotals> totals_;  // by individual slot
    std::vector<char> counted_;
};

// Three numbers about the descendants of a person, from one walk down the
// lines of descent, kept in `cache`. A descendant reached along two lines
// counts once per line.
//
// - descendants: every child of every family of the person and of each
//   descendant;
// - spouses: the marriages (spouse families) of the person and of each
//   descendant;
// - generations: the deepest level that has a child, the person being
//   level 1 (children only: 1; none: 0).
//
// A line more than 100 levels deep raises SubscriptOutOfRange.
int32_t countDescendants(const RecordStore& records, DescendantCache& cache, int32_t individual);
int32_t countDescendantSpouses(const RecordStore& records, DescendantCache& cache,
                               int32_t individual);
int32_t countGenerations(const RecordStore& records, DescendantCache& cache, int32_t individual);

// The spouse-family place (from 1) whose children and their descendants score
// highest (family child count + a child's descendants, best child counting),
// the first slot winning a tie; 0 without families or children.
int32_t largestFamilySlot(const RecordStore& records, DescendantCache& cache, int32_t individual);

// The individual with the most descendants, every one scored in slot order
// and the first winning a tie: the top of "family tree from top". 0 for a
// file without individuals.
int32_t individualWithMostDescendants(const RecordStore& records, DescendantCache& cache);

}  // namespace tav
