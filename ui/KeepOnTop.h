// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tav {

// A window's "Top" button. Each window kind has one program-wide flag that
// outlives its windows; a new window opens in the normal band whatever the
// flag says, so its first click inverts the flag it finds.
struct TopChange {
    bool topmost;        // put the window above all others, or back among them
    bool buttonPressed;  // how the "Top" button is shown
};

inline TopChange toggleKeepOnTop(bool& flag)
{
    flag = !flag;
    return {flag, flag};
}

}  // namespace tav
