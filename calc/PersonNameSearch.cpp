// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/PersonNameSearch.h"

#include "core/RecordStore.h"

#include <QStringList>
#include <algorithm>

namespace tav {

namespace {

bool isPlainAscii(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 128; });
}

// Appends the words of a text as the search compares them, one blank
// between words; true when there was a word.
bool appendFolded(QString& out, QStringView text)
{
    const qsizetype start = out.size();
    bool gap = false;
    const auto add = [&](QChar c) {
        if (gap && out.size() > start)
            out += QLatin1Char(' ');
        gap = false;
        out += c;
    };
    if (isPlainAscii(text)) {
        // Most names: no accents to take off, and case folding is lowering.
        for (const QChar c : text) {
            const char16_t u = c.unicode();
            if ((u >= u'a' && u <= u'z') || (u >= u'0' && u <= u'9'))
                add(c);
            else if (u >= u'A' && u <= u'Z')
                add(QChar(u + (u'a' - u'A')));
            else
                gap = true;
        }
        return out.size() > start;
    }
    QString letters;
    for (const QChar c : text.toString().normalized(QString::NormalizationForm_KD)) {
        if (c.category() == QChar::Mark_NonSpacing)
            continue;  // the accent of a decomposed letter
        if (c.isLetterOrNumber()) {
            if (gap && !letters.isEmpty())
                letters += QLatin1Char(' ');
            gap = false;
            letters += c;
        } else {
            gap = true;
        }
    }
    out += letters.toCaseFolded();
    return out.size() > start;
}

// Appends " words" of a text and a closing blank after them, when it has words.
void appendPadded(QString& out, QStringView text)
{
    if (out.isEmpty())
        out += QLatin1Char(' ');
    if (appendFolded(out, text))
        out += QLatin1Char(' ');
}

}  // namespace

QString foldedForSearch(QStringView text)
{
    QString folded;
    folded.reserve(text.size());
    appendFolded(folded, text);
    return folded;
}

QString PersonNameSearch::Folded::order() const
{
    const QString given = all.left(givenEnd);
    return surnameAt < 0 ? given : all.mid(surnameAt, surnameEnd - surnameAt) + given;
}

void PersonNameSearch::clear()
{
    folded_.clear();
    built_ = false;
}

void PersonNameSearch::build(const RecordStore& records)
{
    folded_.assign(size_t(records.individualCount()) + 1, Folded{});
    for (int32_t slot = 1; slot <= records.individualCount(); ++slot) {
        const Individual& person = records.individual(slot);
        const QStringView name = person.name;
        const qsizetype slash = name.indexOf(u'/');
        Folded& folded = folded_[size_t(slot)];
        QString& all = folded.all;
        all.reserve(name.size() + 2);
        appendPadded(all, slash < 0 ? name : name.left(slash));
        folded.givenEnd = all.size() > 1 ? all.size() : 0;
        if (slash >= 0) {
            const qsizetype before = all.size();
            appendPadded(all, name.mid(slash));
            if (all.size() > before) {
                folded.surnameAt = before - 1;
                folded.surnameEnd = all.size();
            }
        }
        for (const QStringView other : records.otherNames(person))
            appendPadded(all, other);
        if (all.size() == 1)
            all.clear();
    }
    built_ = true;
}

std::vector<int32_t> PersonNameSearch::find(const RecordStore& records, QStringView typed,
                                            int limit)
{
    const QStringList words = foldedForSearch(typed).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words.isEmpty() || limit <= 0)
        return {};
    if (!built_)
        build(records);

    // Each word typed must begin a word of a name: " cath" in " catherine ".
    QStringList starts, wholes;
    for (const QString& word : words) {
        starts << QLatin1Char(' ') + word;
        wholes << QLatin1Char(' ') + word + QLatin1Char(' ');
    }
    struct Match {
        int32_t slot;
        int beginsName;  // 0 when the first word typed begins the first given name or the surname
        int partWords;   // words typed that are only the start of a name's word
        QString order;   // surname, then given names
    };
    std::vector<Match> matches;
    for (int32_t slot = 1; slot < int32_t(folded_.size()); ++slot) {
        const Folded& person = folded_[size_t(slot)];
        const bool all = std::all_of(starts.begin(), starts.end(), [&](const QString& start) {
            return person.all.contains(start);
        });
        if (!all)
            continue;
        const bool begins =
            person.givenStartsWith(starts[0]) || person.surnameStartsWith(starts[0]);
        const int partWords =
            int(std::count_if(wholes.begin(), wholes.end(),
                              [&](const QString& w) { return !person.all.contains(w); }));
        matches.push_back({slot, begins ? 0 : 1, partWords, person.order()});
    }
    const auto better = [](const Match& a, const Match& b) {
        if (a.beginsName != b.beginsName)
            return a.beginsName < b.beginsName;
        if (a.partWords != b.partWords)
            return a.partWords < b.partWords;
        if (a.order != b.order)
            return a.order < b.order;
        return a.slot < b.slot;
    };
    const size_t shown = std::min(matches.size(), size_t(limit));
    std::partial_sort(matches.begin(), matches.begin() + ptrdiff_t(shown), matches.end(), better);
    std::vector<int32_t> best;
    best.reserve(shown);
    for (size_t k = 0; k < shown; ++k)
        best.push_back(matches[k].slot);
    return best;
}

}  // namespace tav
