// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GedcomLoading.h"
#include "app/Session.h"
#include "cli/CliCommands.h"
#include "cli/CliRun.h"
#include "windowlogic/browser/BrowserLogic.h"
#include "windowlogic/main/HeaderInformation.h"

namespace tav {

int infoCommand(CliRun& run)
{
    const RecordStore& records = run.session.records;
    run.print(loadedCaption(records));
    run.print(QStringLiteral("Sources: %1").arg(records.sourceCount()));
    run.print(QStringLiteral("Notes: %1").arg(records.noteCount()));
    for (const QString& line : headerInformationLines(records))
        run.print(line);
    return 0;
}

int showCommand(CliRun& run)
{
    const bool csv = run.args.removeAll(QStringLiteral("--csv")) > 0;
    const ViewKind kind = viewKindFromCode(run.args.value(0));
    if (isRecordKind(kind)) {
        if (run.args.size() != 2)
            return run.refuse(
                usageProblem(QStringLiteral("%1 needs a SLOT").arg(run.args.value(0))));
        const Result<int32_t> slot = run.slotArg(1, kind);
        if (!slot)
            return run.refuse(slot.message());
        run.session.currentSlot(kind) = *slot;
    } else if (!isListKind(kind) || run.args.size() != 1) {
        return run.refuse(usageProblem(
            QStringLiteral("\"%1\" is not a kind to show").arg(run.args.join(QLatin1Char(' ')))));
    }
    BrowserLogic browser(run.session);
    run.session.browser.viewKind = kind;
    run.session.browser.caller = BrowserCaller::MainWindow;
    if (!browser.gridLoad())
        return 3;
    if (csv)
        printGridCsv(run, browser);
    else
        printGrid(run, browser);
    return 0;
}

}  // namespace tav
