// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QRandomGenerator>
#include <QStringList>
#include <functional>
#include <vector>

class QWidget;

namespace tav {

class Session;

// Drives the viewer's windows the way an impatient user with no plan does:
// random clicks, double and right clicks, keys and shortcuts, wheel turns,
// resizes and menu commands, one every turn of the event loop, for a
// bounded time. Modal dialogs and menus get the events while they are up
// (as a user could do nothing else) and are closed when they have been up
// too long; at the end everything modal is closed, so no box is left
// waiting. The same seed gives the same actions.
class Monkey : public QObject {
public:
    // A window of the viewer and how a user opens it. Every window has
    // one; the monkey opens each in turn now and then, so each is driven.
    struct WindowOpener {
        const char* name;
        const char* className;  // of its widget, to check that it was driven
        std::function<void(Session&)> open;
    };

    // File dialogs are answered with `answerFile` or cancelled, never
    // explored: clicks there would make, rename and delete folders.
    Monkey(Session& session, QWidget* mainWindow, std::vector<WindowOpener> windows,
           QString answerFile, quint32 seed, qint64 milliseconds);

    // Runs until the time is up; then the problems seen, none when all went well.
    QStringList run();

    // How many actions went to each kind of window.
    const QMap<QString, int>& actionsByWindow() const { return actionsByWindow_; }
    int actions() const { return actions_; }
    // The last actions, newest last, written to standard error with nothing
    // but write(): safe in a signal handler, after a crash, when the heap may
    // be broken.
    static void writeLastActions();

private:
    void postStep();
    void step();
    // Closes one popup or modal dialog; false when there was none.
    bool closeOneModal();
    void act(QWidget* window);
    void click(QWidget* window);
    void key(QWidget* window);
    void wheel(QWidget* window);
    void resize(QWidget* window);
    void trigger(QWidget* window);
    void openWindow();
    void answerFileDialog(QWidget* modal);
    void checkForStrayBoxes();
    void note(const QString& action, QWidget* window);

    Session& session_;
    QPointer<QWidget> main_;
    std::vector<WindowOpener> windows_;
    QString answerFile_;
    QRandomGenerator random_;
    qint64 milliseconds_;
    QElapsedTimer clock_;
    QPointer<QWidget> modal_;  // the modal dialog of the last turns
    int modalTurns_ = 0;
    QPointer<QWidget> popup_;  // the menu or list of the last turns
    int popupTurns_ = 0;
    int actingLevel_ = -1;  // the event loop level of the action under way
    int actions_ = 0;
    size_t nextWindow_ = 0;
    QMap<QString, int> actionsByWindow_;
    QStringList problems_;
};

}  // namespace tav
