// SPDX-License-Identifier: GPL-3.0-or-later
// The HTML descendants report on the generated file of 40000 individuals,
// for the person with the most descendants: the page from an empty
// descendant cache, and the page written to a file. Then a file made to be
// hard: 40000 descendants of one couple in which every marriage joins two
// descendants, so the lines of descent double with each generation. The
// counters give the descendants counted once per line of descent, the
// different people the page names, and its size.
#include "app/Session.h"
#include "bench/BenchFiles.h"
#include "calc/DescendantCounting.h"
#include "reports/DescendancyOutline.h"
#include "reports/HtmlDescendantsReport.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <cstdlib>

namespace {

int32_t personWithMostDescendants(tav::Session& session)
{
    int32_t best = 0, most = -1;
    for (int32_t slot = 1; slot <= session.records.individualCount(); ++slot) {
        const int32_t count = tav::countDescendants(session.records, session.descendantCache, slot);
        if (count > most) {
            most = count;
            best = slot;
        }
    }
    return best;
}

void countPage(benchmark::State& state, tav::Session& session, int32_t top, qsizetype bytes)
{
    state.counters["descendants"] =
        tav::countDescendants(session.records, session.descendantCache, top);
    state.counters["different"] =
        tav::DescendancyOutline(session.records, top).distinctDescendants();
    state.counters["bytes"] = double(bytes);
    state.SetLabel("top person " + std::to_string(top));
}

void BM_HtmlReportPage(benchmark::State& state)
{
    tav::Session& session = tav::bench::generatedSession();
    const int32_t top = personWithMostDescendants(session);
    QByteArray page;
    for (auto _ : state) {
        state.PauseTiming();
        session.descendantCache.clear();
        state.ResumeTiming();
        page = tav::htmlDescendantsReport(session.records, session.descendantCache,
                                          session.nameStyle(), session.today(), top);
    }
    countPage(state, session, top, page.size());
}
BENCHMARK(BM_HtmlReportPage)->Unit(benchmark::kMillisecond);

void BM_HtmlReportWritten(benchmark::State& state)
{
    tav::Session& session = tav::bench::generatedSession();
    const int32_t top = personWithMostDescendants(session);
    QTemporaryDir dir;
    const QString path = tav::htmlReportPath(dir.path());
    for (auto _ : state) {
        state.PauseTiming();
        session.descendantCache.clear();
        state.ResumeTiming();
        if (!tav::writeHtmlDescendantsReport(session, top, path).ok())
            std::abort();
    }
    countPage(state, session, top, QFileInfo(path).size());
}
BENCHMARK(BM_HtmlReportWritten)->Unit(benchmark::kMillisecond);

// A couple with 20 children; from then on the descendants marry each other
// two by two, each couple with 4 children, until the file holds 40000 people.
QString cousinsFile(const QTemporaryDir& dir)
{
    constexpr int capacity = 40000;
    std::vector<QByteArray> people(1);  // the record of each slot, from 1
    QByteArray families;
    int familyCount = 0;
    const auto person = [&](int parents) {
        const QByteArray n = QByteArray::number(people.size());
        people.push_back("0 @I" + n + "@ INDI\n1 NAME Person" + n +
                         " /Cousin/\n1 BIRT\n2 DATE 1700\n1 DEAT\n2 DATE 1780\n");
        if (parents)
            people.back() += "1 FAMC @F" + QByteArray::number(parents) + "@\n";
        return int(people.size()) - 1;
    };
    const auto family = [&](int husband, int wife) {
        const QByteArray f = QByteArray::number(++familyCount);
        families += "0 @F" + f + "@ FAM\n1 HUSB @I" + QByteArray::number(husband) + "@\n1 WIFE @I" +
                    QByteArray::number(wife) + "@\n1 MARR\n2 DATE 1725\n2 PLAC Ely\n";
        people[size_t(husband)] += "1 FAMS @F" + f + "@\n";
        people[size_t(wife)] += "1 FAMS @F" + f + "@\n";
        return familyCount;
    };
    const auto child = [&](int parents) {
        const int slot = person(parents);
        families += "1 CHIL @I" + QByteArray::number(slot) + "@\n";
        return slot;
    };
    const int root = person(0);
    const int first = family(root, person(0));
    std::vector<int> generation;
    for (int k = 0; k < 20; ++k)
        generation.push_back(child(first));
    while (int(people.size()) <= capacity) {
        std::vector<int> next;
        for (size_t i = 0; i + 1 < generation.size() && int(people.size()) <= capacity; i += 2) {
            const int parents = family(generation[i], generation[i + 1]);
            for (int k = 0; k < 4 && int(people.size()) <= capacity; ++k)
                next.push_back(child(parents));
        }
        generation = std::move(next);
    }
    QByteArray file = "0 HEAD\n1 CHAR UTF-8\n";
    for (const QByteArray& record : people)
        file += record;
    file += families + "0 TRLR\n";
    const QString path = dir.filePath(QStringLiteral("cousins.ged"));
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly) || out.write(file) != file.size())
        std::abort();
    return path;
}

void BM_HtmlReportOfCousins(benchmark::State& state)
{
    QTemporaryDir dir;
    tav::bench::LoadedSession loaded(cousinsFile(dir));
    tav::Session& session = loaded.session;
    if (!loaded.loaded || session.records.individualCount() != 40000)
        std::abort();
    QByteArray page;
    for (auto _ : state) {
        state.PauseTiming();
        session.descendantCache.clear();
        state.ResumeTiming();
        page = tav::htmlDescendantsReport(session.records, session.descendantCache,
                                          session.nameStyle(), session.today(), 1);
    }
    countPage(state, session, 1, page.size());
}
BENCHMARK(BM_HtmlReportOfCousins)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
