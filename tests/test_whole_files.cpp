// SPDX-License-Identifier: GPL-3.0-or-later
// Files as today's programs and people write them open whole: ids of any
// shape, any number of spouse families and children, several names, GEDCOM
// 7 notes and @VOID@, and one message for a whole load.
#include "calc/DescendantCounting.h"
#include "calc/WordSearch.h"
#include "tests/TestSupport.h"
#include "tests/TreeTestSupport.h"
#include "tree/TreeLabels.h"
#include "windowlogic/browser/RecordGrids.h"
#include "windowlogic/tree/TreeWindowLogic.h"

using namespace tav;
using tav::test::gedcomText;

namespace {

// Rows of a grid as "item|details|hidden" lines.
QStringList gridRows(const Grid& grid)
{
    QStringList lines;
    for (const auto& row : grid.rows)
        lines << (row[2].isEmpty() ? row[0] + '|' + row[1] : row[0] + '|' + row[1] + '|' + row[2]);
    return lines;
}

}  // namespace

class WholeFileTest : public tav::test::SessionTest {
protected:
    DescendantTotals totals(int32_t slot)
    {
        const RecordStore& r = session.records;
        DescendantCache& c = session.descendantCache;
        return {countDescendants(r, c, slot), countDescendantSpouses(r, c, slot),
                countGenerations(r, c, slot)};
    }
    // The individuals found by a search of all four kinds.
    std::vector<int32_t> found(const QString& text)
    {
        findByWords(session.records, session.findResults, text, false, SearchKinds{});
        const FindResults::Table& table = session.findResults[FindResults::Individuals];
        return std::vector<int32_t>(table.entries.begin() + 1,
                                    table.entries.begin() + 1 + table.count);
    }
};

// A large website numbers its people with twelve digits: every link holds,
// and the numbers shown are whole.
TEST_F(WholeFileTest, TwelveDigitIdsLinkAndRelate)
{
    ASSERT_TRUE(load(
        gedcomText({"0 HEAD", "0 @I152733931767@ INDI", "1 NAME Ann /Big/", "1 SEX F",
                    "1 FAMS @F152733931800@", "0 @I152733931768@ INDI", "1 NAME Bob /Big/",
                    "1 SEX M", "1 FAMS @F152733931800@", "0 @I152733931769@ INDI",
                    "1 NAME Cy /Big/", "1 SEX M", "1 FAMC @F152733931800@", "0 @F152733931800@ FAM",
                    "1 HUSB @I152733931768@", "1 WIFE @I152733931767@", "1 CHIL @I152733931769@",
                    "0 @S152733931900@ SOUR", "1 TITL Census"})));
    EXPECT_TRUE(messages.entries.empty());
    EXPECT_EQ(gridRows(familyGrid(session, 1)),
              QStringList({"Item|Details", "No.|1", "Husband|BIG, Bob|2", "Wife|BIG, Ann|1",
                           "Child 1|BIG, Cy|3", "Marr. date|", "Marr. place|", "Divorce?|No"}));
    EXPECT_EQ(sourceGrid(session, 1).caption, QStringLiteral("Source (S152733931900)"));
    EXPECT_EQ(found(QStringLiteral("I152733931769")), std::vector<int32_t>{3});
}

