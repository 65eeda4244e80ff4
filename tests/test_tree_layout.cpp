// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/TreeTestSupport.h"
#include "tree/TreeLayout.h"
#include "tree/TreeTables.h"

#include <gtest/gtest.h>

using namespace tav;

namespace {

// x, y, width, height of a box.
using Box = std::array<int32_t, 4>;

}  // namespace

// Tables set up by hand (labels, heads, spouse places, child counts) and
// measured by a stub whose widths the tests choose.
class TreeLayoutTest : public ::testing::Test {
protected:
    void setLabel(int32_t slot, const QString& label, double width)
    {
        tree.person(slot).label = label;
        measure.widths[label] = width;
    }

    // Family f under `head`, its spouse at `indSt` and `children` after it,
    // whose labels measure `widths`.
    void setFamily(int32_t f, int32_t head, int32_t indSt, std::initializer_list<double> widths)
    {
        TreeFamily& family = tree.family(f);
        family.head = head;
        family.indSt = indSt;
        family.nChildren = int32_t(widths.size());
        setLabel(indSt, QStringLiteral("spouse %1").arg(f), 60);
        int32_t k = 0;
        for (const double width : widths) {
            ++k;
            setLabel(indSt + k, QStringLiteral("child %1.%2").arg(f).arg(k), width);
        }
        tree.nTreeFam = std::max(tree.nTreeFam, f);
        tree.nTreeInd = std::max(tree.nTreeInd, indSt + k);
    }

    Box box(int32_t slot) const
    {
        const TreePerson& p = tree.person(slot);
        return {p.x, p.y, p.width, p.height};
    }

    TreeTables tree;
    tav::test::StubMeasure measure;
};

TEST_F(TreeLayoutTest, TheTopPersonIsCentredOnZeroJustUnderTheToolbar)
{
    tree.nTreeInd = 1;
    // Halves go to the even integer: -3.5 to -4, -2.5 to -2.
    setLabel(1, QStringLiteral("Top"), 7);
    layoutTopPerson(tree, measure);
    EXPECT_EQ(box(1), (Box{-4, treeToolbarHeight, 7, 16}));
    setLabel(1, QStringLiteral("Top"), 5);
    layoutTopPerson(tree, measure);
    EXPECT_EQ(box(1), (Box{-2, treeToolbarHeight, 5, 16}));

    // Measured widths and the line height are rounded the same way.
    setLabel(1, QStringLiteral("Top"), 8.5);
    measure.height = 15.5;
    layoutTopPerson(tree, measure);
    EXPECT_EQ(box(1), (Box{-4, treeToolbarHeight, 8, 16}));
    measure.height = 14.5;
    layoutTopPerson(tree, measure);
    EXPECT_EQ(box(1).back(), 14);
}

