// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>

namespace tav {

// An icon of the program's own set by name ("open", "find", "top" ...).
QIcon tavIcon(const char* name);

}  // namespace tav
