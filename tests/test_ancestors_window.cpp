// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/AncestorsFixtures.h"
#include "tests/TreeTestSupport.h"
#include "windowlogic/ancestors/AncestorsWindowLogic.h"

#include <QDir>
#include <QFileInfo>

using namespace tav;

class AncestorsWindowLogicTest : public tav::test::SessionTest {
protected:
    AncestorsWindowLogicTest()
    {
        QDir::setCurrent(dir.path());  // the report lies in the test's own folder
        QObject::connect(&session, &Session::windowRequested,
                         [this](const WindowRequest& request) { requests << request.window; });
    }

    // A new window asked for the chart of an individual.
    AncestorsWindowLogic& open(int32_t individual)
    {
        session.curInd = individual;
        logic = std::make_unique<AncestorsWindowLogic>(
            session, [](int) { return std::make_unique<tav::test::StubMeasure>(); });
        logic->activate();
        return *logic;
    }

    // Moves, and where the selection is after it (unchanged when it failed).
    int32_t after(AncestorsMove move, bool moved = true)
    {
        EXPECT_EQ(logic->move(move), moved);
        return logic->selected();
    }

    std::unique_ptr<AncestorsWindowLogic> logic;
    QList<AppWindow> requests;
};

TEST_F(AncestorsWindowLogicTest, KeysFollowTheLinesAndBackRetracesEveryRoot)
{
    ASSERT_TRUE(load(tav::test::cousinsWhoMarried()));
    open(9);
    EXPECT_EQ(logic->caption(), "Ancestors - HART, Kid");
    EXPECT_EQ(logic->selected(), 1);
    EXPECT_EQ(logic->statusText(), "HART, Kid (9) - number 1");
    using M = AncestorsMove;
    EXPECT_EQ(after(M::Father), 2);
    EXPECT_EQ(after(M::Mother), 5) << "Cara";
    EXPECT_EQ(after(M::Father, false), 5) << "Cara's parents are unknown";
    EXPECT_EQ(after(M::Parent, false), 5);
    EXPECT_EQ(after(M::Child), 2);
    EXPECT_EQ(after(M::Parent), 4) << "Right: the father";
    logic->select(1);
    EXPECT_EQ(after(M::Child, false), 1) << "the root has no child in the chart";
    logic->select(8);
    EXPECT_EQ(logic->statusText(), "HART, Gus (1) - number 8, father's father's father");
    logic->select(28);
    EXPECT_EQ(logic->selected(), 8) << "no box at 28";

    // Enter on a grandparent, and again on the new root's father; Back
    // retraces both, each to the place that was selected.
    logic->select(1);
    EXPECT_FALSE(logic->enabled(AncestorsCommand::SetRoot)) << "on the root";
    EXPECT_FALSE(logic->enabled(AncestorsCommand::Back));
    logic->select(4);
    logic->run(AncestorsCommand::SetRoot);
    EXPECT_EQ(logic->caption(), "Ancestors - HART, Carl");
    EXPECT_EQ(logic->selected(), 1);
    EXPECT_EQ(logic->chart().individualAt(2), 1) << "Gus is now Carl's father";
    logic->select(2);
    logic->run(AncestorsCommand::SetRoot);
    EXPECT_EQ(logic->chart().root(), 1);
    logic->run(AncestorsCommand::Back);
    EXPECT_EQ(logic->chart().root(), 3);
    EXPECT_EQ(logic->selected(), 2);
    logic->run(AncestorsCommand::Back);
    EXPECT_EQ(logic->chart().root(), 9);
    EXPECT_EQ(logic->selected(), 4);
    EXPECT_FALSE(logic->enabled(AncestorsCommand::Back));

    // Asked again from elsewhere: another person is a new root to go back
    // from; the same one changes nothing.
    session.curInd = 8;
    logic->activate();
    EXPECT_EQ(logic->chart().root(), 8);
    logic->activate();
    logic->run(AncestorsCommand::Back);
    EXPECT_EQ(logic->chart().root(), 9);
    EXPECT_FALSE(logic->enabled(AncestorsCommand::Back));

    // Right takes the mother when no father is known.
    ASSERT_TRUE(load(tav::test::fourGenerations()));
    open(1);
    logic->select(3);
    EXPECT_EQ(after(AncestorsMove::Father, false), 3);
    EXPECT_EQ(after(AncestorsMove::Parent), 7) << "Eva";
    EXPECT_EQ(logic->statusText(), "COLE, Eva (5) - number 7, mother's mother");
}

