// SPDX-License-Identifier: GPL-3.0-or-later
#include "draw/TreePainter.h"
#include "tests/TreeTestSupport.h"
#include "tests/ui/WindowTestSupport.h"
#include "tree/TreeLayout.h"
#include "ui/WindowManager.h"
#include "ui/browser/BrowserWindow.h"
#include "ui/main/MainWindow.h"
#include "ui/options/OptionsDialog.h"
#include "ui/tree/TreeCanvas.h"
#include "ui/tree/TreeWindow.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QToolBar>

using namespace tav;
using tav::test::familyFile;

namespace {

// Gus and Gina have Dan and Uma; Dan has Lou and Max with Bea (his first
// family) and Ned with Cat; Max has Val.
const QByteArray grayFile =
    familyFile({"Gus /Gray/:M", "Gina /Gray/:F", "Dan /Gray/:M", "Uma /Gray/:F", "Bea /Birch/:F",
                "Cat /Cole/:F", "Lou /Gray/:M", "Max /Gray/:M", "Ned /Gray/:M", "Val /Gray/:M"},
               {{1, 2, {3, 4}}, {3, 5, {7, 8}}, {3, 6, {9}}, {8, 0, {10}}});

}  // namespace

class TreeWindowTest : public tav::test::WindowTestBase {
protected:
    TreeWindowTest() { QDir::setCurrent(dir.path()); }

    // A tree window of its own on an individual, built anew.
    std::unique_ptr<TreeWindow> openTree(int32_t individual)
    {
        session.tree.treeBuilt = false;
        return openActive<TreeWindow>(individual);
    }

    // Which person commands the context menu offers for a box.
    static std::vector<bool> menuFor(TreeWindow& tree, int32_t slot)
    {
        QTest::mouseClick(tree.canvas()->viewport(), Qt::RightButton, {}, boxPoint(tree, slot));
        EXPECT_EQ(tree.logic().selected(), slot);
        EXPECT_TRUE(tree.contextMenu()->isVisible());
        std::vector<bool> enabled;
        for (QAction* action : tree.contextMenu()->actions())
            if (!action->isSeparator())
                enabled.push_back(action->isEnabled());
        tree.contextMenu()->hide();
        return enabled;
    }
};

TEST_F(TreeWindowTest, TheSelectorOpensTheTreeOfTheNumberOrOfTheTop)
{
    MainWindow window(session, store, dir.path());
    window.startUp(writeFile(grayFile, "gray.ged"));
    EXPECT_EQ(window.treeSelector()->currentIndex(), 1) << "from the top, at start";
    EXPECT_TRUE(window.treeButton()->isEnabled());

    window.logic().setCurrentIndividualText(QStringLiteral("3"));
    window.treeSelector()->setCurrentIndex(0);
    window.treeButton()->click();
    TreeWindow* tree = window.windows().treeWindow();
    ASSERT_NE(tree, nullptr);
    EXPECT_EQ(tree->windowTitle(), QStringLiteral("Family tree - GRAY, Dan"));

    // From the top, the same window builds Gus's tree.
    window.treeSelector()->setCurrentIndex(1);
    window.treeButton()->click();
    EXPECT_EQ(window.windows().treeWindow(), tree);
    EXPECT_EQ(tree->windowTitle(), QStringLiteral("Family tree - GRAY, Gus"));
    EXPECT_EQ(window.currentIndividualBox()->text(), QStringLiteral(" 1"));

    // Another file closes the tree, whose slots name the old file's people.
    window.openFile(writeFile(familyFile({"Abe", "Bea /Ash/", "Cy /Ash/", "Di"}, {}), "di.ged"));
    EXPECT_EQ(window.windows().treeWindow(), nullptr);

    // Ctrl+T: the tree of the individual in the box.
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    window.logic().setCurrentIndividualText(QStringLiteral("4"));
    QTest::keyClick(&window, Qt::Key_T, Qt::ControlModifier);
    EXPECT_EQ(window.windows().treeWindow()->windowTitle(), QStringLiteral("Family tree - , Di"));
}

