// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/monkey/Monkey.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QTest>
#include <QThread>
#include <QWheelEvent>
#include <QWindow>

#include <cstdio>
#include <cstring>
#include <unistd.h>
#include <utility>

namespace tav {

namespace {

// A modal dialog up for this many turns, or a menu or list up for a
// quarter of them, is closed, as a user gives up on it.
constexpr int patienceTurns = 80;
constexpr int recentKept = 40;

// The last actions as plain bytes, kept for writeLastActions.
char recentBytes[recentKept][200];
int recentNext = 0;

// Keys a user presses: moving, confirming and cancelling, editing, and the
// shortcuts of the windows' menus.
const char* const keyChoices[] = {
    "Return", "Esc",      "Tab",       "Shift+Backtab", "Up",     "Down",      "Left",
    "Right",  "PgUp",     "PgDown",    "Home",          "End",    "Backspace", "Del",
    "Space",  "F1",       "Ctrl+F",    "Ctrl+R",        "Ctrl+O", "Ctrl+,",    "Ctrl+C",
    "Ctrl+A", "Ctrl+T",   "Ctrl+S",    "Ctrl+P",        "Ctrl+G", "Ctrl++",    "Ctrl+-",
    "Ctrl+0", "Alt+Left", "Alt+Right", "Alt+F",         "Alt+V",  "Alt+H",     "Ctrl+Q"};

// Characters typed into boxes: digits for record numbers, letters and
// blanks for searches.
const char typed[] = "0123456789 0123456789 abcdefghijklmnopqrstuvwxyz -@/";

// A file dialog, or a part of one (its menus, its message boxes).
bool inFileDialog(const QObject* object)
{
    for (; object; object = object->parent()) {
        if (qobject_cast<const QFileDialog*>(object))
            return true;
    }
    return false;
}

// Events as the window system delivers them: to a window, which passes them
// on to the widget under the pointer or with the focus, shortcuts first.
// A window that goes away on the press (a menu) gets no release.
void sendKey(QWindow* window, int key, Qt::KeyboardModifiers modifiers, const QString& text)
{
    const QPointer<QWindow> target(window);
    qt_handleKeyEvent(target, QEvent::KeyPress, key, modifiers, text);
    QApplication::processEvents();
    if (target)
        qt_handleKeyEvent(target, QEvent::KeyRelease, key, modifiers, text);
    QApplication::processEvents();
}

// One click, or two in quick succession (a double click).
void sendClicks(QWindow* window, Qt::MouseButton button, QPoint at, int clicks)
{
    static int timestamp = 0;
    timestamp += 1000;  // apart from the clicks before
    const QPointer<QWindow> target(window);
    for (int n = 0; n < clicks && target; ++n) {
        const QPointF global = target->mapToGlobal(QPointF(at));
        qt_handleMouseEvent(target, at, global, button, button, QEvent::MouseButtonPress,
                            Qt::NoModifier, ++timestamp);
        QApplication::processEvents();
        if (!target)
            break;
        qt_handleMouseEvent(target, at, global, Qt::NoButton, button, QEvent::MouseButtonRelease,
                            Qt::NoModifier, ++timestamp);
        QApplication::processEvents();
    }
}

QString nameOf(const QWidget* window)
{
    return QString::fromLatin1(window->metaObject()->className());
}

// Top-level windows a user can see and reach, menus and tooltips aside.
QList<QWidget*> visibleWindows()
{
    QList<QWidget*> windows;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && widget->windowHandle() && widget->windowType() != Qt::ToolTip &&
            widget->windowType() != Qt::Popup)
            windows << widget;
    }
    return windows;
}

// Qt's own dialogs (the file, print and page set-up dialogs) check what is
// typed into them with boxes of their own ("file not found", "not
// writable"); those are theirs, not the viewer's.
bool askedByQtDialog(const QMessageBox* box)
{
    for (const QWidget* w = box->parentWidget(); w; w = w->parentWidget()) {
        if (qobject_cast<const QDialog*>(w) &&
            !QByteArray(w->metaObject()->className()).startsWith("tav::"))
            return true;
    }
    return false;
}

}  // namespace

Monkey::Monkey(Session& session, QWidget* mainWindow, std::vector<WindowOpener> windows,
               QString answerFile, quint32 seed, qint64 milliseconds)
    : session_(session), main_(mainWindow), windows_(std::move(windows)),
      answerFile_(std::move(answerFile)), random_(seed), milliseconds_(milliseconds)
{}

// Each step asks for the next before it acts: a step that opens a modal
// dialog or a menu runs the dialog's own event loop, where the next steps
// (posted events, unlike a timer's, which never fires inside its own
// handler) go on.
void Monkey::postStep() { QMetaObject::invokeMethod(this, &Monkey::step, Qt::QueuedConnection); }

