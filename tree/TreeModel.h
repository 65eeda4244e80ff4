// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tree/TreeLabels.h"
#include "tree/TreeTables.h"

#include <QDate>
#include <functional>

namespace tav {

class DescendantCache;
class RecordStore;
class TextMeasure;
struct Settings;
struct TreeFlags;

// The tree view's tables and the operations that fill, clear and restore
// them: a top person, then one family per generation down a line of descent.
// It needs no display; the tree window and tav-cli share it.
//
// The tables hold 1000 persons and 200 families. A walk that would pass
// them raises SubscriptOutOfRange and leaves the tables as they were; so
// does any other fault inside a walk (a descendant line deeper than 100
// levels).
// Which of an individual's spouse families (from 1) a family is; 1 when it
// is none of them.
int32_t spouseNumberOf(const RecordStore& records, int32_t individual, int32_t famIdx);

class TreeModel : public TreeTables {
public:
    // The walks count descendants into `descendants`; `flags.prevViewSaved`
    // is the application's one flag for "a saved view exists"; the settings
    // give the labels' style; `today` dates the years of the labels.
    TreeModel(const RecordStore& records, DescendantCache& descendants, const Settings& settings,
              TreeFlags& flags, std::function<QDate()> today);

    const RecordStore& records() const { return records_; }
    DescendantCache& descendants() const { return descendants_; }
    const Settings& settings() const { return settings_; }
    bool prevViewSaved() const;

    // Resets the links of persons from `fromInd` and families from `fromFam`
    // to the ends of the tables (labels, geometry and spouse numbers stay).
    void clearArrays(int32_t fromInd, int32_t fromFam);

    // Person slot 1 becomes the individual, measured and placed as layout
    // places the top person.
    void prepareTopPerson(int32_t indIdx, const TextMeasure& measure);

    // Enters a family of the record store into family slot `walkFam`, its
    // spouse and children from person slot `nextInd` on (which it advances);
    // `childWanted` is marked as carrying the line when the family has it.
    void prepareFamily(int32_t famIdx, int32_t head, int32_t childWanted, int32_t spouseNo);

    // The three walks down from person slot `person` (1 for the top person;
    // otherwise child of family slot `famOfPerson`, or its spouse), starting
    // with the person's spouse family `spouseNo`. When that family is absent
    // the view shrinks to the top person alone.
    //
    // The eldest line: the first child whose own first family has children.
    void prepareDescendents(int32_t person, int32_t famOfPerson, int32_t spouseNo);
    // The child with most descendants, through its first spouse family.
    void prepareDescendents2(int32_t person, int32_t famOfPerson, int32_t spouseNo);
    // The child with most descendants, through its best spouse family;
    // `spouseNo` 0 starts with the person's best one.
    void prepareDescendents3(int32_t person, int32_t famOfPerson, int32_t spouseNo);

    // Keeps the view for "GoBack" (one level), and brings it back.
    void treeSavePrev();
    void treeGetPrev();

    // Runs a command that changes the view as one step: when it raises a
    // fault, the tables, the saved copy and the flag are as before it.
    void changeView(const std::function<void()>& change);

private:
    QString labelOf(int32_t individual, TreeLabelRole role) const;
    int32_t beginWalk(int32_t person, int32_t famOfPerson, int32_t spouseNo);
    void endWalk();
    void walkMostDescendants(int32_t person, int32_t famOfPerson, int32_t spouseNo,
                             bool bestSpouse);
    // Spouse family k of the individual in a person slot; 0 when absent.
    int32_t spouseFamilyOfSlot(int32_t slot, int k) const;

    const RecordStore& records_;
    DescendantCache& descendants_;
    const Settings& settings_;
    TreeFlags& flags_;
    std::function<QDate()> today_;
};

}  // namespace tav
