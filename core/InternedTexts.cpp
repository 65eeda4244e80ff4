// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/InternedTexts.h"

#include <algorithm>
#include <cstring>

namespace tav {

namespace {

// A hash for short texts: eight bytes at a time, each mixed in with one
// multiplication.
uint64_t hashOf(std::string_view text)
{
    uint64_t hash = 0x9E3779B97F4A7C15ull ^ (uint64_t(text.size()) << 56);
    size_t i = 0;
    for (; i + 8 <= text.size(); i += 8) {
        uint64_t word;
        std::memcpy(&word, text.data() + i, 8);
        hash = (hash ^ word) * 0xBF58476D1CE4E5B9ull;
        hash ^= hash >> 31;
    }
    uint64_t last = 0;
    for (size_t k = 0; i < text.size(); ++i, ++k)
        last |= uint64_t(uint8_t(text[i])) << (8 * k);
    hash = (hash ^ last) * 0x94D049BB133111EBull;
    return hash ^ (hash >> 29);
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// A text that is a number between two short words: "I12", "3I", "F1a".
struct NumberedText {
    uint64_t words = 0;
    int64_t number = 0;
};

// The words and number of a text, when it is one: words of at most four
// bytes without digits or NULs, and a number of at most 15 digits without
// leading zeros (so "I012" is no number: it would be taken for "I12").
bool readNumbered(std::string_view text, NumberedText& out)
{
    constexpr size_t wordLength = 4, digitsLength = 15;
    size_t i = 0;
    uint64_t words = 0;
    for (; i < text.size() && !isDigit(text[i]); ++i) {
        if (i == wordLength || text[i] == '\0')
            return false;
        words |= uint64_t(uint8_t(text[i])) << (8 * i);
    }
    const size_t digits = i;
    int64_t number = 0;
    for (; i < text.size() && isDigit(text[i]); ++i) {
        if (i - digits == digitsLength)
            return false;
        number = number * 10 + (text[i] - '0');
    }
    if (i == digits || (i - digits > 1 && text[digits] == '0'))
        return false;
    for (size_t k = 0; i < text.size(); ++i, ++k) {
        if (k == wordLength || isDigit(text[i]) || text[i] == '\0')
            return false;
        words |= uint64_t(uint8_t(text[i])) << (32 + 8 * k);
    }
    out = {words, number};
    return true;
}

// How far apart the numbers of one table may lie: a little more than
// sixteen places for each text, so a table costs at most 64 bytes a text.
int64_t widestTable(size_t texts) { return std::max<int64_t>(65536, 16 * int64_t(texts)); }

}  // namespace

void InternedTexts::clear(size_t expected)
{
    arena_.clear();
    starts_.assign(1, 0);
    // Room for the texts at once, so that they are not copied as they come;
    // the hash table starts small, since numbered texts ("I12") never go
    // there, and grows with the texts it holds.
    arena_.reserve(expected * 8);
    starts_.reserve(expected + 1);
    table_.assign(1024, Entry{});
    hashed_ = 0;
    numbered_.clear();
}

std::string_view InternedTexts::bytes(int32_t code) const
{
    if (code < 0 || code >= count())
        return {};
    const uint32_t start = starts_[size_t(code)];
    return std::string_view(arena_).substr(start, starts_[size_t(code) + 1] - start);
}

QString InternedTexts::text(int32_t code) const
{
    const std::string_view text = bytes(code);
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

InternedTexts::Numbered* InternedTexts::numberedTable(uint64_t words)
{
    const auto table = std::find_if(numbered_.begin(), numbered_.end(),
                                    [words](const Numbered& n) { return n.words == words; });
    return table == numbered_.end() ? nullptr : &*table;
}

int32_t* InternedTexts::numberedPlace(Numbered& table, int64_t number)
{
    std::vector<int32_t>& codes = table.codes;
    const int64_t end = table.base + int64_t(codes.size());
    if (number >= table.base && number < end)
        return &codes[size_t(number - table.base)];
    // Room is made by doubling, at the end or at the front, within the
    // widest the table may be.
    const int64_t widest = widestTable(table.texts + 1);
    const int64_t low = std::min(table.base, number), high = std::max(end, number + 1);
    if (high - low > widest)
        return nullptr;
    const int64_t grown = std::min(widest, std::max(high - low, 2 * int64_t(codes.size())));
    if (number >= end) {
        codes.resize(size_t(grown), none);
    } else {
        // Numbers are never negative: no room before 0.
        const int64_t front = std::min(table.base, grown - int64_t(codes.size()));
        codes.insert(codes.begin(), size_t(front), none);
        table.base -= front;
    }
    return &codes[size_t(number - table.base)];
}

// The place of a text in the hash table: where it is, or the empty place
// where it belongs.
size_t InternedTexts::place(std::string_view text) const
{
    const uint64_t hash = hashOf(text);
    const uint32_t check = uint32_t(hash >> 32);
    const size_t mask = table_.size() - 1;
    for (size_t at = size_t(hash) & mask;; at = (at + 1) & mask) {
        const Entry& entry = table_[at];
        if (entry.code == none || (entry.hash == check && bytes(entry.code) == text))
            return at;
    }
}

int32_t InternedTexts::find(std::string_view text) const
{
    NumberedText key;
    if (readNumbered(text, key)) {
        const auto table = std::find_if(numbered_.begin(), numbered_.end(),
                                        [&key](const Numbered& n) { return n.words == key.words; });
        // A numbered text is in its table, or in the hash table when its
        // number lay too far out.
        if (table == numbered_.end())
            return none;
        const int64_t at = key.number - table->base;
        const int32_t code =
            at >= 0 && at < int64_t(table->codes.size()) ? table->codes[size_t(at)] : none;
        if (code != none || !table->hashedToo)
            return code;
    }
    return findHashed(text);
}

int32_t InternedTexts::intern(std::string_view text)
{
    NumberedText key;
    if (readNumbered(text, key)) {
        Numbered* table = numberedTable(key.words);
        if (!table)
            table = &numbered_.emplace_back(Numbered{key.words, key.number, {}, 0, false});
        if (int32_t* code = numberedPlace(*table, key.number)) {
            if (*code == none) {
                // A text sent to the hash table while its number lay too far
                // out keeps its code.
                const int32_t hashed = table->hashedToo ? findHashed(text) : none;
                *code = hashed != none ? hashed : add(text);
                ++table->texts;
            }
            return *code;
        }
        table->hashedToo = true;
    }
    const size_t at = place(text);
    if (table_[at].code != none)
        return table_[at].code;
    const int32_t code = add(text);
    table_[at] = Entry{uint32_t(hashOf(text) >> 32), code};
    // At most half full, so every search meets an empty place soon.
    if (++hashed_ * 2 > table_.size())
        grow();
    return code;
}

int32_t InternedTexts::add(std::string_view text)
{
    const int32_t code = count();
    arena_.append(text);
    starts_.push_back(uint32_t(arena_.size()));
    return code;
}

void InternedTexts::grow()
{
    std::vector<Entry> old(table_.size() * 2);
    old.swap(table_);
    const size_t mask = table_.size() - 1;
    for (const Entry& entry : old) {
        if (entry.code == none)
            continue;
        size_t at = size_t(hashOf(bytes(entry.code))) & mask;
        while (table_[at].code != none)
            at = (at + 1) & mask;
        table_[at] = entry;
    }
}

}  // namespace tav
