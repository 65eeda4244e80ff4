// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>
#include <cstdint>
#include <vector>

namespace tav {

class RecordStore;

// Finds people by their names as the user types them: a person matches when
// every word typed begins a word of one of their names (given names,
// surname or other names), in any order, accents and case ignored: "cath",
// "smith cath" and "Cathérine Sm" all find Catherine /Smith/.
//
// Best matches come first: a first word typed that begins the person's
// first given name or surname before one that begins another word; then
// the more words typed in full; then by name as the lists sort them
// (surname, then given names); then by slot.
//
// The names are folded once, at the first search after a load (the session
// clears the index on every load), so each keystroke only compares.
class PersonNameSearch {
public:
    void clear();

    // The individuals that match, best first, at most `limit`.
    std::vector<int32_t> find(const RecordStore& records, QStringView typed, int limit);

private:
    // A person's names folded into one text, each word with a blank before
    // and after it: " john william smith jack " (given names, surname, other
    // names); the given names end (after their closing blank) at
    // `givenEnd`, 0 when there are none, and the surname lies from its
    // blank before, `surnameAt`, to `surnameEnd`, -1 when there is none.
    struct Folded {
        QString all;
        qsizetype givenEnd = 0;
        qsizetype surnameAt = -1;
        qsizetype surnameEnd = -1;

        bool givenStartsWith(QStringView start) const
        {
            return givenEnd > 0 && QStringView(all).left(givenEnd).startsWith(start);
        }
        bool surnameStartsWith(QStringView start) const
        {
            return surnameAt >= 0 &&
                   QStringView(all).mid(surnameAt, surnameEnd - surnameAt).startsWith(start);
        }
        // Surname, then given names, as the lists sort people.
        QString order() const;
    };

    void build(const RecordStore& records);

    std::vector<Folded> folded_;  // by individual slot
    bool built_ = false;
};

// A text as the search compares it: accents removed, case folded, and each
// run of characters that are neither letters nor digits one blank.
QString foldedForSearch(QStringView text);

}  // namespace tav
