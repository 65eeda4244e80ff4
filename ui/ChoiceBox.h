// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

class QComboBox;

namespace tav {

// Makes a drop-down list act only when a choice is made: a click on an item,
// or Enter. Arrow keys, Page Up/Down, Home, End and typed letters on the
// closed list only move its selection, and the mouse wheel does nothing, so
// the user can look through the items without each one running.
void actOnChoice(QComboBox* box, std::function<void(int index)> act);

}  // namespace tav
