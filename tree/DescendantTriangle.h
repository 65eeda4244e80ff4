// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <cstdint>
#include <vector>

namespace tav {

class DescendantCache;
class RecordStore;

// How large a person's descendancy is, generation by generation: the three
// descendant-counting numbers and the number of distinct people in each
// generation below the person, down to the deepest.
struct DescendantTriangle {
    static constexpr int maxGenerations = 100;

    int32_t individual = 0;
    // The descendant-counting numbers; false when a line is too deep to count.
    bool counted = false;
    int32_t descendants = 0;
    int32_t spouses = 0;
    int32_t generations = 0;
    // perGeneration[0] is the children, [1] the grandchildren ...; a person
    // reached along two lines counts once in a generation.
    std::vector<int32_t> perGeneration;
    // A line goes on below the last generation listed (maxGenerations).
    bool deeperThanShown = false;

    int32_t widest() const;
};

// Goes down generation by generation without recursion, so that any file
// and any pedigree (even one where a person is their own ancestor) ends.
DescendantTriangle descendantTriangle(const RecordStore& records, DescendantCache& descendants,
                                      int32_t individual);

}  // namespace tav
