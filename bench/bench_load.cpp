// SPDX-License-Identifier: GPL-3.0-or-later
// Load benchmarks: a generated file of 40000 individuals (about 12 MB) and of
// 10000 for the linearity check, beside `wc -l` on the same files; the
// 40000 file also with its records shuffled (the second argument), whose
// links must resolve as quickly, and with twelve-digit and text
// cross-references (the third: 1 and 2). The whole process of tav-cli info
// is timed too, and beside it, in the same run, another build's tav-cli
// when TAV_BASELINE_CLI names one.
#include "app/GedcomLoading.h"
#include "app/Messages.h"
#include "app/Session.h"
#include "bench/BenchFiles.h"

#include <QFile>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <memory>

namespace {

using tav::bench::generatedFile;

// A load as at start-up: a new session each time, destroyed outside the timing.
void BM_LoadGenerated(benchmark::State& state)
{
    const QString path = generatedFile(int(state.range(0)), state.range(1) != 0,
                                       tav::GeneratorOptions::Xrefs(state.range(2)));
    tav::RecordingMessages messages;
    int32_t individuals = 0, families = 0;
    for (auto _ : state) {
        auto session = std::make_unique<tav::Session>(messages);
        if (!tav::loadGedcom(*session, path))
            state.SkipWithError("load failed");
        individuals = session->records.individualCount();
        families = session->records.familyCount();
        state.PauseTiming();
        session.reset();
        state.ResumeTiming();
    }
    state.counters["individuals"] = individuals;
    state.counters["families"] = families;
    state.counters["MB"] = double(QFile(path).size()) / 1e6;
}
BENCHMARK(BM_LoadGenerated)
    ->Args({10000, 0, 0})
    ->Args({40000, 0, 0})
    ->Args({40000, 1, 0})
    ->Args({40000, 0, 1})
    ->Args({40000, 0, 2})
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);

// Opening a file over another: the old tables are freed inside the load.
void BM_ReloadGenerated(benchmark::State& state)
{
    const QString path = generatedFile(int(state.range(0)));
    tav::RecordingMessages messages;
    tav::Session session(messages);
    for (auto _ : state) {
        if (!tav::loadGedcom(session, path))
            state.SkipWithError("load failed");
    }
}
BENCHMARK(BM_ReloadGenerated)
    ->Arg(40000)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);

void BM_WcLines(benchmark::State& state)
{
    const QByteArray command =
        "wc -l " + QFile::encodeName(generatedFile(int(state.range(0)))) + " >/dev/null";
    for (auto _ : state) {
        if (std::system(command.constData()) != 0)
            state.SkipWithError("wc failed");
    }
}
BENCHMARK(BM_WcLines)
    ->Arg(10000)
    ->Arg(40000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);

// tav-cli info on the 40000 file as a whole process: loading the program and
// its libraries, reading, and ending. Argument 1 runs the baseline build.
void BM_CliInfo(benchmark::State& state)
{
    const char* baseline = std::getenv("TAV_BASELINE_CLI");
    if (state.range(0) == 1 && !baseline) {
        state.SkipWithError("TAV_BASELINE_CLI is not set");
        return;
    }
    const QByteArray program = state.range(0) == 1 ? QByteArray(baseline) : TAV_CLI_PROGRAM;
    const QByteArray command =
        program + " info " + QFile::encodeName(generatedFile(40000)) + " >/dev/null";
    for (auto _ : state) {
        if (std::system(command.constData()) != 0)
            state.SkipWithError("tav-cli failed");
    }
}
BENCHMARK(BM_CliInfo)
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Repetitions(8)
    ->ReportAggregatesOnly(true);

}  // namespace

BENCHMARK_MAIN();
