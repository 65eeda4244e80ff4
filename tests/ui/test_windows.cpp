// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Fault.h"
#include "settings/Settings.h"
#include "settings/SettingsPersistence.h"
#include "tests/ui/WindowTestSupport.h"
#include "ui/FaultCatchingApplication.h"
#include "ui/WindowManager.h"
#include "ui/browser/BrowserWindow.h"
#include "ui/find/FindWindow.h"
#include "ui/main/MainWindow.h"
#include "ui/options/OptionsDialog.h"
#include "ui/text/TextViewer.h"
#include "ui/tree/TreeWindow.h"

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QCompleter>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QTest>

using namespace tav;
using tav::test::gedcomText;

class WindowTest : public tav::test::WindowTestBase {
protected:
    static QByteArray familyText()
    {
        return gedcomText({"0 HEAD", "1 CHAR UTF-8", "0 @I1@ INDI", "1 NAME Dad /X/", "1 SEX M",
                           "1 FAMS @F1@", "0 @I2@ INDI", "1 NAME Kid /X/", "1 SEX F", "1 FAMC @F1@",
                           "0 @F1@ FAM", "1 HUSB @I1@", "1 CHIL @I2@"});
    }
    QString familyFile() { return writeFile(familyText(), "family.ged"); }
};

// A fault that escapes an event handler is shown as a message and the
// application goes on: events still reach their handlers.
TEST_F(WindowTest, AFaultEscapingAnEventHandlerIsAMessageNotTheEnd)
{
    class Faulting : public QObject {
    public:
        int events = 0;
        bool event(QEvent* event) override
        {
            if (event->type() != QEvent::User)
                return QObject::event(event);
            if (++events == 1)
                raiseFault(RuntimeFault::Overflow);
            return true;
        }
    };
    auto& app = static_cast<FaultCatchingApplication&>(*QCoreApplication::instance());
    app.setMessages(&messages);
    Faulting object;
    QEvent event(QEvent::User);
    EXPECT_FALSE(QCoreApplication::sendEvent(&object, &event));
    EXPECT_EQ(messages.texts(), QStringList{RuntimeFault(RuntimeFault::Overflow).messageText()});
    QCoreApplication::postEvent(&object, new QEvent(QEvent::User));
    QCoreApplication::processEvents();
    EXPECT_EQ(object.events, 2);
    app.setMessages(nullptr);
}

TEST_F(WindowTest, MainWindowWithoutAndWithAFile)
{
    {
        MainWindow empty(session, store, dir.path());
        empty.startUp(QString());
        EXPECT_FALSE(empty.currentIndividualBox()->isEnabled());
        EXPECT_FALSE(empty.headerAction()->isEnabled());
        EXPECT_FALSE(empty.findRelationshipAction()->isEnabled());
        EXPECT_FALSE(empty.recentAction(1)->isVisible());
        EXPECT_FALSE(empty.treeSelector()->isEnabled());
        EXPECT_FALSE(empty.treeButton()->isEnabled());
        // Ctrl+F opens the find window even with no file.
        empty.show();
        empty.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&empty));
        QTest::keyClick(&empty, Qt::Key_F, Qt::ControlModifier);
        EXPECT_NE(empty.windows().findWindow(), nullptr);
        empty.windows().closeAll();
    }

    const QString path = familyFile();
    MainWindow window(session, store, dir.path());
    window.startUp(path);
    EXPECT_EQ(window.windowTitle(), path + QStringLiteral(" (2 individuals, 1 families)"));
    EXPECT_TRUE(window.headerAction()->isEnabled());
    EXPECT_TRUE(window.recentAction(1)->isVisible());
    EXPECT_TRUE(window.progressBar()->isHidden()) << "the bar shows only while a file is read";
    // The load's progress bar runs from 0 to the file's length + 200.
    EXPECT_EQ(window.progressBar()->maximum(), QFileInfo(path).size() + 200);

    // The open dialog's "(*.ged)" shows SMITH.GED as well.
    writeFile("0 HEAD\n", "SMITH.GED");
    writeFile("not genealogy\n", "notes.txt");
    const std::unique_ptr<QFileDialog> dialog = window.makeOpenDialog();
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setDirectory(dir.path());
    auto* model = dialog->findChild<QFileSystemModel*>();
    ASSERT_NE(model, nullptr);
    QTRY_VERIFY(model->rowCount(model->index(dir.path())) > 0);
    QStringList shown;
    auto* proxy = dialog->findChild<QListView*>(QStringLiteral("listView"));
    ASSERT_NE(proxy, nullptr);
    for (int r = 0; r < proxy->model()->rowCount(proxy->rootIndex()); ++r)
        shown << proxy->model()->index(r, 0, proxy->rootIndex()).data().toString();
    EXPECT_TRUE(shown.contains(QStringLiteral("SMITH.GED"))) << shown.join(' ').toStdString();
    EXPECT_TRUE(shown.contains(QStringLiteral("family.ged")));
    EXPECT_FALSE(shown.contains(QStringLiteral("notes.txt")));

    // Closing saves the settings: the main window keeps its size and place.
    window.show();
    window.setGeometry(40, 50, 700, 320);
    window.close();
    Settings saved;
    loadSettings(saved, store, QStringLiteral("ALL"));
    EXPECT_EQ(saved.mainWindow.width, 700);
    EXPECT_EQ(saved.mainWindow.height, 320);
    MainWindow again(session, store, dir.path());
    again.show();
    again.startUp(path);
    EXPECT_EQ(again.size(), QSize(700, 320));
}

