// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>
#include <QStringView>
#include <cstdint>

// Dates stay in the records as the file wrote them; these routines read them
// as numbers when something needs to order or measure them. Results follow
// the program's conventions: -1 true / 0 false, -1 for "cannot compute".
namespace tav {

// Reads day, month and year out of a date text. Every caller sets the three
// to 0 first: the "MAR 1850" form leaves the day as it was.
int32_t parseDate(QStringView text, int32_t& day, int32_t& month, int32_t& year);

// 0 when A is earlier, 1 the same day, 2 later, -1 when either is unusable.
int32_t compareDates(QStringView a, QStringView b);

// Completed years from birth to death, or to `today` when there is no death
// text; the label says which ("at death", "now", "if alive",
// "cannot calculate"). -1 when it cannot be worked out.
int32_t calcAge(QStringView birth, QStringView death, QString& label, QDate today);

// Completed years between two date texts in either order, or -1.
int32_t yearsBetween(QStringView a, QStringView b);

// Today written as a date text: "21 NOV 2026".
QString dateText(QDate date);

}  // namespace tav
