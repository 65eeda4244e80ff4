// SPDX-License-Identifier: GPL-3.0-or-later
// Find window benchmarks on a generated file of 40000 individuals: a find
// of two words over the four kinds, and each of the fifteen queries (the
// descendant queries from an empty cache). Also the main window's name box:
// the people it offers for each keystroke, and the folding of every name
// that the first keystroke after a load pays.
#include "app/GedcomLoading.h"
#include "app/Messages.h"
#include "app/Session.h"
#include "bench/BenchFiles.h"
#include "calc/StatisticalQueries.h"
#include "settings/RegistryStore.h"
#include "windowlogic/find/FindLogic.h"
#include "windowlogic/main/MainWindowLogic.h"

#include <QTemporaryDir>

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

// What a user types, a key at a time, into the name box.
const char* const typed[] = {"j", "jo", "joh", "john", "john s", "john sm", "smith j", "zz"};

void BM_NameCompletion(benchmark::State& state)
{
    tav::Session& session = tav::bench::generatedSession();
    QTemporaryDir dir;
    tav::RegistryStore store(dir.filePath(QStringLiteral("Tav.reg")));
    tav::MainWindowLogic main(session, store, QString());
    const QString text = QString::fromLatin1(typed[state.range(0)]);
    main.completions(text);  // the names are folded once, after the load
    size_t offered = 0;
    for (auto _ : state)
        offered = main.completions(text).size();
    state.SetLabel(typed[state.range(0)]);
    state.counters["offered"] = double(offered);
}
BENCHMARK(BM_NameCompletion)->DenseRange(0, 7)->Unit(benchmark::kMillisecond);

// The first keystroke after a load folds every name.
void BM_NameCompletionFirstKey(benchmark::State& state)
{
    tav::Session& session = tav::bench::generatedSession();
    for (auto _ : state) {
        state.PauseTiming();
        session.nameSearch.clear();
        state.ResumeTiming();
        session.nameSearch.find(session.records, u"j", 50);
    }
}
BENCHMARK(BM_NameCompletionFirstKey)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
