// The family tree: "family tree from top" on a generated file of 40000
// individuals, one walk with its layout, and a view file of 1000 persons
// written and read.
#include "bench/BenchFiles.h"
#include "calc/DescendantCounting.h"
#include "cli/OffscreenGui.h"
#include "draw/TreeFont.h"
#include "ui/tree/TreeLayout.h"
#include "ui/tree/TreeModel.h"
#include "ui/tree/TreeViewFile.h"

#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

using tav::Session;
using tav::TreeModel;

TreeModel modelOf(Session& session)
{
    return TreeModel(session.records, session.settings, session.tree,
                     [&session] { return session.today(); });
}

const tav::FontMeasure& treeMeasure()
{
    tav::ensureOffscreenGui();
    static const tav::FontMeasure measure(2);
    return measure;
}

// As the main window runs it: every individual scored from an empty cache,
// then the winner's tree built and laid out.
void BM_FamilyTreeFromTop(benchmark::State& state)
{
    Session& session = tav::bench::generatedSession();
    const tav::FontMeasure& measure = treeMeasure();
    TreeModel model = modelOf(session);
    for (auto _ : state) {
        state.PauseTiming();
        session.records.clearDescendantCache();
        state.ResumeTiming();
        const int32_t top = tav::individualWithMostDescendants(session.records);
        model.clearArrays(1, 1);
        model.prepareTopPerson(top, measure);
        model.prepareDescendents3(1, 0, 0);
        tav::layoutManager(model, measure, tav::generationGap(2));
    }
    state.counters["persons"] = model.nTreeInd;
    state.counters["families"] = model.nTreeFam;
}
BENCHMARK(BM_FamilyTreeFromTop)->Unit(benchmark::kMillisecond);

// One walk from the top person and its layout, the counts already cached:
// 0 the eldest line, 1 the first spouse's, 2 the best spouse's.
void BM_WalkAndLayout(benchmark::State& state)
{
    Session& session = tav::bench::generatedSession();
    const tav::FontMeasure& measure = treeMeasure();
    TreeModel model = modelOf(session);
    const int32_t top = tav::individualWithMostDescendants(session.records);
    model.clearArrays(1, 1);
    model.prepareTopPerson(top, measure);
    for (auto _ : state) {
        switch (state.range(0)) {
        case 0: model.prepareDescendents(1, 0, 1); break;
        case 1: model.prepareDescendents2(1, 0, 1); break;
        default: model.prepareDescendents3(1, 0, 0); break;
        }
        tav::layoutManager(model, measure, tav::generationGap(2));
    }
    state.counters["persons"] = model.nTreeInd;
    state.counters["families"] = model.nTreeFam;
}
BENCHMARK(BM_WalkAndLayout)->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

// A line of 48 generations whose families of 20 children (11 in the last)
// fill exactly 1000 boxes.
QString fullViewFile(const QTemporaryDir& dir)
{
    QByteArray text = "0 HEAD\n0 @I1@ INDI\n1 NAME Adam Ulrich /Bergström/\n1 SEX M\n"
                      "1 FAMS @F1@\n";
    int next = 2;
    for (int g = 1; g <= 48; ++g) {
        const int children = g < 48 ? 20 : 11;
        const int head = g == 1 ? 1 : next - 20;
        text +=
            "0 @F" + QByteArray::number(g) + "@ FAM\n1 HUSB @I" + QByteArray::number(head) + "@\n";
        for (int c = 0; c < children; ++c)
            text += "1 CHIL @I" + QByteArray::number(next + c) + "@\n";
        for (int c = 0; c < children; ++c) {
            text += "0 @I" + QByteArray::number(next + c) + "@ INDI\n1 NAME Child" +
                    QByteArray::number(c) + " Gen" + QByteArray::number(g) +
                    " /Bergström/\n1 SEX M\n1 FAMC @F" + QByteArray::number(g) + "@\n";
            if (c == 0 && g < 48)
                text += "1 FAMS @F" + QByteArray::number(g + 1) + "@\n";
        }
        next += children;
    }
    const QString path = dir.filePath(QStringLiteral("full.ged"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        std::abort();
    return path;
}

struct FullView {
    QTemporaryDir dir;
    tav::bench::LoadedSession loaded{fullViewFile(dir)};
    TreeModel model = modelOf(loaded.session);
    QString viewPath = dir.filePath(QStringLiteral("temp.gds"));

    FullView()
    {
        const tav::FontMeasure& measure = treeMeasure();
        model.clearArrays(1, 1);
        model.prepareTopPerson(1, measure);
        model.prepareDescendents(1, 0, 1);
        tav::layoutManager(model, measure, tav::generationGap(2));
    }
};

void BM_SaveView1000(benchmark::State& state)
{
    FullView view;
    for (auto _ : state) {
        if (!tav::treeSaveToFile(view.model, nullptr, view.viewPath))
            state.SkipWithError("cannot write the view");
    }
    state.counters["persons"] = view.model.nTreeInd;
}
BENCHMARK(BM_SaveView1000)->Unit(benchmark::kMillisecond);

void BM_ReadView1000(benchmark::State& state)
{
    FullView view;
    if (!tav::treeSaveToFile(view.model, nullptr, view.viewPath))
        state.SkipWithError("cannot write the view");
    for (auto _ : state) {
        if (!tav::treeReadFromFile(view.model, view.loaded.messages, view.viewPath))
            state.SkipWithError("the view was not read");
    }
    state.counters["persons"] = view.model.nTreeInd;
}
BENCHMARK(BM_ReadView1000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
