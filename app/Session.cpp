// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Session.h"

#include "core/Fault.h"

namespace tav {

Session::Session(Messages& messages) : messages_(messages) {}

bool Session::guarded(const std::function<void()>& command)
{
    try {
        command();
        return true;
    } catch (const RuntimeFault& fault) {
        messages_.fault(fault);
        return false;
    }
}

void Session::showReport(const QString& text, const QString& title)
{
    report = {text, title};
    showWindow(AppWindow::Text);
}

int32_t& Session::currentSlot(ViewKind kind)
{
    switch (kind) {
    case ViewKind::Family: return curFam;
    case ViewKind::Source: return curSou;
    case ViewKind::Note: return curNote;
    default: return curInd;
    }
}

void Session::openBrowser(ViewKind kind, BrowserCaller caller)
{
    browser = {kind, caller, false};
    showWindow(AppWindow::List);
}

void Session::openBrowser(ViewKind kind, int32_t slot, BrowserCaller caller)
{
    currentSlot(kind) = slot;
    openBrowser(kind, caller);
}

}  // namespace tav
