// SPDX-License-Identifier: GPL-3.0-or-later
// tav-screenshots FILE OUTDIR: saves pictures of the windows on FILE, for
// looking at them as a user would (run under Xvfb: scripts/screenshots.sh).
#include "app/Messages.h"
#include "app/Session.h"
#include "calc/Ahnentafel.h"
#include "reports/HtmlAncestorsReport.h"
#include "settings/RegistryStore.h"
#include "ui/WindowManager.h"
#include "ui/ancestors/AncestorsCanvas.h"
#include "ui/ancestors/AncestorsWindow.h"
#include "ui/browser/BrowserWindow.h"
#include "ui/find/FindWindow.h"

#include "ui/main/MainWindow.h"
#include "ui/options/OptionsDialog.h"
#include "ui/text/TextViewer.h"
#include "ui/tree/TreeCanvas.h"
#include "ui/tree/TreeWindow.h"
#include "windowlogic/main/HeaderInformation.h"
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include <QApplication>
#include <QCompleter>
#include <QDir>
#include <QFileDialog>
#include <QMenu>
#include <QScreen>
#include <QTableView>
#include <QMessageBox>
#include <QSpinBox>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <cstdio>
#include <cstdlib>

namespace {

QString outDir;

void save(QWidget* widget, const char* name)
{
    widget->show();
    widget->raise();
    QApplication::processEvents();
    QTimer::singleShot(0, [] {});
    QApplication::processEvents();
    const QString path = QDir(outDir).filePath(QString::fromLatin1(name) + QStringLiteral(".png"));
    if (!widget->grab().save(path))
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
    else
        std::printf("%s\n", qPrintable(path));
}

// What the screen shows around a window, with the popups over it (a
// completion list, a context menu, a dialog), which grabbing the window
// alone leaves out.
void saveScreen(QWidget* around, const char* name, QWidget* extra = nullptr)
{
    QApplication::processEvents();
    QRect area = around->frameGeometry();
    if (extra) {
        // A popup may still be growing to its size: take room below it too.
        area = area.united(extra->frameGeometry().adjusted(0, 0, 0, 160));
        area = area.intersected(QGuiApplication::primaryScreen()->geometry());
    }
    const QString path = QDir(outDir).filePath(QString::fromLatin1(name) + QStringLiteral(".png"));
    const QPixmap shot = QGuiApplication::primaryScreen()->grabWindow(
        0, area.x(), area.y(), area.width(), area.height());
    if (!shot.save(path))
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
    else
        std::printf("%s\n", qPrintable(path));
}

// Runs `open`, which shows a modal dialog, and saves the screen around
// `around` with the dialog on it, then closes the dialog.
void saveModal(QWidget* around, const char* name, const std::function<void()>& open)
{
    QTimer::singleShot(400, [around, name] {
        QWidget* dialog = QApplication::activeModalWidget();
        if (!dialog)
            return;
        saveScreen(around, name, dialog);
        dialog->close();
    });
    open();
}

// The family tree window: "from top" at each font size and with each
// option, after Set top and Show parents, after Next spouse, and the
// triangle view.
void saveTree(tav::MainWindow& window, tav::Session& session)
{
    using tav::TreeCommand;
    window.treeSelector()->setCurrentIndex(1);
    window.treeButton()->click();
    tav::TreeWindow* tree = window.windows().treeWindow();
    if (!tree)
        return;
    tree->resize(1200, 860);
    // Each picture shows the top of the tree.
    const auto shoot = [tree](const QByteArray& name) {
        tree->canvas()->showHome();
        save(tree, name.constData());
    };
    // A command on a person, then its picture.
    const auto command = [&](int32_t slot, TreeCommand which, const char* name) {
        tree->select(slot);
        tree->action(which)->trigger();
        shoot(name);
    };
    shoot("tree-from-top");
    tree->canvas()->fit();
    save(tree, "tree-fit");
    saveModal(tree, "tree-save-view-as", [tree] { tree->saveViewAsAction()->trigger(); });
    const int fontSize = session.settings.FontSize;
    for (int size = 1; size <= 4; ++size) {
        tree->fontSizeAction(size)->trigger();
        shoot("tree-font-" + QByteArray::number(size));
    }
    tree->fontSizeAction(fontSize)->trigger();
    const char* optionNames[] = {"dates",     "surnames",  "mark",
                                 "main-line", "no-spouse", "background"};
    int i = 0;
    for (const tav::TreeOption option : tav::treeOptions) {
        tree->optionAction(option)->trigger();
        shoot(QByteArray("tree-option-") + optionNames[i++]);
        tree->optionAction(option)->trigger();
    }
    for (const tav::TreeOption option : tav::treeOptions)
        if (option != tav::TreeOption::NoSpouse && option != tav::TreeOption::BackColour)
            tree->optionAction(option)->trigger();
    shoot("tree-options-together");
    for (const tav::TreeOption option : tav::treeOptions)
        if (option != tav::TreeOption::NoSpouse && option != tav::TreeOption::BackColour)
            tree->optionAction(option)->trigger();

    // A grandchild becomes the top, then its parents come back above it.
    const tav::TreeModel& model = tree->logic().model();
    if (model.nTreeFam >= 2) {
        const tav::TreeFamily& second = model.family(2);
        command(second.indSt + std::max(1, second.childShown), TreeCommand::SetTop, "tree-set-top");
        command(1, TreeCommand::ShowParents, "tree-show-parents");
    }
    command(1, TreeCommand::TriangleView, "tree-triangle");
    tree->action(TreeCommand::TriangleView)->trigger();

    // Someone with several marriages with children, their next marriage shown.
    int32_t married = 0;
    for (int32_t slot = 1; slot <= session.records.individualCount() && married == 0; ++slot) {
        const tav::Individual& person = session.records.individual(slot);
        int withChildren = 0;
        for (int k = 1; k <= person.spouseFamilyCount; ++k)
            withChildren +=
                session.records.family(session.records.spouseFamilyOf(person, k)).childCount > 0;
        if (withChildren >= 2)
            married = slot;
    }
    if (married != 0) {
        window.logic().setCurrentIndividualText(QString::number(married));
        window.treeSelector()->setCurrentIndex(0);
        window.treeButton()->click();
        shoot("tree-before-next-spouse");
        command(1, TreeCommand::NextSpouse, "tree-next-spouse");
    }
    tree->close();
}

// The individual with the most known places over ten generations, and
// the first whose chart meets an ancestor twice, within the first
// `generations`.
struct ChartRoots {
    int32_t fullest = 0;
    int32_t collapsed = 0;
};

ChartRoots chartRoots(const tav::Session& session)
{
    ChartRoots roots;
    size_t most = 0;
    size_t collapsedMost = 0;
    for (int32_t slot = 1; slot <= session.records.individualCount(); ++slot) {
        const tav::Ahnentafel chart(session.records, slot, 10);
        if (chart.places().size() > most) {
            most = chart.places().size();
            roots.fullest = slot;
        }
        const tav::Ahnentafel near(session.records, slot, 6);
        if (size_t(near.distinctPeople()) < near.places().size() &&
            near.places().size() > collapsedMost) {
            collapsedMost = near.places().size();
            roots.collapsed = slot;
        }
    }
    return roots;
}

// The ancestors chart: over 5 and 10 generations (its home and all of it),
// with a person met twice, after Enter on a grandparent and Back; its
// picture as PNG and PDF, and its HTML report.
void saveAncestors(tav::MainWindow& window, tav::Session& session)
{
    const ChartRoots roots = chartRoots(session);
    if (roots.fullest == 0)
        return;
    const auto open = [&](int32_t slot) {
        window.logic().setCurrentIndividualText(QString::number(slot));
        window.treeSelector()->setCurrentIndex(2);
        window.treeButton()->click();
        return window.windows().ancestorsWindow();
    };
    tav::AncestorsWindow* chart = open(roots.fullest);
    if (!chart)
        return;
    chart->resize(1280, 900);
    chart->generationsBox()->setValue(5);
    chart->canvas()->showHome();
    save(chart, "ancestors-5");
    chart->logic().setOption(tav::TreeOption::Dates, true);
    chart->settingsChanged();
    chart->canvas()->showHome();
    save(chart, "ancestors-5-dates");
    chart->logic().setOption(tav::TreeOption::Dates, false);
    chart->settingsChanged();
    chart->generationsBox()->setValue(10);
    chart->canvas()->showHome();
    save(chart, "ancestors-10");
    chart->canvas()->fit();
    save(chart, "ancestors-10-fit");
    chart->exportTo(QDir(outDir).filePath(QStringLiteral("ancestors-10-export.png")));
    chart->exportTo(QDir(outDir).filePath(QStringLiteral("ancestors-10-export.pdf")));

    chart->generationsBox()->setValue(5);
    chart->canvas()->setZoom(1.0);
    chart->canvas()->showHome();
    chart->select(6);
    QTest::keyClick(chart->canvas(), Qt::Key_Return);
    save(chart, "ancestors-after-enter");
    QTest::keyClick(chart->canvas(), Qt::Key_Backspace);
    save(chart, "ancestors-after-back");

    if (roots.collapsed != 0) {
        chart = open(roots.collapsed);
        chart->generationsBox()->setValue(6);
        chart->canvas()->showHome();
        save(chart, "ancestors-collapse");
        chart->canvas()->fit();
        save(chart, "ancestors-collapse-fit");
        chart->exportTo(QDir(outDir).filePath(QStringLiteral("ancestors-collapse-export.png")));
        if (!tav::writeHtmlAncestorsReport(
                session, roots.collapsed, 6,
                QDir(outDir).filePath(QStringLiteral("ancestors-collapse.htm"))))
            std::fprintf(stderr, "cannot write the ancestors report\n");
    }
    if (!tav::writeHtmlAncestorsReport(session, roots.fullest, 5,
                                       QDir(outDir).filePath(QStringLiteral("ancestors.htm"))))
        std::fprintf(stderr, "cannot write the ancestors report\n");
    chart->close();
}

}  // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    if (argc < 3) {
        std::fprintf(stderr, "usage: tav-screenshots FILE OUTDIR [SLOT...]\n");
        return 2;
    }
    const QString file = QFileInfo(QString::fromLocal8Bit(argv[1])).absoluteFilePath();
    outDir = QFileInfo(QString::fromLocal8Bit(argv[2])).absoluteFilePath();
    QDir().mkpath(outDir);

    QTemporaryDir config;
    tav::RegistryStore store(config.filePath(QStringLiteral("Tav.reg")));
    tav::RecordingMessages messages;
    tav::Session session(messages);
    tav::MainWindow window(session, store, QCoreApplication::applicationDirPath());
    window.startUp(file);
    window.move(20, 20);
    save(&window, "main-window");
    // A name typed into the number box: the people it may mean, offered.
    window.currentIndividualBox()->setFocus();
    window.currentIndividualBox()->setText(QStringLiteral("cath"));
    emit window.currentIndividualBox()->textEdited(QStringLiteral("cath"));
    saveScreen(&window, "main-window-completing", window.nameCompleter()->popup());
    window.nameCompleter()->popup()->hide();
    window.currentIndividualBox()->clear();

    // The relationship of the first individual with a parent to that parent.
    int32_t child = 1;
    while (child < session.records.individualCount() &&
           session.records.childFamilyOf(session.records.individual(child)) == 0)
        ++child;
    const tav::Family& family =
        session.records.family(session.records.childFamilyOf(session.records.individual(child)));
    session.curInd = family.husband.slot ? family.husband.slot : family.wife.slot;
    window.findRelationshipAction()->trigger();
    session.curInd = child;
    window.findRelationshipAction()->trigger();
    save(window.windows().textViewer(), "text-viewer-relationship");

    // The four text reports of the View menu, in the same viewer.
    for (const tav::ReportKind kind :
         {tav::ReportKind::Basic, tav::ReportKind::GivenNames, tav::ReportKind::ChildNaming,
          tav::ReportKind::GedcomIntegrity}) {
        window.reportAction(kind)->trigger();
        const QByteArray name = "report-" + tav::reportKindText(kind).toLatin1();
        save(window.windows().textViewer(), name.constData());
    }
    {
        tav::TextViewer* viewer = window.windows().textViewer();
        saveModal(viewer, "text-viewer-print-preview",
                  [viewer] { viewer->printAction()->trigger(); });
        // The report saved as a text file, as a user would through the dialog.
        QTimer::singleShot(400, [] {
            if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
                dialog->selectFile(QDir(outDir).filePath(QStringLiteral("saved-report.txt")));
                QMetaObject::invokeMethod(dialog, "accept");
            }
        });
        viewer->saveAsAction()->trigger();
        viewer->close();
    }

    // The record browser on a record of each kind and on all individuals.
    const auto browse = [&](tav::ViewKind kind, int32_t slot, const char* name) {
        session.openBrowser(kind, slot, tav::BrowserCaller::MainWindow);
        save(window.windows().browser(), name);
    };
    int32_t noted = 1;
    while (noted < session.records.individualCount() &&
           session.records.individual(noted).note.isEmpty())
        ++noted;
    browse(tav::ViewKind::Individual, noted, "browser-individual");
    // Individuals named after the folder, each with its family as a child.
    for (int i = 3; i < argc; ++i) {
        const int32_t slot = std::atoi(argv[i]);
        const QByteArray name = "browser-individual-" + QByteArray::number(slot);
        browse(tav::ViewKind::Individual, slot, name.constData());
        const int32_t family = session.records.childFamilyOf(session.records.individual(slot));
        if (family > 0) {
            const QByteArray familyName = "browser-family-" + QByteArray::number(family);
            browse(tav::ViewKind::Family, family, familyName.constData());
        }
    }
    browse(tav::ViewKind::Family,
           std::max(1, session.records.childFamilyOf(session.records.individual(noted))),
           "browser-family");
    if (session.records.sourceCount() > 0)
        browse(tav::ViewKind::Source, 1, "browser-source");
    if (session.records.noteCount() > 0)
        browse(tav::ViewKind::Note, 1, "browser-note");
    browse(tav::ViewKind::AllIndividuals, 0, "browser-all-individuals");
    {
        // The grid's context menu over a few chosen rows.
        tav::BrowserWindow* browser = window.windows().browser();
        QTableView* view = browser->view();
        view->selectRow(2);
        view->selectionModel()->select(view->model()->index(4, 0),
                                       QItemSelectionModel::Select | QItemSelectionModel::Rows);
        const QPoint at(view->columnViewportPosition(1) + 40, view->rowViewportPosition(4) + 5);
        emit view->customContextMenuRequested(at);
        QApplication::processEvents();
        QWidget* menu = nullptr;
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (qobject_cast<QMenu*>(widget) && widget->isVisible())
                menu = widget;
        saveScreen(browser, "browser-context-menu", menu);
        if (menu)
            menu->close();
    }
    if (session.records.noteCount() > 0)
        browse(tav::ViewKind::AllNotes, 0, "browser-all-notes");
    window.windows().browser()->close();

    // The find window with the results of a search, collapsed and expanded.
    session.showWindow(tav::AppWindow::Find);
    tav::FindWindow* find = window.windows().findWindow();
    find->searchBox()->setText(QStringLiteral("john"));
    find->findButton()->click();
    save(find, "find-collapsed");
    save(find, "find-after-search");
    find->moreButton()->click();
    find->querySelector()->setCurrentIndex(2);
    save(find, "find-expanded");
    find->querySelector()->setCurrentIndex(7);
    find->goButton()->click();
    save(find, "find-after-query");
    find->close();

    saveTree(window, session);
    saveAncestors(window, session);

    tav::OptionsDialog options(session, store);
    save(&options, "options-general");
    options.tabs()->setCurrentIndex(1);
    save(&options, "options-tree");
    options.close();

    QMessageBox header(QMessageBox::NoIcon, tav::headerInformationTitle(),
                       tav::headerInformationLines(session.records).join(QLatin1Char('\n')),
                       QMessageBox::Ok, &window);
    save(&header, "header-box");
    return 0;
}
