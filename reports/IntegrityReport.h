// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace tav {

class Session;

// The GEDCOM integrity report (title "GEDCOM integrity"): the file's
// problems grouped by kind, each group headed "KIND: N" and naming every
// record as NAME (slot) with its cross-reference; "No problems found." when
// there are none. One pass over the tables per check: linear, apart from
// the sorting of the ids (n log n).
QStringList integrityReport(Session& session);

}  // namespace tav
