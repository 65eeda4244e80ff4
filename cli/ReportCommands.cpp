// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Session.h"
#include "cli/CliCommands.h"
#include "cli/CliRun.h"
#include "reports/ReportKinds.h"

namespace tav {

int reportCommand(CliRun& run)
{
    const QString kindText = run.args.value(0);
    const std::optional<ReportKind> kind = reportKindFromText(kindText);
    if (!kind)
        return run.refuse(usageProblem(QStringLiteral("\"%1\" is not a report: Basic, GivenNames, "
                                                      "ChildNaming or GedcomIntegrity")
                                           .arg(kindText)));
    QString text;
    if (const int status = run.run([&] { text = reportText(run.session, *kind); }))
        return status;
    run.printReport(text);
    return 0;
}

}  // namespace tav
