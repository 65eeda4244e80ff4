// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/TestSupport.h"
#include "tests/TreeTestSupport.h"
#include "tree/DescendantTriangle.h"
#include "tree/TreeViewFile.h"
#include "windowlogic/tree/TreeWindowLogic.h"

#include <QDir>
#include <QFile>
#include <vector>

using namespace tav;
using tav::test::familyFile;
using tav::test::FileFamily;

namespace {

using tav::test::Families;
using tav::test::Persons;

// Gus and Gina (F1) have Dan and Uma. Dan married Ann (F2: Kim, who has Pam
// with Ola in F5), Bea (F3: Lou, and Max, who has Val and Wes with Tia in
// F7) and Cat (F4: Ned). Uma and Rex (F6) have Sam (F8 with Xia: Yul) and
// Tom (F9 with Zoe: Ada and Bob).
//
// Descendants: Max 2, Kim 1, Sam 1, Tom 2, Uma 5, Dan 7, Gus 14. Dan's
// best family is the second (2 + Max's 2).
const QByteArray gusFile =
    familyFile({"Gus /Gray/:M",  "Gina /Gray/:F", "Dan /Gray/:M", "Uma /Gray/:F", "Ann /Ash/:F",
                "Bea /Birch/:F", "Cat /Cole/:F",  "Kim /Gray/:F", "Lou /Gray/:M", "Max /Gray/:M",
                "Ned /Gray/:M",  "Ola /Oak/:M",   "Pam /Oak/:F",  "Rex /Reed/:M", "Sam /Reed/:M",
                "Tia /Teak/:F",  "Val /Gray/:M",  "Wes /Gray/:M", "Tom /Reed/:M", "Xia /Yew/:F",
                "Yul /Reed/:M",  "Zoe /Zeal/:F",  "Ada /Reed/:F", "Bob /Reed/:M"},
               {{1, 2, {3, 4}},
                {3, 5, {8}},
                {3, 6, {9, 10}},
                {3, 7, {11}},
                {12, 8, {13}},
                {14, 4, {15, 19}},
                {10, 16, {17, 18}},
                {15, 20, {21}},
                {19, 22, {23, 24}}});

// The tree of Gus, as the window first builds it: Dan carries the line
// through his best family (Bea), then Max, then Val (a tie of none).
const Persons gusPersons = {{1, 0, 1}, {2, 0, 0},  {3, 1, 1},  {4, 2, 1},  {6, 0, 0},
                            {9, 1, 1}, {10, 2, 1}, {16, 0, 0}, {17, 1, 1}, {18, 2, 1}};
const Families gusFamilies = {{1, 1, 2, 2, 1, 1}, {3, 3, 5, 2, 2, 2}, {7, 7, 8, 2, 1, 1}};

// The tree of Dan: the same lower part, from slot 1.
const Persons danPersons = {{3, 0, 1},  {6, 0, 0},  {9, 1, 1}, {10, 2, 1},
                            {16, 0, 0}, {17, 1, 1}, {18, 2, 1}};
const Families danFamilies = {{3, 1, 2, 2, 2, 2}, {7, 4, 5, 2, 1, 1}};

// Gus's tree with Uma, his second child, carrying the line, through Tom
// (2 descendants against Sam's 1).
const Persons umaPersons = {{1, 0, 1},  {2, 0, 0},  {3, 1, 1},  {4, 2, 1},  {14, 0, 0},
                            {15, 1, 1}, {19, 2, 1}, {22, 0, 0}, {23, 1, 1}, {24, 2, 1}};
const Families umaFamilies = {{1, 1, 2, 2, 2, 1}, {6, 4, 5, 2, 2, 1}, {9, 7, 8, 2, 1, 1}};

}  // namespace

class TreeWindowLogicTest : public tav::test::SessionTest {
protected:
    TreeWindowLogicTest()
    {
        QDir::setCurrent(dir.path());  // temp.gds lies in the test's own folder
    }

