// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/GedcomLoading.h"
#include "app/ViewKinds.h"
#include "reports/ReportKinds.h"

#include <QString>
#include <QStringList>
#include <array>
#include <vector>

namespace tav {

class RegistryStore;
class Session;

// What the main window does and shows, without the window: start-up and
// shut-down, opening files and the recent-file list, the relationship
// command, help, About and the header box. The widget renders this state
// after each call and forwards its events here.
class MainWindowLogic {
public:
    struct RecentItem {
        bool visible = false;
        QString caption;
    };

    MainWindowLogic(Session& session, RegistryStore& store, QString programFolder);

    // Drives the progress bar of every load.
    void setLoadProgress(LoadProgress progress) { progress_ = std::move(progress); }

    // Loading the window: settings, recent-file items, then the file named on
    // the command line (quotes allowed; a relative path is taken from the
    // current folder at start; its folder becomes the current one) or else
    // the auto-load file.
    void startUp(const QString& commandLine);
    // Unloading the window: save the settings (a save that fails is told,
    // and the program goes on) and close every other window.
    void shutDown();

    void openFile(const QString& path);
    // File Open answered: the chosen path, or "" when cancelled.
    void fileOpenChosen(const QString& path);
    void recentFileChosen(int index);

    // The "Show" selector: what the record browser is to show.
    static QStringList showChoices();
    int showIndex() const { return showIndex_; }
    // A choice in the selector (its Go button repeats it).
    void showChosen(int index);
    // The tree selector: where the family tree starts.
    static QStringList treeChoices();
    int treeIndex() const { return treeIndex_; }
    // A choice in the tree selector (its Go button and Ctrl+T repeat it):
    // "from current" the individual in the box, "from top" the individual
    // with most descendants; "ancestors of current" the ancestors chart of
    // the individual in the box.
    void treeChosen(int index);
    // Enter in the current-individual box shows that individual.
    void currentIndividualEntered();
    // The box follows the current individual when another window changes it.
    void followCurrentIndividual();
    // The name of the individual the box names, or "" when it names none.
    QString currentIndividualName() const;

    // The box also takes a name: the people whose names hold the words
    // typed, best first, as the list under the box offers them ("SMITH,
    // John (12)  (b.1850  d.1910)"). None while the box holds no letter: a
    // number is taken as it always was.
    struct Completion {
        int32_t slot;
        QString text;
    };
    static constexpr int completionsShown = 50;
    std::vector<Completion> completions(const QString& typed);
    // A person picked from that list: the box holds their number.
    void completionChosen(int32_t slot);

    // The progress-bar exercise: 25001 texts made while the bar moves.
    void testProgressBar();

    void findRelationshipClicked();
    // A text report of the View menu, shown in the text viewer under its title.
    void showReport(ReportKind kind);
    // "More statistics": the find window with its queries shown.
    void showMoreStatistics();
    void showHeaderInformation();
    void showAbout();
    void showCredit();
    void showHelp(int topic);

    // The state the window shows.
    bool commandsEnabled() const { return commandsEnabled_; }
    bool fileOpen() const { return fileOpen_; }
    const QString& caption() const { return caption_; }
    const QString& currentIndividualText() const { return currentIndividualText_; }
    void setCurrentIndividualText(const QString& text);
    bool findRelationshipChecked() const { return findRelChecked_; }
    QString findRelationshipCaption() const;
    const std::array<RecentItem, 11>& recentItems() const { return recentItems_; }
    bool recentSeparatorVisible() const { return recentSeparatorVisible_; }
    QString currentFolder() const;

    static QString aboutText(const QString& lineBreak);
    static QString creditText();

private:
    void setMenus(bool enable) { commandsEnabled_ = enable; }
    void updateRecentItems(bool grew);
    // The number in the box as a slot of a record kind; 0 when it names no
    // record of that kind.
    int32_t typedSlot(ViewKind kind) const;
    // Tells the user that the box names no record of that kind.
    void refuseTypedNumber(ViewKind kind) const;

    Session& session_;
    RegistryStore& store_;
    QString programFolder_;
    LoadProgress progress_;
    QString caption_;
    QString currentIndividualText_;
    int32_t shownIndividual_ = 0;  // the current individual the box last followed
    bool commandsEnabled_ = false;
    bool fileOpen_ = false;
    bool findRelChecked_ = false;
    int showIndex_ = 0;
    int treeIndex_ = 1;
    std::array<RecentItem, 11> recentItems_;
    bool recentSeparatorVisible_ = false;
};

}  // namespace tav
