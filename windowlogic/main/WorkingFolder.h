// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tav {

// The folder the viewer makes current at start, where the tree's view file
// and the HTML report are written: its own folder when that folder takes
// new files (a copy run from its build or unpacked folder), else the user's
// data folder (an installed viewer, whose folder is a system one such as
// /usr/bin), created when needed. When even that cannot be made, the
// program's folder all the same.
QString workingFolder(const QString& programFolder);

// $XDG_DATA_HOME/Tav, or ~/.local/share/Tav when the variable is unset,
// empty or not an absolute path (relative ones are to be ignored).
QString userDataFolder();

// Whether a new file can be made in `folder`: tried with a short-lived
// probe file, since permission bits alone tell nothing for an administrator
// or a read-only mount.
bool canCreateFilesIn(const QString& folder);

}  // namespace tav
