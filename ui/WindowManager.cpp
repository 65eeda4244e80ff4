#include "ui/WindowManager.h"

#include "ui/browser/BrowserWindow.h"
#include "ui/find/FindWindow.h"
#include "ui/options/OptionsDialog.h"
#include "ui/text/TextViewer.h"

namespace tav {

WindowManager::WindowManager(Session& session, RegistryStore& store, QWidget* mainWindow)
    : QObject(mainWindow), session_(session), store_(store), mainWindow_(mainWindow)
{
    session_.windowRequested = [this](AppWindow window) { show(window); };
    session_.otherWindowsCloseRequested = [this] { closeAll(); };
}

void WindowManager::show(AppWindow window)
{
    switch (window) {
    case AppWindow::Text:
        if (!text_)
            text_ = new TextViewer(session_);
        text_->refresh();
        text_->show();
        text_->raise();
        text_->activateWindow();
        break;
    case AppWindow::List:
        if (!browser_)
            browser_ = new BrowserWindow(session_);
        browser_->show();
        browser_->raise();
        browser_->activateWindow();
        browser_->activateRequest();
        break;
    case AppWindow::Find:
        if (!find_)
            find_ = new FindWindow(session_);
        find_->show();
        find_->raise();
        find_->activateWindow();
        break;
    case AppWindow::Options: {
        OptionsDialog dialog(session_, store_, mainWindow_);
        dialog.exec();
        break;
    }
    }
}

TextViewer* WindowManager::textViewer() const { return text_; }

BrowserWindow* WindowManager::browser() const { return browser_; }

FindWindow* WindowManager::findWindow() const { return find_; }

void WindowManager::closeAll()
{
    // In the main window's order: text viewer, find window, browser.
    if (text_)
        text_->close();
    if (find_)
        find_->close();
    if (browser_)
        browser_->close();
}

}  // namespace tav
