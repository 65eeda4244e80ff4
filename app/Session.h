#pragma once

#include "app/FindResults.h"
#include "app/Messages.h"
#include "core/RecordStore.h"
#include "settings/Settings.h"

#include <QDate>
#include <QString>
#include <functional>

namespace tav {

// Windows that one window or routine asks to be shown.
enum class AppWindow { Text, List, Find, Options };

// The state the windows share: the record store, the current records, the
// texts one window leaves for another, and the user's settings. Every window
// and every tav-cli command works on one Session.
class Session {
public:
    explicit Session(Messages& messages);

    Messages& messages() { return messages_; }

    // Runs a command. A fault inside it is shown as "Error no: ..." and ends
    // the command there; the windows keep what they showed. False after a fault.
    bool guarded(const std::function<void()>& command);

    // Asks for a window; the viewer shows it, tav-cli and tests note the request.
    void showWindow(AppWindow window)
    {
        if (windowRequested)
            windowRequested(window);
    }
    std::function<void(AppWindow)> windowRequested;

    // Closes every window but the main one, as the main window does when it closes.
    void closeOtherWindows()
    {
        if (otherWindowsCloseRequested)
            otherWindowsCloseRequested();
    }
    std::function<void()> otherWindowsCloseRequested;

    // Today's date; tests fix it with setClock.
    QDate today() const { return clock_ ? clock_() : QDate::currentDate(); }
    void setClock(std::function<QDate()> clock) { clock_ = std::move(clock); }

    RecordStore records;
    Settings settings;

    int32_t curInd = 0;
    int32_t curFam = 0;
    int32_t curSou = 0;
    int32_t curNote = 0;

    // Line break of every report and message text.
    QString lineSeparator = QStringLiteral("\r\n");

    // The report the text viewer shows, and its caption.
    QString reportText;
    QString reportTitle;

    // What the main window shows: its caption and the current-individual box.
    QString mainCaption;
    QString currentIndividualText;

    // What the record browser is asked to show: "IND", "FAM", "SOU", "NOT" or a
    // list kind ("ALLINDS" ...), who asked ("frmTav" or "frmFind"), and
    // whether the request has been loaded.
    QString viewKind;
    QString listCaller;
    bool listLoaded = false;

    // The first individual picked for the relationship finder.
    int32_t relFirst = 0;

    // Whether each window was last put above all others ("Top" button).
    bool textViewerOnTop = false;
    bool browserOnTop = false;
    bool findOnTop = false;

    // The results of the last find or statistical query.
    FindResults findResults;

private:
    Messages& messages_;
    std::function<QDate()> clock_;
};

}  // namespace tav