TEST_F(WindowTest, OpeningAnotherFileStartsClean)
{
    MainWindow window(session, store, dir.path());
    window.startUp(familyFile());
    window.findAction()->trigger();
    FindWindow* find = window.windows().findWindow();
    find->searchBox()->setText(QStringLiteral("x"));
    find->findButton()->click();
    ASSERT_EQ(session.findResults.total, 3);
    window.findRelationshipAction()->trigger();
    ASSERT_TRUE(window.findRelationshipAction()->isChecked());
    session.showReport(QStringLiteral("A report"), QStringLiteral("Report"));

    window.openFile(writeFile(gedcomText({"0 @I1@ INDI", "1 NAME Other /Y/"}), "other.ged"));
    QCoreApplication::processEvents();
    EXPECT_EQ(session.findResults.total, 0);
    EXPECT_EQ(find->resultsList()->count(), 0);
    EXPECT_TRUE(find->resultsHeading()->text().isEmpty());
    EXPECT_FALSE(window.findRelationshipAction()->isChecked());
    EXPECT_EQ(window.findRelationshipAction()->text(), QStringLiteral("Find relationship"));
    EXPECT_EQ(session.relFirst, 0);
    ASSERT_NE(window.windows().textViewer(), nullptr) << "the text viewer names people, not slots";
    EXPECT_EQ(window.windows().textViewer()->windowTitle(), QStringLiteral("Report"));
    EXPECT_EQ(window.currentIndividualName()->text(), QStringLiteral("Y, Other"));
}

TEST_F(WindowTest, RelationshipCommandShowsItsAnswerInTheTextViewer)
{
    MainWindow window(session, store, dir.path());
    window.startUp(familyFile());
    session.curInd = 1;
    window.findRelationshipAction()->trigger();
    EXPECT_TRUE(window.findRelationshipAction()->isChecked());
    EXPECT_EQ(window.findRelationshipAction()->text(), QStringLiteral("Find relationship (1)"));
    session.curInd = 2;
    window.findRelationshipAction()->trigger();
    EXPECT_FALSE(window.findRelationshipAction()->isChecked());
    EXPECT_EQ(window.findRelationshipAction()->text(), QStringLiteral("Find relationship"));
    TextViewer* viewer = window.windows().textViewer();
    ASSERT_NE(viewer, nullptr);
    EXPECT_TRUE(viewer->isVisible());
    EXPECT_EQ(viewer->windowTitle(), QStringLiteral("Find relationship"));
    // The wording is the relationship finder's; here, that the viewer shows it.
    EXPECT_TRUE(viewer->textBox()->toPlainText().startsWith(
        QStringLiteral("Kid /X/ is daughter of Dad /X/\n")));

    // Closing the main window closes the viewer.
    window.close();
    QCoreApplication::processEvents();
    EXPECT_EQ(window.windows().textViewer(), nullptr);
}

