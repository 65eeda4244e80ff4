// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>
#include <QStringView>
#include <cstdint>

namespace tav {

class RecordStore;

// Bits of the name flags of formatName.
enum NameFlags : int {
    NameSurname = 1,          // surname, styled and placed by the settings
    NameFirstGiven = 2,       // first given name in full
    NameSecondGiven = 4,      // second given name in full
    NameFirstInitial = 8,     // first given name as "J." (when bit 1 is clear)
    NameSecondInitial = 16,   // second given name as "W." (when bit 2 is clear)
    NameGivenAsWritten = 32,  // the given part exactly as written
};

// How the user wants surnames shown: the SurnameStyle and SurnamePosn settings.
struct NameStyle {
    int32_t surnameStyle = 2;  // 1 smith, 2 SMITH, 3 /smith/, 4 /SMITH/, 5 Smith, 6 /Smith/
    int32_t surnamePosn = 2;   // 1 "John Smith", anything else "Smith, John"
};

// A GEDCOM name ("John William /Smith/ Jr") as the flags and the style show
// it; "?" for an empty name. The surname is the part between the slashes; a
// suffix after it (Jr, II) ends the name whenever the surname is shown:
// "SMITH, John Jr", "John Smith Jr". A given word of the capitals I, V and X
// only (Henry VIII) is a regnal number, shown whole where an initial is asked.
QString formatName(QStringView name, int flags, NameStyle style);

// The name of an individual as the grids, the lists and the find results show
// it: the surname styled and placed, the given part as written (flags 33).
QString listName(const RecordStore& records, int32_t individual, NameStyle style);

// "(b.1850  d.1910)" for the HTML report; empty for people who may still be
// alive on `today`.
QString personYears(const RecordStore& records, int32_t individual, QDate today);

// Children over all of the person's own families.
int32_t countChildren(const RecordStore& records, int32_t individual);

// English ordinals for kind "ST" (1st, 2nd, 11th) and repetitions for kind
// "ONCE" (once, twice, 4 times); other kinds give "".
QString ordinalWord(int32_t n, QStringView kind);

}  // namespace tav
