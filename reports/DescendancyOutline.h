// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tav {

class RecordStore;

// One step of a descendancy outline. Generations count down from the top
// person (0): children 1, grandchildren 2.
struct OutlineStep {
    enum Kind : uint8_t {
        Person,       // a descendant written in full: `slot`, `generation`
        PersonAgain,  // a descendant written before: `slot`, `generation`, `other` = the
                      // person under whom `slot` is written in full (0 for the top person)
        Family,       // a spouse family of the enclosing person: family `slot`, spouse `other`
        FamilyEnd,    // the end of the enclosing Family
        PersonEnd,    // the end of the enclosing Person
        LineTooDeep,  // the family's children lie beyond the deepest level written
    };
    Kind kind;
    int32_t slot = 0;
    int32_t generation = 0;
    int32_t other = 0;

    bool operator==(const OutlineStep&) const = default;
};

// The whole descendancy of a person as a report writes it, depth first: the
// person, then each spouse family with its children in the order the file
// gives them, each child followed by its own families. A person met again
// (along a second line, or on a circle of bad links) is written once, where
// first met, and is only referred to later, so the outline grows with the
// number of distinct descendants, however many lines lead to them. The walk
// keeps its own stack and stops at `maxLevels` people down a line, so no
// file can exhaust the program's stack or make it fault.
class DescendancyOutline {
public:
    static constexpr int32_t maxLevels = 100;

    // The outline of `top`, a slot of the file; empty for any other number.
    DescendancyOutline(const RecordStore& records, int32_t top);

    int32_t top() const { return top_; }
    const std::vector<OutlineStep>& steps() const { return steps_; }

    // Whether the person is written in full in the outline.
    bool written(int32_t slot) const
    {
        return slot > 0 && size_t(slot) < under_.size() && under_[size_t(slot)] >= 0;
    }
    // The descendant under whose family the person is written (0 for the top).
    int32_t writtenUnder(int32_t slot) const { return under_[size_t(slot)]; }
    // The descendants written in full: each distinct person once.
    int32_t distinctDescendants() const { return distinct_; }
    // Some line goes deeper than the outline writes.
    bool cutShort() const { return cutShort_; }

private:
    int32_t top_;
    std::vector<OutlineStep> steps_;
    std::vector<int32_t> under_;  // per individual slot; -1 when not written
    int32_t distinct_ = 0;
    bool cutShort_ = false;
};

}  // namespace tav
