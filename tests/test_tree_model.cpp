// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/DescendantCounting.h"
#include "core/Fault.h"
#include "tests/TestSupport.h"
#include "tests/TreeTestSupport.h"
#include "tree/TreeModel.h"

#include <array>
#include <vector>

using namespace tav;
using tav::test::familyFile;
using tav::test::gedcomText;

namespace {

using tav::test::Families;
using tav::test::FamilyRow;
using tav::test::Persons;

// Adam and Eve (F1) have Cain, Abel and Seth; Adam and Lilith (F2) have
// Lulu and Ira. Cain's marriage to Awan (F3) is childless, Abel never
// marries, Seth and Azura (F4) have Enos, whose marriage to Noam (F5) is
// childless.
const QByteArray adamFile =
    familyFile({"Adam /Eden/:M", "Eve /Eden/:F", "Cain:M", "Abel:M", "Seth:M", "Awan /Nod/:F",
                "Azura /Nod/:F", "Enos:M", "Noam /Nod/:F", "Lilith:F", "Lulu", "Ira"},
               {{1, 2, {3, 4, 5}}, {1, 10, {11, 12}}, {3, 6, {}}, {5, 7, {8}}, {8, 9, {}}});

// Hana married Ivo (F1: Jan, who has Kit with Jo in F3), then Kai (F2: Lea
// and Mia, each with one child: F4 and F5).
const QByteArray hanaFile =
    familyFile({"Hana:F", "Ivo:M", "Kai:M", "Jan:M", "Lea:F", "Mia:F", "Jo:F", "Kit", "Ned:M",
                "Ola", "Max:M", "Pia"},
               {{2, 1, {4}}, {3, 1, {5, 6}}, {4, 7, {8}}, {9, 5, {10}}, {11, 6, {12}}});

}  // namespace

class TreeModelTest : public tav::test::TreeModelFixture {
protected:
    Persons persons() const { return tav::test::personRows(model); }
    Families families() const { return tav::test::familyRows(model); }

    QStringList labels() const
    {
        QStringList list;
        for (int32_t k = 1; k <= model.nTreeInd; ++k)
            list << model.person(k).label;
        return list;
    }
};

TEST_F(TreeModelTest, AWalkWithoutItsStartingFamilyShowsTheTopPersonAlone)
{
    ASSERT_TRUE(load(adamFile));
    top(4);  // Abel
    model.prepareDescendents(1, 0, 1);
    EXPECT_EQ(persons(), (Persons{{4, 0, 1}}));
    EXPECT_EQ(model.nTreeFam, 0);
    model.prepareDescendents3(1, 0, 0);
    EXPECT_EQ(model.nTreeInd, 1);

    // From a person lower down too: a walk from Abel shrinks Adam's view.
    top(1);
    model.prepareDescendents3(1, 0, 0);
    model.family(1).childShown = 2;
    model.prepareDescendents2(4, 1, 1);
    EXPECT_EQ(persons(), (Persons{{1, 0, 1}}));
    EXPECT_EQ(model.nTreeFam, 0);
}

TEST_F(TreeModelTest, TheEldestLineTakesTheFirstChildWhoseFamilyHasChildren)
{
    ASSERT_TRUE(load(adamFile));
    top(1);
    model.prepareDescendents(1, 0, 1);
    // Cain's marriage is childless and Abel has none: the line passes to
    // the younger Seth (child 3). Enos's childless marriage ends it, with
    // Noam shown.
    const Persons toNoam = {{1, 0, 1}, {2, 0, 0}, {3, 1, 1}, {4, 2, 1},
                            {5, 3, 1}, {7, 0, 0}, {8, 1, 1}, {9, 0, 0}};
    EXPECT_EQ(persons(), toNoam);
    EXPECT_EQ(families(), (Families{{1, 1, 2, 3, 3, 1}, {4, 5, 6, 1, 1, 1}, {5, 7, 8, 0, 0, 1}}));
    EXPECT_EQ(labels(), QStringList({"EDEN, Adam", "EDEN, Eve", "Cain", "Abel", "Seth",
                                     "NOD, Azura", "Enos", "NOD, Noam"}));

    // From Cain, marked as the line's child: his childless marriage follows
    // his family of birth. The line would go on from the spouse's place,
    // but Awan's first family is that same marriage: it is not entered twice.
    model.family(1).childShown = 1;
    model.prepareDescendents(3, 1, 1);
    EXPECT_EQ(persons(),
              (Persons{{1, 0, 1}, {2, 0, 0}, {3, 1, 1}, {4, 2, 1}, {5, 3, 1}, {6, 0, 0}}));
    EXPECT_EQ(families(), (Families{{1, 1, 2, 3, 1, 1}, {3, 3, 6, 0, 0, 1}}));
}

