// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/TreeTopChanges.h"

#include "core/Fault.h"
#include "core/RecordStore.h"
#include "tree/TreeLabels.h"
#include "tree/TreeModel.h"

#include <vector>

namespace tav {

int32_t childNumberIn(const RecordStore& records, const Family& family, int32_t individual)
{
    for (int k = 1; k <= family.childCount; ++k) {
        if (records.childOf(family, k) == individual)
            return k;
    }
    return 0;
}

int32_t parentsFamilyOf(const RecordStore& records, int32_t individual)
{
    if (individual == 0)
        return 0;
    const int32_t famIdx = records.childFamilyOf(records.individual(individual));
    if (famIdx == 0)
        return 0;
    const Family& family = records.family(famIdx);
    if (records.husbandOf(family) == 0 && records.wifeOf(family) == 0)
        return 0;
    return childNumberIn(records, family, individual) != 0 ? famIdx : 0;
}

void setTopPerson(TreeModel& model, int32_t slot, const TextMeasure& measure)
{
    const int32_t individual = model.person(slot).indIdx;
    model.clearArrays(1, 1);
    model.nTreeInd = 1;
    model.nTreeFam = 0;
    model.prepareTopPerson(individual, measure);
    model.prepareDescendents(1, 0, 1);
}

int32_t showParents(TreeModel& model, int32_t slot, const TextMeasure& measure, QDate today)
{
    const RecordStore& records = model.records();
    const int32_t individual = model.person(slot).indIdx;
    const int32_t famIdx = parentsFamilyOf(records, individual);
    if (famIdx == 0)
        raiseFault(RuntimeFault::InvalidCall);
    const Family& parents = records.family(famIdx);
    const int32_t husband = records.husbandOf(parents);
    const int32_t top = husband != 0 ? husband : records.wifeOf(parents);
    const int32_t spouse = husband != 0 ? records.wifeOf(parents) : 0;
    const int32_t children = parents.childCount;
    const int32_t childNo = childNumberIn(records, parents, individual);

    // The person's own families: those headed by the person or by a child
    // of a family already kept. The tables are in generation order, so one
    // pass finds them all.
    std::vector<bool> inLine(size_t(model.nTreeInd) + 1, false);
    inLine[size_t(slot)] = true;
    std::vector<int32_t> kept;
    int64_t persons = 2 + int64_t(children);
    for (int32_t f = 1; f <= model.nTreeFam; ++f) {
        const TreeFamily& family = model.family(f);
        if (family.head < 1 || family.head > model.nTreeInd || !inLine[size_t(family.head)])
            continue;
        if (family.indSt < 1 || int64_t(family.indSt) + family.nChildren > model.nTreeInd)
            raiseFault(RuntimeFault::SubscriptOutOfRange);
        kept.push_back(f);
        persons += 1 + int64_t(family.nChildren);
        for (int32_t c = 1; c <= family.nChildren; ++c)
            inLine[size_t(family.indSt + c)] = true;
    }
    if (persons > TreeTables::personCapacity ||
        1 + int64_t(kept.size()) > TreeTables::familyCapacity)
        raiseFault(RuntimeFault::SubscriptOutOfRange);

    std::vector<TreePerson> people(size_t(TreeTables::personCapacity) + 1);
    std::vector<TreeFamily> families(size_t(TreeTables::familyCapacity) + 1);
    const auto entry = [&](int32_t who, TreeLabelRole role, int32_t number) {
        TreePerson person;
        person.indIdx = who;
        person.label = treeLabel(records, who, role, model.settings(), today);
        person.descendant = role == TreeLabelRole::Child ? 1 : 0;
        person.childNo = number;
        return person;
    };
    TreeFamily& first = families[1];
    first.famIdx = famIdx;
    first.head = 1;
    first.indSt = 2;
    first.nChildren = children;
    first.childShown = childNo;
    first.spouseNo = spouseNumberOf(records, top, famIdx);
    people[2] = entry(spouse, TreeLabelRole::TopOrSpouse, 0);
    for (int32_t k = 1; k <= children; ++k)
        people[size_t(2 + k)] = entry(records.childOf(parents, k), TreeLabelRole::Child, k);

    // The kept families follow, each family's spouse and children moved
    // together and every head found at its new slot.
    std::vector<int32_t> newSlot(size_t(model.nTreeInd) + 1, 0);
    newSlot[size_t(slot)] = 2 + childNo;
    int32_t next = 3 + children;
    for (size_t i = 0; i < kept.size(); ++i) {
        TreeFamily moved = model.family(kept[i]);
        const int32_t oldStart = moved.indSt;
        moved.head = newSlot[size_t(moved.head)];
        moved.indSt = next;
        for (int32_t c = 0; c <= moved.nChildren; ++c) {
            people[size_t(next + c)] = model.person(oldStart + c);
            newSlot[size_t(oldStart + c)] = next + c;
        }
        next += 1 + moved.nChildren;
        families[i + 2] = moved;
    }

    model.treeInd = std::move(people);
    model.treeFam = std::move(families);
    model.nTreeInd = next - 1;
    model.nTreeFam = 1 + int32_t(kept.size());
    model.prepareTopPerson(top, measure);
    return 2 + childNo;
}

}  // namespace tav