TEST_F(WindowTest, TextViewerCarriesItsTopFlagOverAndCopiesTheSelection)
{
    session.report = {QStringLiteral("line one\r\nline two"), QStringLiteral("Report")};
    auto* first = new TextViewer(session);
    first->show();
    first->topAction()->trigger();
    EXPECT_TRUE(first->topAction()->isChecked());
    EXPECT_TRUE(first->windowFlags() & Qt::WindowStaysOnTopHint);
    QTest::keyClick(first->textBox(), Qt::Key_Escape);
    QCoreApplication::processEvents();

    TextViewer second(session);
    second.setAttribute(Qt::WA_DeleteOnClose, false);
    second.show();
    EXPECT_FALSE(second.topAction()->isChecked()) << "a new viewer opens in the normal band";
    EXPECT_FALSE(second.windowFlags() & Qt::WindowStaysOnTopHint);
    second.topAction()->trigger();
    EXPECT_FALSE(second.topAction()->isChecked())
        << "the flag said on top: this click takes it off";
    second.topAction()->trigger();
    EXPECT_TRUE(second.topAction()->isChecked());
    EXPECT_TRUE(second.windowFlags() & Qt::WindowStaysOnTopHint);

    QGuiApplication::clipboard()->setText(QStringLiteral("old"));
    second.copySelection();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QString())
        << "nothing selected, nothing copied";
    second.selectAll();
    second.copySelection();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("line one\nline two"));

    session.report = {QStringLiteral("a later report"), QStringLiteral("Later")};
    second.refresh();
    EXPECT_EQ(second.windowTitle(), QStringLiteral("Later"));
    EXPECT_EQ(second.textBox()->toPlainText(), QStringLiteral("a later report"));
}

TEST_F(WindowTest, OptionsDialogShowsTheSettingsAndEscapeChangesNothing)
{
    session.settings.FontSize = 2;
    session.settings.SurnameStyle = 1;
    OptionsDialog dialog(session, store);
    EXPECT_EQ(dialog.fontSizeList()->currentIndex(), 2);
    dialog.show();
    dialog.surnameStyleList()->setCurrentIndex(4);
    dialog.fontSizeList()->setCurrentIndex(0);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_EQ(session.settings.SurnameStyle, 1);
    EXPECT_EQ(session.settings.FontSize, 2);
}

TEST_F(WindowTest, ShowSelectorOpensTheBrowserOnTheRecordInTheBox)
{
    MainWindow window(session, store, dir.path());
    window.startUp(familyFile());
    window.currentIndividualBox()->selectAll();
    QTest::keyClicks(window.currentIndividualBox(), QStringLiteral("2"));
    QTest::keyClick(window.currentIndividualBox(), Qt::Key_Return);
    BrowserWindow* browser = window.windows().browser();
    ASSERT_NE(browser, nullptr);
    EXPECT_EQ(browser->windowTitle(), QStringLiteral("X, Kid (2)"));
    EXPECT_EQ(window.showSelector()->currentIndex(), 2);

    window.showSelector()->setCurrentIndex(3);
    window.currentIndividualBox()->setText(QStringLiteral("1"));
    window.logic().setCurrentIndividualText(QStringLiteral("1"));
    window.showButton()->click();
    EXPECT_EQ(browser->windowTitle(), QStringLiteral("Family (1)"));
    EXPECT_TRUE(browser->action("Back")->isEnabled());
    browser->action("Back")->trigger();
    EXPECT_EQ(browser->windowTitle(), QStringLiteral("X, Kid (2)"));

    window.showSelector()->setCurrentIndex(4);
    window.showButton()->click();
    window.showSelector()->setCurrentIndex(5);
    window.showButton()->click();
    EXPECT_EQ(messages.texts(),
              QStringList({QStringLiteral("No notes."), QStringLiteral("No sources.")}));

    // A number that names no individual: the message, and nothing changes.
    window.showSelector()->setCurrentIndex(2);
    for (const char* typed : {"99999", "abc", "0", "-3", "3"}) {
        window.currentIndividualBox()->setText(QString::fromLatin1(typed));
        window.logic().setCurrentIndividualText(QString::fromLatin1(typed));
        window.showButton()->click();
        EXPECT_EQ(messages.entries.back().text,
                  QStringLiteral("There is no individual %1 in this file.").arg(typed));
        EXPECT_EQ(messages.entries.back().kind, MessageKind::Warning);
        EXPECT_EQ(browser->windowTitle(), QStringLiteral("X, Kid (2)")) << typed;
        EXPECT_EQ(session.curInd, 2);
        EXPECT_TRUE(window.currentIndividualName()->text().isEmpty()) << typed;
    }
    // Read as the platform reads a number: 2e0 is 2, &H1 is 1.
    window.currentIndividualBox()->setText(QStringLiteral("&H1"));
    window.logic().setCurrentIndividualText(QStringLiteral("&H1"));
    window.showButton()->click();
    EXPECT_EQ(browser->windowTitle(), QStringLiteral("X, Dad (1)"));
    EXPECT_EQ(window.currentIndividualName()->text(), QStringLiteral("X, Dad"));
    // All individuals opens whatever the box holds.
    window.logic().setCurrentIndividualText(QStringLiteral("99"));
    window.showSelector()->setCurrentIndex(0);
    window.showButton()->click();
    EXPECT_EQ(browser->windowTitle(), QStringLiteral("All individuals"));
    EXPECT_EQ(session.curInd, 1) << "the current individual stays a real one";
}

