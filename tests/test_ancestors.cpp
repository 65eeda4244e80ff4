// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/Ahnentafel.h"
#include "settings/Settings.h"
#include "tests/AncestorsFixtures.h"
#include "tests/TreeTestSupport.h"
#include "tree/AncestorsChart.h"

#include <map>

using namespace tav;

namespace {

// What a chart holds: each known place's individual, a repeat as minus the
// first number.
std::map<int32_t, int32_t> placesOf(const Ahnentafel& chart)
{
    std::map<int32_t, int32_t> places;
    for (const int32_t number : chart.places())
        places[number] = chart.firstNumberOf(number) != 0 ? -chart.firstNumberOf(number)
                                                          : chart.individualAt(number);
    return places;
}

}  // namespace

class AncestorsChartTest : public tav::test::SessionTest {};

TEST_F(AncestorsChartTest, NumbersEveryKnownForebearAndLeavesUnknownPlacesEmpty)
{
    ASSERT_TRUE(load(tav::test::fourGenerations()));
    const RecordStore& records = session.records;
    const Ahnentafel four(records, 1, 4);
    EXPECT_EQ(four.lastNumber(), 15);
    EXPECT_EQ(placesOf(four),
              (std::map<int32_t, int32_t>{{1, 1}, {2, 2}, {3, 3}, {4, 4}, {7, 5}, {8, 6}, {9, 7}}));
    EXPECT_EQ(four.individualAt(16), 0) << "beyond the fourth generation";
    EXPECT_EQ(four.distinctPeople(), 7);
    EXPECT_TRUE(four.continuesAt(4));
    EXPECT_FALSE(four.continuesAt(8)) << "the last generation shown";
    EXPECT_FALSE(four.continuesAt(5)) << "an empty place";

    EXPECT_EQ(Ahnentafel(records, 1, 2).places(), (std::vector<int32_t>{1, 2, 3}));
    // Generations are kept within 2 to 10; generation g holds 2^(g-1) to 2^g - 1.
    EXPECT_EQ(Ahnentafel(records, 1, 1).generations(), 2);
    EXPECT_EQ(Ahnentafel(records, 1, 99).lastNumber(), 1023);
    EXPECT_EQ(Ahnentafel::generationOf(1), 1);
    EXPECT_EQ(Ahnentafel::generationOf(15), 4);
    EXPECT_EQ(Ahnentafel::generationOf(16), 5);
    // A person without parents is a chart of one; no one is a chart of none.
    EXPECT_EQ(Ahnentafel(records, 8, 5).places(), std::vector<int32_t>{1});
    EXPECT_TRUE(Ahnentafel(records, 0, 5).places().empty());
    EXPECT_TRUE(Ahnentafel(records, 99, 5).places().empty());
}

TEST_F(AncestorsChartTest, CousinsWhoMarriedShareGrandparentsDrawnTwiceAndGoingOnOnce)
{
    ASSERT_TRUE(load(tav::test::cousinsWhoMarried()));
    const Ahnentafel chart(session.records, 9, 5);
    const std::map<int32_t, int32_t> places = {{1, 9}, {2, 6},   {3, 8},   {4, 3},
                                               {5, 5}, {6, 7},   {7, 4},   {8, 1},
                                               {9, 2}, {14, -8}, {15, -9}, {16, 10}};
    EXPECT_EQ(placesOf(chart), places);
    EXPECT_EQ(chart.individualAt(14), 1) << "Gus stands at 14 too";
    EXPECT_EQ(chart.individualAt(28), 0) << "his father is not repeated above 14";
    EXPECT_EQ(chart.forebearAt(28), 10) << "though the place is his";
    EXPECT_EQ(chart.forebearAt(29), 0);
    EXPECT_FALSE(chart.continuesAt(14));
    EXPECT_TRUE(chart.continuesAt(8));
    EXPECT_EQ(chart.repeatsOf(8), std::vector<int32_t>{14});
    EXPECT_EQ(chart.distinctPeople(), 10);

    // A person who is their own grandfather, by a broken file, ends too.
    ASSERT_TRUE(load(tav::test::familyFile({"A", "B"}, {{2, 0, {1}}, {1, 0, {2}}})));
    const Ahnentafel loop(session.records, 1, 10);
    EXPECT_EQ(placesOf(loop), (std::map<int32_t, int32_t>{{1, 1}, {2, 2}, {4, -1}}));
}