    // A new window showing the tree of an individual.
    TreeWindowLogic& open(int32_t individual)
    {
        session.curInd = individual;
        session.tree.treeBuilt = false;
        logic = std::make_unique<TreeWindowLogic>(
            session, [](int) { return std::make_unique<tav::test::StubMeasure>(); });
        logic->activate();
        return *logic;
    }

    // Selects the box of an individual and runs a command on it.
    void runOn(int32_t individual, TreeCommand command)
    {
        logic->select(slotOf(individual));
        ASSERT_EQ(individualSelected(), individual);
        ASSERT_TRUE(logic->enabled(command)) << treeCommandText(command).toStdString();
        logic->run(command);
    }

    int32_t slotOf(int32_t individual) const
    {
        for (int32_t k = 1; k <= model().nTreeInd; ++k)
            if (model().person(k).indIdx == individual)
                return k;
        return 0;
    }
    int32_t individualSelected() const { return model().person(logic->selected()).indIdx; }
    void expectDisabledOn(std::initializer_list<int32_t> individuals, TreeCommand command)
    {
        for (const int32_t individual : individuals) {
            logic->select(slotOf(individual));
            EXPECT_FALSE(logic->enabled(command)) << individual;
        }
    }

    const TreeModel& model() const { return logic->model(); }
    Persons persons() const { return tav::test::personRows(model()); }
    Families families() const { return tav::test::familyRows(model()); }
    // GoBack gives the view before the last command, once.
    void expectGoBackTo(const Persons& before, const Families& beforeFamilies)
    {
        ASSERT_TRUE(logic->enabled(TreeCommand::GoBack));
        logic->run(TreeCommand::GoBack);
        EXPECT_EQ(persons(), before);
        EXPECT_EQ(families(), beforeFamilies);
        EXPECT_FALSE(logic->enabled(TreeCommand::GoBack)) << "one level only";
    }

    std::unique_ptr<TreeWindowLogic> logic;
};

TEST_F(TreeWindowLogicTest, TheFirstActivationBuildsTheTreeOfTheCurrentIndividual)
{
    ASSERT_TRUE(load(gusFile));
    session.tree.prevViewSaved = true;
    open(1);
    EXPECT_TRUE(session.tree.treeBuilt);
    EXPECT_FALSE(logic->enabled(TreeCommand::GoBack)) << "nothing kept when the window opens";
    EXPECT_EQ(persons(), gusPersons);
    EXPECT_EQ(families(), gusFamilies);
    EXPECT_EQ(logic->caption(), QStringLiteral("Family tree - GRAY, Gus"));
    EXPECT_EQ(logic->statusText(), QStringLiteral("GRAY, Gus (1)"));
    EXPECT_EQ(logic->toolTip(1), QStringLiteral("GRAY, Gus\nIndividual 1\nDescendants: 14"));
    EXPECT_FALSE(logic->activate()) << "a later activation changes nothing";

    // Asked again, the open window builds anew and keeps the old view for GoBack.
    session.curInd = 3;
    session.tree.treeBuilt = false;
    EXPECT_TRUE(logic->activate());
    EXPECT_EQ(persons(), danPersons);
    expectGoBackTo(gusPersons, gusFamilies);
}