TEST_F(WindowTest, TheBrowserFollowsRowsByKeyAndTheNumberBoxFollowsItWithItsName)
{
    MainWindow window(session, store, dir.path());
    window.startUp(familyFile());
    EXPECT_EQ(window.currentIndividualName()->text(), QStringLiteral("X, Dad"));
    session.openBrowser(ViewKind::Individual, 1, BrowserCaller::MainWindow);
    BrowserWindow* browser = window.windows().browser();
    ASSERT_NE(browser, nullptr);
    browser->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(browser));
    QTableView* view = browser->view();
    // Dad's rows: No., Name, Sex, Occ, Birth date, Birth place, Death date,
    // Fams 1 (row 7 of the view), Age.
    view->setFocus();
    view->setCurrentIndex(view->model()->index(7, 1));
    QTest::keyClick(view, Qt::Key_Return);
    EXPECT_EQ(browser->windowTitle(), QStringLiteral("Family (1)"));
    view->setCurrentIndex(view->model()->index(3, 1));  // Child 1
    QTest::keyClick(view, Qt::Key_Space);
    EXPECT_EQ(browser->windowTitle(), QStringLiteral("X, Kid (2)"));
    EXPECT_EQ(window.currentIndividualBox()->text(), QStringLiteral(" 2"));
    EXPECT_EQ(window.currentIndividualName()->text(), QStringLiteral("X, Kid"));

    // Back and forward by Alt+arrow and by the mouse's side buttons.
    QTest::keyClick(browser, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(browser->windowTitle(), QStringLiteral("Family (1)"));
    QTest::keyClick(browser, Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(browser->windowTitle(), QStringLiteral("X, Kid (2)"));
    QTest::mouseClick(view->viewport(), Qt::BackButton, {}, QPoint(5, 5));
    EXPECT_EQ(browser->windowTitle(), QStringLiteral("Family (1)"));
    QTest::mouseClick(view->viewport(), Qt::ForwardButton, {}, QPoint(5, 5));
    EXPECT_EQ(browser->windowTitle(), QStringLiteral("X, Kid (2)"));

    // The find results move it too.
    window.findAction()->trigger();
    FindWindow* find = window.windows().findWindow();
    ASSERT_NE(find, nullptr);
    find->searchBox()->setText(QStringLiteral("dad"));
    for (int kind = 1; kind < 4; ++kind)
        find->kindBox(kind)->setChecked(false);
    find->findButton()->click();  // one result: the browser opens on it
    EXPECT_EQ(browser->windowTitle(), QStringLiteral("X, Dad (1)"));
    EXPECT_EQ(window.currentIndividualBox()->text(), QStringLiteral(" 1"));

    // Options: names in another style show at once in every window. The
    // given part as written keeps its blank before the surname.
    session.settings.SurnameStyle = 5;
    session.settings.SurnamePosn = 1;
    window.windows().settingsChanged();
    EXPECT_EQ(browser->windowTitle(), QStringLiteral("Dad  X (1)"));
    EXPECT_EQ(find->resultsList()->item(1)->text(), QStringLiteral("I001. Dad  X"));
    EXPECT_EQ(window.currentIndividualName()->text(), QStringLiteral("Dad  X"));
}

// Letters in the number box offer people; Down and Enter pick one, and the
// box then holds its number; a second Enter shows it; a number still works.
TEST_F(WindowTest, TheNumberBoxTakesANameAndOffersThePeopleItMayMean)
{
    MainWindow window(session, store, dir.path());
    window.startUp(familyFile());
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QLineEdit* box = window.currentIndividualBox();
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("ki"));
    QAbstractItemView* offers = window.nameCompleter()->popup();
    ASSERT_TRUE(offers->isVisible());
    ASSERT_EQ(offers->model()->rowCount(), 1);
    EXPECT_EQ(offers->model()->index(0, 0).data().toString(), QStringLiteral("X, Kid (2)"));
    QTest::keyClick(offers, Qt::Key_Down);
    QTest::keyClick(offers, Qt::Key_Return);
    EXPECT_FALSE(offers->isVisible());
    EXPECT_EQ(box->text(), QStringLiteral(" 2"));
    EXPECT_EQ(window.windows().browser(), nullptr) << "picking is not showing";
    QTest::keyClick(box, Qt::Key_Return);
    ASSERT_NE(window.windows().browser(), nullptr);
    EXPECT_EQ(window.windows().browser()->windowTitle(), QStringLiteral("X, Kid (2)"));

    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("1"));
    EXPECT_FALSE(offers->isVisible()) << "a number offers nobody";
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(window.windows().browser()->windowTitle(), QStringLiteral("X, Dad (1)"));
}

