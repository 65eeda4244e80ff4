#pragma once

#include <QString>
#include <QStringView>
#include <vector>

namespace tav {

class RecordStore;
struct NameTally;

// The surname of a GEDCOM name: the text from the first "/" to the next one
// (to the end when there is none), without its slashes and trimmed; "" when
// the name has no "/".
QString surnamePart(QStringView name);

// The first given name: the first word of the text before the first "/".
QString firstGivenName(QStringView name);

// Fills the store's three name tallies: every individual's surname, and the
// first given names of men (SEX "M") and of women (SEX "F"). Names are
// compared without regard to case and kept as first met. One pass over the
// individuals with a hash per tally: linear.
void tallyNames(RecordStore& records);

// The slots of a tally, most frequent name first; ties in alphabetical
// order, compared without regard to case. Slot 0 ("other names") is not
// among them.
std::vector<int32_t> slotsByFrequency(const NameTally& tally);

}  // namespace tav
