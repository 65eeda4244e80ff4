#pragma once

#include "ui/KeepOnTop.h"

class QAction;
class QWidget;

namespace tav {

// Puts a window above all others or back among them, and shows the state
// on its "Top" button.
void applyKeepOnTop(QWidget* window, QAction* topButton, TopChange change);

// Escape closes the window wherever the focus is inside it.
void closeOnEscape(QWidget* window);

}  // namespace tav
