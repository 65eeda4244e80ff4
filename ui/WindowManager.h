// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/Session.h"

#include <QObject>
#include <QPointer>

class QWidget;

namespace tav {

class RegistryStore;
class BrowserWindow;
class FindWindow;
class TextViewer;
class TreeWindow;

// Opens the windows the session asks for (one instance of each, created on
// demand) and closes them all when the main window goes.
class WindowManager : public QObject {
    Q_OBJECT
public:
    WindowManager(Session& session, RegistryStore& store, QWidget* mainWindow);
    // The tree window goes with it: it works on the session's records.
    ~WindowManager() override;

    void show(const WindowRequest& request);
    void closeAll();
    // Another file was opened: the windows that hold its old slots let go.
    void fileReplaced();
    // The options were changed: every open window shows them.
    void settingsChanged();

    TextViewer* textViewer() const;
    BrowserWindow* browser() const;
    FindWindow* findWindow() const;
    TreeWindow* treeWindow() const;

private:
    Session& session_;
    RegistryStore& store_;
    QWidget* mainWindow_;
    QPointer<TextViewer> text_;
    QPointer<BrowserWindow> browser_;
    QPointer<FindWindow> find_;
    QPointer<TreeWindow> tree_;
};

}  // namespace tav
