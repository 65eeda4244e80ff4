// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/FindResults.h"

#include <QString>
#include <QStringList>

namespace tav {

class RecordStore;

// Up to four search words from a text: split at blanks, two blanks in a row
// giving an empty word (which every text contains); words after the fourth
// are not used.
QStringList searchWords(const QString& text);

// Which kinds of record a search looks through.
struct SearchKinds {
    bool individuals = true;
    bool families = true;
    bool sources = true;
    bool notes = true;
};

// Finds the records whose search text holds every word (anywhere, in any
// order), at most 200 of a kind in table order, into the find results;
// every count is cleared first, also of kinds not searched. A
// record's search text starts with its number in the file ("I12 ", the
// digits of its cross-reference), then its fields joined by blanks (a
// person's other names after the name); a note's also holds the author,
// publication and note of the source at the same slot.
void findByWords(const RecordStore& records, FindResults& results, const QString& text,
                 bool caseSensitive, SearchKinds kinds);

}  // namespace tav