TEST_F(AncestorsWindowLogicTest, TooltipsAndTagsNameTheFirstPlaceOfARepeatedAncestor)
{
    ASSERT_TRUE(load(tav::test::cousinsWhoMarried()));
    open(9);
    EXPECT_EQ(logic->toolTip(14), "HART, Gus\n(b.1800  d.1870)\nIndividual 1\n"
                                  "Number 14: mother's mother's father\n"
                                  "Also number 8, where the forebears go on");
    EXPECT_EQ(logic->toolTip(2), "HART, Emil\nIndividual 6\nNumber 2: father");
    EXPECT_EQ(logic->toolTip(28), "");
    const TreeBox* again = logic->drawing().box(14);
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(logic->numberAt(again->referenceFrame.center()), 8) << "the tag leads to 8";
    EXPECT_EQ(logic->numberAt(again->frame.center()), 14);
    EXPECT_EQ(logic->numberAt(QPointF(-50, -50)), 0);
}

TEST_F(AncestorsWindowLogicTest, GenerationsAndOptionsRedrawTheChartKeepingTheSelection)
{
    ASSERT_TRUE(load(tav::test::cousinsWhoMarried()));
    open(9);
    EXPECT_EQ(logic->generations(), 5);
    EXPECT_EQ(logic->drawing().boxes.size(), 12u);
    logic->select(16);
    logic->setGenerations(3);
    EXPECT_EQ(logic->chart().lastNumber(), 7);
    EXPECT_EQ(logic->selected(), 4) << "Old's line child in the last generation shown";
    EXPECT_EQ(session.settings.ancestorGenerations, 3);
    EXPECT_TRUE(logic->drawing().box(4)->selected);
    logic->setGenerations(99);
    EXPECT_EQ(session.settings.ancestorGenerations, 10) << "the setting too is kept to 2 to 10";
    EXPECT_EQ(logic->selected(), 4);

    EXPECT_EQ(logic->drawing().box(8)->label, "Gus");
    logic->setOption(TreeOption::Dates, true);
    logic->setOption(TreeOption::Surnames, true);
    EXPECT_EQ(logic->drawing().box(8)->label, "HART, Gus (b.1800  d.1870)");
    EXPECT_TRUE(logic->drawing().box(4)->selected) << "the selection stays";
    logic->setOption(TreeOption::BackColour, true);
    EXPECT_TRUE(logic->drawing().backColour);
    // A change made elsewhere (the options dialog, the tree window).
    session.settings.SurnamePosn = 1;
    session.settings.FontSize = 4;
    logic->settingsChanged();
    EXPECT_EQ(logic->drawing().box(8)->label, "Gus HART (b.1800  d.1870)");
    EXPECT_EQ(logic->drawing().fontSize, 4);
    EXPECT_TRUE(logic->outputDrawing().box(4) && !logic->outputDrawing().box(4)->selected)
        << "pictures show no selection";
}

TEST_F(AncestorsWindowLogicTest, CommandsOpenTheTreeTheBrowserAndTheReport)
{
    ASSERT_TRUE(load(tav::test::cousinsWhoMarried()));
    open(9);
    logic->select(7);
    session.tree.treeBuilt = true;
    logic->run(AncestorsCommand::Descendants);
    EXPECT_EQ(requests, QList<AppWindow>{AppWindow::Tree});
    EXPECT_EQ(session.curInd, 4) << "Dora at the tree's top";
    EXPECT_FALSE(session.tree.treeBuilt);
    logic->run(AncestorsCommand::ShowInBrowser);
    EXPECT_EQ(requests.last(), AppWindow::List);
    EXPECT_EQ(session.browser.viewKind, ViewKind::Individual);

    logic->run(AncestorsCommand::HtmlReport);
    const QString written = logic->takeReportToOpen();
    EXPECT_EQ(written, QDir(dir.path()).filePath("tav-ancestors.htm"));
    EXPECT_TRUE(QFileInfo(written).size() > 0);
    EXPECT_TRUE(logic->takeNotice().startsWith("Report written to "));
    EXPECT_EQ(logic->takeReportToOpen(), "") << "given once";

    // A report that cannot be written says why and opens nothing.
    QFile::remove(written);
    ASSERT_TRUE(QDir(dir.path()).mkdir("tav-ancestors.htm"));
    logic->run(AncestorsCommand::HtmlReport);
    EXPECT_EQ(logic->takeReportToOpen(), "");
    ASSERT_EQ(messages.texts().size(), 1);
    EXPECT_TRUE(messages.texts()[0].startsWith("Cannot save "))
        << messages.texts()[0].toStdString();
}
