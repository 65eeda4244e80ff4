// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/WordSearch.h"

#include "core/RecordStore.h"

#include <vector>

namespace tav {

namespace {

// One search word. Without regard to case, text and word are compared
// case-folded, a character at a time; letters below 128 fold inline, which
// keeps the search of a large file quick.
class WordMatcher {
public:
    WordMatcher(const QString& word, bool caseSensitive)
        : word_(word), caseSensitive_(caseSensitive)
    {
        for (QChar& c : word_)
            c = QChar(fold(c));
    }

    bool foundIn(QStringView text) const
    {
        const qsizetype m = word_.size();
        if (m == 0)
            return true;
        const QChar* w = word_.constData();
        const QChar* t = text.data();
        const char16_t first = w[0].unicode();
        for (qsizetype i = 0, last = text.size() - m; i <= last; ++i) {
            if (fold(t[i]) != first)
                continue;
            qsizetype k = 1;
            while (k < m && fold(t[i + k]) == w[k].unicode())
                ++k;
            if (k == m)
                return true;
        }
        return false;
    }

private:
    char16_t fold(QChar c) const
    {
        const char16_t u = c.unicode();
        if (caseSensitive_)
            return u;
        if (u < 128)
            return u >= u'A' && u <= u'Z' ? char16_t(u + 32) : u;
        return c.toCaseFolded().unicode();
    }

    QString word_;
    bool caseSensitive_;
};

// A record's search text: its number ("I12 ") and its fields, joined by
// blanks. Words hold no blanks, so a word is in the joined text exactly when
// it is in one of the parts; the parts are searched where they lie.
class SearchText {
public:
    SearchText(const QStringList& words, bool caseSensitive)
    {
        for (const QString& word : words)
            matchers_.emplace_back(word, caseSensitive);
        parts_.reserve(32);
        number_.reserve(16);
    }

    // `number` is a record's number: the digits of its cross-reference.
    SearchText& start(QChar letter, int64_t number)
    {
        number_.resize(0);
        number_ += letter;
        char digits[20];
        int n = 0;
        for (int64_t v = number; n == 0 || v > 0; v /= 10)
            digits[n++] = char('0' + v % 10);
        while (n > 0)
            number_ += QLatin1Char(digits[--n]);
        number_ += QLatin1Char(' ');
        parts_.clear();
        parts_.push_back(number_);
        return *this;
    }
    SearchText& operator<<(QStringView field)
    {
        if (!field.isEmpty())
            parts_.push_back(field);
        return *this;
    }

    bool matches() const
    {
        for (const WordMatcher& word : matchers_) {
            bool found = false;
            for (QStringView part : parts_) {
                if (word.foundIn(part)) {
                    found = true;
                    break;
                }
            }
            if (!found)
                return false;
        }
        return true;
    }

private:
    std::vector<WordMatcher> matchers_;
    QString number_;
    std::vector<QStringView> parts_;
};

template <typename Build>
void collect(FindResults::Table& table, int32_t records, SearchText& search, Build build)
{
    for (int32_t k = 1; k <= records && table.count < FindResults::capacity; ++k) {
        build(search, k);
        if (search.matches())
            table.entries[size_t(++table.count)] = k;
    }
}

}  // namespace

QStringList searchWords(const QString& text)
{
    QStringList words;
    QString rest = text.trimmed();
    for (int w = 1; w <= 4; ++w) {
        const qsizetype blank = rest.indexOf(QLatin1Char(' '));
        if (blank < 0) {
            words << rest;
            break;
        }
        words << rest.left(blank).trimmed();
        rest = rest.mid(blank + 1);
    }
    return words;
}

void findByWords(const RecordStore& r, FindResults& results, const QString& text,
                 bool caseSensitive, SearchKinds kinds)
{
    for (FindResults::Table& table : results.tables)
        table.count = 0;
    results.total = 0;
    const QStringList words = searchWords(text);
    SearchText search(words, caseSensitive);

    if (kinds.individuals) {
        collect(results[FindResults::Individuals], r.individualCount(), search,
                [&](SearchText& s, int32_t k) {
                    const Individual& p = r.individual(k);
                    s.start(u'I', p.id) << p.name;
                    for (const QStringView other : r.otherNames(p))
                        s << other;
                    s << p.sex << p.occupation << p.birthDate << p.birthPlace << p.deathDate
                      << p.deathPlace << p.note;
                });
    }
    if (kinds.families) {
        collect(results[FindResults::Families], r.familyCount(), search,
                [&](SearchText& s, int32_t k) {
                    const Family& f = r.family(k);
                    s.start(u'F', f.id)
                        << r.individual(r.husbandOf(f)).name << r.individual(r.wifeOf(f)).name
                        << f.marriageDate << f.marriagePlace;
                    for (int c = 1; c <= f.childCount; ++c)
                        s << r.individual(r.childOf(f, c)).name;
                });
    }
    if (kinds.sources) {
        collect(results[FindResults::Sources], r.sourceCount(), search,
                [&](SearchText& s, int32_t k) {
                    const Source& src = r.source(k);
                    s.start(u'S', src.id) << src.title << src.author << src.publication << src.note;
                });
    }
    if (kinds.notes) {
        collect(results[FindResults::Notes], r.noteCount(), search, [&](SearchText& s, int32_t k) {
            // The source at the note's own slot is read with it.
            const Source& src = r.source(k);
            s.start(u'N', r.note(k).id)
                << r.note(k).text << src.author << src.publication << src.note;
        });
    }
    results.total = results.sum();
}

}  // namespace tav
