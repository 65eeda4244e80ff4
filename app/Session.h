#pragma once

#include "app/Messages.h"
#include "core/RecordStore.h"

#include <QDate>
#include <QString>
#include <functional>

namespace tav {

// The state the windows share: the record store, the current records, the
// texts one window leaves for another, and the user's settings. Every window
// and every tav-cli command works on one Session.
class Session {
public:
    explicit Session(Messages& messages);

    Messages& messages() { return messages_; }

    // Today's date; tests fix it with setClock.
    QDate today() const { return clock_ ? clock_() : QDate::currentDate(); }
    void setClock(std::function<QDate()> clock) { clock_ = std::move(clock); }

    RecordStore records;

    int32_t curInd = 0;
    int32_t curFam = 0;
    int32_t curSou = 0;
    int32_t curNote = 0;

    // Line break of every report and message text.
    QString lineSeparator = QStringLiteral("\r\n");

    // What the main window shows: its caption and the current-individual box.
    QString mainCaption;
    QString currentIndividualText;

private:
    Messages& messages_;
    std::function<QDate()> clock_;
};

}  // namespace tav
