// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/DescendancyOutline.h"

#include "core/RecordStore.h"

namespace tav {

namespace {

// The other partner of a family the person heads; 0 when the file names none.
int32_t spouseIn(const RecordStore& records, const Family& family, int32_t person)
{
    const int32_t husband = records.husbandOf(family);
    const int32_t wife = records.wifeOf(family);
    if (husband == person)
        return wife == person ? 0 : wife;
    return husband != 0 ? husband : (wife == person ? 0 : wife);
}

// A person on the walk's path: the spouse family being written (its place
// among the person's families and its slot) and the child reached in it.
struct Frame {
    int32_t person;
    int32_t generation;
    int familyPlace = 0;
    int32_t family = 0;
    int child = 0;
};

}  // namespace

DescendancyOutline::DescendancyOutline(const RecordStore& records, int32_t top)
    : top_(top), under_(size_t(records.individualCount()) + 1, -1)
{
    if (top < 1 || top > records.individualCount())
        return;
    const auto lastGeneration = maxLevels - 1;
    std::vector<Frame> path;
    steps_.push_back({OutlineStep::Person, top, 0, 0});
    under_[size_t(top)] = 0;
    path.push_back({top, 0});

    while (!path.empty()) {
        Frame& frame = path.back();
        const Individual& person = records.individual(frame.person);
        const Family& family = records.family(frame.family);
        if (frame.family != 0 && frame.child < family.childCount) {
            const int32_t child = records.childOf(family, ++frame.child);
            if (child <= 0 || child > records.individualCount())
                continue;
            const int32_t generation = frame.generation + 1;
            if (written(child)) {
                steps_.push_back(
                    {OutlineStep::PersonAgain, child, generation, writtenUnder(child)});
                continue;
            }
            under_[size_t(child)] = frame.person;
            ++distinct_;
            steps_.push_back({OutlineStep::Person, child, generation, 0});
            path.push_back({child, generation});  // `frame` is stale from here
            continue;
        }
        if (frame.family != 0) {
            steps_.push_back({OutlineStep::FamilyEnd, frame.family, frame.generation, 0});
            frame.family = 0;
        }
        // The next family that the file links to; unreadable links are skipped.
        while (frame.family == 0 && frame.familyPlace < person.spouseFamilyCount)
            frame.family = records.spouseFamilyOf(person, ++frame.familyPlace);
        if (frame.family == 0) {
            steps_.push_back({OutlineStep::PersonEnd, frame.person, frame.generation, 0});
            path.pop_back();
            continue;
        }
        const Family& next = records.family(frame.family);
        steps_.push_back({OutlineStep::Family, frame.family, frame.generation,
                          spouseIn(records, next, frame.person)});
        frame.child = 0;
        if (frame.generation == lastGeneration && next.childCount > 0) {
            steps_.push_back({OutlineStep::LineTooDeep, frame.family, frame.generation, 0});
            cutShort_ = true;
            frame.child = next.childCount;
        }
    }
}

}  // namespace tav
