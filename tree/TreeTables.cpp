// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/TreeTables.h"

#include "core/Fault.h"

namespace tav {

namespace {

template <typename Table>
auto& entryAt(Table& table, int32_t slot)
{
    if (slot < 0 || size_t(slot) >= table.size())
        raiseFault(RuntimeFault::SubscriptOutOfRange);
    return table[size_t(slot)];
}

}  // namespace

TreeTables::TreeTables()
    : treeInd(size_t(personCapacity) + 1), treeFam(size_t(familyCapacity) + 1),
      prevInd(size_t(personCapacity) + 1), prevFam(size_t(familyCapacity) + 1)
{}

TreePerson& TreeTables::person(int32_t slot) { return entryAt(treeInd, slot); }

const TreePerson& TreeTables::person(int32_t slot) const { return entryAt(treeInd, slot); }

TreeFamily& TreeTables::family(int32_t slot) { return entryAt(treeFam, slot); }

const TreeFamily& TreeTables::family(int32_t slot) const { return entryAt(treeFam, slot); }

}  // namespace tav
