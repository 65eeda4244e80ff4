// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/FindResults.h"

#include <QString>
#include <QStringList>
#include <optional>

namespace tav {

class Session;

// "Results (2 items found)"; the singular also for none.
QString resultsHeading(const FindResults& results);

// The lines of the results list: a header line for each kind that has
// results, then one line each ("I007. SMITH, John", "F7. ... & ...", "S3.
// title", "N2. text"), or "-------NO RECORDS-------" when there are none.
QStringList resultLines(const Session& session);

// The result a line of the list opens: its kind and its place in that kind's
// table. Headers (lines starting with "-") open nothing.
struct ResultPosition {
    FindResults::Kind kind;
    int32_t position;
};
std::optional<ResultPosition> resultAtLine(const FindResults& results, const QString& line,
                                           int lineIndex);

}  // namespace tav