TEST_F(TreeWindowTest, TheBrowsersFamTreeOpensTheTreeOfTheIndividualOrTheHusband)
{
    MainWindow window(session, store, dir.path());
    window.startUp(writeFile(grayFile, "gray.ged"));
    session.openBrowser(ViewKind::Family, 2, BrowserCaller::MainWindow);
    BrowserWindow* browser = window.windows().browser();
    ASSERT_NE(browser, nullptr);
    QAction* famTree = browser->action("FamTree");
    ASSERT_NE(famTree, nullptr);
    EXPECT_TRUE(famTree->isEnabled());
    famTree->trigger();
    ASSERT_NE(window.windows().treeWindow(), nullptr);
    EXPECT_EQ(window.windows().treeWindow()->windowTitle(),
              QStringLiteral("Family tree - GRAY, Dan"));
    EXPECT_EQ(window.currentIndividualBox()->text(), QStringLiteral(" 3"));

    session.openBrowser(ViewKind::AllIndividuals, BrowserCaller::MainWindow);
    EXPECT_FALSE(famTree->isEnabled());
    session.openBrowser(ViewKind::Individual, 4, BrowserCaller::MainWindow);
    EXPECT_TRUE(famTree->isEnabled());
    browser->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(browser));
    QTest::keyClick(browser, Qt::Key_T, Qt::ControlModifier);
    EXPECT_EQ(window.windows().treeWindow()->windowTitle(),
              QStringLiteral("Family tree - GRAY, Uma"));
}

TEST_F(TreeWindowTest, TheContextMenuOffersWhatAppliesToTheBoxClicked)
{
    ASSERT_TRUE(load(grayFile));
    const auto tree = openTree(1);
    EXPECT_EQ(tree->findChild<QToolBar*>()->height(), treeToolbarHeight);
    // Most, eldest, next spouse, set top, parents; count, relationship,
    // browser, ancestors.
    using Enabled = std::vector<bool>;
    EXPECT_EQ(menuFor(*tree, 1), (Enabled{true, true, false, false, false, true, true, true, true}))
        << "the top person";
    EXPECT_EQ(menuFor(*tree, 2),
              (Enabled{false, false, false, true, false, true, true, true, true}))
        << "a spouse";
}

