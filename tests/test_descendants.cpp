// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GedcomLoading.h"
#include "calc/DescendantCounting.h"
#include "tests/TestSupport.h"

using namespace tav;
using tav::test::gedcomText;

namespace {

struct Totals {
    int32_t descendants, spouses, generations, largest;
    bool operator==(const Totals&) const = default;
};

void PrintTo(const Totals& t, std::ostream* os)
{
    *os << t.descendants << " descendants, " << t.spouses << " spouses, " << t.generations
        << " generations, family " << t.largest;
}

}  // namespace

class DescendantTest : public tav::test::SessionTest {
protected:
    Totals totals(int32_t slot)
    {
        const RecordStore& r = session.records;
        DescendantCache& c = session.descendantCache;
        return {countDescendants(r, c, slot), countDescendantSpouses(r, c, slot),
                countGenerations(r, c, slot), largestFamilySlot(r, c, slot)};
    }
    int32_t descendants(int32_t slot)
    {
        return countDescendants(session.records, session.descendantCache, slot);
    }
    bool cached(int32_t slot) const { return session.descendantCache.find(slot) != nullptr; }
};

// Pat and Sam have Xan and Yve; Xan's son Xid marries Yve's daughter Yla,
// so their children Zed and Zoe descend from Pat along two lines. Zed
// marries but has no children.
const QByteArray cousinMarriage = gedcomText({
    "0 @I1@ INDI",  "1 NAME Pat",  "1 FAMS @F1@", "0 @I2@ INDI", "1 NAME Sam",  "1 FAMS @F1@",
    "0 @I3@ INDI",  "1 NAME Xan",  "1 FAMC @F1@", "1 FAMS @F2@", "0 @I4@ INDI", "1 NAME Yve",
    "1 FAMC @F1@",  "1 FAMS @F3@", "0 @I5@ INDI", "1 NAME Xid",  "1 FAMC @F2@", "1 FAMS @F4@",
    "0 @I6@ INDI",  "1 NAME Yla",  "1 FAMC @F3@", "1 FAMS @F4@", "0 @I7@ INDI", "1 NAME Zed",
    "1 FAMC @F4@",  "1 FAMS @F5@", "0 @I8@ INDI", "1 NAME Zoe",  "1 FAMC @F4@", "0 @I9@ INDI",
    "1 NAME Alone", "0 @F1@ FAM",  "1 HUSB @I1@", "1 WIFE @I2@", "1 CHIL @I3@", "1 CHIL @I4@",
    "0 @F2@ FAM",   "1 HUSB @I3@", "1 CHIL @I5@", "0 @F3@ FAM",  "1 WIFE @I4@", "1 CHIL @I6@",
    "0 @F4@ FAM",   "1 HUSB @I5@", "1 WIFE @I6@", "1 CHIL @I7@", "1 CHIL @I8@", "0 @F5@ FAM",
    "1 HUSB @I7@",
});

TEST_F(DescendantTest, ADescendantOnTwoLinesCountsTwice)
{
    ASSERT_TRUE(load(cousinMarriage));
    // Xan, Yve; Xid; Yla; Zed and Zoe twice. Spouses: the marriages of Pat,
    // Xan, Yve, Xid, Yla and twice Zed's. Levels 1 to 3 have children.
    EXPECT_EQ(totals(1), (Totals{8, 7, 3, 1}));
    EXPECT_EQ(totals(5), (Totals{2, 2, 1, 1}));
    EXPECT_EQ(totals(7), (Totals{0, 1, 0, 0})) << "a marriage without children";
    EXPECT_EQ(totals(9), (Totals{0, 0, 0, 0}));
}

