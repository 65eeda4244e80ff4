// SPDX-License-Identifier: GPL-3.0-or-later
// What the monkey (tests/monkey) found, each kept as the steps that showed
// it, so the fault stays fixed.
#include "tests/ui/WindowTestSupport.h"
#include "ui/WindowManager.h"
#include "ui/browser/BrowserWindow.h"
#include "ui/main/MainWindow.h"

#include <QApplication>
#include <QPointer>
#include <QTableView>

using namespace tav;
using tav::test::gedcomText;

class MonkeyFindingTest : public test::WindowTestBase {};

// A file opened while the record browser was up closed the browser (it
// deletes itself once the event loop runs); asked for again at once, the
// same closing window was shown, then deleted while on screen, and its
// grid read the records of a browser already destroyed. The browser asked
// for is a new one, and it stays.
TEST_F(MonkeyFindingTest, TheBrowserAskedForRightAfterAFileClosedItIsANewOneThatStays)
{
    const QString path = writeFile(
        gedcomText({"0 @I1@ INDI", "1 NAME Ann /X/", "0 @I2@ INDI", "1 NAME Ben /X/"}), "two.ged");
    MainWindow window(session, store, dir.path());
    window.startUp(path);
    session.openBrowser(ViewKind::AllIndividuals, BrowserCaller::MainWindow);
    const QPointer<BrowserWindow> first = window.windows().browser();
    ASSERT_NE(first, nullptr);

    window.openFile(path);  // the browser showed slots of the file before: it closes
    session.openBrowser(ViewKind::AllIndividuals, BrowserCaller::MainWindow);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();

    EXPECT_TRUE(first.isNull()) << "the closed browser is gone";
    BrowserWindow* browser = window.windows().browser();
    ASSERT_NE(browser, nullptr) << "the browser asked for is there";
    EXPECT_TRUE(browser->isVisible());
    EXPECT_EQ(browser->view()->model()->rowCount(), 2);
}
