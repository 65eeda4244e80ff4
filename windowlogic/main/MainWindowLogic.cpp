// SPDX-License-Identifier: GPL-3.0-or-later
#include "windowlogic/main/MainWindowLogic.h"

#include "app/Session.h"
#include "calc/DescendantCounting.h"
#include "calc/Names.h"
#include "calc/RelationshipFinder.h"
#include "core/DisplayText.h"
#include "core/FileNames.h"
#include "core/TextNumbers.h"
#include "settings/RegistryStore.h"
#include "settings/SettingsPersistence.h"
#include "windowlogic/main/HeaderInformation.h"
#include "windowlogic/main/HelpTopics.h"
#include "windowlogic/main/RecentFiles.h"
#include "windowlogic/main/WorkingFolder.h"

#include <QDir>

#include <algorithm>
#include <cmath>
#include <vector>

namespace tav {

MainWindowLogic::MainWindowLogic(Session& session, RegistryStore& store, QString programFolder)
    : session_(session), store_(store), programFolder_(std::move(programFolder))
{}

void MainWindowLogic::startUp(const QString& commandLine)
{
    // A relative path is taken from the folder the program was started in,
    // before the program moves to its working folder.
    QString path = commandLine;
    if (path.startsWith(QLatin1Char('"')))
        path.remove(0, 1);
    if (path.endsWith(QLatin1Char('"')))
        path.chop(1);
    if (!path.isEmpty())
        path = absoluteFileName(path);

    loadSettings(session_.settings, store_, QStringLiteral("ALL"));
    const Settings& settings = session_.settings;
    // At start the items carry the bare file names; the numbers come with the
    // first file opened.
    for (int i = 1; i <= settings.recentCount; ++i)
        recentItems_[size_t(i)] = {true,
                                   shownFileName(fileNamePart(settings.recentFiles[size_t(i)]))};
    recentSeparatorVisible_ = settings.recentCount > 0;
    session_.lineSeparator = QStringLiteral("\r\n");

    QDir::setCurrent(workingFolder(programFolder_));
    if (!path.isEmpty()) {
        QString name, folder;
        splitPath(path, name, folder);
        if (!folder.isEmpty())
            changeFolder(folder);
        openFile(path);
    } else if (!settings.autoLoadFile.isEmpty()) {
        openFile(settings.autoLoadFile);
    }
    if (!fileOpen_) {
        setMenus(false);
        caption_ = QStringLiteral("File not open!");
    }
}

void MainWindowLogic::shutDown()
{
    if (const Outcome saved = saveSettings(session_.settings, store_); !saved)
        session_.messages().warning(saved.message() + session_.lineSeparator +
                                    session_.lineSeparator +
                                    QStringLiteral("The settings of this session are lost; the "
                                                   "file keeps the settings it had."));
    session_.closeOtherWindows();
}

void MainWindowLogic::openFile(const QString& path)
{
    // While the file is read the caption names it alone; a file that cannot
    // be opened leaves the window as it was.
    const QString before = caption_;
    caption_ = shownFileName(path);
    if (const Outcome loaded = loadGedcom(session_, path, progress_); !loaded) {
        caption_ = before;
        session_.messages().warning(loaded.message());
        return;
    }
    caption_ = loadedCaption(session_.records);
    currentIndividualText_ = signedText(session_.curInd);
    shownIndividual_ = session_.curInd;
    // Whatever names slots of the old file goes: results, the first pick of
    // the relationship finder, the browser and the tree.
    session_.findResults = FindResults{};
    session_.relFirst = 0;
    findRelChecked_ = false;
    session_.notifyFileReplaced();
    fileOpen_ = true;
    setMenus(true);
    updateRecentItems(addRecentFile(session_.settings, path));
}

void MainWindowLogic::fileOpenChosen(const QString& path)
{
    if (!path.isEmpty())
        openFile(path);
}

void MainWindowLogic::recentFileChosen(int index)
{
    if (index < 1 || index > Settings::maxRecentFiles)
        return;
    const QString path = session_.settings.recentFiles[size_t(index)];
    // Anything there is opened, and a file that cannot be (a named pipe)
    // says why.
    if (path.trimmed().isEmpty() || fileKindOf(path) == FileKind::Missing) {
        session_.messages().warning(QStringLiteral("File not found."));
        return;
    }
    openFile(path);
}

void MainWindowLogic::updateRecentItems(bool grew)
{
    const Settings& settings = session_.settings;
    if (grew)
        recentItems_[size_t(settings.recentCount)].visible = true;
    for (int i = 1; i <= settings.recentCount; ++i)
        recentItems_[size_t(i)].caption = QStringLiteral("&%1 %2").arg(i - 1).arg(
            shownFileName(fileNamePart(settings.recentFiles[size_t(i)])));
    if (settings.recentCount == 1)
        recentSeparatorVisible_ = true;
}

namespace {

struct ShowChoice {
    const char* text;
    ViewKind viewKind;
    int32_t Session::*current;  // the current record taken from the box, or none
    ViewKind recordKind;        // the kind of record the box then names
};

const ShowChoice showTable[] = {
    {"all individuals", ViewKind::AllIndividuals, &Session::curInd, ViewKind::Individual},
    {"all families", ViewKind::AllFamilies, &Session::curFam, ViewKind::Family},
    {"current individual", ViewKind::Individual, &Session::curInd, ViewKind::Individual},
    {"current family", ViewKind::Family, &Session::curFam, ViewKind::Family},
    {"all notes", ViewKind::AllNotes, &Session::curNote, ViewKind::Note},
    {"all sources", ViewKind::AllSources, &Session::curSou, ViewKind::Source},
    {"all occupations", ViewKind::AllOccupations, nullptr, ViewKind::None},
    {"all birthdates and places", ViewKind::AllBirths, nullptr, ViewKind::None},
    {"all death dates and places", ViewKind::AllDeaths, nullptr, ViewKind::None},
    {"all marriage dates and places", ViewKind::AllMarriages, nullptr, ViewKind::None},
};

}  // namespace

QStringList MainWindowLogic::showChoices()
{
    QStringList choices;
    for (const ShowChoice& choice : showTable)
        choices << QString::fromLatin1(choice.text);
    return choices;
}

void MainWindowLogic::showChosen(int index)
{
    if (index < 0 || index >= int(std::size(showTable)))
        return;
    showIndex_ = index;
    const RecordStore& r = session_.records;
    if ((index == 0 && r.individualCount() > 10000) || (index == 1 && r.familyCount() > 10000)) {
        if (!session_.messages().ask(
                QStringLiteral("This may take some time. Do you wish to continue?")))
            return;
    }
    if (index == 4 && r.noteCount() == 0) {
        session_.messages().message(QStringLiteral("No notes."));
        return;
    }
    if (index == 5 && r.sourceCount() == 0) {
        session_.messages().message(QStringLiteral("No sources."));
        return;
    }
    const ShowChoice& choice = showTable[index];
    if (choice.current) {
        // The box names the record of the choice's kind; a number that names
        // none opens nothing for a single record, and leaves the current
        // record as it was for a list.
        const ViewKind kind = choice.recordKind;
        const int32_t slot = typedSlot(kind);
        if (slot != 0)
            session_.*choice.current = slot;
        else if (isRecordKind(choice.viewKind)) {
            refuseTypedNumber(kind);
            return;
        }
    }
    session_.openBrowser(choice.viewKind, BrowserCaller::MainWindow);
}

QStringList MainWindowLogic::treeChoices()
{
    return {QStringLiteral("family tree from current"), QStringLiteral("family tree from top"),
            QStringLiteral("ancestors of current")};
}

void MainWindowLogic::treeChosen(int index)
{
    if (index < 0 || index > 2)
        return;
    treeIndex_ = index;
    if (index == 0 || index == 2) {
        const int32_t slot = typedSlot(ViewKind::Individual);
        if (slot == 0) {
            refuseTypedNumber(ViewKind::Individual);
            return;
        }
        session_.curInd = slot;
    } else {
        if (session_.records.individualCount() == 0) {
            session_.messages().message(QStringLiteral("No individuals."));
            return;
        }
        // Every individual is scored; a line too deep to count stops it.
        int32_t top = 0;
        if (!session_.guarded([&] {
                top = individualWithMostDescendants(session_.records, session_.descendantCache);
            }))
            return;
        session_.curInd = top;
    }
    if (index == 2) {
        session_.showWindow(AppWindow::Ancestors);
        return;
    }
    session_.tree.treeBuilt = false;
    session_.showWindow(AppWindow::Tree);
}

int32_t MainWindowLogic::typedSlot(ViewKind kind) const
{
    const double value = std::nearbyint(numericValue(currentIndividualText_));
    return namesRecord(session_.records, kind, value < 0 || value > 1e9 ? -1 : int64_t(value))
               ? int32_t(value)
               : 0;
}

void MainWindowLogic::refuseTypedNumber(ViewKind kind) const
{
    const QString typed = currentIndividualText_.trimmed();
    session_.messages().warning(
        noSuchRecordText(kind, typed.isEmpty() ? QStringLiteral("0") : typed));
}

void MainWindowLogic::followCurrentIndividual()
{
    if (session_.curInd == shownIndividual_)
        return;
    shownIndividual_ = session_.curInd;
    currentIndividualText_ = signedText(session_.curInd);
}

QString MainWindowLogic::currentIndividualName() const
{
    const int32_t slot = typedSlot(ViewKind::Individual);
    return slot ? shortenedText(listName(session_.records, slot, session_.nameStyle())) : QString();
}

std::vector<MainWindowLogic::Completion> MainWindowLogic::completions(const QString& typed)
{
    std::vector<Completion> lines;
    if (!std::any_of(typed.begin(), typed.end(), [](QChar c) { return c.isLetter(); }))
        return lines;
    const RecordStore& records = session_.records;
    for (const int32_t slot : session_.nameSearch.find(records, typed, completionsShown)) {
        QString text = shortenedText(listName(records, slot, session_.nameStyle())) +
                       QStringLiteral(" (%1)").arg(slot);
        const QString years = personYears(records, slot, session_.today());
        if (!years.isEmpty())
            text += QStringLiteral("  ") + years;
        lines.push_back({slot, text});
    }
    return lines;
}

void MainWindowLogic::completionChosen(int32_t slot)
{
    if (namesRecord(session_.records, ViewKind::Individual, slot))
        currentIndividualText_ = signedText(slot);
}

void MainWindowLogic::testProgressBar()
{
    std::vector<QString> texts(25001);
    if (progress_.started)
        progress_.started(25000);
    for (int i = 0; i <= 25000; ++i) {
        texts[size_t(i)] = QString::number(i) + QStringLiteral("Initial value");
        if (progress_.advanced)
            progress_.advanced(i);
    }
    if (progress_.finished)
        progress_.finished();
}

void MainWindowLogic::currentIndividualEntered() { showChosen(2); }

void MainWindowLogic::findRelationshipClicked()
{
    // Each pick is the individual the box names.
    followCurrentIndividual();
    const int32_t picked = typedSlot(ViewKind::Individual);
    if (picked == 0) {
        refuseTypedNumber(ViewKind::Individual);
        return;
    }
    session_.curInd = picked;
    if (!findRelChecked_) {
        findRelChecked_ = true;
        session_.relFirst = session_.curInd;
        return;
    }
    findRelChecked_ = false;
    // The individual current now is worded against the one picked first.
    session_.guarded([this] {
        session_.showReport(relationshipText(session_.records, session_.curInd, session_.relFirst,
                                             session_.lineSeparator),
                            QStringLiteral("Find relationship"));
    });
}

void MainWindowLogic::showReport(ReportKind kind)
{
    session_.guarded(
        [this, kind] { session_.showReport(reportText(session_, kind), reportTitle(kind)); });
}

void MainWindowLogic::showMoreStatistics()
{
    session_.showWindow(WindowRequest{AppWindow::Find, true});
}

QString MainWindowLogic::findRelationshipCaption() const
{
    return findRelChecked_ ? QStringLiteral("Find relationship (%1)").arg(session_.relFirst)
                           : QStringLiteral("Find relationship");
}

void MainWindowLogic::showHeaderInformation()
{
    session_.messages().message(
        headerInformationLines(session_.records).join(QLatin1String("\r\n")),
        headerInformationTitle());
}

QString MainWindowLogic::aboutText(const QString& lineBreak)
{
    return QStringLiteral("Tav.exe ") + lineBreak + QStringLiteral("Version " TAV_VERSION) +
           lineBreak + lineBreak +
           QStringLiteral("A viewer and analyser of GEDCOM genealogy files.") + lineBreak +
           QStringLiteral("Written by the Tav developers with C++ and Qt ") +
           QString::fromLatin1(qVersion()) + QLatin1Char('.') + lineBreak + lineBreak +
           QStringLiteral("Copyright 2026 Wendrake Tav developers. Free software under the GNU "
                          "General Public License, version 3 or later (GPL-3.0-or-later), with "
                          "no warranty.") +
           lineBreak + QStringLiteral("https://github.com/wendrake/tav");
}

QString MainWindowLogic::creditText()
{
    return QStringLiteral("Tav, the GEDCOM viewer, is the work of the Tav developers.");
}

void MainWindowLogic::showAbout()
{
    // The About text is put together in the shared report text, as the
    // reports are.
    session_.report.text = aboutText(session_.lineSeparator);
    session_.messages().message(session_.report.text, QStringLiteral("About"));
}

void MainWindowLogic::showCredit() { session_.messages().message(creditText()); }

void MainWindowLogic::showHelp(int topic)
{
    if (topic < 0 || topic >= int(std::size(helpTopics)))
        return;
    const Result<QString> help = readHelpFile(programFolder_);
    if (!help) {
        session_.messages().warning(help.message());
        return;
    }
    session_.guarded([&] {
        session_.showReport(helpTopic(*help, QString::fromLatin1(helpTopics[topic].key)),
                            QString::fromLatin1(helpTopics[topic].title));
    });
}

void MainWindowLogic::setCurrentIndividualText(const QString& text)
{
    currentIndividualText_ = text;
}

QString MainWindowLogic::currentFolder() const { return QDir::currentPath(); }

}  // namespace tav
