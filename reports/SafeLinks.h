#pragma once

#include "core/Fault.h"
#include "core/RecordStore.h"

#include <algorithm>

// The family links of a person as the reports read them. A report never
// faults: a family beyond slot 32767, which the family lookup cannot return
// (it raises Overflow), reads here as `unreachableFamily`, and the integrity
// report lists such links.
namespace tav {

constexpr int32_t unreachableFamily = -1;

template <typename Lookup>
int32_t familyLink(Lookup lookup)
{
    try {
        return lookup();
    } catch (const RuntimeFault&) {
        return unreachableFamily;
    }
}

// The family the person is a child of; 0 when none or unreachable.
inline int32_t parentFamily(const RecordStore& records, const Individual& person)
{
    return std::max(0, familyLink([&] { return records.childFamilyOf(person); }));
}

// The person's k-th spouse family; 0 when none or unreachable.
inline int32_t spouseFamily(const RecordStore& records, const Individual& person, int k)
{
    return std::max(0, familyLink([&] { return records.spouseFamilyOf(person, k); }));
}

}  // namespace tav