QStringList Monkey::run()
{
    clock_.start();
    postStep();
    QApplication::exec();
    // Nothing may be left waiting for an answer.
    if (QWidget* modal = QApplication::activeModalWidget())
        problems_ << QStringLiteral("a modal %1 is still open at the end").arg(nameOf(modal));
    for (QWidget* window : visibleWindows()) {
        if (qobject_cast<QDialog*>(window))
            problems_ << QStringLiteral("a dialog %1 is still open at the end").arg(nameOf(window));
    }
    for (const WindowOpener& window : windows_) {
        if (actionsByWindow_.value(QLatin1String(window.className)) == 0)
            problems_ << QStringLiteral("the %1 got no actions").arg(QLatin1String(window.name));
    }
    return problems_;
}

void Monkey::writeLastActions()
{
    const auto put = [](const char* text) {
        ssize_t ignored = ::write(STDERR_FILENO, text, std::strlen(text));
        (void)ignored;
    };
    put("tav-monkey: the last actions before the end:\n");
    for (int i = 0; i < recentKept; ++i) {
        const char* line = recentBytes[(recentNext + i) % recentKept];
        if (*line) {
            put("  ");
            put(line);
            put("\n");
        }
    }
}

void Monkey::note(const QString& action, QWidget* window)
{
    const QString where = window ? nameOf(window) : QStringLiteral("-");
    ++actionsByWindow_[where];
    const QByteArray line =
        QStringLiteral("%1: %2 in %3").arg(++actions_).arg(action, where).toUtf8();
    std::snprintf(recentBytes[recentNext], sizeof recentBytes[0], "%s", line.constData());
    recentNext = (recentNext + 1) % recentKept;
    if (qEnvironmentVariableIsSet("TAV_MONKEY_VERBOSE"))
        std::fprintf(stderr, "%s\n", line.constData());
}

bool Monkey::closeOneModal()
{
    if (QWidget* popup = QApplication::activePopupWidget())
        popup->close();
    else if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
        dialog->reject();
    else if (QWidget* modal = QApplication::activeModalWidget())
        modal->close();
    else
        return false;
    return true;
}

void Monkey::step()
{
    // QTest delivers each event by running the pending events, this step
    // among them: an action that has not returned yet is finished first. A
    // modal dialog's event loop, one level deeper, is where the user goes on.
    const int level = QThread::currentThread()->loopLevel();
    if (actingLevel_ >= level) {
        postStep();
        return;
    }
    checkForStrayBoxes();
    if (clock_.elapsed() >= milliseconds_) {
        // Time is up: close what is modal, one a turn (each closing returns
        // from its own event loop), then the main window, then stop.
        if (closeOneModal()) {
            postStep();
            return;
        }
        if (main_)
            main_->close();
        QApplication::quit();
        return;
    }
    postStep();
    // A menu or modal dialog takes every event while it is up.
    QWidget* popup = QApplication::activePopupWidget();
    QWidget* dialog = QApplication::activeModalWidget();
    QWidget* modal = popup ? popup : dialog;
    if (modal && inFileDialog(modal)) {
        answerFileDialog(modal);
        return;
    }
    // Menus and lists come and go over a dialog; each has its own patience.
    popupTurns_ = popup && popup == popup_ ? popupTurns_ + 1 : 0;
    popup_ = popup;
    modalTurns_ = dialog && dialog == modal_ ? modalTurns_ + 1 : 0;
    modal_ = dialog;
    if ((popup && popupTurns_ > patienceTurns / 4) ||
        (!popup && dialog && modalTurns_ > patienceTurns)) {
        note(QStringLiteral("gave up and closed it"), modal);
        closeOneModal();
        return;
    }
    // The main window was closed (Exit): the user starts the viewer again.
    if (main_ && !main_->isVisible() && !modal) {
        main_->show();
        note(QStringLiteral("showed the main window again"), main_);
        return;
    }
    const int outer = std::exchange(actingLevel_, level);
    if (modal)
        act(modal);
    else if (random_.bounded(40) == 0)
        openWindow();
    else if (const QList<QWidget*> windows = visibleWindows(); !windows.isEmpty())
        act(windows[random_.bounded(int(windows.size()))]);
    actingLevel_ = outer;
}

void Monkey::act(QWidget* window)
{
    const int choice = random_.bounded(100);
    if (choice < 45)
        click(window);
    else if (choice < 75)
        key(window);
    else if (choice < 85)
        wheel(window);
    else if (choice < 90)
        resize(window);
    else
        trigger(window);
}