// Ids of any shape: a desktop program writes the kind after the number
// (@2I@, @181U@), hand-written files name records in words. Records are
// known by their tag, links by their whole text, and words that begin with
// a kind letter read no wrong kind.
TEST_F(WholeFileTest, IdsOfAnyShapeLinkExactly)
{
    ASSERT_TRUE(load(gedcomText(
        {"0 @Abraham_Simpson@ INDI\n1 NAME Abraham /Simpson/", "1 SEX M\n1 FAMS @FAMILY@",
         "0 @FATHER@ INDI\n1 NAME Homer /Simpson/\n1 SEX M", "1 FAMC @FAMILY@\n1 FAMS @F@",
         "0 @MOTHER@ INDI\n1 NAME Marge /Bouvier/\n1 SEX F\n1 FAMS @F@",
         "0 @CHILD1@ INDI\n1 NAME Bart /Simpson/\n1 SEX M\n1 FAMC @F@",
         "0 @CHILD10@ INDI\n1 NAME Lisa /Simpson/\n1 SEX F\n1 FAMC @F@",
         "0 @FAMILY@ FAM\n1 HUSB @Abraham_Simpson@\n1 CHIL @FATHER@",
         "0 @F@ FAM\n1 HUSB @FATHER@\n1 WIFE @MOTHER@", "1 CHIL @CHILD1@\n1 CHIL @CHILD10@",
         "0 @2I@ INDI\n1 NAME Dad /Doe/\n1 FAMS @181U@", "0 @181U@ FAM\n1 HUSB @2I@"})));
    EXPECT_EQ(session.records.individualCount(), 6) << "FATHER is a person, not a family";
    EXPECT_EQ(session.records.familyCount(), 3);
    EXPECT_EQ(fam(2).husband.slot, 2);
    EXPECT_EQ(child(2, 1), 4);
    EXPECT_EQ(child(2, 2), 5) << "CHILD10 is not CHILD1";
    EXPECT_EQ(totals(1).descendants, 3);
    EXPECT_EQ(ind(6).id, 2);
    EXPECT_EQ(fam(3).id, 181);
    EXPECT_EQ(fam(3).husband.slot, 6);
    EXPECT_EQ(spouseFamily(6, 1), 3);
}

// A company with its acquisitions and a family of 45 children: every spouse
// family and every child counts, shows and draws.
TEST_F(WholeFileTest, TwentyFiveSpouseFamiliesAndFortyFiveChildren)
{
    QByteArray text = "0 @P@ INDI\n1 NAME Pat /Many/\n1 SEX M\n";
    for (int f = 1; f <= 25; ++f)
        text += "1 FAMS @F" + QByteArray::number(f) + "@\n";
    for (int f = 1; f <= 25; ++f) {
        text += "0 @F" + QByteArray::number(f) + "@ FAM\n1 HUSB @P@\n";
        const int children = f == 1 ? 45 : 1;
        for (int c = 1; c <= children; ++c)
            text += "1 CHIL @C" + QByteArray::number(f) + "_" + QByteArray::number(c) + "@\n";
    }
    for (int f = 1; f <= 25; ++f)
        for (int c = 1; c <= (f == 1 ? 45 : 1); ++c)
            text += "0 @C" + QByteArray::number(f) + "_" + QByteArray::number(c) +
                    "@ INDI\n1 NAME C" + QByteArray::number(c) + " /Many/\n1 FAMC @F" +
                    QByteArray::number(f) + "@\n";
    ASSERT_TRUE(load(text));
    EXPECT_TRUE(messages.entries.empty()) << "no fault for the 11th family or the 21st child";

    const QStringList person = gridRows(individualGrid(session, 1));
    EXPECT_EQ(person.filter(QStringLiteral("Fams")).size(), 25);
    EXPECT_EQ(person.filter(QStringLiteral("Fams")).last(), QStringLiteral("Fams 25| 25"));
    const QStringList family = gridRows(familyGrid(session, 1));
    EXPECT_EQ(family.filter(QStringLiteral("Child")).size(), 45);
    EXPECT_EQ(family.filter(QStringLiteral("Child")).last(),
              QStringLiteral("Child 45|MANY, C45|46"));

    const DescendantTotals pat = totals(1);
    EXPECT_EQ(pat.descendants, 45 + 24);
    EXPECT_EQ(pat.spouses, 25);
    EXPECT_EQ(pat.generations, 1);

    // The tree shows the first family with all 45 children; Next spouse goes
    // through every other family and round to the first.
    session.curInd = 1;
    TreeWindowLogic tree(session, [](int) { return std::make_unique<test::StubMeasure>(); });
    tree.activate();
    EXPECT_EQ(tree.model().nTreeInd, 1 + 1 + 45);
    for (int next = 2; next <= 26; ++next) {
        tree.select(1);
        ASSERT_TRUE(tree.enabled(TreeCommand::NextSpouse));
        tree.run(TreeCommand::NextSpouse);
        const TreeFamily& shown = tree.model().family(1);
        EXPECT_EQ(shown.spouseNo, (next - 1) % 25 + 1);
        EXPECT_EQ(shown.famIdx, (next - 1) % 25 + 1);
        EXPECT_EQ(shown.nChildren, next == 26 ? 45 : 1);
    }
    EXPECT_TRUE(messages.entries.empty());
}

