// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/Dates.h"
#include "core/Fault.h"

#include <algorithm>
#include <cstdint>
#include <tuple>

namespace tav {

// A date text read once into day, month and year as parseDate reads it, for
// what must never fault on a date (reports, labels, pages) and for the
// reports that compare many dates. Ordered as compareDates orders dates: by
// year, then month, then day.
struct ReadDate {
    int32_t day = 0;
    int32_t month = 0;
    int32_t year = 0;
    bool valid = false;

    ReadDate() = default;
    // A date whose numbers do not fit in 32 bits (parseDate's Overflow)
    // cannot be read either.
    explicit ReadDate(QStringView text)
    {
        try {
            valid = parseDate(text, day, month, year) != 0;
        } catch (const RuntimeFault&) {
            day = month = year = 0;
        }
    }

    // Completed years from this date to `later`, as calcAge counts an age
    // (negative when `later` comes first); beyond 32 bits, the nearest end
    // of that range.
    int32_t yearsUntil(const ReadDate& later) const
    {
        const bool beforeAnniversary =
            later.month < month || (later.month == month && later.day < day);
        const int64_t years = int64_t(later.year) - year - (beforeAnniversary ? 1 : 0);
        return int32_t(std::clamp<int64_t>(years, INT32_MIN, INT32_MAX));
    }

    std::tuple<int32_t, int32_t, int32_t> key() const { return {year, month, day}; }
    bool operator<(const ReadDate& other) const { return key() < other.key(); }
};

}  // namespace tav