TEST_F(TreeModelTest, MostDescendantsWalksEndAtTheChosenChildWithoutSpouse)
{
    ASSERT_TRUE(load(adamFile));
    // Seth has one descendant, his brothers none; Enos's only marriage is
    // childless, so the line ends at Enos, without Noam.
    const Persons throughSeth = {{1, 0, 1}, {2, 0, 0}, {3, 1, 1}, {4, 2, 1},
                                 {5, 3, 1}, {7, 0, 0}, {8, 1, 1}};
    const Families throughSethFamilies = {{1, 1, 2, 3, 3, 1}, {4, 5, 6, 1, 1, 1}};
    for (const bool bestSpouse : {true, false}) {
        top(1);
        if (bestSpouse)
            model.prepareDescendents3(1, 0, 0);
        else
            model.prepareDescendents2(1, 0, 1);
        EXPECT_EQ(persons(), throughSeth) << bestSpouse;
        EXPECT_EQ(families(), throughSethFamilies) << bestSpouse;
    }

    // Lilith's children have no descendants: the first carries the line,
    // and the walk stops after that generation.
    top(1);
    model.prepareDescendents3(1, 0, 2);
    EXPECT_EQ(persons(), (Persons{{1, 0, 1}, {10, 0, 0}, {11, 1, 1}, {12, 2, 1}}));
    EXPECT_EQ(families(), (Families{{2, 1, 2, 2, 1, 2}}));

    // A childless starting family still names child 1 as the line's child.
    top(1);
    model.prepareDescendents3(1, 0, 0);
    model.family(1).childShown = 1;
    model.prepareDescendents3(3, 1, 1);
    EXPECT_EQ(families(), (Families{{1, 1, 2, 3, 1, 1}, {3, 3, 6, 0, 1, 1}}));
    EXPECT_EQ(model.nTreeInd, 6);
}

TEST_F(TreeModelTest, TiesGoToTheElderAndOnlyTheBestSpouseWalkRecordsItsSpouse)
{
    ASSERT_TRUE(load(hanaFile));
    // Hana's second family scores 2 + 1 against 1 + 1: the best-spouse walk
    // enters it first, as spouse 2. Lea and Mia tie with one descendant
    // each: Lea, the elder, carries the line.
    top(1);
    model.prepareDescendents3(1, 0, 0);
    EXPECT_EQ(persons(),
              (Persons{{1, 0, 1}, {3, 0, 0}, {5, 1, 1}, {6, 2, 1}, {9, 0, 0}, {10, 1, 1}}));
    EXPECT_EQ(families(), (Families{{2, 1, 2, 2, 1, 2}, {4, 3, 5, 1, 1, 1}}));

    // The first-spouse walk goes through Ivo and Jan.
    top(1);
    model.prepareDescendents2(1, 0, 1);
    EXPECT_EQ(persons(), (Persons{{1, 0, 1}, {2, 0, 0}, {4, 1, 1}, {7, 0, 0}, {8, 1, 1}}));
    EXPECT_EQ(families(), (Families{{1, 1, 2, 1, 1, 1}, {3, 3, 4, 1, 1, 1}}));

    // Started with the second spouse, the other two walks record spouse 1.
    for (const auto walk : {&TreeModel::prepareDescendents2, &TreeModel::prepareDescendents}) {
        top(1);
        (model.*walk)(1, 0, 2);
        EXPECT_EQ(families(), (Families{{2, 1, 2, 2, 1, 1}, {4, 3, 5, 1, 1, 1}}));
    }
}

TEST_F(TreeModelTest, AHeadWhoIsNotExactlyMaleTakesTheSpouseFromHusb)
{
    // Hal and Win have Kid; Win, the top, is listed as WIFE. Only "M" takes
    // the WIFE line, here naming Win herself.
    for (const char* sex : {"F", "U", "", "m", "M"}) {
        ASSERT_TRUE(load(familyFile({"Hal:M", QByteArray("Win:") + sex, "Kid"}, {{1, 2, {3}}})));
        top(2);
        model.prepareDescendents(1, 0, 1);
        EXPECT_EQ(persons(), (Persons{{2, 0, 1}, {*sex == 'M' ? 2 : 1, 0, 0}, {3, 1, 1}})) << sex;
    }
    ASSERT_TRUE(load(familyFile({"Win /Ash/", "Kid"}, {{0, 1, {2}}})));
    top(1);
    model.prepareDescendents(1, 0, 1);
    EXPECT_EQ(model.person(2).indIdx, 0) << "no SEX line: HUSB, which is not written";
    // A family that names no such spouse keeps the place, labelled "?".
    EXPECT_EQ(labels(), QStringList({"ASH, Win", "?", "Kid"}));
}

