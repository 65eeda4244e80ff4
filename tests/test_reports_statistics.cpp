// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/DescendantCounting.h"
#include "calc/NameTallies.h"
#include "reports/ReportKinds.h"
#include "tests/TestSupport.h"

using namespace tav;
using tav::test::gedcomText;

namespace {

// John marries Mary (two children) and then Kate (one child). The file
// holds unknown and lower-case sexes, a qualified date, a death in the
// year of birth, names without given names or without a surname, and
// surnames and given names that differ only in case.
const QByteArray smallFamily = gedcomText({
    "0 HEAD",
    "0 @I1@ INDI\n1 NAME John William /Smith/\n1 SEX M\n1 BIRT\n2 DATE 1 JAN 1800\n1 DEAT\n"
    "2 DATE 1 JAN 1870\n1 FAMS @F1@\n1 FAMS @F2@",
    "0 @I2@ INDI\n1 NAME Mary /Brown/\n1 SEX F\n1 BIRT\n2 DATE 5 MAY 1805\n1 DEAT\n2 DATE 1830\n"
    "1 FAMS @F1@",
    "0 @I3@ INDI\n1 NAME Ann /SMITH/\n1 SEX F\n1 BIRT\n2 DATE ABT 1825\n1 FAMC @F1@",
    "0 @I4@ INDI\n1 NAME /smith/\n1 SEX M\n1 BIRT\n2 DATE 1828\n1 FAMC @F1@",
    "0 @I5@ INDI\n1 NAME Peter /Jones/\n1 SEX M\n1 BIRT\n2 DATE 3 MAR 1830\n1 DEAT\n"
    "2 DATE 1 APR 1830\n1 FAMC @F2@",
    "0 @I6@ INDI\n1 NAME Kate\n1 FAMS @F2@",
    "0 @I7@ INDI\n1 NAME john /Brown/\n1 SEX m\n1 BIRT\n2 DATE 1850",
    "0 @I8@ INDI\n1 NAME JOHN Paul /Wong/\n1 SEX M",
    "0 @F1@ FAM\n1 HUSB @I1@\n1 WIFE @I2@\n1 MARR\n2 DATE 1822\n1 CHIL @I3@\n1 CHIL @I4@",
    "0 @F2@ FAM\n1 HUSB @I1@\n1 WIFE @I6@\n1 MARR\n2 DATE ABT 1835\n1 CHIL @I5@",
    "0 @S1@ SOUR",
    "0 @N1@ NOTE",
    "0 TRLR",
});

}  // namespace

class ReportTest : public tav::test::SessionTest {
protected:
    QStringList report(ReportKind kind)
    {
        return reportText(session, kind).split(QStringLiteral("\r\n"));
    }
};

TEST_F(ReportTest, StatisticsOfASmallFileWorkedOutByHand)
{
    ASSERT_TRUE(load(smallFamily, "small.ged"));
    const QStringList lines = report(ReportKind::Basic);
    const QStringList expected = {
        "File: " + dir.filePath("small.ged"),
        "Individuals: 8",
        "Males: 4",  // "m" is not "M"
        "Females: 2",
        "Sex unknown: 2",
        "Families: 2",
        "Sources: 1",
        "Notes: 1",
        "",
        "Birth dates: 6 (5 readable)",  // ABT 1825 cannot be read
        "Death dates: 3 (3 readable)",
        "Marriage dates: 2 (1 readable)",
        "Earliest birth: 1 JAN 1800  SMITH, John William (1)",
        "Latest birth: 1850  BROWN, john (7)",
        "",
        // John 70, Mary 25 (1830 is mid-June); Peter's 0 years are left out.
        "Average age at death: 47.5 years (2 people)",
        "Oldest at death: 70 years  SMITH, John William (1)",
        "",
        "Average children per family: 1.50",
        "Largest family: 2 children  SMITH, John William & BROWN, Mary (1)",
        "",
        "People married more than once: 1",
        "Most marriages:",
        "2\tSMITH, John William (1)",
        "",
        "Surnames: 4 distinct",
        "Most common surnames:",
        "3\tSmith",
        "2\tBrown",
        "1\tJones",
        "1\tWong",
        "",
        "Most descendants: 3  SMITH, John William (1)",
        "Deepest line: 1 generation  SMITH, John William (1)",
    };
    EXPECT_EQ(lines, expected);
}

