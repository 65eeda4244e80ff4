// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tav {

struct Settings;

// Splits a path into its file name and its folder (with the separator at its
// end). "\" and "/" both separate; a drive colon alone ("C:x.ged") gives the
// folder "C:\"; a bare name has the folder "".
void splitPath(const QString& path, QString& name, QString& folder);
QString fileNamePart(const QString& path);

// Puts `path` at the top of the recent-file list. An older copy of the same
// path (compared without regard to case) is dropped, so reopening the top
// file changes nothing; with ten entries the last falls off. Returns true
// when the list grew.
bool addRecentFile(Settings& settings, const QString& path);

}  // namespace tav
