#include "ui/find/FindLogic.h"

#include "app/Session.h"
#include "core/Fault.h"
#include "core/TextNumbers.h"
#include "ui/find/ResultsListing.h"
#include "ui/find/StatisticalQueries.h"

namespace tav {

namespace {

const char* const viewKinds[4] = {"IND", "FAM", "SOU", "NOT"};

int32_t& currentSlot(Session& session, FindResults::Kind kind)
{
    switch (kind) {
    case FindResults::Families: return session.curFam;
    case FindResults::Sources: return session.curSou;
    case FindResults::Notes: return session.curNote;
    default: return session.curInd;
    }
}

// Opens the browser on a result, as the find window does.
void browse(Session& session, FindResults::Kind kind, int32_t slot)
{
    session.viewKind = QLatin1String(viewKinds[kind]);
    currentSlot(session, kind) = slot;
    session.listCaller = QStringLiteral("frmFind");
    session.listLoaded = false;
    session.showWindow(AppWindow::List);
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
    for (const char* name : queryNames)
        choices << QString::fromLatin1(name);
    return choices;
}

QString FindLogic::moreLessCaption() const
{
    return expanded_ ? QStringLiteral("<<< &Less") : QStringLiteral("&More >>>");
}

void FindLogic::moreLess() { expanded_ = !expanded_; }

void FindLogic::showResults()
{
    heading_ = resultsHeading(session_.findResults);
    lines_ = resultLines(session_);
}

void FindLogic::find()
{
    findByWords(session_, searchText, caseSensitive, kinds);
    showResults();
    if (session_.findResults.total != 1)
        return;
    for (int kind = FindResults::Individuals; kind <= FindResults::Notes; ++kind) {
        const FindResults::Table& table = session_.findResults[FindResults::Kind(kind)];
        if (table.count > 0) {
            session_.guarded([&] { browse(session_, FindResults::Kind(kind), table.entries[1]); });
            return;
        }
    }
}

void FindLogic::queryChosen(int index)
{
    if (index < 0 || index >= int(std::size(queryNames)))
        return;
    queryIndex_ = index;
    FindResults& results = session_.findResults;
    results[FindResults::Individuals].count = 0;
    results[FindResults::Families].count = 0;
    if (queryTakesNumber(index)) {
        numberEnabled_ = true;
        return;
    }
    if (index == 7) {
        go();
    } else {
        numberEnabled_ = false;
        session_.guarded([&] { runQuery(session_, index, 0); });
    }
    results[FindResults::Sources].count = 0;
    results[FindResults::Notes].count = 0;
    results.selected = 1;
    results.total = results.sum();
    showResults();
    openSingleResult();
}

void FindLogic::openSingleResult()
{
    const FindResults& results = session_.findResults;
    if (results.total != 1)
        return;
    session_.guarded([&] {
        if (results[FindResults::Individuals].count == 1)
            browse(session_, FindResults::Individuals,
                   results[FindResults::Individuals].entries[1]);
        else if (results[FindResults::Families].count == 1)
            browse(session_, FindResults::Families, results[FindResults::Families].entries[1]);
    });
}

void FindLogic::go()
{
    FindResults& results = session_.findResults;
    if (queryIndex_ == 7) {
        session_.guarded([&] { runQuery(session_, 7, 0); });
        results.total = results.sum();
        showResults();
        return;
    }
    if (!queryTakesNumber(queryIndex_)) {
        queryChosen(queryIndex_);
        return;
    }
    if (numberText.isEmpty() || !isWholeNumber(numberText))
        return;
    session_.guarded([&] {
        const int32_t n = toLong(leadingNumber(numberText));
        results.total = 0;
        runQuery(session_, queryIndex_, n);
    });
    // Only the table the query fills counts.
    const bool families = queryIndex_ == 4 || queryIndex_ == 5;
    const FindResults::Kind filled = families ? FindResults::Families : FindResults::Individuals;
    for (int kind = FindResults::Individuals; kind <= FindResults::Notes; ++kind) {
        if (kind != filled)
            results[FindResults::Kind(kind)].count = 0;
    }
    results.total = results[filled].count;
    showResults();
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
