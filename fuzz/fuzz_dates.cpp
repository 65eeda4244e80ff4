// SPDX-License-Identifier: GPL-3.0-or-later
// Fuzz target: two date texts, read and measured as every window does.
#include "calc/Dates.h"
#include "core/Fault.h"
#include "fuzz/FuzzSupport.h"

#include <cstdlib>

using namespace tav;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::FuzzInput input(data, size);
    const QString a = input.textUpTo('\n');
    const QString b = input.textUpTo('\n');
    // Today as the input chooses it, within the dates a clock can show.
    const QDate today = fuzz::fuzzToday().addDays(int(input.byte()) * 400 - 50000);
    try {
        int32_t day = 0, month = 0, year = 0;
        parseDate(a, day, month, year);
        day = month = year = 0;
        parseDate(b, day, month, year);
        const int32_t order = compareDates(a, b);
        if (order < -1 || order > 2)
            std::abort();
        compareDates(b, a);
        QString label;
        calcAge(a, b, label, today);
        calcAge(a, QString(), label, today);
        calcAge(b, a, label, today);
        yearsBetween(a, b);
        yearsBetween(b, a);
        dateText(today);
    } catch (const RuntimeFault&) {
        // A number too large for its field is the fault every caller reports.
    }
    return 0;
}