// The first NAME is the name everywhere; later ones are other names.
TEST_F(WholeFileTest, TheFirstNameIsTheNameAndLaterOnesAreAlsoKnownAs)
{
    ASSERT_TRUE(load(gedcomText({"0 @I1@ INDI", "1 NAME John William /Smith/", "1 NAME Jack //",
                                 "1 NAME Johann /Schmidt/", "1 SEX M", "1 FAMS @F1@", "0 @I2@ INDI",
                                 "1 NAME Mary /Smith/", "1 FAMC @F1@", "0 @F1@ FAM", "1 HUSB @I1@",
                                 "1 CHIL @I2@"})));
    session.settings.SurnamePosn = 2;
    const QStringList rows = gridRows(individualGrid(session, 1));
    EXPECT_EQ(rows.mid(1, 5),
              QStringList({"No.| 1", "Name|SMITH, John William", "Also known as|, Jack",
                           "Also known as|SCHMIDT, Johann", "Sex|M"}));
    EXPECT_EQ(found(QStringLiteral("Schmidt")), std::vector<int32_t>{1});
    EXPECT_EQ(treeLabel(session.records, 1, TreeLabelRole::TopOrSpouse, session.settings,
                        session.today()),
              QStringLiteral("SMITH, John W."));
}

// GEDCOM 7: SNOTE records and pointers read as notes; @VOID@ is a link the
// file wrote that names no record, and a CHIL @VOID@ still counts.
TEST_F(WholeFileTest, SharedNotesAndVoidLinks)
{
    ASSERT_TRUE(load(
        gedcomText({"0 HEAD", "1 GEDC", "2 VERS 7.0", "0 @I1@ INDI", "1 NAME Ada /Void/",
                    "1 SNOTE @N1@", "1 FAMC @VOID@", "1 FAMS @F1@", "0 @F1@ FAM", "1 HUSB @I1@",
                    "1 WIFE @VOID@", "1 CHIL @VOID@", "1 CHIL @I2@", "0 @I2@ INDI", "1 FAMC @F1@",
                    "0 @N1@ SNOTE A shared note", "1 CONT on two lines"})));
    EXPECT_TRUE(messages.entries.empty());
    EXPECT_TRUE(ind(1).hasChildFamily());
    EXPECT_EQ(childFamily(1), 0);
    EXPECT_EQ(fam(1).childCount, 2);
    EXPECT_TRUE(fam(1).wife.written());
    EXPECT_EQ(totals(1).descendants, 2) << "the void child counts as a child";
    EXPECT_EQ(gridRows(familyGrid(session, 1)).mid(3, 3),
              QStringList({"Wife|?|0", "Child 1|?|0", "Child 2|?|2"}));
    EXPECT_EQ(ind(1).note, QStringLiteral("@N1@")) << "the note row points to the shared note";
}

// However many faults a load meets, the user gets one box: at most 20 of
// them, then how many more.
TEST_F(WholeFileTest, ThirtyFaultsMakeOneMessage)
{
    QByteArray text = "0 @I1@ INDI\n";
    for (int k = 1; k <= 30; ++k)
        text += "1 FAMS F" + QByteArray::number(k) + "\n";
    ASSERT_TRUE(load(text));
    ASSERT_EQ(messages.entries.size(), 1u);
    const QStringList lines = messages.entries[0].text.split(QStringLiteral("\r\n"));
    ASSERT_EQ(lines.size(), 21);
    EXPECT_EQ(lines[0], QStringLiteral("Error no:  5 Invalid procedure call or argument"));
    EXPECT_EQ(lines[19], lines[0]);
    EXPECT_EQ(lines[20], QStringLiteral("... and 10 more."));
    EXPECT_EQ(messages.entries[0].kind, MessageKind::Error);
}
