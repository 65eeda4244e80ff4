// SPDX-License-Identifier: GPL-3.0-or-later
#include "windowlogic/find/FindLogic.h"

#include "app/Session.h"
#include "core/Fault.h"
#include "core/TextNumbers.h"
#include "windowlogic/find/ResultsListing.h"

#include <numeric>

namespace tav {

namespace {

ViewKind viewKindOf(FindResults::Kind kind) { return ViewKind(int(ViewKind::Individual) + kind); }

// Opens the browser on a result, as the find window does.
void browse(Session& session, FindResults::Kind kind, int32_t slot)
{
    session.openBrowser(viewKindOf(kind), slot, BrowserCaller::FindWindow);
}

}  // namespace

FindLogic::FindLogic(Session& session) : session_(session)
{
    if (session_.findResults.total > 0)
        showResults();
}

QStringList FindLogic::queryChoices()
{
    QStringList choices;
    for (int index = 0; index < queryCount; ++index)
        choices << queryName(queryAt(index));
    return choices;
}

QString FindLogic::moreLessCaption() const
{
    return expanded_ ? QStringLiteral("<<< &Less") : QStringLiteral("&More >>>");
}

void FindLogic::moreLess() { expanded_ = !expanded_; }

void FindLogic::clearResults()
{
    heading_.clear();
    lines_.clear();
}

void FindLogic::showResults()
{
    heading_ = resultsHeading(session_.findResults);
    lines_ = resultLines(session_);
}

bool FindLogic::find()
{
    findByWords(session_.records, session_.findResults, searchText, caseSensitive, kinds);
    showResults();
    if (session_.findResults.total != 1)
        return true;
    for (int kind = FindResults::Individuals; kind <= FindResults::Notes; ++kind) {
        const FindResults::Table& table = session_.findResults[FindResults::Kind(kind)];
        if (table.count > 0) {
            browse(session_, FindResults::Kind(kind), table.entries[1]);
            break;
        }
    }
    return true;
}

bool FindLogic::runQuery(Query query, int32_t n)
{
    return session_.guarded([&] {
        if (!tav::runQuery(session_.records, session_.descendantCache, session_.findResults,
                           {session_.curInd, session_.curFam}, session_.today(), query, n))
            limitReached_ = true;
    });
}

TextTable FindLogic::resultRows(const QList<int>& lines) const
{
    TextTable rows;
    for (const int line : lines) {
        const QString& text = lines_.value(line);
        // "I007. SMITH, John": the number, then the text; section lines
        // ("-------NOTES-------") are none.
        const qsizetype dot = text.indexOf(QLatin1String(". "));
        if (text.startsWith(u'-') || dot < 0)
            continue;
        rows.append(QStringList{text.left(dot), text.mid(dot + 2)});
    }
    return rows;
}

TextTable FindLogic::resultTable() const
{
    QList<int> all(lines_.size());
    std::iota(all.begin(), all.end(), 0);
    TextTable table{QStringList{QStringLiteral("Record"), QStringLiteral("Text")}};
    table.append(resultRows(all));
    return table;
}

void FindLogic::noteLimit()
{
    if (!limitReached_)
        return;
    limitReached_ = false;
    session_.messages().message(QStringLiteral("Only the first 200 results are listed."), QString(),
                                MessageKind::Information);
}

QString FindLogic::limitNote() const
{
    const FindResults& results = session_.findResults;
    QStringList full;
    const char* kinds[] = {"individuals", "families", "sources", "notes"};
    for (int kind = FindResults::Individuals; kind <= FindResults::Notes; ++kind) {
        if (results[FindResults::Kind(kind)].count >= FindResults::capacity)
            full << QLatin1String(kinds[kind]);
    }
    if (full.isEmpty())
        return QString();
    const QString last = full.takeLast();
    const QString listed =
        full.isEmpty() ? last : full.join(QStringLiteral(", ")) + QStringLiteral(" and ") + last;
    return QStringLiteral("Only the first 200 %1 are listed; there may be more.").arg(listed);
}

bool FindLogic::queryChosen(Query query)
{
    query_ = query;
    FindResults& results = session_.findResults;
    results[FindResults::Individuals].count = 0;
    results[FindResults::Families].count = 0;
    if (queryTakesNumber(query)) {
        numberEnabled_ = true;
        return true;
    }
    bool done;
    if (query == Query::MostDescendants) {
        done = go();
    } else {
        numberEnabled_ = false;
        done = runQuery(query, 0);
    }
    results[FindResults::Sources].count = 0;
    results[FindResults::Notes].count = 0;
    results.selected = 1;
    results.total = results.sum();
    showResults();
    noteLimit();
    openSingleResult();
    return done;
}

void FindLogic::openSingleResult()
{
    const FindResults& results = session_.findResults;
    if (results.total != 1)
        return;
    if (results[FindResults::Individuals].count == 1)
        browse(session_, FindResults::Individuals, results[FindResults::Individuals].entries[1]);
    else if (results[FindResults::Families].count == 1)
        browse(session_, FindResults::Families, results[FindResults::Families].entries[1]);
}

bool FindLogic::go()
{
    FindResults& results = session_.findResults;
    if (query_ == Query::MostDescendants) {
        const bool done = runQuery(query_, 0);
        results.total = results.sum();
        showResults();
        noteLimit();
        return done;
    }
    if (!queryTakesNumber(query_))
        return queryChosen(query_);
    if (numberText.isEmpty() || !isWholeNumber(numberText))
        return true;
    bool done = true;
    int32_t n = 0;
    if (session_.guarded([&] { n = toLong(leadingNumber(numberText)); })) {
        results.total = 0;
        done = runQuery(query_, n);
    } else {
        done = false;
    }
    // Only the table the query fills counts.
    const FindResults::Kind filled =
        queryListsFamilies(query_) ? FindResults::Families : FindResults::Individuals;
    for (int kind = FindResults::Individuals; kind <= FindResults::Notes; ++kind) {
        if (kind != filled)
            results[FindResults::Kind(kind)].count = 0;
    }
    results.total = results[filled].count;
    showResults();
    noteLimit();
    return done;
}

void FindLogic::lineChosen(int line)
{
    if (line < 0 || line >= lines_.size())
        return;
    const std::optional<ResultPosition> result =
        resultAtLine(session_.findResults, lines_[line], line);
    if (!result)
        return;
    FindResults& results = session_.findResults;
    session_.guarded([&] {
        if (result->position < 1 || result->position > FindResults::capacity)
            raiseFault(RuntimeFault::SubscriptOutOfRange);
        results.selected = result->position;
        browse(session_, result->kind, results[result->kind].entries[size_t(result->position)]);
    });
}

}  // namespace tav
