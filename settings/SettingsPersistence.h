// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Outcome.h"

#include <QString>

namespace tav {

class RegistryStore;
struct Settings;

// Reads the settings of one section ("General", "Tree", "Window" or "ALL") from the
// current user's Software\Wendrake\Tav keys; missing values take their
// defaults, and the recent-file list stops at its first gap.
void loadSettings(Settings& settings, RegistryStore& store, const QString& section);

// Writes every setting back, all of them, as one replacement of the store.
// A failure names the settings file and why it could not be written (the
// file then keeps what it held).
Outcome saveSettings(const Settings& settings, RegistryStore& store);

// " 1fPrev" ... " 10fPrev": the number as printed, with its leading blank.
QString recentFileValueName(int i);

}  // namespace tav
