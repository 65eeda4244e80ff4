// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Session.h"
#include "calc/Ahnentafel.h"
#include "calc/Names.h"
#include "cli/CliCommands.h"
#include "cli/CliRun.h"

namespace tav {

// One line a known place, in ascending numbers: the number, the name and
// the slot; a person met again gives "= " and the first number instead,
// and the places above it are empty.
int ancestorsCommand(CliRun& run)
{
    const Result<int32_t> slot = run.slotArg(0, ViewKind::Individual);
    if (!slot)
        return run.refuse(slot.message());
    int32_t generations = Ahnentafel::defaultGenerations;
    if (run.args.size() > 1) {
        if (run.args[1] != QLatin1String("--generations") || run.args.size() != 3)
            return run.refuse(
                usageProblem(QStringLiteral("ancestors takes SLOT [--generations N]")));
        const Result<int32_t> given = generationsArgument(run.args[2]);
        if (!given)
            return run.refuse(given.message());
        generations = *given;
    }
    const Ahnentafel chart(run.session.records, *slot, generations);
    for (const int32_t number : chart.places()) {
        if (const int32_t first = chart.firstNumberOf(number); first != 0) {
            run.print(QStringLiteral("%1\t= %2").arg(number).arg(first));
            continue;
        }
        const int32_t person = chart.individualAt(number);
        run.print(QStringLiteral("%1\t%2\t%3")
                      .arg(number)
                      .arg(escaped(listName(run.session.records, person, run.session.nameStyle())))
                      .arg(person));
    }
    return 0;
}

}  // namespace tav