TEST_F(TreeWindowLogicTest, NextSpouseCyclesThroughThreeFamilies)
{
    ASSERT_TRUE(load(gusFile));
    open(1);
    // Dan's family shown is his second; the next is Cat's (third), whose
    // Ned ends the line.
    runOn(3, TreeCommand::NextSpouse);
    const Persons withCat = {{1, 0, 1}, {2, 0, 0}, {3, 1, 1}, {4, 2, 1}, {7, 0, 0}, {11, 1, 1}};
    const Families withCatFamilies = {{1, 1, 2, 2, 1, 1}, {4, 3, 5, 1, 1, 3}};
    EXPECT_EQ(persons(), withCat);
    EXPECT_EQ(families(), withCatFamilies);
    EXPECT_EQ(individualSelected(), 3);
    expectGoBackTo(gusPersons, gusFamilies);

    runOn(3, TreeCommand::NextSpouse);
    // Round to the first: Ann, then Kim and her husband Ola (Kim is a woman).
    runOn(3, TreeCommand::NextSpouse);
    const Persons withAnn = {{1, 0, 1}, {2, 0, 0}, {3, 1, 1},  {4, 2, 1},
                             {5, 0, 0}, {8, 1, 1}, {12, 0, 0}, {13, 1, 1}};
    const Families withAnnFamilies = {{1, 1, 2, 2, 1, 1}, {2, 3, 5, 1, 1, 1}, {5, 6, 7, 1, 1, 1}};
    EXPECT_EQ(persons(), withAnn);
    EXPECT_EQ(families(), withAnnFamilies);
    expectGoBackTo(withCat, withCatFamilies);

    runOn(3, TreeCommand::NextSpouse);
    runOn(3, TreeCommand::NextSpouse);
    EXPECT_EQ(persons(), gusPersons) << "the second family again";
    EXPECT_EQ(families(), gusFamilies);

    // Who has fewer than two families, or is a spouse, has no next one.
    expectDisabledOn({10, 6}, TreeCommand::NextSpouse);
}

TEST_F(TreeWindowLogicTest, ShowDescendantsOnAChildThatDidNotCarryTheLine)
{
    ASSERT_TRUE(load(gusFile));
    open(1);
    // Uma, Gus's second child: the most-descendants walk goes through Tom
    // (2 against Sam's 1). The eldest walk from her, through Sam, is the
    // start of ShowParentsOnTheTopAndOnALowerDescendantAndSetTop.
    runOn(4, TreeCommand::ShowDescendantsMost);
    EXPECT_EQ(persons(), umaPersons);
    EXPECT_EQ(families(), umaFamilies);
    EXPECT_EQ(individualSelected(), 4);
    expectGoBackTo(gusPersons, gusFamilies);

    // Childless people and spouses have no descendants to show.
    expectDisabledOn({9, 6}, TreeCommand::ShowDescendantsMost);
    expectDisabledOn({9, 6}, TreeCommand::ShowDescendantsEldest);
}

TEST_F(TreeWindowLogicTest, ShowParentsOnTheTopAndOnALowerDescendantAndSetTop)
{
    ASSERT_TRUE(load(gusFile));
    open(3);
    ASSERT_EQ(persons(), danPersons);
    ASSERT_EQ(families(), danFamilies);
    // Dan's parents come above him: Gus's family with Dan as its line
    // child, Dan's two families below it, renumbered. It is Gus's own tree.
    runOn(3, TreeCommand::ShowParents);
    EXPECT_EQ(persons(), gusPersons);
    EXPECT_EQ(families(), gusFamilies);
    EXPECT_EQ(individualSelected(), 3);
    EXPECT_EQ(logic->caption(), QStringLiteral("Family tree - GRAY, Gus"));
    expectGoBackTo(danPersons, danFamilies);

    // Uma, Gus's second child, carries the line of her parents' family:
    // the same tables as her descendants shown from Gus's tree.
    open(4);
    runOn(4, TreeCommand::ShowParents);
    EXPECT_EQ(persons(), umaPersons);
    EXPECT_EQ(families(), umaFamilies);

    // Set top on Uma's son Sam after the eldest walk; then his parents:
    // Rex is the top, Uma his spouse, and Sam's family (Xia, Yul) stays
    // below, moved from slots 8 and 9 to 5 and 6.
    open(1);
    runOn(4, TreeCommand::ShowDescendantsEldest);
    runOn(15, TreeCommand::ShowParents);
    const Persons underRex = {{14, 0, 1}, {4, 0, 0},  {15, 1, 1},
                              {19, 2, 1}, {20, 0, 0}, {21, 1, 1}};
    const Families underRexFamilies = {{6, 1, 2, 2, 1, 1}, {8, 3, 5, 1, 1, 1}};
    EXPECT_EQ(persons(), underRex);
    EXPECT_EQ(families(), underRexFamilies);
    EXPECT_EQ(individualSelected(), 15);

    runOn(19, TreeCommand::SetTop);
    EXPECT_EQ(persons(), (Persons{{19, 0, 1}, {22, 0, 0}, {23, 1, 1}, {24, 2, 1}}));
    EXPECT_EQ(families(), (Families{{9, 1, 2, 2, 1, 1}}));
    EXPECT_EQ(logic->selected(), 1);
    EXPECT_FALSE(logic->enabled(TreeCommand::SetTop)) << "already the top";
    expectGoBackTo(underRex, underRexFamilies);

    // Rex, the top, has no parents; a spouse's (Uma's) are not the line's.
    expectDisabledOn({14, 4}, TreeCommand::ShowParents);
}

