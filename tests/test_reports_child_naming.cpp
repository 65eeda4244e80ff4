// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/ReportKinds.h"
#include "reports/ReportLabels.h"
#include "tests/TestSupport.h"

using namespace tav;

namespace {

// One individual record: name, sex, and the families as child and spouse.
QByteArray person(int id, const char* name, const char* sex, int famc = 0, int fams = 0)
{
    QByteArray text = QStringLiteral("0 @I%1@ INDI\n1 NAME %2\n").arg(id).arg(name).toUtf8();
    if (*sex)
        text += QByteArray("1 SEX ") + sex + '\n';
    if (famc)
        text += QStringLiteral("1 FAMC @F%1@\n").arg(famc).toLatin1();
    if (fams)
        text += QStringLiteral("1 FAMS @F%1@\n").arg(fams).toLatin1();
    return text;
}

QByteArray family(int id, int husband, int wife, std::initializer_list<int> children)
{
    QByteArray text = QStringLiteral("0 @F%1@ FAM\n1 HUSB @I%2@\n1 WIFE @I%3@\n")
                          .arg(id)
                          .arg(husband)
                          .arg(wife)
                          .toLatin1();
    for (const int child : children)
        text += QStringLiteral("1 CHIL @I%1@\n").arg(child).toLatin1();
    return text;
}

}  // namespace

class ChildNamingTest : public tav::test::SessionTest {};

// Thomas and Ellen (F1) have William and Robert; Hugh and Jane (F2) have
// Alice. William and Alice (F3) name all six children by the pattern.
// Robert and Mary (F4), whose parents are unknown, follow it in part, and
// have a child of unknown sex first. George and Rose (F5), without known
// parents, have a son George.
TEST_F(ChildNamingTest, RulesCountOnlyFamiliesWhereBothNamesAreKnown)
{
    QByteArray file = person(1, "Thomas /Ash/", "M", 0, 1) + person(2, "Ellen /Bell/", "F", 0, 1) +
                      person(3, "Hugh /Cole/", "M", 0, 2) + person(4, "Jane /Dean/", "F", 0, 2) +
                      person(5, "William /Ash/", "M", 1, 3) + person(6, "Alice /Cole/", "F", 2, 3) +
                      person(7, "Robert /Ash/", "M", 1, 4) + person(8, "Mary /Fox/", "F", 0, 4) +
                      person(9, "George /Gray/", "M", 0, 5) + person(10, "Rose /Hill/", "F", 0, 5);
    const char* const f3[] = {"Thomas", "Jane", "hugh James", "Ellen", "William", "Alice Mary"};
    const char* const f3sex[] = {"M", "F", "M", "F", "M", "F"};
    for (int k = 0; k < 6; ++k)
        file += person(11 + k, f3[k], f3sex[k], 3);
    const char* const f4[] = {"Sam", "Thomas", "Peter", "Susan", "Kate", "Robert", "Mary"};
    const char* const f4sex[] = {"U", "M", "M", "F", "F", "M", "F"};
    for (int k = 0; k < 7; ++k)
        file += person(17 + k, f4[k], f4sex[k], 4);
    file += person(24, "George", "M", 5);
    file += family(1, 1, 2, {5, 7}) + family(2, 3, 4, {6}) +
            family(3, 5, 6, {11, 12, 13, 14, 15, 16}) +
            family(4, 7, 8, {17, 18, 19, 20, 21, 22, 23}) + family(5, 9, 10, {24});
    ASSERT_TRUE(load(file, "naming.ged"));

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
