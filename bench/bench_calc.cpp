// SPDX-License-Identifier: GPL-3.0-or-later
// Calculation benchmarks: descendant counting over whole files, the
// relationship finder on deep royal ancestries, and date parsing.
#include "app/GedcomLoading.h"
#include "app/Messages.h"
#include "app/Session.h"
#include "bench/BenchFiles.h"
#include "calc/Dates.h"
#include "calc/DescendantCounting.h"
#include "calc/RelationshipFinder.h"

#include <benchmark/benchmark.h>
#include <memory>

namespace {

// Every individual in slot order from an empty cache, as "family tree
// from top" scores them.
void countEveryone(benchmark::State& state, const QString& path)
{
    tav::bench::LoadedSession loaded(path);
    if (!loaded.loaded) {
        state.SkipWithError("file not available");
        return;
    }
    const tav::RecordStore& records = loaded.session.records;
    tav::DescendantCache& cache = loaded.session.descendantCache;
    int64_t best = 0;
    for (auto _ : state) {
        state.PauseTiming();
        cache.clear();
        state.ResumeTiming();
        for (int32_t i = 1; i <= records.individualCount(); ++i)
            best = std::max<int64_t>(best, tav::countDescendants(records, cache, i));
    }
    state.counters["individuals"] = records.individualCount();
    state.counters["most"] = double(best);
}

void BM_CountAllGenerated(benchmark::State& state)
{
    countEveryone(state, tav::bench::generatedFile(40000));
}
BENCHMARK(BM_CountAllGenerated)->Unit(benchmark::kMillisecond);

void BM_CountAllRoyal92(benchmark::State& state)
{
    countEveryone(state, tav::bench::sharedFile("royal92.ged"));
}
BENCHMARK(BM_CountAllRoyal92)->Unit(benchmark::kMillisecond);

// Elizabeth II (I52) and Michael Kreuger (I980): 76 and 79 generations of
// recorded ancestry, with much pedigree collapse.
void BM_RelationshipRoyal92(benchmark::State& state)
{
    tav::bench::LoadedSession loaded(tav::bench::sharedFile("royal92.ged"));
    if (!loaded.loaded) {
        state.SkipWithError("royal92.ged not available");
        return;
    }
    QString text;
    for (auto _ : state) {
        text = tav::relationshipText(loaded.session.records, 52, 980, QStringLiteral("\r\n"));
        benchmark::DoNotOptimize(text.data());
    }
    state.SetLabel(text.left(text.indexOf(QLatin1Char('\r'))).toStdString());
}
BENCHMARK(BM_RelationshipRoyal92)->Unit(benchmark::kMillisecond);

void BM_ParseDate(benchmark::State& state)
{
    const QString dates[] = {QStringLiteral("12 MAR 1850"), QStringLiteral("1850"),
                             QStringLiteral("MAR 1850"),    QStringLiteral("3 JAN 1901"),
                             QStringLiteral("ABT 1850"),    QStringLiteral("25 DEC 1799"),
                             QStringLiteral("1 JUL 1920"),  QStringLiteral("14-FEB-1888")};
    int64_t usable = 0;
    for (auto _ : state) {
        for (const QString& date : dates) {
            int32_t d = 0, m = 0, y = 0;
            usable += tav::parseDate(date, d, m, y) != 0;
        }
    }
    benchmark::DoNotOptimize(usable);
    state.SetItemsProcessed(state.iterations() * int64_t(std::size(dates)));
}
BENCHMARK(BM_ParseDate);

}  // namespace

BENCHMARK_MAIN();
