// SPDX-License-Identifier: GPL-3.0-or-later
// tav-screenshots FILE OUTDIR: saves pictures of the windows on FILE, for
// looking at them as a user would (run under Xvfb: scripts/screenshots.sh).
#include "app/Messages.h"
#include "app/Session.h"
#include "settings/RegistryStore.h"
#include "ui/WindowManager.h"
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
#include <QDir>
#include <QMessageBox>
#include <QTabWidget>
#include <QTemporaryDir>
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
        tree->canvas()->showTopAtTop();
        save(tree, name.constData());
    };
    // A command on a person, then its picture.
    const auto command = [&](int32_t slot, TreeCommand which, const char* name) {
        tree->select(slot);
        tree->action(which)->trigger();
        shoot(name);
    };
    shoot("tree-from-top");
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
    save(&window, "main-window");

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
    window.windows().textViewer()->close();

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
    window.windows().browser()->close();

    // The find window with the results of a search, collapsed and expanded.
    session.showWindow(tav::AppWindow::Find);
    tav::FindWindow* find = window.windows().findWindow();
    find->searchBox()->setText(QStringLiteral("john"));
    find->findButton()->click();
    save(find, "find-collapsed");
    find->moreButton()->click();
    find->querySelector()->setCurrentIndex(2);
    save(find, "find-expanded");
    find->querySelector()->setCurrentIndex(7);
    find->goButton()->click();
    save(find, "find-after-query");
    find->close();

    saveTree(window, session);

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
