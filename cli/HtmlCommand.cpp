// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Session.h"
#include "calc/Ahnentafel.h"
#include "cli/CliCommands.h"
#include "cli/CliRun.h"
#include "core/FileNames.h"
#include "reports/HtmlAncestorsReport.h"
#include "reports/HtmlDescendantsReport.h"

#include <QDir>

namespace tav {

// A file that cannot be written is a failure of the outside world, as a
// GEDCOM file that cannot be opened is: exit status 1.
int htmlCommand(CliRun& run)
{
    const Result<int32_t> slot = run.slotArg(0, ViewKind::Individual);
    if (!slot)
        return run.refuse(slot.message());
    // [OUT] [--ancestors] [--generations N], in any order.
    QString out;
    bool ancestors = false, generationsGiven = false;
    int32_t generations = Ahnentafel::defaultGenerations;
    for (qsizetype i = 1; i < run.args.size(); ++i) {
        const QString& arg = run.args[i];
        if (arg == QLatin1String("--ancestors")) {
            ancestors = true;
        } else if (arg == QLatin1String("--generations")) {
            const Result<int32_t> given = generationsArgument(run.args.value(++i));
            if (!given)
                return run.refuse(given.message());
            generations = *given;
            generationsGiven = true;
        } else if (out.isEmpty() && !arg.startsWith(QLatin1String("--"))) {
            out = arg;
        } else {
            return run.refuse(
                usageProblem(QStringLiteral("unknown html argument \"%1\"").arg(arg)));
        }
    }
    if (generationsGiven && !ancestors)
        return run.refuse(usageProblem(QStringLiteral("--generations goes with --ancestors")));
    const Result<QString> written =
        ancestors ? writeHtmlAncestorsReport(run.session, *slot, generations,
                                             out.isEmpty() ? ancestorsReportPath() : out)
                  : writeHtmlDescendantsReport(run.session, *slot,
                                               out.isEmpty() ? htmlReportPath() : out);
    if (!written) {
        run.output.err(written.message());
        return 1;
    }
    run.print(QDir::toNativeSeparators(shownFileName(*written)));
    return 0;
}

}  // namespace tav
