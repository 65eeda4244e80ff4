// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/TreeModel.h"

#include "app/Session.h"
#include "calc/DescendantCounting.h"
#include "core/Fault.h"
#include "core/RecordStore.h"
#include "tree/TreeLayout.h"

#include <algorithm>

namespace tav {

namespace {

// Runs a change of the tables; when it raises a fault the tables are put
// back as they were, so nothing half-built is ever shown.
template <typename Change>
void keepTablesOnFault(TreeTables& tables, Change&& change)
{
    TreeTables before = tables;
    try {
        change();
    } catch (...) {
        tables = std::move(before);
        throw;
    }
}

bool hasChildren(const RecordStore& records, int32_t family)
{
    return family != 0 && records.family(family).childCount > 0;
}

}  // namespace

int32_t spouseNumberOf(const RecordStore& records, int32_t individual, int32_t famIdx)
{
    const Individual& person = records.individual(individual);
    for (int k = 1; k <= person.spouseFamilyCount; ++k) {
        if (records.spouseFamilyOf(person, k) == famIdx)
            return k;
    }
    return 1;
}

TreeModel::TreeModel(const RecordStore& records, DescendantCache& descendants,
                     const Settings& settings, TreeFlags& flags, std::function<QDate()> today)
    : records_(records), descendants_(descendants), settings_(settings), flags_(flags),
      today_(std::move(today))
{}

bool TreeModel::prevViewSaved() const { return flags_.prevViewSaved; }

QString TreeModel::labelOf(int32_t individual, TreeLabelRole role) const
{
    return treeLabel(records_, individual, role, settings_, today_ ? today_() : QDate());
}

int32_t TreeModel::spouseFamilyOfSlot(int32_t slot, int k) const
{
    return records_.spouseFamilyOf(records_.individual(person(slot).indIdx), k);
}

void TreeModel::clearArrays(int32_t fromInd, int32_t fromFam)
{
    if (fromInd < 0 || fromFam < 0)
        raiseFault(RuntimeFault::SubscriptOutOfRange);
    for (int32_t k = fromInd; k <= personCapacity; ++k) {
        TreePerson& entry = treeInd[size_t(k)];
        entry.indIdx = 0;
        entry.descendant = 0;
        entry.childNo = 0;
    }
    for (int32_t k = fromFam; k <= familyCapacity; ++k) {
        TreeFamily& entry = treeFam[size_t(k)];
        entry.famIdx = 0;
        entry.head = 0;
        entry.indSt = 0;
        entry.nChildren = 0;
        entry.childShown = 0;
    }
}

void TreeModel::prepareTopPerson(int32_t indIdx, const TextMeasure& measure)
{
    TreePerson& top = person(1);
    top.indIdx = indIdx;
    top.label = labelOf(indIdx, TreeLabelRole::TopOrSpouse);
    top.descendant = 1;
    layoutTopPerson(*this, measure);
}

void TreeModel::prepareFamily(int32_t famIdx, int32_t head, int32_t childWanted, int32_t spouseNo)
{
    const Family& record = records_.family(famIdx);
    const int32_t n = record.childCount;
    // The family takes its spouse's slot and one per child; check the room
    // first so that nothing is written when it does not fit.
    TreeFamily& entry = family(walkFam);
    if (nextInd < 1 || int64_t(nextInd) + n > personCapacity)
        raiseFault(RuntimeFault::SubscriptOutOfRange);

    entry.famIdx = famIdx;
    entry.head = head;
    entry.indSt = nextInd;
    entry.nChildren = n;
    entry.childShown = 0;
    entry.spouseNo = spouseNo;

    // A man's spouse is the wife; anyone else's (female, unknown, empty) the husband.
    const bool headIsMale = records_.individual(person(head).indIdx).sex == QLatin1String("M");
    const int32_t spouseIdx = headIsMale ? records_.wifeOf(record) : records_.husbandOf(record);
    TreePerson& spouse = treeInd[size_t(nextInd)];
    spouse.indIdx = spouseIdx;
    spouse.label = labelOf(spouseIdx, TreeLabelRole::TopOrSpouse);
    spouse.childNo = 0;
    ++nextInd;

    for (int32_t k = 1; k <= n; ++k) {
        TreePerson& child = treeInd[size_t(nextInd)];
        child.indIdx = records_.childOf(record, k);
        child.label = labelOf(child.indIdx, TreeLabelRole::Child);
        child.childNo = k;
        child.descendant = 1;
        if (k == childWanted)
            entry.childShown = k;
        ++nextInd;
    }
}

int32_t TreeModel::beginWalk(int32_t person, int32_t famOfPerson, int32_t spouseNo)
{
    const int32_t start = spouseFamilyOfSlot(person, spouseNo);
    if (start == 0) {
        // Whatever the starting person, the view shrinks to the top person.
        nTreeFam = 0;
        nTreeInd = 1;
        return 0;
    }
    if (person == 1) {
        nextInd = 2;
        walkFam = 1;
    } else {
        // Everything after the starting person's own family is walked anew.
        walkFam = famOfPerson + 1;
        const int32_t childNo = this->person(person).childNo;
        nextInd =
            childNo != 0 ? person + (family(famOfPerson).nChildren - childNo) + 1 : person + 1;
    }
    return start;
}

void TreeModel::endWalk()
{
    nTreeFam = walkFam - 1;
    nTreeInd = nextInd - 1;
}

void TreeModel::prepareDescendents(int32_t person, int32_t famOfPerson, int32_t spouseNo)
{
    keepTablesOnFault(*this, [&] {
        int32_t next = beginWalk(person, famOfPerson, spouseNo);
        if (next == 0)
            return;
        int32_t head = person;
        for (;;) {
            // Every family of this line counts as its head's first.
            prepareFamily(next, head, 1, 1);
            TreeFamily& entered = family(walkFam);
            const int32_t enteredIdx = entered.famIdx;
            head = entered.indSt + entered.childShown;
            next = spouseFamilyOfSlot(head, 1);
            if (!hasChildren(records_, next)) {
                // The line moves to the first younger sibling whose first
                // family has children; an elder one is never taken.
                for (int32_t j = 1; j <= entered.nChildren - entered.childShown; ++j) {
                    const int32_t siblings = spouseFamilyOfSlot(head + j, 1);
                    if (hasChildren(records_, siblings)) {
                        head += j;
                        entered.childShown += j;
                        next = siblings;
                        break;
                    }
                }
            }
            ++walkFam;
            if (next == 0)
                break;
            if (!hasChildren(records_, next)) {
                // A childless marriage ends the line with its spouse shown.
                if (next != enteredIdx) {
                    prepareFamily(next, head, 1, 1);
                    ++walkFam;
                }
                break;
            }
        }
        endWalk();
    });
}

void TreeModel::prepareDescendents2(int32_t person, int32_t famOfPerson, int32_t spouseNo)
{
    walkMostDescendants(person, famOfPerson, spouseNo, false);
}

void TreeModel::prepareDescendents3(int32_t person, int32_t famOfPerson, int32_t spouseNo)
{
    walkMostDescendants(person, famOfPerson, spouseNo, true);
}

void TreeModel::walkMostDescendants(int32_t person, int32_t famOfPerson, int32_t spouseNo,
                                    bool bestSpouse)
{
    keepTablesOnFault(*this, [&] {
        if (bestSpouse && spouseNo == 0)
            spouseNo = largestFamilySlot(records_, descendants_, this->person(person).indIdx);
        int32_t next = beginWalk(person, famOfPerson, spouseNo);
        if (next == 0)
            return;
        clearArrays(nextInd, walkFam);
        int32_t head = person;
        for (;;) {
            prepareFamily(next, head, 1, bestSpouse ? spouseNo : 1);
            TreeFamily& entered = family(walkFam);
            // The child with most descendants carries the line; a later
            // child only with strictly more, so the elder wins a tie, and
            // the first when none has any.
            int32_t winner = 1;
            int32_t most = -1;
            for (int32_t k = 1; k <= entered.nChildren; ++k) {
                const int32_t count = countDescendants(records_, descendants_,
                                                       this->person(entered.indSt + k).indIdx);
                if (count > most) {
                    most = count;
                    winner = k;
                }
            }
            entered.childShown = winner;
            head = entered.indSt + winner;
            if (bestSpouse)
                spouseNo = largestFamilySlot(records_, descendants_, this->person(head).indIdx);
            next = spouseFamilyOfSlot(head, bestSpouse ? spouseNo : 1);
            ++walkFam;
            // The line ends with the chosen child, without a spouse, when
            // that family is absent or childless.
            if (!hasChildren(records_, next))
                break;
        }
        endWalk();
    });
}

void TreeModel::treeSavePrev()
{
    // Checked access first: the counts always lie within the tables.
    person(nTreeInd);
    family(nTreeFam);
    std::copy_n(treeInd.begin() + 1, nTreeInd, prevInd.begin() + 1);
    std::copy_n(treeFam.begin() + 1, nTreeFam, prevFam.begin() + 1);
    nPrevInd = nTreeInd;
    nPrevFam = nTreeFam;
    flags_.prevViewSaved = true;
}

void TreeModel::treeGetPrev()
{
    nTreeInd = nPrevInd;
    nTreeFam = nPrevFam;
    std::copy_n(prevInd.begin() + 1, nPrevInd, treeInd.begin() + 1);
    std::copy_n(prevFam.begin() + 1, nPrevFam, treeFam.begin() + 1);
}

void TreeModel::changeView(const std::function<void()>& change)
{
    const bool saved = flags_.prevViewSaved;
    try {
        keepTablesOnFault(*this, change);
    } catch (...) {
        flags_.prevViewSaved = saved;
        throw;
    }
}

}  // namespace tav
