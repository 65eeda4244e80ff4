// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>

namespace tav {

class Messages;

// The viewer's application object. Commands guard the routines that may
// fault; this is the net under them: a fault that still escapes an event
// handler is shown as every fault is ("Error no: ..."), and the viewer goes
// on instead of ending.
class FaultCatchingApplication : public QApplication {
public:
    FaultCatchingApplication(int& argc, char** argv) : QApplication(argc, argv) {}

    // Where faults are shown; none (the default) lets them end the program.
    void setMessages(Messages* messages) { messages_ = messages; }

    bool notify(QObject* receiver, QEvent* event) override;

private:
    Messages* messages_ = nullptr;
};

}  // namespace tav
