// SPDX-License-Identifier: GPL-3.0-or-later
// The ancestors chart of ten generations on the generated file of 40000
// individuals, for the person with the most known forebears there, and on
// a file where all 1023 places of ten generations are known, each person
// once (the most any chart can hold): the chart numbered, laid out and
// painted as the window paints it, all of it painted to fit a large image,
// the window from the request to its first painting, and the HTML report.
// The counters give the boxes drawn.
#include "bench/BenchFiles.h"
#include "bench/BenchPainting.h"
#include "calc/Ahnentafel.h"
#include "cli/OffscreenGui.h"
#include "draw/TreeFont.h"
#include "draw/TreePainter.h"
#include "reports/HtmlAncestorsReport.h"
#include "tree/AncestorsChart.h"
#include "windowlogic/ancestors/AncestorsWindowLogic.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <bit>

namespace {

using tav::Session;

const tav::FontMeasure& chartMeasure()
{
    tav::ensureOffscreenGui();
    static const tav::FontMeasure measure(2);
    return measure;
}

// The individual whose ten generations hold the most places.
int32_t fullestRoot(const Session& session)
{
    int32_t found = 0;
    size_t most = 0;
    for (int32_t slot = 1; slot <= session.records.individualCount(); ++slot) {
        const tav::Ahnentafel chart(session.records, slot, 10);
        if (chart.places().size() > most) {
            most = chart.places().size();
            found = slot;
        }
    }
    return found;
}

// Individual n is the child of 2n and 2n + 1 up to the tenth generation,
// with names and years of the length real ones have.
QString fullPedigreeFile(const QTemporaryDir& dir)
{
    QByteArray text = "0 HEAD\n";
    for (int n = 1; n <= 1023; ++n) {
        const QByteArray id = QByteArray::number(n);
        text += "0 @I" + id + "@ INDI\n1 NAME " +
                (n % 2 ? "Margaretha Elisabeth" : "Johann Friedrich") + " /Lindqvist-" + id +
                "/\n1 BIRT\n2 DATE " +
                QByteArray::number(1990 - 28 * (std::bit_width(unsigned(n)) - 1)) +
                "\n1 DEAT\n2 DATE 12 MAR " +
                QByteArray::number(2060 - 28 * (std::bit_width(unsigned(n)) - 1)) + "\n";
        if (n < 512)
            text += "1 FAMC @F" + id + "@\n";
        if (n > 1)
            text += "1 FAMS @F" + QByteArray::number(n / 2) + "@\n";
    }
    for (int n = 1; n < 512; ++n)
        text += "0 @F" + QByteArray::number(n) + "@ FAM\n1 HUSB @I" + QByteArray::number(2 * n) +
                "@\n1 WIFE @I" + QByteArray::number(2 * n + 1) +
                "@\n1 MARR\n2 DATE 1850\n"
                "2 PLAC Uppsala,Uppland,Sweden\n1 CHIL @I" +
                QByteArray::number(n) + "@\n";
    const QString path = dir.filePath(QStringLiteral("pedigree.ged"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        std::abort();
    return path;
}

// 0: the generated file of 40000 and its fullest chart; 1: the full pedigree.
struct ChartFile {
    Session* session = nullptr;
    int32_t root = 0;
};

ChartFile chartFile(int which)
{
    if (which == 0) {
        Session& session = tav::bench::generatedSession();
        static const int32_t root = fullestRoot(session);
        return {&session, root};
    }
    static QTemporaryDir dir;
    static tav::bench::LoadedSession full(fullPedigreeFile(dir));
    return {&full.session, 1};
}

// A window-sized image at 100%, the root at the left, half way down.
void paintAsTheWindow(const tav::TreeDrawing& drawing, QImage& canvas)
{
    QPainter painter(&canvas);
    painter.fillRect(canvas.rect(), tav::treeBackground(drawing.backColour));
    const tav::TreeBox* root = drawing.box(1);
    const QPointF origin(drawing.bounds.left(),
                         (root ? root->frame.center().y() : 0) - canvas.height() / 2.0);
    painter.translate(-origin);
    tav::paintTree(painter, drawing, QRectF(origin, QSizeF(canvas.size())));
}

using tav::bench::windowCanvas;

void counters(benchmark::State& state, const tav::TreeDrawing& drawing, int32_t root)
{
    state.counters["boxes"] = double(drawing.boxes.size());
    state.counters["height"] = drawing.bounds.height();
    state.SetLabel("root " + std::to_string(root));
}

// Numbered, laid out (labels measured) and painted, on file 0 or 1 (see
// chartFile): 0 the window's view, 1 all of it scaled into 1600 x 1200.
void BM_AncestorsChart10Generations(benchmark::State& state)
{
    const ChartFile file = chartFile(int(state.range(0)));
    Session& session = *file.session;
    const int32_t root = file.root;
    const tav::FontMeasure& measure = chartMeasure();
    const bool whole = state.range(1) == 1;
    QImage canvas =
        whole ? QImage(1600, 1200, QImage::Format_ARGB32_Premultiplied) : windowCanvas();
    tav::TreeDrawing drawing;
    for (auto _ : state) {
        const tav::Ahnentafel chart(session.records, root, 10);
        drawing = tav::ancestorsDrawing(chart, session.records, session.settings, measure,
                                        session.today());
        if (whole)
            tav::bench::paintScaledToFit(drawing, canvas);
        else
            paintAsTheWindow(drawing, canvas);
    }
    counters(state, drawing, root);
}
BENCHMARK(BM_AncestorsChart10Generations)
    ->ArgsProduct({{0, 1}, {0, 1}})
    ->Unit(benchmark::kMillisecond);

// The window asked for the chart on file 0 or 1 (its logic made, the chart
// built with the dates shown) to its first painting.
void BM_AncestorsWindowToFirstPaint(benchmark::State& state)
{
    const ChartFile file = chartFile(int(state.range(0)));
    Session& session = *file.session;
    chartMeasure();
    session.curInd = file.root;
    session.settings.ancestorGenerations = 10;
    session.settings.ViewDates = true;
    QImage canvas = windowCanvas();
    size_t boxes = 0;
    for (auto _ : state) {
        tav::AncestorsWindowLogic window(
            session, [](int fontSize) { return std::make_unique<tav::FontMeasure>(fontSize); });
        window.activate();
        paintAsTheWindow(window.drawing(), canvas);
        boxes = window.drawing().boxes.size();
    }
    session.settings.ViewDates = false;
    state.counters["boxes"] = double(boxes);
}
BENCHMARK(BM_AncestorsWindowToFirstPaint)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// The HTML report of ten generations on file 0 or 1, the page made in memory.
void BM_AncestorsHtmlReport(benchmark::State& state)
{
    const ChartFile file = chartFile(int(state.range(0)));
    Session& session = *file.session;
    const int32_t root = file.root;
    QByteArray page;
    for (auto _ : state)
        page = tav::htmlAncestorsReport(session.records, session.nameStyle(), session.today(), root,
                                        10);
    state.counters["bytes"] = double(page.size());
    state.counters["places"] = double(tav::Ahnentafel(session.records, root, 10).places().size());
}
BENCHMARK(BM_AncestorsHtmlReport)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
