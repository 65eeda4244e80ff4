// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/DescendantCounting.h"
#include "reports/ReportKinds.h"
#include "tests/TestSupport.h"
#include "tests/TreeTestSupport.h"

using namespace tav;
using tav::test::gedcomText;
using tav::test::lineFile;

class IntegrityTest : public tav::test::SessionTest {
protected:
    // The report of the file without its "File:" line and the blank after it.
    QStringList problems(const QByteArray& file)
    {
        EXPECT_TRUE(load(file));
        return reportText(session, ReportKind::GedcomIntegrity).split("\r\n").mid(2);
    }
};

TEST_F(IntegrityTest, ACleanFileHasNoProblems)
{
    const QStringList lines = problems(gedcomText(
        {"0 @I1@ INDI",     "1 NAME Al /Ash/", "1 SEX M",     "1 BIRT",      "2 DATE 1 JAN 1800",
         "1 DEAT",          "2 DATE 1870",     "1 FAMS @F1@", "1 NOTE @N1@", "0 @I2@ INDI",
         "1 NAME Bo /Ash/", "1 BIRT",          "2 DATE 1830", "1 FAMC @F1@", "0 @F1@ FAM",
         "1 HUSB @I1@",     "1 MARR",          "2 DATE 1829", "1 CHIL @I2@", "0 @N1@ NOTE"}));
    EXPECT_EQ(lines, QStringList{"No problems found."});
    EXPECT_EQ(reportTitle(ReportKind::GedcomIntegrity), QStringLiteral("GEDCOM integrity"));
}

TEST_F(IntegrityTest, LinksToRecordsThatDoNotExist)
{
    const QStringList lines = problems(
        gedcomText({"0 @I1@ INDI", "1 NAME Al /Ash/", "1 FAMC @F8@", "1 FAMS @F9@", "1 NOTE @N5@",
                    "0 @F1@ FAM", "1 HUSB @I9@", "1 WIFE @I1@", "1 CHIL @I7@"}));
    EXPECT_EQ(lines, QStringList({
                         "Links to records that do not exist: 5",
                         "  ASH, Al (1) @I1@: FAMC @F8@ names no family",
                         "  ASH, Al (1) @I1@: FAMS @F9@ names no family",
                         "  ASH, Al (1) @I1@: NOTE @N5@ names no note",
                         "  ? & ASH, Al (1) @F1@: HUSB @I9@ names no individual",
                         "  ? & ASH, Al (1) @F1@: CHIL @I7@ names no individual",
                         "",
                         "Links that the other side does not return: 1",
                         "  ? & ASH, Al (1) @F1@: WIFE ASH, Al (1) @I1@, but that person has no "
                         "FAMS for this family",
                     }));

    // Cross-references are shown as the file writes them, text ids too; a
    // GEDCOM 7 @VOID@ names no record on purpose and is no problem.
    EXPECT_EQ(problems(gedcomText({"0 @FATHER@ INDI", "1 NAME Al", "1 FAMS @FAM_1@",
                                   "1 FAMS @NOWHERE@", "0 @CHILD@ INDI", "1 NAME Bo",
                                   "1 FAMC @FAM_1@", "0 @FAM_1@ FAM", "1 HUSB @FATHER@",
                                   "1 WIFE @VOID@", "1 CHIL @CHILD@", "1 CHIL @VOID@"})),
              QStringList({"Links to records that do not exist: 1",
                           "  , Al (1) @FATHER@: FAMS @NOWHERE@ names no family"}));
}

// Each side of a link that the other side does not answer; a child listed
// in two families whose last FAMC names the second.
TEST_F(IntegrityTest, LinksThatTheOtherSideDoesNotReturn)
{
    const QStringList lines = problems(
        gedcomText({"0 @I1@ INDI", "1 NAME Al", "1 FAMS @F1@", "0 @I2@ INDI", "1 NAME Bo",
                    "1 FAMC @F1@", "0 @I3@ INDI", "1 NAME Cy", "1 FAMC @F1@", "1 FAMC @F2@",
                    "0 @I4@ INDI", "1 NAME Di", "1 FAMS @F2@", "0 @F1@ FAM", "1 HUSB @I4@",
                    "1 CHIL @I3@", "0 @F2@ FAM", "1 WIFE @I4@", "1 CHIL @I3@"}));
    EXPECT_EQ(lines, QStringList({
                         "Links that the other side does not return: 4",
                         "  , Al (1) @I1@: FAMS @F1@, but that family names this person neither "
                         "HUSB nor WIFE",
                         "  , Bo (2) @I2@: FAMC @F1@, but that family has no CHIL for this person",
                         "  , Di & ? (1) @F1@: HUSB , Di (4) @I4@, but that person has no FAMS for "
                         "this family",
                         "  , Di & ? (1) @F1@: CHIL , Cy (3) @I3@, but that person's last FAMC "
                         "names @F2@",
                     }));
}

