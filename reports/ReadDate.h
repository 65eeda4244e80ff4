#pragma once

#include "calc/Dates.h"

#include <tuple>

namespace tav {

// A date text read once into day, month and year as parseDate reads it, for
// the reports that compare many dates. Ordered as compareDates orders dates:
// by year, then month, then day.
struct ReadDate {
    int32_t day = 0;
    int32_t month = 0;
    int32_t year = 0;
    bool valid = false;

    ReadDate() = default;
    explicit ReadDate(QStringView text) : valid(parseDate(text, day, month, year) != 0) {}

    // Completed years from this date to `later`, as calcAge counts an age
    // (negative when `later` comes first).
    int32_t yearsUntil(const ReadDate& later) const
    {
        const bool beforeAnniversary =
            later.month < month || (later.month == month && later.day < day);
        return later.year - year - (beforeAnniversary ? 1 : 0);
    }

    std::tuple<int32_t, int32_t, int32_t> key() const { return {year, month, day}; }
    bool operator<(const ReadDate& other) const { return key() < other.key(); }
};

}  // namespace tav