TEST_F(TreeWindowLogicTest, ParentsWithoutAFatherPutTheMotherOnTop)
{
    // Mia's family names only her mother Eve; Kit's names no parent at all.
    ASSERT_TRUE(load(
        familyFile({"Eve /Ash/:F", "Mia /Ash/:F", "Kit /Oak/:M"}, {{0, 1, {2}}, {0, 0, {3}}})));
    open(2);
    runOn(2, TreeCommand::ShowParents);
    EXPECT_EQ(persons(), (Persons{{1, 0, 1}, {0, 0, 0}, {2, 1, 1}}));
    EXPECT_EQ(families(), (Families{{1, 1, 2, 1, 1, 1}}));
    EXPECT_EQ(model().person(2).label, QStringLiteral("?"));
    EXPECT_EQ(logic->statusText(), QStringLiteral("ASH, Mia (2)"));
    logic->select(2);
    EXPECT_FALSE(logic->enabled(TreeCommand::CountDescendants)) << "no one to count";
    EXPECT_FALSE(logic->enabled(TreeCommand::SetTop));
    open(3);
    EXPECT_FALSE(logic->enabled(TreeCommand::ShowParents));

    // FamTree on a family without a husband asks for individual 0: a lone "?".
    open(0);
    EXPECT_EQ(persons(), (Persons{{0, 0, 1}}));
    EXPECT_EQ(logic->caption(), QStringLiteral("Family tree - ?"));
    EXPECT_FALSE(logic->enabled(TreeCommand::TriangleView));
}

TEST_F(TreeWindowLogicTest, ACommandPastTheCapacityKeepsTheView)
{
    // The top's first family has one child; the second starts a line of 50
    // families of 20 children, too many boxes for one view. From individual
    // 43, the head of the fourth, 47 families fill 988 boxes: they fit.
    std::vector<QByteArray> people(2 + 50 * 20, ":M");
    std::vector<FileFamily> chain = {{1, 0, {2}}};
    int32_t next = 3;
    for (int g = 0; g < 50; ++g) {
        FileFamily family{g == 0 ? 1 : next - 20, 0, {}};
        for (int c = 0; c < 20; ++c)
            family.children.push_back(next++);
        chain.push_back(family);
    }
    ASSERT_TRUE(load(familyFile(people, chain)));
    open(43);
    EXPECT_EQ(model().nTreeInd, 988);
    EXPECT_TRUE(messages.entries.empty());
    const QStringList pastCapacity{"Error no:  9 Subscript out of range"};
    open(1);
    EXPECT_EQ(messages.texts(), pastCapacity);
    EXPECT_EQ(persons(), (Persons{{1, 0, 1}}))
        << "the walk failed: the top person alone, never half a tree";
    messages.clear();
    runOn(1, TreeCommand::ShowDescendantsMost);
    EXPECT_EQ(messages.texts(), pastCapacity);
    EXPECT_FALSE(logic->enabled(TreeCommand::GoBack)) << "a failed command keeps nothing";

    runOn(1, TreeCommand::ShowDescendantsEldest);
    ASSERT_EQ(persons(), (Persons{{1, 0, 1}, {0, 0, 0}, {2, 1, 1}}));
    const TreeTables shown = model();
    messages.clear();
    runOn(1, TreeCommand::NextSpouse);
    EXPECT_EQ(messages.texts(), pastCapacity);
    EXPECT_EQ(model().treeInd, shown.treeInd);
    EXPECT_EQ(model().treeFam, shown.treeFam);
    EXPECT_EQ(model().prevInd, shown.prevInd) << "still the view before the eldest walk";
    expectGoBackTo(Persons{{1, 0, 1}}, Families{});
}

