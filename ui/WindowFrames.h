// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/KeepOnTop.h"

#include <Qt>

class QAction;
class QMainWindow;
class QToolBar;
class QWidget;

namespace tav {

// Puts a window above all others or back among them, and shows the state
// on its "Top" button.
void applyKeepOnTop(QWidget* window, QAction* topButton, TopChange change);

// The toolbar of a window, fixed in place, and its "Top" button working on
// the window kind's program-wide flag.
QToolBar* addWindowToolbar(QMainWindow* window, int iconSize, Qt::ToolButtonStyle style);
QAction* addTopButton(QToolBar* toolbar, QWidget* window, bool& onTopFlag);

// Escape closes the window wherever the focus is inside it.
void closeOnEscape(QWidget* window);

}  // namespace tav