TEST_F(WindowTest, SelectorsActOnAChoiceNotWhileArrowingThrough)
{
    MainWindow window(session, store, dir.path());
    window.startUp(familyFile());
    window.activateWindow();
    window.showSelector()->setFocus();
    QTest::keyClick(window.showSelector(), Qt::Key_Down);
    QTest::keyClick(window.showSelector(), Qt::Key_Down);
    EXPECT_EQ(window.showSelector()->currentIndex(), 2);
    EXPECT_EQ(window.windows().browser(), nullptr) << "arrowing opens nothing";
    QTest::keyClick(window.showSelector(), Qt::Key_Return);
    ASSERT_NE(window.windows().browser(), nullptr);
    EXPECT_EQ(window.windows().browser()->windowTitle(), QStringLiteral("X, Dad (1)"));

    window.findAction()->trigger();
    FindWindow* find = window.windows().findWindow();
    find->searchBox()->setText(QStringLiteral("x"));
    find->findButton()->click();
    window.windows().browser()->close();
    QCoreApplication::processEvents();
    find->resultsList()->setFocus();
    QTest::keyClick(find->resultsList(), Qt::Key_Down);
    QTest::keyClick(find->resultsList(), Qt::Key_Down);
    EXPECT_EQ(find->resultsList()->currentRow(), 2);
    EXPECT_EQ(window.windows().browser(), nullptr);
    QTest::keyClick(find->resultsList(), Qt::Key_Enter);
    ASSERT_NE(window.windows().browser(), nullptr);
    EXPECT_EQ(window.windows().browser()->windowTitle(), QStringLiteral("X, Kid (2)"));
}

TEST_F(WindowTest, LargeListsAskFirstAndNoLeavesEverythingAsItWas)
{
    QByteArray text;
    for (int i = 1; i <= 10001; ++i)
        text += "0 @I" + QByteArray::number(i) + "@ INDI\n";
    MainWindow window(session, store, dir.path());
    window.startUp(writeFile(text, "large.ged"));
    messages.answers = {false};
    window.showSelector()->setCurrentIndex(0);
    window.showButton()->click();
    ASSERT_EQ(messages.entries.size(), 1u);
    EXPECT_TRUE(messages.entries[0].question);
    EXPECT_EQ(messages.entries[0].text,
              QStringLiteral("This may take some time. Do you wish to continue?"));
    EXPECT_EQ(window.windows().browser(), nullptr);

    window.showButton()->click();  // answered Yes this time
    BrowserWindow* browser = window.windows().browser();
    ASSERT_NE(browser, nullptr);
    EXPECT_EQ(browser->windowTitle(), QStringLiteral("All individuals"));
    EXPECT_EQ(browser->view()->model()->rowCount(), 10001);
}

