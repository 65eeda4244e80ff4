// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Session.h"
#include "cli/CliCommands.h"
#include "cli/CliRun.h"
#include "core/FileNames.h"
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
    const QString path = run.args.size() > 1 ? run.args[1] : htmlReportPath();
    const Result<QString> written = writeHtmlDescendantsReport(run.session, *slot, path);
    if (!written) {
        run.output.err(written.message());
        return 1;
    }
    run.print(QDir::toNativeSeparators(shownFileName(*written)));
    return 0;
}

}  // namespace tav
