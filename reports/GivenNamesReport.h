// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace tav {

class Session;

// The names report (title "Names"): the three name tallies of the store,
// filled anew, each as a section headed "Surnames: N distinct", "Given names
// of men: N distinct" or "Given names of women: N distinct", then one line
// per name, COUNT TAB NAME, most frequent first.
QStringList givenNamesReport(Session& session);

}  // namespace tav