TEST_F(TreeWindowLogicTest, SavedViewsOpenAgainAndDamagedOnesChangeNothing)
{
    ASSERT_TRUE(load(gusFile));
    open(1);
    EXPECT_FALSE(logic->enabled(TreeCommand::OpenView)) << "no temp.gds yet";
    runOn(4, TreeCommand::ShowDescendantsMost);
    const TreeTables saved = model();
    logic->run(TreeCommand::SaveView);
    EXPECT_EQ(logic->takeNotice(), QStringLiteral("View saved in ") +
                                       QDir::toNativeSeparators(dir.filePath("temp.gds")));
    ASSERT_TRUE(QFile::exists(dir.filePath("temp.gds")));

    runOn(4, TreeCommand::SetTop);
    const Persons setTop = persons();
    const Families setTopFamilies = {{6, 1, 2, 2, 1, 1}, {8, 3, 5, 1, 1, 1}};
    logic->run(TreeCommand::OpenView);
    EXPECT_TRUE(messages.entries.empty());
    for (int32_t k = 1; k <= saved.nTreeInd; ++k)
        EXPECT_EQ(model().person(k), saved.person(k)) << k;
    for (int32_t k = 1; k <= saved.nTreeFam; ++k)
        EXPECT_EQ(model().family(k), saved.family(k)) << k;
    EXPECT_EQ(logic->drawing().boxes.size(), size_t(saved.nTreeInd));
    expectGoBackTo(setTop, setTopFamilies);

    // Saved with another file: the user is asked first, and No keeps the view.
    QByteArray text = test::fileBytes(dir.filePath("temp.gds"));
    text.replace(QDir::cleanPath(dir.filePath("test.ged")).toUtf8(), "/elsewhere/other.ged");
    writeFile(text, "temp.gds");
    messages.answers = {false};
    const TreeTables shown = model();
    logic->run(TreeCommand::OpenView);
    ASSERT_EQ(messages.entries.size(), 1u);
    EXPECT_EQ(messages.entries[0].text,
              QStringLiteral("This view was saved with /elsewhere/other.ged. Show it anyway?"));
    EXPECT_EQ(model().treeInd, shown.treeInd);
    EXPECT_EQ(model().prevInd, shown.prevInd) << "nothing kept for GoBack either";

    // Yes shows the view of the other file.
    messages.clear();
    writeFile(text, "temp.gds");
    messages.answers = {true};
    logic->run(TreeCommand::OpenView);
    EXPECT_EQ(messages.entries.size(), 1u);
    EXPECT_EQ(model().nTreeInd, saved.nTreeInd);
    EXPECT_EQ(model().person(1), saved.person(1));
    expectGoBackTo(setTop, setTopFamilies);
}

