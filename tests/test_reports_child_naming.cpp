// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/ReportKinds.h"
#include "reports/ReportLabels.h"
#include "tests/TestSupport.h"
#include "tests/TreeTestSupport.h"

using namespace tav;

class ChildNamingTest : public tav::test::SessionTest {};

// Thomas and Ellen (F1) have William and Robert; Hugh and Jane (F2) have
// Alice. William and Alice (F3) name all six children by the pattern.
// Robert and Mary (F4), whose parents are unknown, follow it in part, and
// have a child of unknown sex first. George and Rose (F5), without known
// parents, have a son George.
TEST_F(ChildNamingTest, RulesCountOnlyFamiliesWhereBothNamesAreKnown)
{
    ASSERT_TRUE(load(
        tav::test::familyFile({"Thomas /Ash/:M", "Ellen /Bell/:F", "Hugh /Cole/:M", "Jane /Dean/:F",
                               "William /Ash/:M", "Alice /Cole/:F", "Robert /Ash/:M",
                               "Mary /Fox/:F", "George /Gray/:M", "Rose /Hill/:F",
                               // F3's children, then F4's, then F5's
                               "Thomas:M", "Jane:F", "hugh James:M", "Ellen:F", "William:M",
                               "Alice Mary:F", "Sam:U", "Thomas:M", "Peter:M", "Susan:F", "Kate:F",
                               "Robert:M", "Mary:F", "George:M"},
                              {{1, 2, {5, 7}},
                               {3, 4, {6}},
                               {5, 6, {11, 12, 13, 14, 15, 16}},
                               {7, 8, {17, 18, 19, 20, 21, 22, 23}},
                               {9, 10, {24}}}),
        "naming.ged"));

    const QStringList lines = reportText(session, ReportKind::ChildNaming).split("\r\n");
    const QStringList expected = {
        "File: " + dir.filePath("naming.ged"),
        "",
        "1st son named after the father's father: 2 of 2 (100%)",
        "2nd son named after the mother's father: 1 of 1 (100%)",  // Mary's father is unknown
        "3rd son named after the father: 2 of 2 (100%)",
        "1st daughter named after the mother's mother: 1 of 1 (100%)",
        "2nd daughter named after the father's mother: 1 of 2 (50%)",  // Kate is not Ellen
        "3rd daughter named after the mother: 2 of 2 (100%)",
        "",
        // F1 0 of 2, F2 0 of 1, F3 William and Alice, F4 Robert and Mary of 7, F5 George.
        "Children who bear a parent's first given name: 5 of 17 (29%)",
        "",
        "Families that follow every rule that applies to them: 1",
        "  ASH, William & COLE, Alice (3)",
    };
    EXPECT_EQ(lines, expected);
    EXPECT_EQ(reportTitle(ReportKind::ChildNaming), QStringLiteral("Child naming"));
}

TEST(ShareText, WholePercentsRoundHalfToEven)
{
    EXPECT_EQ(shareText(1, 8), QStringLiteral("1 of 8 (12%)"));
    EXPECT_EQ(shareText(3, 8), QStringLiteral("3 of 8 (38%)"));
    EXPECT_EQ(shareText(0, 0), QStringLiteral("0 of 0 (0%)"));
}
