// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/Session.h"

#include <QObject>
#include <QPointer>

class QWidget;

namespace tav {

class RegistryStore;
class AncestorsWindow;
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
    // The tree window and the ancestors chart go with it: they work on the
    // session's records.
    ~WindowManager() override;

    void show(const WindowRequest& request);
    void closeAll();
    // Another file was opened: the windows that hold its old slots let go.
    void fileReplaced();
    // The options were changed (in the options dialog, the tree window or
    // the ancestors chart): every open window shows them.
    void settingsChanged();

    TextViewer* textViewer() const;
    BrowserWindow* browser() const;
    FindWindow* findWindow() const;
    TreeWindow* treeWindow() const;
    AncestorsWindow* ancestorsWindow() const;

private:
    Session& session_;
    RegistryStore& store_;
    QWidget* mainWindow_;
    QPointer<TextViewer> text_;
    QPointer<BrowserWindow> browser_;
    QPointer<FindWindow> find_;
    QPointer<TreeWindow> tree_;
    QPointer<AncestorsWindow> ancestors_;
};

}  // namespace tav