TEST_F(TreeLayoutTest, ChildrenSpreadWithGapsOfTwentyTenOrSeven)
{
    setLabel(1, QStringLiteral("Top"), 100);  // x -50: centre 0, bottom 30 + 16
    setFamily(1, 1, 2, {400, 500});
    layoutManager(tree, measure, 80);
    const TreeFamily& family = tree.family(1);
    // 20 + 900 = 920 passes 800: gap 10, spread 910, left 0 - round(475 * 0.91).
    EXPECT_EQ(family.layout3, 910);
    EXPECT_EQ(family.layout1, -432);
    EXPECT_EQ(family.layout2, 46);
    // The spouse 0.35 of a line (5.6) below the head, centred on it.
    EXPECT_EQ(box(2), (Box{-30, 52, 60, 16}));
    // The row's top: the head's bottom + the generation gap - one line.
    EXPECT_EQ(box(3), (Box{-432, 110, 400, 16}));
    EXPECT_EQ(box(4), (Box{-22, 110, 500, 16}));

    // 20 + 990 = 1010 passes 1000 first: gap 7 (gap 10 would have fitted).
    setFamily(1, 1, 2, {495, 495});
    layoutManager(tree, measure, 80);
    EXPECT_EQ(family.layout3, 997);
    EXPECT_EQ(family.layout1, -474);  // round(473.575)
    EXPECT_EQ(box(4).front(), -474 + 495 + 7);

    // Narrow rows keep the gap of 20.
    setFamily(1, 1, 2, {100, 200});
    layoutManager(tree, measure, 80);
    EXPECT_EQ(family.layout3, 320);
    EXPECT_EQ(box(3).front(), -152);
    EXPECT_EQ(box(4).front(), -152 + 100 + 20);

    // The total is rounded at every step: 10.5 -> 10, 20.5 -> 20, 30.5 ->
    // 30 (not 31.5 -> 32), so the spread is 40 + 30.
    setFamily(1, 1, 2, {10.5, 10.5, 10.5});
    layoutManager(tree, measure, 80);
    EXPECT_EQ(family.layout3, 70);
    EXPECT_EQ(family.layout1, -33);
    EXPECT_EQ(box(5).front(), -33 + 2 * (10 + 20));

    // A single child stands centred under the head (-15.5 to the even
    // -16), not at the row's left edge.
    setFamily(1, 1, 2, {31});
    layoutManager(tree, measure, 80);
    EXPECT_EQ(box(3), (Box{-16, 110, 31, 16}));
    EXPECT_EQ(family.layout1, -15);  // round(14.725)
}

TEST_F(TreeLayoutTest, RowsLeanLeftTheFurtherRightTheirHeadStands)
{
    // A head at x 500, 50 wide: centre 525, so the row starts S left of it.
    setFamily(1, 1, 2, {300, 300});
    tree.person(1).x = 500;
    tree.person(1).width = 50;
    tree.person(1).y = 30;
    tree.person(1).height = 16;
    layoutFamily(tree, 1, measure, 80);
    EXPECT_EQ(tree.family(1).layout3, 620);
    EXPECT_EQ(tree.family(1).layout1, 525 - 620);

    // Without children the spread is 100: left = C - round((C + 475) / 10).
    setFamily(1, 1, 2, {});
    layoutFamily(tree, 1, measure, 80);
    EXPECT_EQ(tree.family(1).layout3, 100);
    EXPECT_EQ(tree.family(1).layout1, 425);
    tree.person(1).x = -25;  // centre 0: 47.5 rounds to the even 48
    layoutFamily(tree, 1, measure, 80);
    EXPECT_EQ(tree.family(1).layout1, -48);
}

TEST_F(TreeLayoutTest, EachGenerationLiesOneGapBelowTheLast)
{
    // Top, family 1 (spouse 2, children 3 and 4), family 2 under child 4
    // (spouse 5, child 6), with a line height of 10: the spouse's 3.5
    // rounds with the bottom's whole units, 40 + 3.5 to 44.
    measure.height = 10;
    setLabel(1, QStringLiteral("Top"), 100);
    setFamily(1, 1, 2, {100, 100});
    setFamily(2, 4, 5, {80});
    for (const int32_t gap : {60, 80, 100, 125}) {
        layoutManager(tree, measure, gap);
        const TreeFamily& first = tree.family(1);
        const TreeFamily& second = tree.family(2);
        EXPECT_EQ(first.layout2, 40) << gap;
        EXPECT_EQ(box(2)[1], 44) << gap;
        EXPECT_EQ(second.layout2, 40 + gap) << gap;
        EXPECT_EQ(box(6)[1], 40 + 2 * gap - 10) << gap;
        // The second family is centred on child 4: spread 80, so its single
        // child stands centred on that box whatever the row's left edge.
        const int32_t centre = box(4)[0] + 50;
        EXPECT_EQ(box(6)[0], centre - 40) << gap;
        EXPECT_EQ(box(5)[0], centre - 30) << gap;
    }
}
