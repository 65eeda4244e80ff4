// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/StatisticalQueries.h"
#include "calc/WordSearch.h"
#include "core/TableText.h"

#include <QString>
#include <QStringList>

namespace tav {

class Session;

// The find window without its window: the search box and its check boxes,
// the statistical queries of the lower section, and the results list. The
// results live in the session, so they are there again when the window is
// opened anew.
class FindLogic {
public:
    explicit FindLogic(Session& session);

    // Search box and check boxes (all four kinds ticked at first).
    QString searchText;
    bool caseSensitive = false;
    SearchKinds kinds;

    // Find: the words of the search box in the ticked kinds. One record
    // found opens the browser on it. False after a fault (which was shown).
    bool find();

    // More/Less: the query section shown or hidden, with the window's
    // height in twips.
    void moreLess();
    bool expanded() const { return expanded_; }
    QString moreLessCaption() const;
    int heightTwips() const { return expanded_ ? 4965 : 4230; }

    // The queries: choosing one runs it, or, for those that take a number,
    // readies the number box for Go. Both are false after a fault (which
    // was shown), and the results found until then are listed.
    static QStringList queryChoices();
    Query query() const { return query_; }
    bool queryChosen(Query query);
    QString numberText;
    bool numberEnabled() const { return numberEnabled_; }
    bool go();

    // The results list.
    const QString& heading() const { return heading_; }
    const QStringList& lines() const { return lines_; }
    // The results as a table, heading row first: each record's number
    // ("I007") and text, in the list's order (its section lines left out).
    TextTable resultTable() const;
    // Some lines of the list (by their place) as rows of that table.
    TextTable resultRows(const QList<int>& lines) const;
    // A line picked: the browser opens on its record.
    void lineChosen(int line);
    // A quiet note for under the list when a kind reached the 200 results a
    // table holds, or "".
    QString limitNote() const;
    // Lists the results again (names follow new settings).
    void relist() { showResults(); }
    // The results were cleared (another file was opened): the list is empty.
    void clearResults();

private:
    void showResults();
    // Runs a query; false after a fault (which was shown). A query stopped
    // at 200 results is noted for noteLimit.
    bool runQuery(Query query, int32_t n);
    // "Only the first 200 results are listed." after a query that stopped there.
    void noteLimit();
    void openSingleResult();

    Session& session_;
    bool expanded_ = false;
    Query query_ = Query::EarliestBorn;
    bool numberEnabled_ = false;
    bool limitReached_ = false;
    QString heading_;
    QStringList lines_;
};

}  // namespace tav
