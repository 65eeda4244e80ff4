// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>
#include <cstdint>
#include <vector>

namespace tav {

class RecordStore;

// A name of a name tally and how many people bear it.
struct TalliedName {
    QString name;
    int32_t count = 0;
};

// A table of the name reports: slots 1 to `count` hold the distinct names in
// the order they were first met; once all 15000 are taken, slot 0 counts the
// people whose names came later ("other names").
struct NameTally {
    static constexpr int32_t capacity = 15000;

    // Slots 0 to count: the table grows as names come, so a load that no
    // report reads costs nothing here.
    std::vector<TalliedName> entries = std::vector<TalliedName>(1);
    int32_t count = 0;
    // Distinct names met, those counted in slot 0 included; no name at all
    // (an empty one) is not among them.
    int32_t distinct = 0;

    void clear();
};

// The three tallies of the name reports, filled by those reports from the
// loaded file; the session clears them on every load.
struct NameTallies {
    NameTally surnames;
    NameTally maleGivenNames;
    NameTally femaleGivenNames;

    void clear();
};

// The surname of a GEDCOM name: the text from the first "/" to the next one
// (to the end when there is none), without its slashes and trimmed; "" when
// the name has no "/".
QString surnamePart(QStringView name);

// The first given name: the first word of the text before the first "/".
QString firstGivenName(QStringView name);

// Fills the three name tallies anew: every individual's surname, and the
// first given names of men (SEX "M") and of women (SEX "F"). Names are
// compared without regard to case and kept as first met. One pass over the
// individuals with a hash per tally: linear.
void tallyNames(const RecordStore& records, NameTallies& tallies);

// The slots of a tally, most frequent name first; ties in alphabetical
// order, compared without regard to case. Slot 0 ("other names") is not
// among them.
std::vector<int32_t> slotsByFrequency(const NameTally& tally);

}  // namespace tav
