// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace tav {

class RecordStore;

// The deepest a descendant line may go, in people, for descendant counting
// to walk it; deeper lines are reported as such.
constexpr int32_t countableLevels = 100;

// Which way a lineage graph leads from a person: down to the children of
// the person's spouse families (FAMS, then CHIL), as descendant counting
// walks, or up to the husband and wife of the family the person is a child
// of (FAMC, then HUSB and WIFE), as the relationship finder climbs.
enum class Lineage { Descent, Ancestry };

// The individuals and their links as a graph, for the questions that need a
// whole line at once: how deep it goes and whether it runs in a circle (a
// person who is their own ancestor). Built and answered in one depth-first
// pass over the people and their links (strongly connected components,
// iteratively): linear, whatever the file holds.
class LineageGraph {
public:
    static constexpr int32_t endless = std::numeric_limits<int32_t>::max();

    LineageGraph(const RecordStore& records, Lineage lineage);

    // People in the longest line from the person: 1 for someone without
    // children (parents); `endless` when the line runs into a circle.
    int32_t depth(int32_t slot) const { return depth_[size_t(slot)]; }
    // The person lies on a circle: is their own descendant (ancestor).
    bool onCircle(int32_t slot) const { return circle_[size_t(slot)] != 0; }

    // The people whose line holds more than `people` people and who do not
    // themselves lie in such a line of someone else (the members of a
    // circle that no one else leads into stand for it), in slot order.
    std::vector<int32_t> deepLineHeads(int32_t people) const;

private:
    void findComponents();

    int32_t count_ = 0;
    // The links of slot s are targets_[first_[s]] to targets_[first_[s + 1] - 1].
    std::vector<int32_t> first_;
    std::vector<int32_t> targets_;
    std::vector<int32_t> depth_;
    std::vector<int32_t> component_;  // the root slot of each person's component
    std::vector<char> circle_;
};

}  // namespace tav
