// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/AncestorsFixtures.h"
#include "tests/ui/WindowTestSupport.h"
#include "ui/WindowManager.h"
#include "ui/ancestors/AncestorsCanvas.h"
#include "ui/ancestors/AncestorsWindow.h"
#include "ui/browser/BrowserWindow.h"
#include "ui/main/MainWindow.h"
#include "ui/tree/TreeCanvas.h"
#include "ui/tree/TreeWindow.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QImage>
#include <QMenu>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

using namespace tav;

class AncestorsWindowTest : public tav::test::WindowTestBase {
protected:
    AncestorsWindowTest() { QDir::setCurrent(dir.path()); }
};

TEST_F(AncestorsWindowTest, OpensFromTheSelectorTheBrowserAndTheTreesContextMenu)
{
    MainWindow window(session, store, dir.path());
    window.startUp(writeFile(tav::test::cousinsWhoMarried(), "cousins.ged"));
    window.logic().setCurrentIndividualText(QStringLiteral("12"));
    window.treeSelector()->setCurrentIndex(2);
    window.treeButton()->click();
    EXPECT_EQ(messages.texts(), QStringList{"There is no individual 12 in this file."});
    EXPECT_EQ(window.windows().ancestorsWindow(), nullptr);
    window.logic().setCurrentIndividualText(QStringLiteral("9"));
    window.treeButton()->click();
    AncestorsWindow* chart = window.windows().ancestorsWindow();
    ASSERT_NE(chart, nullptr);
    EXPECT_EQ(chart->windowTitle(), QStringLiteral("Ancestors - HART, Kid"));

    // The browser: an individual, then a family's husband.
    session.openBrowser(ViewKind::Individual, 8, BrowserCaller::MainWindow);
    BrowserWindow* browser = window.windows().browser();
    ASSERT_NE(browser, nullptr);
    ASSERT_TRUE(browser->action("Ancestors")->isEnabled());
    browser->action("Ancestors")->trigger();
    EXPECT_EQ(window.windows().ancestorsWindow(), chart) << "one chart window";
    EXPECT_EQ(chart->windowTitle(), QStringLiteral("Ancestors - VOS, Fay"));
    session.openBrowser(ViewKind::Family, 4, BrowserCaller::MainWindow);
    browser->action("Ancestors")->trigger();
    EXPECT_EQ(chart->windowTitle(), QStringLiteral("Ancestors - HART, Emil"));
    session.openBrowser(ViewKind::AllIndividuals, BrowserCaller::MainWindow);
    EXPECT_FALSE(browser->action("Ancestors")->isEnabled());
    EXPECT_TRUE(chart->action(AncestorsCommand::Back)->isEnabled());

    // The tree window's context menu, on Carl in Gus's tree.
    window.logic().setCurrentIndividualText(QStringLiteral("1"));
    window.treeSelector()->setCurrentIndex(0);
    window.treeButton()->click();
    TreeWindow* tree = window.windows().treeWindow();
    ASSERT_NE(tree, nullptr);
    int32_t carl = 0;
    for (int32_t slot = 1; slot <= tree->logic().model().nTreeInd; ++slot)
        if (tree->logic().model().person(slot).indIdx == 3)
            carl = slot;
    ASSERT_NE(carl, 0);
    tree->select(carl);
    ASSERT_TRUE(tree->contextMenu()->actions().contains(tree->action(TreeCommand::Ancestors)));
    tree->action(TreeCommand::Ancestors)->trigger();
    EXPECT_EQ(chart->windowTitle(), QStringLiteral("Ancestors - HART, Carl"));

    // "Descendants" in the chart: the tree of its selected person.
    chart->select(2);
    chart->action(AncestorsCommand::Descendants)->trigger();
    EXPECT_EQ(tree->windowTitle(), QStringLiteral("Family tree - HART, Gus"));

    // An option changed in the chart shows in the tree at once.
    const QString before = tree->logic().drawing().box(1)->label;
    chart->optionAction(TreeOption::Dates)->trigger();
    EXPECT_EQ(tree->logic().drawing().box(1)->label, before + " (b.1800  d.1870)");
    chart->optionAction(TreeOption::Dates)->trigger();

    // Another file closes the chart, whose places name the old file's people.
    window.openFile(writeFile(tav::test::fourGenerations(), "four.ged"));
    EXPECT_EQ(window.windows().ancestorsWindow(), nullptr);
}