TEST_F(TreeWindowTest, KeysMoveTheSelectionGoBackSaveAndOpen)
{
    ASSERT_TRUE(load(grayFile));
    const auto tree = openTree(1);
    TreeCanvas* canvas = tree->canvas();
    ASSERT_EQ(QApplication::focusWidget(), canvas);
    // Where each arrow leads is the window logic's; here, that keys reach it.
    QTest::keyClick(canvas, Qt::Key_Down);
    QTest::keyClick(canvas, Qt::Key_Right);
    EXPECT_EQ(tree->logic().selected(), 4);

    QTest::keyClick(canvas, Qt::Key_S, Qt::ControlModifier);
    ASSERT_TRUE(QFile::exists(dir.filePath("temp.gds")));
    EXPECT_TRUE(tree->toolbarButton("Open")->isEnabled());
    const int32_t shownFamily = tree->logic().model().family(2).famIdx;
    QTest::mouseClick(canvas->viewport(), Qt::LeftButton, {}, boxPoint(*tree, 3));
    EXPECT_EQ(tree->logic().selected(), 3);
    tree->action(TreeCommand::NextSpouse)->trigger();
    ASSERT_NE(tree->logic().model().family(2).famIdx, shownFamily);

    QTest::keyClick(canvas, Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(tree->logic().model().family(2).famIdx, shownFamily) << "the saved view";
    EXPECT_TRUE(tree->toolbarButton("GoBack")->isEnabled());
    QTest::keyClick(canvas, Qt::Key_Backspace);
    EXPECT_NE(tree->logic().model().family(2).famIdx, shownFamily) << "back before the opening";
    EXPECT_FALSE(tree->toolbarButton("GoBack")->isEnabled());

    // Ctrl+G shows the triangle, Escape the tree again, a second Escape closes.
    QTest::keyClick(canvas, Qt::Key_G, Qt::ControlModifier);
    EXPECT_TRUE(tree->logic().triangleShown());
    EXPECT_TRUE(tree->toolbarButton("Triangle")->isChecked());
    QTest::keyClick(canvas, Qt::Key_Escape);
    EXPECT_FALSE(tree->logic().triangleShown());
    EXPECT_TRUE(tree->isVisible());
    QTest::keyClick(canvas, Qt::Key_Escape);
    EXPECT_FALSE(tree->isVisible());
    EXPECT_TRUE(messages.entries.empty());
}

TEST_F(TreeWindowTest, ZoomFitAndPanningMoveOnlyTheView)
{
    ASSERT_TRUE(load(grayFile));
    const auto tree = openTree(1);
    tree->resize(400, 300);
    TreeCanvas* canvas = tree->canvas();
    QCoreApplication::processEvents();
    const TreeTables before = tree->logic().model();
    // The top person stands centred at the top.
    const QPoint top = boxPoint(*tree, 1);
    EXPECT_NEAR(top.x(), canvas->viewport()->width() / 2, 1);
    EXPECT_LT(top.y(), 60);

    QTest::keyClick(canvas, Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(canvas->zoom(), 1.25);
    QTest::keyClick(canvas, Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(canvas->zoom(), 1.0);
    QTest::keyClick(canvas, Qt::Key_0, Qt::ControlModifier);
    const QRectF bounds = tree->logic().drawing().bounds;
    EXPECT_LE(bounds.width() * canvas->zoom(), canvas->viewport()->width() + 1);
    EXPECT_LE(bounds.height() * canvas->zoom(), canvas->viewport()->height() + 1);
    EXPECT_EQ(tree->logic().model().treeInd, before.treeInd) << "layout stays";

    canvas->setZoom(5.0);
    QScrollBar* across = canvas->horizontalScrollBar();
    ASSERT_GT(across->maximum() - across->minimum(), 80);
    across->setValue((across->minimum() + across->maximum()) / 2);
    const int x = across->value();
    const QPoint empty(2, canvas->viewport()->height() - 2);
    ASSERT_EQ(tree->logic().drawing().slotAt(canvas->treePoint(empty)), 0);
    QTest::mousePress(canvas->viewport(), Qt::LeftButton, {}, empty);
    QTest::mouseMove(canvas->viewport(), empty + QPoint(40, 0));
    QTest::mouseRelease(canvas->viewport(), Qt::LeftButton, {}, empty + QPoint(40, 0));
    EXPECT_EQ(across->value(), x - 40);
    EXPECT_EQ(tree->logic().selected(), 1) << "dragging the background selects nobody";
}

TEST_F(TreeWindowTest, AnOptionChangedInTheOptionsDialogShowsAtTheNextRepaint)
{
    MainWindow window(session, store, dir.path());
    window.startUp(writeFile(grayFile, "gray.ged"));
    window.treeButton()->click();
    TreeWindow* tree = window.windows().treeWindow();
    ASSERT_NE(tree, nullptr);
    tree->resize(500, 400);
    QCoreApplication::processEvents();
    QWidget* viewport = tree->canvas()->viewport();
    const QPoint gina = boxPoint(*tree, 2, true);
    const QPoint corner(3, viewport->height() - 3);
    QImage shown = viewport->grab().toImage();
    EXPECT_EQ(shown.pixelColor(corner), QColor(Qt::white));
    const QColor spouseFill = shown.pixelColor(gina);
    EXPECT_NE(spouseFill, QColor(Qt::white));

    QTimer::singleShot(0, [] {
        auto* dialog = qobject_cast<OptionsDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        for (QCheckBox* box : dialog->findChildren<QCheckBox*>())
            if (box->text() == QStringLiteral("Alternative background colour") ||
                box->text() == QStringLiteral("Leave out spouses"))
                box->setChecked(true);
        dialog->accept();
    });
    session.showWindow(AppWindow::Options);
    ASSERT_TRUE(session.settings.BackColour);
    shown = viewport->grab().toImage();
    EXPECT_EQ(shown.pixelColor(corner), treeBackground(true));
    EXPECT_EQ(shown.pixelColor(gina), treeBackground(true)) << "Gina is gone";
    EXPECT_TRUE(tree->optionAction(TreeOption::NoSpouse)->isChecked());

    // The View menu changes the same settings.
    tree->optionAction(TreeOption::BackColour)->trigger();
    EXPECT_FALSE(session.settings.BackColour);
    const int height = tree->logic().drawing().box(1)->frame.toRect().height();
    tree->fontSizeAction(4)->trigger();
    EXPECT_EQ(session.settings.FontSize, 4);
    EXPECT_GT(tree->logic().drawing().box(1)->frame.toRect().height(), height);
}

TEST_F(TreeWindowTest, TheHtmlReportAndPicturesAreWrittenInTheWorkingFolder)
{
    ASSERT_TRUE(load(grayFile));
    const std::unique_ptr<TreeWindow> tree = openTree(1);
    QStringList opened;
    tree->openInBrowser = [&opened](const QString& path) {
        opened << path;
        return true;
    };

    // The current folder is the working folder the viewer chose at start.
    ASSERT_TRUE(tree->action(TreeCommand::HtmlReport)->isEnabled());
    tree->action(TreeCommand::HtmlReport)->trigger();
    const QString report = dir.filePath(QStringLiteral("tav.htm"));
    EXPECT_EQ(opened, QStringList{report}) << "the desktop's browser opens it";
    EXPECT_TRUE(test::fileBytes(report).contains("Descendants of GRAY, Gus"));
    // Without a browser to start, the user hears where the page is.
    tree->openInBrowser = [](const QString&) { return false; };
    tree->action(TreeCommand::HtmlReport)->trigger();
    EXPECT_EQ(messages.texts().value(0),
              QStringLiteral("The report was written to %1, but no web browser could be started "
                             "to show it.")
                  .arg(QDir::toNativeSeparators(report)));

    // Pictures of the whole tree, whatever part the window shows.
    ASSERT_TRUE(tree->exportAction()->isEnabled());
    EXPECT_TRUE(tree->exportTo(dir.filePath(QStringLiteral("gray.svg"))));
    const QByteArray drawing = test::fileBytes(dir.filePath(QStringLiteral("gray.svg")));
    for (int32_t slot = 1; slot <= tree->logic().model().nTreeInd; ++slot)
        EXPECT_TRUE(drawing.contains(tree->logic().model().person(slot).label.toUtf8())) << slot;

    // A picture that cannot be written: the message, and the window goes on.
    EXPECT_FALSE(tree->exportTo(dir.filePath(QStringLiteral("gray.svg/inside.png"))));
    EXPECT_TRUE(messages.texts().last().startsWith(QStringLiteral("Cannot save")));
    EXPECT_TRUE(tree->isVisible());
}

// A saved view with boxes far apart: "Export picture..." draws a PNG
// smaller and says so.
TEST_F(TreeWindowTest, AViewTooWideForAFullSizePngExportsSmallerAndSaysSo)
{
    ASSERT_TRUE(load(grayFile));
    const std::unique_ptr<TreeWindow> tree = openTree(1);
    tree->action(TreeCommand::SaveView)->trigger();
    // The last person's box moved 20000 units right.
    QList<QByteArray> lines = test::fileBytes(dir.filePath(QStringLiteral("temp.gds"))).split('\n');
    const int last = 3 + tree->logic().model().nTreeInd - 1;
    QList<QByteArray> items = lines[last].split(',');
    items[items.size() - 4] = "20000";
    lines[last] = items.join(',');
    tree->logic().openViewFrom(writeFile(lines.join('\n'), "far.gds"));
    ASSERT_EQ(tree->logic().model().person(tree->logic().model().nTreeInd).x, 20000);
    const QString png = dir.filePath(QStringLiteral("gray.png"));
    messages.clear();
    EXPECT_TRUE(tree->exportTo(png));
    ASSERT_EQ(messages.texts().size(), 1);
    EXPECT_TRUE(messages.texts()[0].contains(QStringLiteral("of its usual size")));
    EXPECT_EQ(QImage(png).width(), 16384);
}