TEST_F(IntegrityTest, TablesAtCapacityAndNoListIsOverfull)
{
    QByteArray file = "0 @I1@ INDI\n1 NAME Al /Ash/\n";
    for (int f = 1; f <= 11; ++f)
        file += QStringLiteral("1 FAMS @F%1@\n").arg(f).toLatin1();
    for (int f = 1; f <= 11; ++f) {
        file += QStringLiteral("0 @F%1@ FAM\n1 HUSB @I1@\n").arg(f).toLatin1();
        for (int c = 0; f == 1 && c < 21; ++c)
            file += QStringLiteral("1 CHIL @I%1@\n").arg(100 + c).toLatin1();
    }
    for (int c = 0; c < 21; ++c)
        file += QStringLiteral("0 @I%1@ INDI\n1 FAMC @F1@\n").arg(100 + c).toLatin1();
    for (int n = 1; n <= 4001; ++n)
        file += QStringLiteral("0 @N%1@ NOTE\n").arg(n).toLatin1();
    for (int s = 1; s <= 4000; ++s)
        file += QStringLiteral("0 @S%1@ SOUR\n").arg(s).toLatin1();
    const QStringList lines = problems(file);
    // Eleven families and 21 children are kept whole: every link is returned.
    EXPECT_EQ(lines, QStringList({
                         "Tables at capacity: 2",
                         "  Sources: 4000, the most the program holds; the file has no more",
                         "  Notes: 4000, the most the program holds; the file has more, which "
                         "were not read",
                     }));
}

TEST_F(IntegrityTest, SharedIdsAndRecordsOutOfOrder)
{
    const QStringList lines = problems(gedcomText(
        {"0 @I5@ INDI", "1 NAME Al", "0 @I2@ INDI", "1 NAME Bo", "0 @I7@ INDI", "1 NAME Cy",
         "0 @I2@ INDI", "1 NAME Di", "0 @F1@ FAM", "0 @F3@ FAM", "0 @F2@ FAM"}));
    EXPECT_EQ(lines, QStringList({
                         "Records that share a cross-reference: 1",
                         "  @I2@: , Bo (2); , Di (4)",
                         "",
                         "Records out of ascending order: 3",
                         "  , Bo (2) @I2@ follows @I5@",
                         "  , Di (4) @I2@ follows @I7@",
                         "  ? & ? (3) @F2@ follows @F3@",
                     }));
}

TEST_F(IntegrityTest, ImpossibleDatesAndAges)
{
    const QStringList lines = problems(gedcomText({
        "0 @I1@ INDI\n1 NAME Al\n1 SEX M\n1 BIRT\n2 DATE 1 JAN 1800\n1 DEAT\n2 DATE 1 JAN 1845\n"
        "1 FAMS @F1@",
        "0 @I2@ INDI\n1 NAME Bo\n1 SEX F\n1 BIRT\n2 DATE 1 MAR 1790\n1 DEAT\n2 DATE 1850\n"
        "1 FAMS @F1@",
        "0 @I3@ INDI\n1 NAME Cy\n1 BIRT\n2 DATE 2 JAN 1811\n1 FAMC @F1@",
        "0 @I4@ INDI\n1 NAME Di\n1 BIRT\n2 DATE 1 MAR 1846\n1 FAMC @F1@",
        "0 @I5@ INDI\n1 NAME Ed\n1 BIRT\n2 DATE 1901\n1 DEAT\n2 DATE 1900",
        "0 @I6@ INDI\n1 NAME Fi\n1 BIRT\n2 DATE circa 1850\n1 DEAT\n2 DATE 1850/51",
        "0 @I7@ INDI\n1 NAME Gu\n1 BIRT\n2 DATE 1 JAN 1700\n1 DEAT\n2 DATE 1 JAN 1821\n"
        "1 FAMS @F2@",
        "0 @I8@ INDI\n1 NAME Ha\n1 BIRT\n2 DATE Abt 1430\n1 DEAT\n2 DATE 1850-1860",
        "0 @F1@ FAM\n1 HUSB @I1@\n1 WIFE @I2@\n1 MARR\n2 DATE 1799\n1 CHIL @I3@\n1 CHIL @I4@",
        "0 @F2@ FAM\n1 HUSB @I7@\n1 MARR\n2 DATE BET 1800 AND 1801",
        "0 @F3@ FAM\n1 MARR\n2 DATE 31 JUNE 1800",
    }));
    // Dual years, approximations and ranges are GEDCOM dates though they
    // cannot be computed with; only what is no GEDCOM date is listed.
    EXPECT_EQ(lines, QStringList({
                         "Dates that are not GEDCOM dates: 3",
                         "  , Fi (6) @I6@: birth date \"circa 1850\"",
                         "  , Ha (8) @I8@: death date \"1850-1860\"",
                         "  ? & ? (3) @F3@: marriage date \"31 JUNE 1800\"",
                         "",
                         "Death before birth: 1",
                         "  , Ed (5) @I5@: born 1901, died 1900",
                         "",
                         // Al is 11 at Cy's birth; Bo is 56 at Di's, who comes more than
                         // a year after Al's death.
                         "Children born before a parent was 12, after the mother was 55 or more "
                         "than a year after the father died: 3",
                         "  , Cy (3) @I3@: born 2 JAN 1811, when the father , Al (1) @I1@ was 11",
                         "  , Di (4) @I4@: born 1 MAR 1846, when the mother , Bo (2) @I2@ was 56",
                         "  , Di (4) @I4@: born 1 MAR 1846, more than a year after the father , Al "
                         "(1) @I1@ died (1 JAN 1845)",
                         "",
                         "Marriages before a spouse's birth: 1",
                         "  , Al & , Bo (1) @F1@: married 1799, before the husband , Al (1) @I1@ "
                         "was born (1 JAN 1800)",
                         "",
                         "Ages above 120: 1",
                         "  , Gu (7) @I7@: 121 years at death (born 1 JAN 1700, died 1 JAN 1821)",
                     }));
}

