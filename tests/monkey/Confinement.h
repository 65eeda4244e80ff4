// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tav {

// Shuts the process in: every file system becomes read-only for it, and
// /tmp becomes an empty file system of its own, the one place it can write.
// Whatever the monkey clicks (a file dialog's Delete, Rename, New Folder),
// nothing outside its own /tmp can change, and nothing is left behind.
// Must run before any thread starts. "" when done, else why it could not.
QString confineWritesToPrivateTmp();

}  // namespace tav