TEST_F(TreeModelTest, LabelsFollowTheRoleAndTheTreeSettings)
{
    // clang-format off
    ASSERT_TRUE(load(gedcomText({
        "0 @I1@ INDI", "1 NAME John William /Smith/", "1 SEX M", "1 BIRT", "2 DATE 1850",
            "1 DEAT", "2 DATE 3 MAR 1910", "1 FAMS @F1@",
        "0 @I2@ INDI", "1 NAME Ann Rose /Lee/", "1 BIRT", "2 DATE 1990", "1 FAMS @F1@",
        "0 @I3@ INDI", "1 NAME Tom Paul /Smith/", "1 FAMC @F1@",
        "0 @F1@ FAM", "1 HUSB @I1@", "1 WIFE @I2@", "1 CHIL @I3@"})));
    // clang-format on
    const auto build = [&] {
        top(1);
        model.prepareDescendents3(1, 0, 0);
        return labels();
    };
    EXPECT_EQ(build(), QStringList({"SMITH, John W.", "LEE, Ann R.", "Tom P."}));
    session.settings.ViewSurnames = true;
    session.settings.SurnameStyle = 5;
    session.settings.SurnamePosn = 1;
    EXPECT_EQ(build(), QStringList({"John W. Smith", "Ann R. Lee", "Tom P. Smith"}));
    // Years only where there are some to show: Ann may still be living.
    session.settings.ViewDates = true;
    EXPECT_EQ(build(),
              QStringList({"John W. Smith (b.1850  d.1910)", "Ann R. Lee", "Tom P. Smith"}));
}

TEST_F(TreeModelTest, ClearingTouchesOnlyWhatItSays)
{
    ASSERT_TRUE(load(adamFile));
    top(1);
    model.prepareDescendents(1, 0, 1);
    const TreeTables walked = model;

    model.clearArrays(1, 201);
    EXPECT_EQ(model.person(3),
              (TreePerson{0, QStringLiteral("Cain"), 0, 0, walked.person(3).x, walked.person(3).y,
                          walked.person(3).width, walked.person(3).height}))
        << "the name and the geometry stay";
    EXPECT_EQ(model.treeFam, walked.treeFam) << "a family slot above 200 clears no families";
    model.clearArrays(1001, 2);
    EXPECT_EQ(families()[1], (FamilyRow{0, 0, 0, 0, 0, 1})) << "the spouse number stays";
    EXPECT_EQ(families()[0], (FamilyRow{1, 1, 2, 3, 3, 1}));
}

TEST_F(TreeModelTest, TwoHundredFamiliesFitAndTheNextIsRefusedBeforeAnythingChanges)
{
    // A line of 202 people, each the only child of the one before. A
    // most-descendants walk fails first, on the line deeper than 100 levels.
    ASSERT_TRUE(load(tav::test::lineFile(202, ":M")));
    top(2);
    model.prepareDescendents(1, 0, 1);
    EXPECT_EQ(model.nTreeFam, 200);
    EXPECT_EQ(model.family(200), (TreeFamily{201, 399, 400, 0, 0, 0, 0, 1, 1, 1}));
    top(1);
    const TreeTables before = model;
    EXPECT_THROW(model.prepareDescendents(1, 0, 1), RuntimeFault);
    EXPECT_THROW(model.prepareDescendents3(1, 0, 0), RuntimeFault);
    EXPECT_EQ(model.treeInd, before.treeInd);
    EXPECT_EQ(model.treeFam, before.treeFam);
    EXPECT_EQ(model.nTreeInd, before.nTreeInd);
}

TEST_F(TreeModelTest, FamilyTreeFromTopStartsWithTheMostDescendants)
{
    ASSERT_TRUE(load(adamFile));
    EXPECT_EQ(individualWithMostDescendants(session.records, session.descendantCache), 1);
    // Wife and husband of one family tie: the lower slot wins.
    ASSERT_TRUE(load(familyFile({"Abe", "Bea", "Cy", "Di"}, {{3, 2, {4}}})));
    EXPECT_EQ(individualWithMostDescendants(session.records, session.descendantCache), 2);
    ASSERT_TRUE(load(familyFile({"Abe", "Bea"}, {})));
    EXPECT_EQ(individualWithMostDescendants(session.records, session.descendantCache), 1)
        << "nobody has any";
    ASSERT_TRUE(load(familyFile({}, {})));
    EXPECT_EQ(individualWithMostDescendants(session.records, session.descendantCache), 0);
}