void Monkey::click(QWidget* window)
{
    const QPoint at(random_.bounded(std::max(1, window->width())),
                    random_.bounded(std::max(1, window->height())));
    const int kind = random_.bounded(10);
    const Qt::MouseButton button = kind < 7 ? Qt::LeftButton : Qt::RightButton;
    note(QStringLiteral("%1 %2 at %3,%4")
             .arg(QLatin1String(kind == 6 ? "double click" : "click"),
                  QLatin1String(kind < 7 ? "left" : "right"), QString::number(at.x()),
                  QString::number(at.y())),
         window);
    sendClicks(window->windowHandle(), button, at, kind == 6 ? 2 : 1);
}

void Monkey::key(QWidget* window)
{
    QWindow* handle = window->windowHandle();
    if (random_.bounded(3) == 0) {
        const char c = typed[random_.bounded(int(sizeof typed - 1))];
        note(QStringLiteral("typed '%1'").arg(QLatin1Char(c)), window);
        const int code = c >= 'a' && c <= 'z' ? Qt::Key_A + (c - 'a') : int(c);
        sendKey(handle, code, Qt::NoModifier, QString(QLatin1Char(c)));
        return;
    }
    const QKeyCombination k = QKeySequence::fromString(
        QLatin1String(keyChoices[random_.bounded(int(std::size(keyChoices)))]),
        QKeySequence::PortableText)[0];
    note(QStringLiteral("key %1").arg(QKeySequence(k).toString()), window);
    sendKey(handle, k.key(), k.keyboardModifiers(), QString());
}

void Monkey::wheel(QWidget* window)
{
    QList<QWidget*> widgets = window->findChildren<QWidget*>();
    widgets << window;
    widgets.removeIf([](const QWidget* w) { return !w->isVisible() || inFileDialog(w); });
    QWidget* target = widgets[random_.bounded(int(widgets.size()))];
    const QPoint at(random_.bounded(std::max(1, target->width())),
                    random_.bounded(std::max(1, target->height())));
    const int delta = random_.bounded(2) ? 120 : -120;
    const Qt::KeyboardModifiers modifiers =
        random_.bounded(4) == 0 ? Qt::ControlModifier : Qt::NoModifier;
    note(QStringLiteral("wheel %1%2 on %3")
             .arg(delta)
             .arg(modifiers ? " with Ctrl" : "")
             .arg(nameOf(target)),
         window);
    QWheelEvent event(at, target->mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton,
                      modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(target, &event);
}

void Monkey::resize(QWidget* window)
{
    const QSize size(120 + random_.bounded(1200), 80 + random_.bounded(900));
    note(QStringLiteral("resize to %1x%2").arg(size.width()).arg(size.height()), window);
    window->resize(size);
}

void Monkey::trigger(QWidget* window)
{
    // A command from the window's menus, toolbars or context menu, as a
    // user picks one: only those shown and enabled.
    QList<QAction*> actions;
    for (QAction* action : window->findChildren<QAction*>()) {
        if (action->isEnabled() && action->isVisible() && !action->isSeparator() &&
            !action->menu() && !inFileDialog(action))
            actions << action;
    }
    if (actions.isEmpty())
        return click(window);
    QAction* action = actions[random_.bounded(int(actions.size()))];
    note(QStringLiteral("command \"%1\"").arg(action->text()), window);
    action->trigger();
}

void Monkey::answerFileDialog(QWidget* modal)
{
    auto* dialog = qobject_cast<QFileDialog*>(modal);
    if (dialog && dialog->fileMode() == QFileDialog::ExistingFile && random_.bounded(2)) {
        note(QStringLiteral("chose %1").arg(answerFile_), modal);
        dialog->selectFile(answerFile_);
        QMetaObject::invokeMethod(dialog, "accept");
    } else {
        note(QStringLiteral("cancelled"), modal);
        closeOneModal();
    }
}

void Monkey::openWindow()
{
    const WindowOpener& window = windows_[nextWindow_++ % windows_.size()];
    note(QStringLiteral("opened the %1").arg(QLatin1String(window.name)), nullptr);
    window.open(session_);
}

// Every message of the viewer goes through the session's messages, which
// the monkey's session answers; a box of its own would wait for a user.
void Monkey::checkForStrayBoxes()
{
    for (QWidget* window : visibleWindows()) {
        auto* box = qobject_cast<QMessageBox*>(window);
        if (!box || askedByQtDialog(box))
            continue;
        problems_ << QStringLiteral("a message box not through the session's messages: \"%1\"")
                         .arg(box->text());
        box->reject();
    }
}

}  // namespace tav
