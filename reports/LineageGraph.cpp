// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/LineageGraph.h"

#include "core/RecordStore.h"

#include <algorithm>

namespace tav {

LineageGraph::LineageGraph(const RecordStore& records, Lineage lineage)
    : count_(records.individualCount())
{
    first_.reserve(size_t(count_) + 2);
    first_.assign(2, 0);  // slot 0 holds no one
    targets_.reserve(size_t(count_) * 2);
    const auto link = [this](int32_t person) {
        if (person > 0)
            targets_.push_back(person);
    };
    for (int32_t slot = 1; slot <= count_; ++slot) {
        const Individual& person = records.individual(slot);
        if (lineage == Lineage::Descent) {
            for (int k = 1; k <= person.spouseFamilyCount; ++k) {
                const int32_t f = records.spouseFamilyOf(person, k);
                if (f == 0)
                    continue;
                const Family& family = records.family(f);
                for (int c = 1; c <= family.childCount; ++c)
                    link(records.childOf(family, c));
            }
        } else if (const int32_t f = records.childFamilyOf(person)) {
            link(records.husbandOf(records.family(f)));
            link(records.wifeOf(records.family(f)));
        }
        first_.push_back(int32_t(targets_.size()));
    }
    findComponents();
}

void LineageGraph::findComponents()
{
    const size_t tableSize = size_t(count_) + 1;
    depth_.assign(tableSize, 0);
    component_.assign(tableSize, 0);
    circle_.assign(tableSize, 0);
    // Depth-first order (0: not visited yet), the lowest order reachable,
    // and whether the person waits on the stack of open components.
    std::vector<int32_t> order(tableSize, 0), low(tableSize, 0);
    std::vector<char> onStack(tableSize, 0);
    std::vector<int32_t> stack;
    // The depth-first path: each person with the next of their links to follow.
    std::vector<std::pair<int32_t, int32_t>> path;
    int32_t visited = 0;

    const auto visit = [&](int32_t person) {
        order[size_t(person)] = low[size_t(person)] = ++visited;
        stack.push_back(person);
        onStack[size_t(person)] = 1;
        path.emplace_back(person, first_[size_t(person)]);
    };
    // Components close children first, so every link that leaves this one
    // leads to a person whose depth is known.
    const auto close = [&](int32_t root) {
        const auto from = targets_.begin() + first_[size_t(root)];
        const auto to = targets_.begin() + first_[size_t(root) + 1];
        const bool circle = stack.back() != root || std::find(from, to, root) != to;
        int32_t depth = circle ? endless : 1;
        for (auto it = from; it != to && depth != endless; ++it) {
            const int32_t below = depth_[size_t(*it)];
            depth = below == endless ? endless : std::max(depth, below + 1);
        }
        int32_t member;
        do {
            member = stack.back();
            stack.pop_back();
            onStack[size_t(member)] = 0;
            component_[size_t(member)] = root;
            circle_[size_t(member)] = circle;
            depth_[size_t(member)] = depth;
        } while (member != root);
    };

    for (int32_t start = 1; start <= count_; ++start) {
        if (order[size_t(start)] != 0)
            continue;
        visit(start);
        while (!path.empty()) {
            auto& [person, next] = path.back();
            if (next < first_[size_t(person) + 1]) {
                const int32_t from = person;
                const int32_t target = targets_[size_t(next++)];
                if (order[size_t(target)] == 0)
                    visit(target);  // moves the path: `person` and `next` are stale
                else if (onStack[size_t(target)])
                    low[size_t(from)] = std::min(low[size_t(from)], order[size_t(target)]);
                continue;
            }
            const int32_t done = person;
            path.pop_back();
            if (!path.empty()) {
                int32_t& parentLow = low[size_t(path.back().first)];
                parentLow = std::min(parentLow, low[size_t(done)]);
            }
            if (low[size_t(done)] == order[size_t(done)])
                close(done);
        }
    }
}

std::vector<int32_t> LineageGraph::deepLineHeads(int32_t people) const
{
    const auto deep = [&](int32_t person) { return depth_[size_t(person)] > people; };
    // A deep line leads into everyone below its head, so a person with a
    // deep parent outside their own circle is not a head.
    std::vector<char> led(size_t(count_) + 1, 0);
    for (int32_t person = 1; person <= count_; ++person) {
        if (!deep(person))
            continue;
        for (int32_t e = first_[size_t(person)]; e < first_[size_t(person) + 1]; ++e) {
            const int32_t target = targets_[size_t(e)];
            if (component_[size_t(target)] != component_[size_t(person)])
                led[size_t(target)] = 1;
        }
    }
    std::vector<int32_t> heads;
    for (int32_t person = 1; person <= count_; ++person) {
        if (deep(person) && !led[size_t(person)])
            heads.push_back(person);
    }
    return heads;
}

}  // namespace tav
