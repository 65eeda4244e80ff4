// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/FindResults.h"

#include <QDate>
#include <QString>
#include <cstdint>

namespace tav {

class DescendantCache;
class RecordStore;

// The fifteen questions about the whole file, in the order the find window
// lists them.
enum class Query {
    EarliestBorn,
    LatestBorn,
    OldestAtDeath,
    YoungestAtDeath,
    FamiliesWithMoreChildren,
    FamiliesWithFewerChildren,
    MarriedMoreTimes,
    MostDescendants,
    MoreDescendants,
    LargestAgeGapAtMarriage,
    OldestAtMarriage,
    YoungestAtMarriage,
    ChildrenBeforeMarriage,
    Twins,
    LargestGapBetweenChildren,
};
constexpr int queryCount = 15;

// The query at a place in the list (0 to 14).
constexpr Query queryAt(int index) { return Query(index); }
constexpr int queryIndex(Query query) { return int(query); }
constexpr bool isQueryIndex(int index) { return index >= 0 && index < queryCount; }

// The text the find window lists for a query ("Earliest born" ...).
QString queryName(Query query);

// Queries 4, 5, 6 and 8 take a number N.
bool queryTakesNumber(Query query);
// The results a query lists: families for 4, 5, 9 and 12 to 14, else individuals.
bool queryListsFamilies(Query query);

// Where the queries that keep a best value hold their newest candidate: the
// current individual and family, which the results then start from.
struct QueryCandidates {
    int32_t& individual;
    int32_t& family;
};

// Computes a query into the find results. The caller clears the tables as
// the window does; the queries that keep a best value start their list
// themselves (with the candidate held before the query for 0-3, 9, 10 and
// 11). Ages are measured to `today`; descendants are counted into
// `descendants`. A query whose results pass 200 stops at the 200th and gives
// false: the table holds the first 200. Other faults (a line of descent
// deeper than 100 levels) are raised.
bool runQuery(const RecordStore& records, DescendantCache& descendants, FindResults& results,
              QueryCandidates candidates, QDate today, Query query, int32_t n);

}  // namespace tav
