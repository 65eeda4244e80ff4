// SPDX-License-Identifier: GPL-3.0-or-later
// The main() of the benchmarks that need widgets: an application on the
// offscreen platform around Google Benchmark's run.
#include <QApplication>
#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
