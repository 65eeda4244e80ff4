// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tav {

// Distinct byte strings, each kept once and known by a number, its code:
// the cross-references of a file (the text between the "@"s: "I12",
// "I152733931767", "3I", "FATHER"), or the values many records repeat.
// Records and links hold codes, so matching a link to its record is a
// comparison of numbers, and the texts cost one block of memory.
//
// Texts that are a number between short words ("I12", "F152733931767",
// "3I", "181U") are found by their number in a table per pair of words, as
// long as the numbers lie close enough together: the table is then small
// and read in order, where a hash table is read at random. Every other
// text is found by its hash.
class InternedTexts {
public:
    static constexpr int32_t none = -1;

    // Empties the table, with room for about `expected` texts.
    void clear(size_t expected = 0);

    // The code of a text, added when it is new.
    int32_t intern(std::string_view text);
    // The code of a text, or `none`.
    int32_t find(std::string_view text) const;

    int32_t count() const { return int32_t(starts_.size()) - 1; }
    std::string_view bytes(int32_t code) const;
    // The text as shown (its bytes as UTF-8); "" for `none`.
    QString text(int32_t code) const;

private:
    // A place of the hash table: 32 bits of the text's hash and its code;
    // `none` marks an empty place. The table stays small enough to be read
    // from the processor's own cache; a hash that matches is checked
    // against the text.
    struct Entry {
        uint32_t hash = 0;
        int32_t code = none;
    };
    // The codes of the texts "WORD n SUFFIX" of one pair of words, for the
    // numbers from `base` on.
    struct Numbered {
        uint64_t words = 0;  // the two words, four bytes each
        int64_t base = 0;
        std::vector<int32_t> codes;
        int32_t texts = 0;  // codes that are not `none`
        // Some of these texts lay too far apart and went to the hash table.
        bool hashedToo = false;
    };

    int32_t add(std::string_view text);
    void grow();
    size_t place(std::string_view text) const;
    int32_t findHashed(std::string_view text) const { return table_[place(text)].code; }
    Numbered* numberedTable(uint64_t words);
    // The place of a number's code in its table, room made for it; null when
    // it lies too far from the others.
    int32_t* numberedPlace(Numbered& table, int64_t number);

    std::string arena_;                // every text, one after another
    std::vector<uint32_t> starts_{0};  // code k is arena_[starts_[k], starts_[k + 1])
    std::vector<Entry> table_ = std::vector<Entry>(1024);
    size_t hashed_ = 0;  // texts in the hash table
    std::vector<Numbered> numbered_;
};

}  // namespace tav