TEST_F(DescendantTest, EveryCompletedLineIsCachedAndReused)
{
    ASSERT_TRUE(load(cousinMarriage));
    descendants(1);
    for (int32_t slot : {1, 3, 4, 5, 6, 7, 8})
        EXPECT_TRUE(cached(slot)) << slot;
    EXPECT_FALSE(cached(2)) << "a spouse is no descendant";
    EXPECT_FALSE(cached(9));

    // A second question walks nothing: it answers from the cache.
    DescendantCache& cache = session.descendantCache;
    cache.store(1, {8, 7, 42});
    EXPECT_EQ(countGenerations(session.records, cache, 1), 42);
    // A new walk adds a counted child's cached totals instead of descending:
    // Xan is walked again and finds Xid (100) counted; Yve (3) is counted.
    const DescendantTotals yve = *cache.find(4);
    cache.clear();
    cache.store(4, yve);
    cache.store(5, {100, 0, 0});
    EXPECT_EQ(descendants(1), 2 + 1 + 100 + 3);

    ASSERT_TRUE(load(cousinMarriage));
    EXPECT_FALSE(cached(1)) << "a load clears the cache";
    EXPECT_EQ(descendants(1), 8);
}

TEST_F(DescendantTest, LargestFamilyPrefersTheFirstOfEqualScores)
{
    ASSERT_TRUE(load(
        gedcomText({"0 @I1@ INDI",  "1 FAMS @F1@",  "1 FAMS @F2@",  "0 @I2@ INDI",  "1 FAMS @F3@",
                    "1 FAMS @F4@",  "0 @I3@ INDI",  "1 FAMS @F5@",  "1 FAMS @F6@",  "0 @I10@ INDI",
                    "0 @I11@ INDI", "0 @I12@ INDI", "0 @I13@ INDI", "1 FAMS @F7@",  "0 @F1@ FAM",
                    "1 CHIL @I10@", "1 CHIL @I11@", "1 CHIL @I12@", "0 @F2@ FAM",   "1 CHIL @I10@",
                    "1 CHIL @I11@", "1 CHIL @I12@", "0 @F3@ FAM",   "1 CHIL @I10@", "1 CHIL @I11@",
                    "0 @F4@ FAM",   "1 CHIL @I10@", "1 CHIL @I11@", "1 CHIL @I12@", "0 @F5@ FAM",
                    "1 CHIL @I13@", "0 @F6@ FAM",   "1 CHIL @I10@", "1 CHIL @I11@", "1 CHIL @I12@",
                    "0 @F7@ FAM",   "1 CHIL @I10@", "1 CHIL @I11@", "1 CHIL @I12@"})));
    EXPECT_EQ(totals(1).largest, 1) << "3 children each, no grandchildren";
    EXPECT_EQ(totals(2).largest, 2);
    EXPECT_EQ(totals(3).largest, 1) << "one child with three descendants scores 1 + 3";
}

TEST_F(DescendantTest, LinesDeeperThanOneHundredLevelsFault)
{
    const auto chain = [](int people) {
        QByteArray text;
        for (int i = 1; i <= people; ++i) {
            text += "0 @I" + QByteArray::number(i) + "@ INDI\n";
            if (i < people)
                text += "1 FAMS @F" + QByteArray::number(i) + "@\n";
        }
        for (int i = 1; i < people; ++i)
            text += "0 @F" + QByteArray::number(i) + "@ FAM\n1 CHIL @I" +
                    QByteArray::number(i + 1) + "@\n";
        return text;
    };
    ASSERT_TRUE(load(chain(100)));
    EXPECT_EQ(totals(1), (Totals{99, 99, 99, 1}));
    ASSERT_TRUE(load(chain(101)));
    EXPECT_FALSE(session.guarded([&] { descendants(1); }));
    EXPECT_EQ(messages.texts(), QStringList{QStringLiteral("Error no:  9 Subscript out of range")});
    EXPECT_EQ(descendants(2), 99) << "lines the failed walk finished stay usable";
}

TEST_F(DescendantTest, Royal92TotalsCheckedByHand)
{
    TAV_REQUIRE_SHARED_FILE(path, "royal92.ged");
    ASSERT_TRUE(loadGedcom(session, path));
    // George VI (I32, F12): Elizabeth II (F14: Charles, Anne, Andrew, Edward)
    // and Margaret (F13: David, Sarah); Charles (F16), Anne (F15) and Andrew
    // (F53) have two children each, none of whom has a family.
    EXPECT_EQ(totals(32), (Totals{14, 6, 3, 1}));
}