TEST_F(WindowTest, BrowserRowsKeysAndHeight)
{
    ASSERT_TRUE(load(familyText()));
    session.curInd = 1;
    session.browser = {ViewKind::Individual, BrowserCaller::MainWindow, false};
    BrowserWindow browser(session);
    browser.setAttribute(Qt::WA_DeleteOnClose, false);
    browser.show();
    browser.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&browser));
    browser.activateRequest();
    EXPECT_EQ(browser.windowTitle(), QStringLiteral("X, Dad (1)"));
    // A short record fits the window to its rows: the rows, the grid's top
    // and 430 twips.
    int rows = browser.view()->horizontalHeader()->height();
    for (int r = 0; r < browser.view()->model()->rowCount(); ++r)
        rows += browser.view()->rowHeight(r);
    EXPECT_EQ(browser.height(), rows + browser.view()->geometry().top() + 29);

    browser.view()->setFocus();
    QTest::keyClick(browser.view(), Qt::Key_Right);
    EXPECT_EQ(browser.windowTitle(), QStringLiteral("X, Kid (2)"))
        << "the window sees the arrow before the grid";
    QTest::keyClick(browser.view(), Qt::Key_Left);
    EXPECT_EQ(browser.windowTitle(), QStringLiteral("X, Dad (1)"));
    QTest::keyClick(&browser, Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(browser.windowTitle(), QStringLiteral("All individuals"));
    EXPECT_FALSE(browser.action("Next")->isEnabled());
    QTest::keyClick(&browser, Qt::Key_Right);
    EXPECT_EQ(browser.windowTitle(), QStringLiteral("All individuals"))
        << "a disabled button's key does nothing";

    // A click on the second list line opens that individual.
    QTableView* view = browser.view();
    const QRect cell = view->visualRect(view->model()->index(1, 1));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, cell.center());
    EXPECT_EQ(browser.windowTitle(), QStringLiteral("X, Kid (2)"));
    QTest::keyClick(&browser, Qt::Key_Escape);
    EXPECT_FALSE(browser.isVisible());
}