// "Save view as..." and "Open view..." on files the user names: the same
// writing, checks and messages as temp.gds, which they leave alone, and the
// folder kept for the next dialog.
TEST_F(TreeWindowLogicTest, ViewsSavedAndOpenedByNameAreCheckedAsTempGdsIs)
{
    ASSERT_TRUE(load(gusFile));
    open(1);
    EXPECT_EQ(logic->viewFolder(), QDir::currentPath()) << "the working folder at first";
    EXPECT_EQ(logic->suggestedViewName(), QStringLiteral("GRAY, Gus tree.gds"));
    ASSERT_TRUE(QDir(dir.path()).mkpath(QStringLiteral("views")));
    const QString named = dir.filePath(QStringLiteral("views/gus line.gds"));
    runOn(4, TreeCommand::ShowDescendantsMost);
    const Persons saved = persons();
    logic->saveViewAs(named);
    EXPECT_EQ(logic->takeNotice(),
              QStringLiteral("View saved in ") + QDir::toNativeSeparators(named));
    EXPECT_FALSE(QFile::exists(dir.filePath("temp.gds"))) << "temp.gds is not touched";
    EXPECT_EQ(logic->viewFolder(), dir.filePath(QStringLiteral("views")));
    EXPECT_EQ(session.settings.viewFolder, dir.filePath(QStringLiteral("views")));

    runOn(4, TreeCommand::SetTop);
    logic->openViewFrom(named);
    EXPECT_TRUE(messages.entries.empty());
    EXPECT_EQ(persons(), saved);
    EXPECT_EQ(logic->takeNotice(),
              QStringLiteral("View opened from ") + QDir::toNativeSeparators(named));

    // A damaged file says why, as temp.gds does; the view on screen stays.
    logic->openViewFrom(writeFile("TREEVIEW\r\n\"x.ged\"\r\n3,x\r\n", "views/damaged.gds"));
    EXPECT_EQ(messages.texts(), QStringList{"Error no:  13 Type mismatch"});
    EXPECT_EQ(persons(), saved);

    // A folder that cannot be written keeps the folder remembered before.
    messages.clear();
    const QString folderBefore = session.settings.viewFolder;
    logic->saveViewAs(dir.filePath(QStringLiteral("no such folder/x.gds")));
    ASSERT_EQ(messages.entries.size(), 1u);
    EXPECT_TRUE(messages.entries[0].text.startsWith(QStringLiteral("Cannot save ")));
    EXPECT_EQ(session.settings.viewFolder, folderBefore);
}

TEST_F(TreeWindowLogicTest, CountFindRelationshipAndBrowserWorkOnTheSelection)
{
    ASSERT_TRUE(load(gusFile));
    open(1);
    std::vector<WindowRequest> requests;
    QObject::connect(&session, &Session::windowRequested,
                     [&](const WindowRequest& r) { requests.push_back(r); });
    runOn(3, TreeCommand::CountDescendants);
    ASSERT_EQ(messages.entries.size(), 1u);
    EXPECT_EQ(messages.entries[0].title, QStringLiteral("Count descendants"));
    EXPECT_EQ(messages.entries[0].text,
              QStringLiteral("Descendants: 7\r\nSpouses: 5\r\nGenerations: 2"));

    runOn(1, TreeCommand::FindRelationship);
    EXPECT_TRUE(logic->checked(TreeCommand::FindRelationship));
    EXPECT_EQ(logic->text(TreeCommand::FindRelationship), QStringLiteral("Find relationship (1)"));
    runOn(10, TreeCommand::FindRelationship);
    EXPECT_FALSE(logic->checked(TreeCommand::FindRelationship));
    EXPECT_EQ(session.report.title, QStringLiteral("Find relationship"));
    EXPECT_TRUE(session.report.text.contains(QStringLiteral("grand"))) << "Max is Gus's grandson";

    int changes = 0;
    QObject::connect(&session, &Session::changed, [&] { ++changes; });
    runOn(10, TreeCommand::ShowInBrowser);
    EXPECT_EQ(session.curInd, 10);
    EXPECT_EQ(session.browser.viewKind, ViewKind::Individual);
    EXPECT_EQ(changes, 1) << "the main window's number follows";
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_EQ(requests[0].window, AppWindow::Text);
    EXPECT_EQ(requests[1].window, AppWindow::List);
}