class AncestorsLayoutTest : public tav::test::SessionTest {
protected:
    TreeDrawing drawingOf(int32_t root, int generations)
    {
        return ancestorsDrawing(Ahnentafel(session.records, root, generations), session.records,
                                settings, measure, QDate(2026, 11, 21));
    }

    static const TreeBox& box(const TreeDrawing& drawing, int32_t number)
    {
        const TreeBox* found = drawing.box(number);
        EXPECT_NE(found, nullptr) << number;
        static const TreeBox none;
        return found ? *found : none;
    }

    tav::test::StubMeasure measure;  // 10 units a character, lines 16 high
    Settings settings;               // FontSize 2: columns 40 apart
};

// Boxes are 20 high (16 and 2 on each side), a couple 8 apart, the parents
// of different people 16 apart. Three full generations:
//   4 at 0, 5 at 28, so 2 at 14; 6 at 64, 7 at 92, so 3 at 78; 1 at 46.
TEST_F(AncestorsLayoutTest, EachChildStandsBetweenItsParentsInColumnsApart)
{
    ASSERT_TRUE(load(tav::test::familyFile({"Ray /Ash/", "Tom /Ash/", "Ann Lee /Birch/",
                                            "Ned /Ash/", "Eve /Cole/", "Bob /Birch/", "Flo /Dunn/"},
                                           {{2, 3, {1}}, {4, 5, {2}}, {6, 7, {3}}})));
    const TreeDrawing drawing = drawingOf(1, 3);
    ASSERT_EQ(drawing.boxes.size(), 7u);
    const std::map<int32_t, double> tops = {{1, 46}, {2, 14}, {3, 78}, {4, 0},
                                            {5, 28}, {6, 64}, {7, 92}};
    for (const auto& [number, top] : tops) {
        EXPECT_EQ(box(drawing, number).frame.top(), top) << number;
        EXPECT_EQ(box(drawing, number).frame.height(), 20) << number;
    }

    // Each column as wide as its widest label with the padding ("BIRCH, Ann
    // L.": 130 + 3 + 3), 40 apart; the root's at the left.
    EXPECT_EQ(box(drawing, 1).frame.left(), 0);
    EXPECT_EQ(box(drawing, 1).frame.width(), 86) << "ASH, Ray";
    EXPECT_EQ(box(drawing, 2).frame.left(), box(drawing, 1).frame.right() + 40);
    EXPECT_EQ(box(drawing, 3).frame.left(), box(drawing, 2).frame.left());
    EXPECT_EQ(box(drawing, 2).frame.width(), 136);
    EXPECT_EQ(box(drawing, 4).frame.left(), box(drawing, 2).frame.right() + 40);
    EXPECT_EQ(box(drawing, 2).label, "Tom") << "a father as the tree labels a child";
    EXPECT_EQ(box(drawing, 3).label, "BIRCH, Ann L.") << "a mother as the tree labels a spouse";
    EXPECT_EQ(box(drawing, 1).role, TreeBoxRole::Top);
    EXPECT_EQ(box(drawing, 6).role, TreeBoxRole::Child);
    EXPECT_EQ(box(drawing, 7).role, TreeBoxRole::Spouse);

    // The fork of Ray: his stub to a bar half way across the gap, the bar
    // from Tom's middle to Ann's, and on to each.
    const double bar = box(drawing, 1).frame.right() + 20.5;
    const auto hasLine = [&](QPointF a, QPointF b) {
        for (const TreeLine& line : drawing.lines)
            if ((line.line.p1() == a && line.line.p2() == b) ||
                (line.line.p1() == b && line.line.p2() == a))
                return true;
        return false;
    };
    EXPECT_TRUE(hasLine({box(drawing, 1).frame.right(), 56.5}, {bar, 56.5}));
    EXPECT_TRUE(hasLine({bar, 56.5}, {bar, 24.5}));
    EXPECT_TRUE(hasLine({bar, 56.5}, {bar, 88.5}));
    EXPECT_TRUE(hasLine({bar, 24.5}, {box(drawing, 2).frame.left(), 24.5}));
    EXPECT_EQ(drawing.lines.size(), 3u * 5u) << "five lines a fork";
    EXPECT_TRUE(drawing.bounds.contains(box(drawing, 7).frame));
}

