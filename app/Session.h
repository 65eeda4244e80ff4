// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/Messages.h"
#include "app/ViewKinds.h"
#include "calc/DescendantCounting.h"
#include "calc/FindResults.h"
#include "calc/NameTallies.h"
#include "calc/PersonNameSearch.h"
#include "calc/Names.h"
#include "core/RecordStore.h"
#include "settings/Settings.h"

#include <QDate>
#include <QObject>
#include <QString>
#include <chrono>
#include <functional>

namespace tav {

// Windows that one window or routine asks to be shown.
enum class AppWindow { Text, List, Find, Options, Tree, Ancestors };

// A request for a window, with what the window needs to know beyond the
// session's state.
struct WindowRequest {
    AppWindow window;
    bool showQueries = false;  // the find window opens with its queries shown
};

// What the record browser is asked to show: the view kind (the slot is the
// session's current record of that kind), who asked, and whether the
// browser has loaded the request yet.
struct BrowserRequest {
    ViewKind viewKind = ViewKind::None;
    BrowserCaller caller = BrowserCaller::MainWindow;
    bool loaded = false;
};

// The report the text viewer shows, and its caption.
struct Report {
    QString text;
    QString title;
};

// Whether each kind of window was last put above all others ("Top" button).
// The flags outlive the windows.
struct KeepOnTopFlags {
    bool textViewer = false;
    bool browser = false;
    bool find = false;
    bool tree = false;
    bool ancestors = false;
};

// What the windows know of the family tree window: whether it must build its
// tree anew when next activated, and whether a previous view is kept for
// "GoBack".
struct TreeFlags {
    bool treeBuilt = false;
    bool prevViewSaved = false;
};

// The state the windows share: the record store, the current records, the
// requests one window leaves for another, and the user's settings. Every
// window and every tav-cli command works on one Session.
//
// The session tells the windows what happens through its signals: any
// number of windows listen, each connected with itself as the context, so
// a window that closes stops listening.
class Session : public QObject {
    Q_OBJECT
public:
    explicit Session(Messages& messages);

    Messages& messages() { return messages_; }

    // Runs a command. A fault inside it is shown as "Error no: ..." and ends
    // the command there; the windows keep what they showed. False after a fault.
    bool guarded(const std::function<void()>& command);

    // Asks for a window; the viewer shows it, tav-cli and tests note the request.
    void showWindow(const WindowRequest& request) { emit windowRequested(request); }
    void showWindow(AppWindow window) { showWindow(WindowRequest{window}); }

    // Puts a report in the text viewer and shows it.
    void showReport(const QString& text, const QString& title);

    // Asks the record browser to show a kind: a record kind shows the
    // current record of that kind, which `slot` becomes when given.
    void openBrowser(ViewKind kind, BrowserCaller caller);
    void openBrowser(ViewKind kind, int32_t slot, BrowserCaller caller);

    // Closes every window but the main one, as the main window does when it closes.
    void closeOtherWindows() { emit otherWindowsCloseRequested(); }

    // Another file was opened: the windows that hold slots of the old one
    // (the browser, the tree) close, and the find window empties its list.
    void notifyFileReplaced() { emit fileReplaced(); }

    // A window changed what others show (the current individual, the
    // settings): they bring themselves up to date.
    void notifyChanged() { emit changed(); }

    // Today's date; tests fix it with setToday. Asked for each of 40000
    // people by a report, so the system's date (which looks up the time
    // zone on disk each time) is read again only after a second.
    QDate today() const
    {
        if (fixedToday_.isValid())
            return fixedToday_;
        const auto now = std::chrono::steady_clock::now();
        if (!systemToday_.isValid() || now - todayReadAt_ > std::chrono::seconds(1)) {
            systemToday_ = QDate::currentDate();
            todayReadAt_ = now;
        }
        return systemToday_;
    }
    void setToday(QDate date) { fixedToday_ = date; }

    // How names are shown, from the settings.
    NameStyle nameStyle() const { return {settings.SurnameStyle, settings.SurnamePosn}; }

    // The current record of a record kind (the individual for any other kind).
    int32_t& currentSlot(ViewKind kind);

    RecordStore records;
    Settings settings;

    // What the calculations learn about the loaded file and keep until the
    // next load: the descendant numbers counted so far, the name reports'
    // tallies, and the names folded for finding people as they are typed.
    DescendantCache descendantCache;
    NameTallies nameTallies;
    PersonNameSearch nameSearch;

    // The current individual, family, source and note: the slots the
    // windows show and pass to each other.
    int32_t curInd = 0;
    int32_t curFam = 0;
    int32_t curSou = 0;
    int32_t curNote = 0;

    // Line break of every report and message text.
    QString lineSeparator = QStringLiteral("\r\n");

    Report report;           // what the text viewer shows
    BrowserRequest browser;  // what the record browser is asked to show
    KeepOnTopFlags onTop;
    TreeFlags tree;

    // The first individual picked for the relationship finder.
    int32_t relFirst = 0;

    // The results of the last find or statistical query.
    FindResults findResults;

signals:
    void windowRequested(const tav::WindowRequest& request);
    void otherWindowsCloseRequested();
    void fileReplaced();
    void changed();

private:
    Messages& messages_;
    QDate fixedToday_;  // invalid: the system's date
    mutable QDate systemToday_;
    mutable std::chrono::steady_clock::time_point todayReadAt_;
};

}  // namespace tav
