// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/DescendantTriangle.h"

#include "calc/DescendantCounting.h"
#include "core/Fault.h"
#include "core/RecordStore.h"

#include <algorithm>

namespace tav {

int32_t DescendantTriangle::widest() const
{
    return perGeneration.empty() ? 0
                                 : *std::max_element(perGeneration.begin(), perGeneration.end());
}

DescendantTriangle descendantTriangle(const RecordStore& records, DescendantCache& descendants,
                                      int32_t individual)
{
    DescendantTriangle triangle;
    triangle.individual = individual;
    try {
        triangle.descendants = countDescendants(records, descendants, individual);
        triangle.spouses = countDescendantSpouses(records, descendants, individual);
        triangle.generations = countGenerations(records, descendants, individual);
        triangle.counted = true;
    } catch (const RuntimeFault&) {
        // A line deeper than the counting goes: the bands still show it.
    }

    // seenIn[p] is the last generation that took p, so a person reached
    // twice in one generation counts once.
    std::vector<int32_t> seenIn(size_t(records.individualCount()) + 1, 0);
    std::vector<int32_t> current{individual};
    std::vector<int32_t> next;
    for (int32_t generation = 1; !current.empty(); ++generation) {
        next.clear();
        for (const int32_t parent : current) {
            const Individual& person = records.individual(parent);
            for (int k = 1; k <= person.spouseFamilyCount; ++k) {
                const Family& family = records.family(records.spouseFamilyOf(person, k));
                for (int c = 1; c <= family.childCount; ++c) {
                    const int32_t child = records.childOf(family, c);
                    if (child <= 0 || size_t(child) >= seenIn.size() ||
                        seenIn[size_t(child)] == generation)
                        continue;
                    seenIn[size_t(child)] = generation;
                    next.push_back(child);
                }
            }
        }
        if (next.empty())
            break;
        if (generation > DescendantTriangle::maxGenerations) {
            triangle.deeperThanShown = true;
            break;
        }
        triangle.perGeneration.push_back(int32_t(next.size()));
        current.swap(next);
    }
    return triangle;
}

}  // namespace tav
