// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/ReportKinds.h"

#include "app/Session.h"
#include "reports/BasicStatistics.h"
#include "reports/ChildNamingReport.h"
#include "reports/GivenNamesReport.h"
#include "reports/IntegrityReport.h"

namespace tav {

namespace {

struct KindTexts {
    ReportKind kind;
    const char* text;
    const char* title;
};

const KindTexts kindTable[] = {
    {ReportKind::Basic, "Basic", "Statistics"},
    {ReportKind::GivenNames, "GivenNames", "Names"},
    {ReportKind::ChildNaming, "ChildNaming", "Child naming"},
    {ReportKind::GedcomIntegrity, "GedcomIntegrity", "GEDCOM integrity"},
};

const KindTexts& textsOf(ReportKind kind) { return kindTable[int(kind)]; }

}  // namespace

QString reportKindText(ReportKind kind) { return QString::fromLatin1(textsOf(kind).text); }

std::optional<ReportKind> reportKindFromText(QStringView text)
{
    for (const KindTexts& entry : kindTable) {
        if (text == QLatin1String(entry.text))
            return entry.kind;
    }
    return std::nullopt;
}

QString reportTitle(ReportKind kind) { return QString::fromLatin1(textsOf(kind).title); }

QString reportText(Session& session, ReportKind kind)
{
    QStringList lines;
    switch (kind) {
    case ReportKind::Basic: lines = basicStatistics(session); break;
    case ReportKind::GivenNames: lines = givenNamesReport(session); break;
    case ReportKind::ChildNaming: lines = childNamingReport(session); break;
    case ReportKind::GedcomIntegrity: lines = integrityReport(session); break;
    }
    return lines.join(session.lineSeparator);
}

}  // namespace tav