TEST_F(WindowTest, FindWindowKeysHeightsAndResultsThatOutliveIt)
{
    MainWindow window(session, store, dir.path());
    window.startUp(familyFile());
    EXPECT_TRUE(window.findButton()->isEnabled());
    window.findAction()->trigger();
    FindWindow* find = window.windows().findWindow();
    ASSERT_NE(find, nullptr);
    find->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(find));
    // A box given the focus selects its text.
    find->searchBox()->setText(QStringLiteral("john smith"));
    find->caseBox()->setFocus();
    find->searchBox()->setFocus();
    QCoreApplication::processEvents();
    EXPECT_EQ(find->searchBox()->selectedText(), QStringLiteral("john smith"));
    find->searchBox()->clear();
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(find->kindBox(i)->isChecked()) << "every kind is ticked at first";
    EXPECT_FALSE(find->caseBox()->isChecked());
    EXPECT_FALSE(find->numberBox()->isEnabled());

    // Ctrl+C ticks the case box, even in the search box; Ctrl+I and Ctrl+Y
    // untick the first two kinds; a second press puts each back for the
    // searches below.
    for (const auto& [key, box] :
         {std::pair{Qt::Key_C, find->caseBox()}, std::pair{Qt::Key_I, find->kindBox(0)},
          std::pair{Qt::Key_Y, find->kindBox(1)}}) {
        QTest::keyClick(find->searchBox(), key, Qt::ControlModifier);
        EXPECT_EQ(box->isChecked(), key == Qt::Key_C) << key;
        QTest::keyClick(find->searchBox(), key, Qt::ControlModifier);
    }

    QTest::keyClicks(find->searchBox(), QStringLiteral("x"));
    QTest::keyClick(find->searchBox(), Qt::Key_Return);
    EXPECT_EQ(find->resultsHeading()->text(), QStringLiteral("Results (3 items found)"));
    // The results stand open under their heading: line 0 selected, about
    // ten lines in view, nothing opened.
    QListWidget* results = find->resultsList();
    EXPECT_TRUE(results->isVisible());
    EXPECT_EQ(results->currentRow(), 0);
    EXPECT_GE(results->viewport()->height(), 10 * results->fontMetrics().height());
    EXPECT_EQ(window.windows().browser(), nullptr);

    // The window is at least 4230 twips high, and 4965 with the queries;
    // taller where the open list needs it.
    const int collapsed = find->height();
    EXPECT_GE(collapsed, 282);
    find->moreButton()->click();
    EXPECT_EQ(find->moreButton()->text(), QStringLiteral("<<< &Less"));
    EXPECT_GE(find->height(), 331);
    EXPECT_GT(find->height(), collapsed);
    EXPECT_TRUE(find->querySelector()->isVisible());
    // Enter in the number box runs the query, not the search above it.
    find->querySelector()->setCurrentIndex(4);
    emit find->querySelector()->activated(4);
    ASSERT_TRUE(find->numberBox()->isEnabled());
    find->numberBox()->setText(QStringLiteral("12"));
    find->caseBox()->setFocus();
    find->numberBox()->setFocus();
    QCoreApplication::processEvents();
    EXPECT_EQ(find->numberBox()->selectedText(), QStringLiteral("12"));
    QTest::keyClicks(find->numberBox(), QStringLiteral("0"));  // in place of the selection
    QTest::keyClick(find->numberBox(), Qt::Key_Return);
    EXPECT_EQ(find->resultsHeading()->text(), QStringLiteral("Results (1 item found)"));
    find->moreButton()->click();
    EXPECT_EQ(find->moreButton()->text(), QStringLiteral("&More >>>"));
    EXPECT_EQ(find->height(), collapsed);

    find->searchBox()->setText(QStringLiteral("I2"));
    QTest::keyClick(find->searchBox(), Qt::Key_F, Qt::ControlModifier);
    ASSERT_NE(window.windows().browser(), nullptr) << "one result opens the browser";
    EXPECT_EQ(window.windows().browser()->windowTitle(), QStringLiteral("X, Kid (2)"));

    QTest::keyClick(find->searchBox(), Qt::Key_Q, Qt::ControlModifier);
    QCoreApplication::processEvents();
    EXPECT_EQ(window.windows().findWindow(), nullptr);
    window.findButton()->trigger();
    EXPECT_EQ(window.windows().findWindow()->resultsHeading()->text(),
              QStringLiteral("Results (1 item found)"))
        << "the results are there when the window opens again";
}

// A name of a million characters: the main window keeps its width, the
// report of it wraps anywhere (wrapping it at word boundaries takes
// seconds), and the tree window's status bar does not widen the window.
TEST_F(WindowTest, AMillionCharacterNameWidensNoWindow)
{
    const QString path =
        writeFile("0 HEAD\n1 CHAR UTF-8\n0 @I1@ INDI\n1 NAME John /" + QByteArray(1000000, 'B') +
                      "/\n1 FAMS @F1@\n0 @I2@ INDI\n1 NAME Kid /X/\n"
                      "1 FAMC @F1@\n0 @F1@ FAM\n1 HUSB @I1@\n1 CHIL @I2@\n",
                  "long.ged");
    MainWindow window(session, store, dir.path());
    window.show();
    window.startUp(path);
    EXPECT_LT(window.minimumSizeHint().width(), 1000);

    window.reportAction(ReportKind::GivenNames)->trigger();
    TextViewer* viewer = window.windows().textViewer();
    ASSERT_NE(viewer, nullptr);
    EXPECT_EQ(viewer->textBox()->wordWrapMode(), QTextOption::WrapAnywhere);
    EXPECT_TRUE(viewer->textBox()->toPlainText().contains(QString(1000000, QLatin1Char('B'))))
        << "the report holds the whole name";

    window.treeSelector()->setCurrentIndex(0);
    window.treeButton()->click();
    TreeWindow* tree = window.windows().treeWindow();
    ASSERT_NE(tree, nullptr);
    EXPECT_LT(tree->minimumSizeHint().width(), 1500);
}
