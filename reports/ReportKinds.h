// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>
#include <optional>

namespace tav {

class Session;

// The text reports of the main window's View menu and of tav-cli report.
enum class ReportKind { Basic, GivenNames, ChildNaming, GedcomIntegrity };

// The kind as tav-cli takes it: "Basic", "GivenNames", "ChildNaming",
// "GedcomIntegrity"; the kind of such a text, or none.
QString reportKindText(ReportKind kind);
std::optional<ReportKind> reportKindFromText(QStringView text);

// The text viewer's caption for the report.
QString reportTitle(ReportKind kind);

// The report's text for the loaded file, lines ending with the session's
// line break. Never faults; may fill the descendant cache and the name
// tallies of the store.
QString reportText(Session& session, ReportKind kind);

}  // namespace tav
