#pragma once

#include <QString>
#include <QStringView>
#include <cstdint>

namespace tav {

class RecordStore;
class Session;

// Bits of the name flags of formatName.
enum NameFlags : int {
    NameSurname = 1,          // surname, styled and placed by the settings
    NameFirstGiven = 2,       // first given name in full
    NameSecondGiven = 4,      // second given name in full
    NameFirstInitial = 8,     // first given name as "J." (when bit 1 is clear)
    NameSecondInitial = 16,   // second given name as "W." (when bit 2 is clear)
    NameGivenAsWritten = 32,  // the given part exactly as written
};

// A GEDCOM name ("John William /Smith/") as the flags and the session's
// SurnameStyle and SurnamePosn settings show it; "?" for an empty name.
QString formatName(const Session& session, QStringView name, int flags);

// "(b.1850  d.1910)" for the HTML report; empty for people who may still be alive.
QString personYears(const Session& session, int32_t individual);

// Children over all of the person's own families.
int32_t countChildren(const RecordStore& records, int32_t individual);

// English ordinals for kind "ST" (1st, 2nd, 11th) and repetitions for kind
// "ONCE" (once, twice, 4 times); other kinds give "".
QString ordinalWord(int32_t n, QStringView kind);

}  // namespace tav
