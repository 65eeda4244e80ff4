// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <cstdint>
#include <vector>

namespace tav {

// One box of the tree: a person of the record store (or an empty spouse
// place) with its label and the geometry that layout gives it.
struct TreePerson {
    int32_t indIdx = 0;      // individual slot; 0 for a family without that spouse
    QString label;           // the text in the box
    int32_t descendant = 0;  // 1 for the top person and every child entered
    int32_t childNo = 0;     // place among its family's children; 0 for spouses and the top
    int32_t x = 0;           // left edge, tree units
    int32_t y = 0;           // top edge
    int32_t width = 0;       // width of the label
    int32_t height = 0;      // the font's line height

    bool operator==(const TreePerson&) const = default;
};

// One family of the tree: entry g is the family of the g-th generation
// shown, headed by a person of an earlier family (or by the top person).
struct TreeFamily {
    int32_t famIdx = 0;      // family slot in the record store
    int32_t head = 0;        // person slot of the descendant whose family this is
    int32_t indSt = 0;       // person slot of the spouse; child k stands at indSt + k
    int32_t layout1 = 0;     // left edge of the children's row
    int32_t layout2 = 0;     // bottom edge of the head's box
    int32_t layout3 = 0;     // spread of the children's row
    int32_t layout4 = 0;     // the generation gap
    int32_t nChildren = 0;   // the family record's (stored) children
    int32_t childShown = 0;  // the child whose family follows; 0 when none carries the line
    int32_t spouseNo = 0;    // which of the head's spouse families this is, from 1

    bool operator==(const TreeFamily&) const = default;
};

// The two tables of one tree view, their counters and cursors, and the one
// saved copy behind "GoBack". Slots count from 1; slot 0 exists and is
// never filled.
struct TreeTables {
    static constexpr int32_t personCapacity = 1000;
    static constexpr int32_t familyCapacity = 200;
    // The furthest from 0 that layout puts a box, an edge or a row, and the
    // largest size it gives one, in tree units: a layout that would pass it
    // is an Overflow, and a view file that holds more is damaged. Sums of
    // two such values still fit 32 bits.
    static constexpr int32_t geometryLimit = 1000000000;

    TreeTables();

    std::vector<TreePerson> treeInd;  // slots 0 to personCapacity
    std::vector<TreeFamily> treeFam;  // slots 0 to familyCapacity
    int32_t nTreeInd = 0;
    int32_t nTreeFam = 0;

    // Cursors of a walk: the family slot being filled, the next free person slot.
    int32_t walkFam = 0;
    int32_t nextInd = 0;
    // The person the user last picked.
    int32_t selInd = 0;

    // The view as it was before the last command that changed it.
    std::vector<TreePerson> prevInd;
    std::vector<TreeFamily> prevFam;
    int32_t nPrevInd = 0;
    int32_t nPrevFam = 0;

    // The entry at a slot; a slot outside the table raises SubscriptOutOfRange.
    TreePerson& person(int32_t slot);
    const TreePerson& person(int32_t slot) const;
    TreeFamily& family(int32_t slot);
    const TreeFamily& family(int32_t slot) const;
};

}  // namespace tav
