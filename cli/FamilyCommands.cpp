// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Session.h"
#include "calc/DescendantCounting.h"
#include "calc/RelationshipFinder.h"
#include "cli/CliCommands.h"
#include "cli/CliRun.h"

namespace tav {

int relateCommand(CliRun& run)
{
    const Result<int32_t> a = run.slotArg(0, ViewKind::Individual);
    if (!a)
        return run.refuse(a.message());
    const Result<int32_t> b = run.slotArg(1, ViewKind::Individual);
    if (!b)
        return run.refuse(b.message());
    QString text;
    if (const int status = run.run([&] {
            text = relationshipText(run.session.records, *a, *b, run.session.lineSeparator);
        }))
        return status;
    run.printReport(text);
    return 0;
}

int descendantsCommand(CliRun& run)
{
    const Result<int32_t> found = run.slotArg(0, ViewKind::Individual);
    if (!found)
        return run.refuse(found.message());
    const int32_t slot = *found;
    const RecordStore& records = run.session.records;
    DescendantCache& cache = run.session.descendantCache;
    return run.run([&] {
        const int32_t descendants = countDescendants(records, cache, slot);
        const int32_t spouses = countDescendantSpouses(records, cache, slot);
        const int32_t generations = countGenerations(records, cache, slot);
        const int32_t largest = largestFamilySlot(records, cache, slot);
        run.print(QStringLiteral("Descendants: %1").arg(descendants));
        run.print(QStringLiteral("Spouses: %1").arg(spouses));
        run.print(QStringLiteral("Generations: %1").arg(generations));
        run.print(QStringLiteral("Largest family: %1").arg(largest));
    });
}

}  // namespace tav
