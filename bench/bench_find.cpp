// Find window benchmarks on a generated file of 40000 individuals: a find
// of two words over the four kinds, and each of the fifteen queries (the
// descendant queries from an empty cache).
#include "app/GedcomLoading.h"
#include "app/Messages.h"
#include "app/Session.h"
#include "bench/BenchFiles.h"
#include "calc/StatisticalQueries.h"
#include "windowlogic/find/FindLogic.h"

#include <benchmark/benchmark.h>

namespace {

void BM_FindTwoWords(benchmark::State& state)
{
    tav::FindLogic find(tav::bench::generatedSession());
    find.searchText = QStringLiteral("john farmer");
    for (auto _ : state)
        find.find();
    state.counters["found"] = tav::bench::generatedSession().findResults.total;
}
BENCHMARK(BM_FindTwoWords)->Unit(benchmark::kMillisecond);

void BM_Query(benchmark::State& state)
{
    const tav::Query query = tav::queryAt(int(state.range(0)));
    tav::Session& session = tav::bench::generatedSession();
    tav::FindLogic find(session);
    for (auto _ : state) {
        state.PauseTiming();
        session.descendantCache.clear();
        state.ResumeTiming();
        find.queryChosen(query);
        if (tav::queryTakesNumber(query)) {
            find.numberText =
                query == tav::Query::MoreDescendants ? QStringLiteral("150") : QStringLiteral("5");
            find.go();
        }
    }
    state.SetLabel(tav::queryName(query).toStdString());
    state.counters["found"] = session.findResults.total;
}
BENCHMARK(BM_Query)->DenseRange(0, 14)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
