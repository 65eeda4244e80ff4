// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/Names.h"
#include "reports/ReportFile.h"

#include <QByteArray>
#include <QDate>
#include <QString>
#include <cstdint>

namespace tav {

class DescendantCache;
class RecordStore;
class Session;

// "tav.htm" in the folder; by default the current directory, which the
// viewer keeps as its working folder.
QString htmlReportPath(const QString& folder = QString());

// The descendants of `top` (a slot of the file) as one HTML5 page in UTF-8, for the browser and
// the printer: the heading "Descendants of NAME", the three descendant
// counts (or why they cannot be counted), then the whole descendancy as
// nested lists, generation by generation: each descendant with the years of
// personYears, each spouse family with the spouse, the marriage date and
// place, and the children. Each person is written once; later meetings
// refer to the first. People who may be living get no years, and their
// marriages no date or place. The page needs nothing beside it: its
// stylesheet is inside and it has no scripts.
//
// Names are the surname styled and placed by `style` and the given part as
// written (flags 33); a name without a surname, or without given names, is
// written without the comma or blank that would join the two.
//
// Never faults; the descendant counts are kept in `descendants`.
QByteArray htmlDescendantsReport(const RecordStore& records, DescendantCache& descendants,
                                 NameStyle style, QDate today, int32_t top);

// The page of the session's file, with its settings and date, written
// atomically to `path`; gives the file's absolute path.
Result<QString> writeHtmlDescendantsReport(Session& session, int32_t top,
                                           const QString& path = htmlReportPath());

}  // namespace tav