TEST_F(ReportTest, NameTalliesIgnoreCaseKeepTheFirstSpellingAndCountTheOverflow)
{
    ASSERT_TRUE(load(smallFamily, "small.ged"));
    const QStringList lines = report(ReportKind::GivenNames);
    const QStringList expected = {
        "File: " + dir.filePath("small.ged"),
        "",
        "Surnames: 4 distinct",
        "3\tSmith",
        "2\tBrown",
        "1\t(no surname)",
        "1\tJones",
        "1\tWong",
        "",
        "Given names of men: 2 distinct",
        "2\tJohn",
        "1\t(no given name)",
        "1\tPeter",
        "",
        "Given names of women: 2 distinct",
        "1\tAnn",
        "1\tMary",
    };
    EXPECT_EQ(lines, expected);
    EXPECT_EQ(reportTitle(ReportKind::GivenNames), QStringLiteral("Names"));

    // The tallies stay in the session until the next load clears them.
    const NameTally& surnames = session.nameTallies.surnames;
    EXPECT_EQ(surnames.count, 5);
    ASSERT_TRUE(load(gedcomText({"0 @I1@ INDI"})));
    EXPECT_EQ(session.nameTallies.surnames.count, 0);
    EXPECT_EQ(session.nameTallies.surnames.entries.size(), 1u) << "only the other names' slot";

    // 20000 people with surnames of their own: the table keeps 15000 and
    // counts the rest on one line.
    QByteArray file;
    for (int i = 1; i <= 20000; ++i)
        file += QStringLiteral("0 @I%1@ INDI\n1 NAME Ann /N%1/\n1 SEX F\n").arg(i).toLatin1();
    ASSERT_TRUE(load(file));
    const QStringList many = report(ReportKind::GivenNames);
    EXPECT_EQ(many.value(2), QStringLiteral("Surnames: 20000 distinct"));
    EXPECT_EQ(many.value(3), QStringLiteral("1\tN1"));
    EXPECT_EQ(many.value(15002), QStringLiteral("1\tN9999")) << "alphabetical among equals";
    EXPECT_EQ(many.value(15003), QStringLiteral("5000\t(other names)"));
    EXPECT_EQ(many.value(15005), QStringLiteral("Given names of men: 0 distinct"));
    EXPECT_EQ(many.value(15008), QStringLiteral("20000\tAnn"));
}

TEST(NameParts, SurnameRunsToTheSecondSlashAndGivenNameToTheFirstBlank)
{
    EXPECT_EQ(surnamePart(u"John /Adams/ II"), QStringLiteral("Adams"));
    EXPECT_EQ(surnamePart(u"John / van Dyke /"), QStringLiteral("van Dyke"));
    EXPECT_EQ(surnamePart(u"John /Adams"), QStringLiteral("Adams"));
    EXPECT_EQ(surnamePart(u"John Adams"), QString());
    EXPECT_EQ(surnamePart(u"Albert//"), QString());
    EXPECT_EQ(firstGivenName(u"  John William /Adams/"), QStringLiteral("John"));
    EXPECT_EQ(firstGivenName(u"John/Adams/"), QStringLiteral("John"));
    EXPECT_EQ(firstGivenName(u"/Adams/ John"), QString());
}

TEST_F(ReportTest, AnEmptyFileGivesEveryReportWithoutAFault)
{
    ASSERT_TRUE(load(gedcomText({"0 HEAD", "0 TRLR"}), "empty.ged"));
    for (const ReportKind kind : {ReportKind::Basic, ReportKind::GivenNames,
                                  ReportKind::ChildNaming, ReportKind::GedcomIntegrity}) {
        const QStringList lines = report(kind);
        EXPECT_EQ(lines.first(), "File: " + dir.filePath("empty.ged"))
            << reportTitle(kind).toStdString();
    }
    EXPECT_TRUE(messages.texts().isEmpty());
    const QStringList basic = report(ReportKind::Basic);
    EXPECT_TRUE(basic.contains(QStringLiteral("Earliest birth: none")));
    EXPECT_TRUE(basic.contains(QStringLiteral("Most descendants: no one has descendants")));
}
