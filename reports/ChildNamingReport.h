// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace tav {

class Session;

// The child naming report (title "Child naming"): how often families follow
// the traditional naming pattern, rule by rule, as "RULE: K of N (P%)" where
// N counts the families in which both names are known; then how many
// children bear a parent's first given name, and the families that follow
// every rule that applies to them.
QStringList childNamingReport(Session& session);

}  // namespace tav
