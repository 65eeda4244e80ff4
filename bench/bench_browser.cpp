// SPDX-License-Identifier: GPL-3.0-or-later
// Record browser benchmarks on a generated file of 40000 individuals: the
// list of all individuals from the choice to the painted grid, one record
// grid, and Back and Forward deep in a long history.
#include "app/GedcomLoading.h"
#include "app/Messages.h"
#include "app/Session.h"
#include "bench/BenchFiles.h"
#include "windowlogic/browser/BrowserLogic.h"
#include "ui/browser/BrowserWindow.h"

#include <QApplication>
#include <QTableView>
#include <benchmark/benchmark.h>

namespace {

void BM_ShowAllIndividuals(benchmark::State& state)
{
    tav::Session& session = tav::bench::generatedSession();
    tav::BrowserWindow window(session);
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.show();
    QApplication::processEvents();
    bool individuals = false;
    for (auto _ : state) {
        // Alternate between the two large lists so that each round loads anew.
        individuals = !individuals;
        session.browser = {individuals ? tav::ViewKind::AllIndividuals : tav::ViewKind::AllFamilies,
                           tav::BrowserCaller::MainWindow, false};
        window.activateRequest();
        window.view()->viewport()->repaint();
        QApplication::processEvents();
    }
    state.counters["rows"] = window.view()->model()->rowCount();
}
BENCHMARK(BM_ShowAllIndividuals)->Unit(benchmark::kMillisecond);

void BM_LoadRecordGrid(benchmark::State& state)
{
    tav::Session& session = tav::bench::generatedSession();
    tav::BrowserLogic browser(session);
    int32_t slot = 0;
    for (auto _ : state) {
        slot = slot % session.records.individualCount() + 1;
        session.browser.viewKind = tav::ViewKind::Individual;
        session.curInd = slot;
        benchmark::DoNotOptimize(browser.gridLoad());
    }
}
BENCHMARK(BM_LoadRecordGrid)->Unit(benchmark::kMicrosecond);

// One Back and one Forward with 10000 positions behind.
void BM_BackForwardDeepHistory(benchmark::State& state)
{
    tav::Session& session = tav::bench::generatedSession();
    tav::BrowserLogic browser(session);
    for (int32_t i = 1; i <= 10000; ++i) {
        session.browser.viewKind = (i % 2) ? tav::ViewKind::Individual : tav::ViewKind::Family;
        session.curInd = session.curFam = i;
        browser.gridLoad();
    }
    for (auto _ : state) {
        browser.moveBackForward(tav::BrowserMove::Back);
        browser.moveBackForward(tav::BrowserMove::Forward);
    }
    state.counters["history"] = double(browser.backHistory().size() / 9);
}
BENCHMARK(BM_BackForwardDeepHistory)->Unit(benchmark::kMicrosecond);

}  // namespace