// Ray's father Tom is known, his mother not; Tom's father Ned is known.
//   Ned at 0 and Tom's unknown mother's room at 28: Tom at 14; the place of
//   Ray's mother at 14 + 20 + 8 = 42: Ray at 28.
TEST_F(AncestorsLayoutTest, AnUnknownParentKeepsTheRoomOfOneBoxAndNoMore)
{
    ASSERT_TRUE(load(tav::test::familyFile({"Ray /Ash/", "Tom /Ash/", "Ned /Ash/"},
                                           {{2, 0, {1}}, {3, 0, {2}}})));
    const TreeDrawing drawing = drawingOf(1, 5);
    ASSERT_EQ(drawing.boxes.size(), 3u);
    EXPECT_EQ(box(drawing, 4).frame.top(), 0);
    EXPECT_EQ(box(drawing, 2).frame.top(), 14);
    EXPECT_EQ(box(drawing, 1).frame.top(), 28);
    EXPECT_EQ(drawing.lines.size(), 2u * 3u) << "a stub, the bar and one branch a fork";
}

TEST_F(AncestorsLayoutTest, ARepeatedAncestorCarriesItsTagWhereItsParentsWouldStand)
{
    ASSERT_TRUE(load(tav::test::cousinsWhoMarried()));
    settings.ViewMainLine = true;
    TreeDrawing drawing = drawingOf(9, 5);
    const TreeBox& again = box(drawing, 14);
    EXPECT_EQ(again.label, "Gus") << "labelled as at 8";
    EXPECT_EQ(again.reference, "= 8");
    EXPECT_EQ(box(drawing, 15).reference, "= 9");
    EXPECT_TRUE(box(drawing, 8).reference.isEmpty());
    EXPECT_EQ(again.referenceFrame.left(), again.frame.right() + 4);
    EXPECT_EQ(again.referenceFrame.width(), 30 + 6);
    EXPECT_LT(again.referenceFrame.right(), box(drawing, 16).frame.left()) << "within the gap";
    // Nothing in the next column stands beside the tag.
    for (const TreeBox& other : drawing.boxes)
        EXPECT_FALSE(other.frame.intersects(again.referenceFrame)) << other.slot;

    // The father's line is the main line: 1, 2, 4, 8, 16 and their links.
    for (const TreeBox& b : drawing.boxes)
        EXPECT_EQ(b.mainLine,
                  b.slot == 1 || b.slot == 2 || b.slot == 4 || b.slot == 8 || b.slot == 16)
            << b.slot;
    int mainLines = 0;
    for (const TreeLine& line : drawing.lines)
        mainLines += line.mainLine ? 1 : 0;
    EXPECT_EQ(mainLines, 4 * 3) << "stub, bar to the father, on to him; four times";

    selectAncestorBox(drawing, 5);
    EXPECT_TRUE(box(drawing, 5).selected);
    EXPECT_FALSE(box(drawing, 1).selected);
}

TEST_F(AncestorsLayoutTest, AFatherWithoutGivenNamesIsNamedBySurname)
{
    ASSERT_TRUE(load(tav::test::familyFile({"Ray /Ash/", "/Ash/", "Ann /Lee/"}, {{2, 3, {1}}})));
    const TreeDrawing drawing = drawingOf(1, 2);
    EXPECT_EQ(box(drawing, 2).label, "ASH,");
    settings.ViewDates = true;
    settings.ViewSurnames = true;
    EXPECT_EQ(drawingOf(1, 2).box(2)->label, "ASH,");
}
