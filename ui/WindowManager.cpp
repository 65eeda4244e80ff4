// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/WindowManager.h"

#include "ui/ancestors/AncestorsWindow.h"
#include "ui/browser/BrowserWindow.h"
#include "ui/find/FindWindow.h"
#include "ui/options/OptionsDialog.h"
#include "ui/text/TextViewer.h"
#include "ui/tree/TreeWindow.h"

namespace tav {

WindowManager::WindowManager(Session& session, RegistryStore& store, QWidget* mainWindow)
    : QObject(mainWindow), session_(session), store_(store), mainWindow_(mainWindow)
{
    connect(&session_, &Session::windowRequested, this, &WindowManager::show);
    connect(&session_, &Session::otherWindowsCloseRequested, this, &WindowManager::closeAll);
    connect(&session_, &Session::fileReplaced, this, &WindowManager::fileReplaced);
}

WindowManager::~WindowManager()
{
    if (tree_) {
        tree_->hide();
        delete tree_.data();
    }
    if (ancestors_) {
        ancestors_->hide();
        delete ancestors_.data();
    }
}

namespace {

// The one window of its kind, made if needed, shown in front.
template <typename Window>
Window* bringUp(QPointer<Window>& window, Session& session)
{
    // A window closed a moment ago (another file was opened) deletes itself
    // once the event loop runs: a new one takes its place, or the window
    // asked for would vanish.
    if (window && !window->isVisible()) {
        window->deleteLater();
        window = nullptr;
    }
    if (!window)
        window = new Window(session);
    window->show();
    window->raise();
    window->activateWindow();
    return window;
}

}  // namespace

void WindowManager::show(const WindowRequest& request)
{
    switch (request.window) {
    case AppWindow::Text: bringUp(text_, session_)->refresh(); break;
    case AppWindow::List: bringUp(browser_, session_)->activateRequest(); break;
    case AppWindow::Find: {
        FindWindow* find = bringUp(find_, session_);
        if (request.showQueries && !find->logic().expanded()) {
            find->logic().moreLess();
            find->refresh();
        }
        break;
    }
    case AppWindow::Tree: {
        TreeWindow* tree = bringUp(tree_, session_);
        connect(tree, &TreeWindow::settingsEdited, this, &WindowManager::settingsChanged,
                Qt::UniqueConnection);
        tree->activateRequest();
        break;
    }
    case AppWindow::Ancestors: {
        AncestorsWindow* ancestors = bringUp(ancestors_, session_);
        connect(ancestors, &AncestorsWindow::settingsEdited, this, &WindowManager::settingsChanged,
                Qt::UniqueConnection);
        ancestors->activateRequest();
        break;
    }
    case AppWindow::Options: {
        OptionsDialog dialog(session_, store_, mainWindow_);
        if (dialog.exec() == QDialog::Accepted)
            settingsChanged();
        break;
    }
    }
}

TextViewer* WindowManager::textViewer() const { return text_; }

BrowserWindow* WindowManager::browser() const { return browser_; }

FindWindow* WindowManager::findWindow() const { return find_; }

TreeWindow* WindowManager::treeWindow() const { return tree_; }

AncestorsWindow* WindowManager::ancestorsWindow() const { return ancestors_; }

void WindowManager::fileReplaced()
{
    if (browser_)
        browser_->close();
    if (tree_) {
        tree_->close();
        tree_ = nullptr;  // a new tree is a new window, even before this one is gone
    }
    if (ancestors_) {
        ancestors_->close();
        ancestors_ = nullptr;
    }
    if (find_)
        find_->resultsCleared();
}

void WindowManager::settingsChanged()
{
    // Names and the tree's look follow the settings at once.
    if (browser_)
        browser_->reloadShown();
    if (find_)
        find_->relist();
    if (tree_)
        tree_->settingsChanged();
    if (ancestors_)
        ancestors_->settingsChanged();
    session_.notifyChanged();
}

void WindowManager::closeAll()
{
    // In the main window's order: text viewer, find window, browser, tree,
    // then the ancestors chart.
    if (text_)
        text_->close();
    if (find_)
        find_->close();
    if (browser_)
        browser_->close();
    if (tree_)
        tree_->close();
    if (ancestors_)
        ancestors_->close();
}

}  // namespace tav
