// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringView>

namespace tav {

// Whether a DATE value is a date as GEDCOM writes them, whether or not
// parseDate can compute with it: a date of a calendar (day, month, year;
// month and year; year, with a dual year such as 1456/57 and an epoch B.C.),
// approximated (ABT, CAL, EST), a range (BEF, AFT, BET ... AND ...), a
// period (FROM ... TO ...), an interpreted date with its phrase (INT 1850
// (about then)), or a phrase in parentheses alone. Calendars are named by
// their escapes (@#DJULIAN@) or GEDCOM 7's words (JULIAN), and the months
// are those of each calendar. Keywords and months are read in any case, as
// the files that programs write have them ("Abt 1430", "Bef 24 Jul 1492").
bool isGedcomDate(QStringView text);

}  // namespace tav