TEST_F(AncestorsWindowTest, KeysClicksAndDoubleClicksMoveThroughTheFamily)
{
    ASSERT_TRUE(load(tav::test::cousinsWhoMarried()));
    const auto chart = openActive<AncestorsWindow>(9, {900, 600});
    AncestorsCanvas* canvas = chart->canvas();
    ASSERT_EQ(QApplication::focusWidget(), canvas);
    // The root stands at the left, half way down.
    EXPECT_NEAR(boxPoint(*chart, 1).y(), canvas->viewport()->height() / 2, 2);
    EXPECT_LT(boxPoint(*chart, 1).x(), 100);

    // Each key reaches its move (the moves and Back are the logic's).
    QTest::keyClick(canvas, Qt::Key_Up);
    EXPECT_EQ(chart->logic().selected(), 2);
    QTest::keyClick(canvas, Qt::Key_Down);
    EXPECT_EQ(chart->logic().selected(), 5);
    QTest::keyClick(canvas, Qt::Key_Left);
    QTest::keyClick(canvas, Qt::Key_Right);
    EXPECT_EQ(chart->logic().selected(), 4);
    QTest::keyClick(canvas, Qt::Key_Return);
    EXPECT_EQ(chart->windowTitle(), QStringLiteral("Ancestors - HART, Carl"));
    QTest::mouseDClick(canvas->viewport(), Qt::LeftButton, {}, boxPoint(*chart, 2));
    EXPECT_EQ(chart->windowTitle(), QStringLiteral("Ancestors - HART, Gus"));
    QTest::keyClick(canvas, Qt::Key_Backspace);
    EXPECT_EQ(chart->windowTitle(), QStringLiteral("Ancestors - HART, Carl"));
    QTest::keyClick(canvas, Qt::Key_Backspace);
    EXPECT_EQ(chart->windowTitle(), QStringLiteral("Ancestors - HART, Kid"));

    // A click on the tag of a repeated ancestor selects the first place; a
    // right click selects and offers the commands.
    const TreeBox* again = chart->logic().drawing().box(14);
    ASSERT_NE(again, nullptr);
    chart->canvas()->setZoom(1.0);
    canvas->ensureSelectedVisible();
    chart->select(14);
    QTest::mouseClick(canvas->viewport(), Qt::LeftButton, {},
                      canvas->viewportPoint(again->referenceFrame.center()).toPoint());
    EXPECT_EQ(chart->logic().selected(), 8);
    QTest::mouseClick(canvas->viewport(), Qt::RightButton, {}, boxPoint(*chart, 7));
    EXPECT_EQ(chart->logic().selected(), 7);
    EXPECT_TRUE(chart->contextMenu()->isVisible());
    chart->contextMenu()->hide();

    // The number of generations, from the toolbar.
    chart->generationsBox()->setValue(3);
    EXPECT_EQ(chart->logic().chart().lastNumber(), 7);
    QTest::keyClick(canvas, Qt::Key_Escape);
    EXPECT_FALSE(chart->isVisible());
    EXPECT_TRUE(messages.entries.empty());
}

TEST_F(AncestorsWindowTest, PicturesAndTheReportAreTheWholeChart)
{
    ASSERT_TRUE(load(tav::test::cousinsWhoMarried()));
    const auto chart = openActive<AncestorsWindow>(9, {900, 600});
    chart->select(5);
    ASSERT_TRUE(chart->exportAction()->isEnabled());
    ASSERT_TRUE(chart->printAction()->isEnabled());
    const QString png = dir.filePath("chart.png");
    ASSERT_TRUE(chart->exportTo(png));
    const QImage image(png);
    const QRectF bounds = chart->logic().drawing().bounds;
    EXPECT_GE(image.width(), int(bounds.width()) * 2) << "twice the screen's scale, all of it";

    QStringList opened;
    chart->openInBrowser = [&opened](const QString& path) {
        opened << path;
        return true;
    };
    chart->action(AncestorsCommand::HtmlReport)->trigger();
    EXPECT_EQ(opened, QStringList{dir.filePath("tav-ancestors.htm")});
}