TEST_F(TreeWindowLogicTest, TheDrawingFollowsTheOptions)
{
    ASSERT_TRUE(load(gusFile));
    tav::test::StubMeasure measure;
    open(1);
    const auto lineEndsAt = [&](QPointF point) {
        for (const TreeLine& line : logic->drawing().lines)
            if (line.line.p1() == point || line.line.p2() == point)
                return true;
        return false;
    };
    // Gus's box (label 9 characters: 90 units, centred, 3 units of room at
    // each side) ends at 30 + 16 + 2; a line leaves its middle for Gina's
    // box, 0.35 of a line lower.
    const TreeBox* gus = logic->drawing().box(1);
    ASSERT_NE(gus, nullptr);
    EXPECT_EQ(gus->frame, QRectF(-48, 28, 96, 20));
    EXPECT_EQ(gus->text, QRectF(-45, 30, 90, 16));
    EXPECT_EQ(gus->role, TreeBoxRole::Top);
    EXPECT_TRUE(gus->selected);
    EXPECT_EQ(logic->drawing().box(2)->role, TreeBoxRole::Spouse);
    EXPECT_TRUE(lineEndsAt(QPointF(0.5, 48)));
    EXPECT_TRUE(lineEndsAt(QPointF(0.5, logic->drawing().box(2)->frame.top())));
    // Every child's line ends on its box's top edge.
    for (const int32_t slot : {3, 4}) {
        const QRectF frame = logic->drawing().box(slot)->frame;
        EXPECT_TRUE(lineEndsAt(QPointF(std::floor(frame.center().x()) + 0.5, frame.top())));
    }
    EXPECT_TRUE(logic->drawing().bounds.contains(logic->drawing().box(10)->frame));

    // Without spouses the lines start at the head; spouses keep their slots.
    logic->setOption(TreeOption::NoSpouse, true);
    EXPECT_EQ(logic->drawing().box(2), nullptr);
    EXPECT_TRUE(lineEndsAt(QPointF(0.5, 48)));
    EXPECT_EQ(model().nTreeInd, 10);
    logic->setOption(TreeOption::NoSpouse, false);

    // The shown line: Gus, Dan, Max, Val; a mark above who has descendants.
    logic->setOption(TreeOption::MainLine, true);
    logic->setOption(TreeOption::DescendantMark, true);
    std::vector<int32_t> onLine, marked;
    for (const TreeBox& box : logic->drawing().boxes) {
        if (box.mainLine)
            onLine.push_back(box.slot);
        if (!box.mark.isEmpty()) {
            marked.push_back(box.slot);
            EXPECT_FALSE(box.mark.intersects(box.frame)) << "outside the box";
        }
    }
    EXPECT_EQ(onLine, (std::vector<int32_t>{1, 3, 7, 9}));
    EXPECT_EQ(marked, (std::vector<int32_t>{1, 2, 3, 4, 5, 7, 8}));

    // A family without a wife: its "?" as tall as the other boxes and at
    // least as wide, right of the line, which runs on from Val to his
    // children and meets the "?" at its middle.
    ASSERT_TRUE(load(familyFile({"Val /Gray/:M", "Kid /Gray/:F"}, {{1, 0, {2}}})));
    open(1);
    ASSERT_EQ(model().person(2).indIdx, 0);
    const TreeBox* missing = logic->drawing().box(2);
    ASSERT_NE(missing, nullptr);
    EXPECT_TRUE(missing->empty);
    EXPECT_EQ(missing->frame.height(), logic->drawing().box(1)->frame.height());
    EXPECT_GE(missing->frame.width(), missing->frame.height());
    EXPECT_EQ(missing->frame.left(), 4.5);
    EXPECT_TRUE(missing->frame.contains(missing->text));
    const double middle = std::floor(missing->frame.center().y()) + 0.5;
    EXPECT_TRUE(lineEndsAt(QPointF(0.5, 48)));
    EXPECT_TRUE(lineEndsAt(QPointF(4.5, middle)));
    EXPECT_TRUE(lineEndsAt(QPointF(0.5, logic->drawing().box(3)->frame.top())));
    for (const TreeLine& line : logic->drawing().lines)
        EXPECT_FALSE(missing->frame.contains(line.line.center())) << "nothing runs through it";
    ASSERT_TRUE(load(gusFile));
    open(1);

    // Surname style and font size: labels and boxes are made again, the
    // GoBack copy's too.
    runOn(18, TreeCommand::SetTop);
    session.settings.SurnameStyle = 5;
    session.settings.FontSize = 4;
    logic->settingsChanged();
    EXPECT_EQ(model().person(1).label, QStringLiteral("Gray, Wes"));
    EXPECT_EQ(model().prevInd[1].label, QStringLiteral("Gray, Gus"));
    logic->run(TreeCommand::GoBack);
    EXPECT_EQ(model().family(1).layout4, 125) << "laid out for the new size";
}

