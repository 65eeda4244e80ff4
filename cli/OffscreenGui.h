// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tav {

// Makes sure a QGuiApplication exists, on the offscreen platform when there
// is none yet, so that a command can measure and paint text without a
// display. It lives until the program ends.
void ensureOffscreenGui();

}  // namespace tav
