// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace tav {

class Session;

// The basic statistics report (title "Statistics"): the file and its
// counts, then the dates, ages, families, marriages, surnames and
// descendants of the whole file. Fills the descendant cache and the name
// tallies.
QStringList basicStatistics(Session& session);

}  // namespace tav