TEST_F(TreeWindowLogicTest, ArrowKeysMoveAlongRowsUpToTheHeadAndDownTheLine)
{
    ASSERT_TRUE(load(gusFile));
    open(1);
    // Gus down to Dan, the line child; right to Uma, who ends the row (0: no
    // move, the selection stays); back, down to Max, left to Lou; up to Dan
    // and Gus, who has no one above; Tia, a spouse: up to Max, down to Val.
    const struct {
        int32_t from;
        TreeMove move;
        int32_t to;
    } presses[] = {{1, TreeMove::Down, 3}, {3, TreeMove::Right, 4}, {4, TreeMove::Right, 0},
                   {4, TreeMove::Left, 3}, {3, TreeMove::Down, 10}, {10, TreeMove::Left, 9},
                   {9, TreeMove::Up, 3},   {3, TreeMove::Up, 1},    {1, TreeMove::Up, 0},
                   {16, TreeMove::Up, 10}, {16, TreeMove::Down, 17}};
    for (const auto& p : presses) {
        logic->select(slotOf(p.from));
        EXPECT_EQ(logic->move(p.move), p.to != 0) << p.from;
        EXPECT_EQ(individualSelected(), p.to ? p.to : p.from) << p.from;
    }
}

TEST_F(TreeWindowLogicTest, TheTriangleCountsDistinctPeopleAndStopsAtAHundredGenerations)
{
    // Cousins Ann and Bob marry: their child Cy is Gus's great-grandchild
    // along two lines, counted once in that generation.
    ASSERT_TRUE(load(familyFile({"Gus:M", "Al:M", "Bo:M", "Ann:F", "Bob:M", "Cy"},
                                {{1, 0, {2, 3}}, {2, 0, {4}}, {3, 0, {5}}, {5, 4, {6}}})));
    DescendantTriangle triangle = descendantTriangle(session.records, session.descendantCache, 1);
    EXPECT_EQ(triangle.perGeneration, (std::vector<int32_t>{2, 2, 1}));
    EXPECT_TRUE(triangle.counted);
    EXPECT_EQ(triangle.descendants, 6) << "counted once per line";
    EXPECT_EQ(triangle.generations, 3);
    EXPECT_EQ(triangle.widest(), 2);

    // A line of 120 generations: 100 bands and the note, never a fault.
    ASSERT_TRUE(load(tav::test::lineFile(121, ":M")));
    triangle = descendantTriangle(session.records, session.descendantCache, 1);
    EXPECT_FALSE(triangle.counted);
    EXPECT_EQ(triangle.perGeneration, std::vector<int32_t>(100, 1));
    EXPECT_TRUE(triangle.deeperThanShown);
}
