#pragma once

#include <cstdint>

namespace tav {

class Session;

// The fifteen questions about the whole file, in the order the find window
// lists them.
extern const char* const queryNames[15];

// Queries 4, 5, 6 and 8 take a number N.
bool queryTakesNumber(int index);

// Computes query `index` into the session's find results: individuals for
// 0-3, 6-8, 10 and 11, families for the others. The caller clears the
// tables as the window does; the queries that keep a best value start their
// list themselves (with the record current before the query for 0-3, 9, 10
// and 11, which hold their candidate in the current individual or family).
// A 201st result raises SubscriptOutOfRange with the first 200 kept.
void runQuery(Session& session, int index, int32_t n);

}  // namespace tav
