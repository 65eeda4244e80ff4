// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/Names.h"
#include "reports/ReportFile.h"

#include <QByteArray>
#include <QDate>
#include <QString>
#include <cstdint>

namespace tav {

class RecordStore;
class Session;

// "tav-ancestors.htm" in the folder; by default the current directory, where
// "tav.htm" lies too.
QString ancestorsReportPath(const QString& folder = QString());

// The forebears of `root` over `generations` (2 to 10) as one HTML5 page in
// UTF-8, for the browser and the printer: the heading "Ancestors of NAME",
// then generation by generation each couple of parents with their
// numbers (the root 1, the father of n 2n, the mother 2n + 1), their years
// and their marriage, and whose parents they are. An ancestor reached along
// several lines is written in full at the first number, and every other
// number links to it (and it to them); their forebears are not repeated.
// People who may be living get no years, and their marriages no date or
// place. Names as the descendants page writes them; the page needs nothing
// beside it. Never faults.
QByteArray htmlAncestorsReport(const RecordStore& records, NameStyle style, QDate today,
                               int32_t root, int generations);

// The page of the session's file, with its settings and date, written
// atomically to `path`; gives the file's absolute path.
Result<QString> writeHtmlAncestorsReport(Session& session, int32_t root, int generations,
                                         const QString& path = ancestorsReportPath());

}  // namespace tav