// Al and Bo are each other's father; Ed, Bo's mother, leads into their
// circle. Found in one pass, without a fault, in every report.
TEST_F(IntegrityTest, PeopleWhoAreTheirOwnAncestorAreFoundWithoutLooping)
{
    const QStringList lines = problems(gedcomText(
        {"0 @I1@ INDI", "1 NAME Al",   "1 FAMC @F2@", "1 FAMS @F1@", "0 @I2@ INDI", "1 NAME Bo",
         "1 FAMC @F1@", "1 FAMS @F2@", "0 @I3@ INDI", "1 NAME Cy",   "1 FAMC @F1@", "0 @I4@ INDI",
         "1 NAME Ed",   "1 FAMS @F1@", "0 @F1@ FAM",  "1 HUSB @I1@", "1 WIFE @I4@", "1 CHIL @I2@",
         "1 CHIL @I3@", "0 @F2@ FAM",  "1 HUSB @I2@", "1 CHIL @I1@"}));
    EXPECT_EQ(lines, QStringList({
                         "People who are their own ancestor: 2",
                         "  , Al (1) @I1@",
                         "  , Bo (2) @I2@",
                         "",
                         "Descendant lines deeper than 100 levels: 2",
                         "  , Al (1) @I1@: is among their own descendants",
                         "  , Ed (4) @I4@: the line runs into a circle of descent",
                     }));
    const QString basic = reportText(session, ReportKind::Basic);
    EXPECT_TRUE(basic.endsWith("Most descendants: none that can be counted\r\n"
                               "Deepest line: deeper than 100 levels  , Al (1)\r\n"
                               "Lines deeper than 100 levels: 2 (see GEDCOM integrity)"));
    EXPECT_TRUE(messages.texts().isEmpty()) << "no report faults";
}

TEST_F(IntegrityTest, ALineOf101GenerationsIsReportedCalmly)
{
    // 100 people are the most a descendant count can walk.
    EXPECT_EQ(problems(lineFile(100)), QStringList{"No problems found."});
    EXPECT_TRUE(
        reportText(session, ReportKind::Basic)
            .endsWith("Most descendants: 99  , P1 (1)\r\nDeepest line: 99 generations  , P1 (1)"));

    EXPECT_EQ(problems(lineFile(101)), QStringList({"Descendant lines deeper than 100 levels: 1",
                                                    "  , P1 (1) @I1@: 101 levels of descendants"}));
    EXPECT_TRUE(reportText(session, ReportKind::Basic)
                    .endsWith("Most descendants: 99  , P2 (2)\r\n"
                              "Deepest line: deeper than 100 levels  , P1 (1)\r\n"
                              "Lines deeper than 100 levels: 1 (see GEDCOM integrity)"));
    EXPECT_FALSE(session.descendantCache.find(1)) << "the deep line is not walked";
    EXPECT_TRUE(messages.texts().isEmpty());
}
