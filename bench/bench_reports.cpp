// SPDX-License-Identifier: GPL-3.0-or-later
// Text report benchmarks on a generated file of 40000 individuals: each
// report's text (the reports that count descendants from an empty cache),
// each report from the menu to the filled text viewer, and the names report
// on 20000 people with surnames of their own.
#include "app/GedcomLoading.h"
#include "app/Messages.h"
#include "app/Session.h"
#include "bench/BenchFiles.h"
#include "reports/ReportKinds.h"
#include "ui/text/TextViewer.h"

#include <QApplication>
#include <QFile>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <cstdlib>

namespace {

void labelKind(benchmark::State& state, tav::ReportKind kind, const QString& text)
{
    state.SetLabel(tav::reportKindText(kind).toStdString());
    state.counters["lines"] = double(text.count(QStringLiteral("\r\n")) + 1);
}

void BM_ReportText(benchmark::State& state)
{
    const auto kind = tav::ReportKind(state.range(0));
    tav::Session& session = tav::bench::generatedSession();
    QString text;
    for (auto _ : state) {
        state.PauseTiming();
        session.descendantCache.clear();
        state.ResumeTiming();
        text = tav::reportText(session, kind);
    }
    labelKind(state, kind, text);
}
BENCHMARK(BM_ReportText)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);

// The menu command as the main window runs it: the report put in the
// session and the viewer filled and painted.
void BM_ReportInViewer(benchmark::State& state)
{
    const auto kind = tav::ReportKind(state.range(0));
    tav::Session& session = tav::bench::generatedSession();
    tav::TextViewer viewer(session);
    viewer.setAttribute(Qt::WA_DeleteOnClose, false);
    viewer.show();
    for (auto _ : state) {
        state.PauseTiming();
        session.descendantCache.clear();
        // Another text first, so that the viewer fills anew each time.
        session.report = {QStringLiteral("-"), QStringLiteral("-")};
        viewer.refresh();
        QApplication::processEvents();
        state.ResumeTiming();
        session.report = {tav::reportText(session, kind), tav::reportTitle(kind)};
        viewer.refresh();
        viewer.textBox()->viewport()->repaint();
        QApplication::processEvents();
    }
    labelKind(state, kind, session.report.text);
}
BENCHMARK(BM_ReportInViewer)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);

// 20000 people, each with a surname of their own: 15000 in the table and
// 5000 tallied as other names.
void BM_NamesReportManyDistinctNames(benchmark::State& state)
{
    static QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("distinct-names.ged"));
    QByteArray file;
    for (int i = 1; i <= 20000; ++i)
        file += QStringLiteral("0 @I%1@ INDI\n1 NAME Ann%1 /Name%1/\n1 SEX %2\n")
                    .arg(i)
                    .arg(i % 2 ? 'M' : 'F')
                    .toLatin1();
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly) || out.write(file) != file.size())
        std::abort();
    out.close();
    tav::bench::LoadedSession loaded(path);
    QString text;
    for (auto _ : state)
        text = tav::reportText(loaded.session, tav::ReportKind::GivenNames);
    labelKind(state, tav::ReportKind::GivenNames, text);
}
BENCHMARK(BM_NamesReportManyDistinctNames)->Unit(benchmark::kMillisecond);

}  // namespace
