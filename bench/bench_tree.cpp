// SPDX-License-Identifier: GPL-3.0-or-later
// The family tree: "family tree from top" on a generated file of 40000
// individuals, one walk with its layout, and a view file of 1000 persons
// written and read; the tree window from the choice to its first painting,
// each command through its repaint, the triangle view, and painting 1000
// boxes.
#include "bench/BenchFiles.h"
#include "bench/BenchPainting.h"
#include "calc/DescendantCounting.h"
#include "cli/OffscreenGui.h"
#include "draw/PagedPicture.h"
#include "draw/PictureExport.h"
#include "draw/TreeFont.h"
#include "draw/TreePainter.h"
#include "tree/DescendantTriangle.h"
#include "tree/TreeLayout.h"
#include "tree/TreeModel.h"
#include "tree/TreeViewFile.h"
#include "windowlogic/tree/TreeWindowLogic.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>

#include <QFile>
#include <QPdfWriter>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <sys/resource.h>

namespace {

using tav::Session;
using tav::TreeModel;

TreeModel modelOf(Session& session)
{
    return TreeModel(session.records, session.descendantCache, session.settings, session.tree,
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
        session.descendantCache.clear();
        state.ResumeTiming();
        const int32_t top =
            tav::individualWithMostDescendants(session.records, session.descendantCache);
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
    const int32_t top =
        tav::individualWithMostDescendants(session.records, session.descendantCache);
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
        if (!tav::treeSaveToFile(view.model, view.viewPath))
            state.SkipWithError("cannot write the view");
    }
    state.counters["persons"] = view.model.nTreeInd;
}
BENCHMARK(BM_SaveView1000)->Unit(benchmark::kMillisecond);

void BM_ReadView1000(benchmark::State& state)
{
    FullView view;
    if (!tav::treeSaveToFile(view.model, view.viewPath))
        state.SkipWithError("cannot write the view");
    for (auto _ : state) {
        tav::showSavedView(view.model, tav::treeReadFromFile(view.model, view.viewPath));
    }
    state.counters["persons"] = view.model.nTreeInd;
}
BENCHMARK(BM_ReadView1000)->Unit(benchmark::kMillisecond);

// The window's canvas: a window-sized image at 100%, the top person
// centred at the top, painted as the widget paints it.
void paintAsTheWindow(const tav::TreeDrawing& drawing, QImage& canvas)
{
    QPainter painter(&canvas);
    painter.fillRect(canvas.rect(), tav::treeBackground(drawing.backColour));
    const tav::TreeBox* top = drawing.box(1);
    const QPointF origin(top ? top->frame.center().x() - canvas.width() / 2.0 : 0,
                         drawing.bounds.top());
    painter.translate(-origin);
    tav::paintTree(painter, drawing, QRectF(origin, QSizeF(canvas.size())));
}

using tav::bench::windowCanvas;

std::unique_ptr<tav::TreeWindowLogic> treeWindowOf(Session& session)
{
    treeMeasure();
    return std::make_unique<tav::TreeWindowLogic>(
        session, [](int fontSize) { return std::make_unique<tav::FontMeasure>(fontSize); });
}

// "family tree from top" chosen with nothing counted yet, to the first
// painting of the new window.
void BM_TreeWindowFromTopToFirstPaint(benchmark::State& state)
{
    Session& session = tav::bench::generatedSession();
    QImage canvas = windowCanvas();
    int32_t persons = 0;
    for (auto _ : state) {
        state.PauseTiming();
        session.descendantCache.clear();
        state.ResumeTiming();
        session.curInd =
            tav::individualWithMostDescendants(session.records, session.descendantCache);
        session.tree.treeBuilt = false;
        const auto window = treeWindowOf(session);
        window->activate();
        paintAsTheWindow(window->drawing(), canvas);
        persons = window->model().nTreeInd;
    }
    state.counters["persons"] = persons;
}
BENCHMARK(BM_TreeWindowFromTopToFirstPaint)->Unit(benchmark::kMillisecond);

// One command on the tree from the top, through the repaint; whatever the
// command changed is put back outside the timing. Arguments: 0 Show
// descendants (most), 1 (eldest), 2 Next spouse, 3 Set top, 4 Show
// parents, 5 GoBack, 6 Triangle view.
void BM_TreeCommandThroughRepaint(benchmark::State& state)
{
    using tav::TreeCommand;
    Session& session = tav::bench::generatedSession();
    session.curInd = tav::individualWithMostDescendants(session.records, session.descendantCache);
    session.tree.treeBuilt = false;
    const auto window = treeWindowOf(session);
    window->activate();
    const tav::TreeModel& model = window->model();
    const auto lineChild = [&](int32_t family) {
        const tav::TreeFamily& f = model.family(family);
        return f.indSt + std::max(1, f.childShown);
    };
    // Someone in the view with two marriages, for Next spouse.
    int32_t married = 0;
    for (int32_t slot = 1; slot <= model.nTreeInd && married == 0; ++slot) {
        window->select(slot);
        if (window->enabled(TreeCommand::NextSpouse))
            married = slot;
    }
    const TreeCommand commands[] = {
        TreeCommand::ShowDescendantsMost, TreeCommand::ShowDescendantsEldest,
        TreeCommand::NextSpouse,          TreeCommand::SetTop,
        TreeCommand::ShowParents,         TreeCommand::GoBack,
        TreeCommand::TriangleView};
    const TreeCommand command = commands[state.range(0)];
    switch (command) {
    case TreeCommand::NextSpouse: window->select(married); break;
    case TreeCommand::SetTop: window->select(lineChild(2)); break;
    case TreeCommand::ShowParents:
        window->select(lineChild(1));
        window->run(TreeCommand::SetTop);
        window->select(1);
        break;
    default: window->select(lineChild(1)); break;
    }
    if (!window->enabled(command) && command != TreeCommand::GoBack) {
        state.SkipWithError("the command does not apply on this tree");
        return;
    }
    const int32_t selected = window->selected();
    QImage canvas = windowCanvas();
    tav::TrianglePicture triangle;
    for (auto _ : state) {
        state.PauseTiming();
        if (command == TreeCommand::GoBack)
            window->run(TreeCommand::ShowDescendantsMost);  // something to go back from
        window->select(selected);
        state.ResumeTiming();
        window->run(command);
        if (window->triangleShown()) {
            triangle = tav::layoutTriangle(window->triangle(), window->triangleLabel(), 960,
                                           window->fontSize(), false);
            QPainter painter(&canvas);
            tav::paintTriangle(painter, triangle);
        } else {
            paintAsTheWindow(window->drawing(), canvas);
        }
        state.PauseTiming();
        if (command == TreeCommand::SetTop || command == TreeCommand::ShowParents)
            window->run(TreeCommand::GoBack);
        if (command == TreeCommand::TriangleView)
            window->run(TreeCommand::TriangleView);
        state.ResumeTiming();
    }
    state.counters["persons"] = model.nTreeInd;
}
BENCHMARK(BM_TreeCommandThroughRepaint)->DenseRange(0, 6)->Unit(benchmark::kMillisecond);

// One ancestor of 40000 people: every man marries and has three children,
// generation after generation.
QString descendancyFile(const QTemporaryDir& dir, int individuals)
{
    std::vector<int> childOf(size_t(individuals) + 1, 0), familyOf(size_t(individuals) + 1, 0);
    QByteArray families;
    int next = 2;
    int family = 0;
    // Heads are taken in order of birth: the first man, then his sons ...
    for (int head = 1; head < next && next + 4 <= individuals + 1; ++head) {
        if (head > 1 && (head - 2) % 4 == 0)
            continue;  // the wives have no families of their own
        familyOf[size_t(head)] = ++family;
        familyOf[size_t(next)] = family;
        families += "0 @F" + QByteArray::number(family) + "@ FAM\n1 HUSB @I" +
                    QByteArray::number(head) + "@\n1 WIFE @I" + QByteArray::number(next++) + "@\n";
        for (int c = 0; c < 3; ++c) {
            childOf[size_t(next)] = family;
            families += "1 CHIL @I" + QByteArray::number(next++) + "@\n";
        }
    }
    QByteArray text = "0 HEAD\n";
    for (int i = 1; i < next; ++i) {
        text += "0 @I" + QByteArray::number(i) + "@ INDI\n1 NAME Person" + QByteArray::number(i) +
                " /X/\n";
        if (childOf[size_t(i)])
            text += "1 FAMC @F" + QByteArray::number(childOf[size_t(i)]) + "@\n";
        if (familyOf[size_t(i)])
            text += "1 FAMS @F" + QByteArray::number(familyOf[size_t(i)]) + "@\n";
    }
    text += families;
    const QString path = dir.filePath(QStringLiteral("descendancy.ged"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        std::abort();
    return path;
}

// The triangle's numbers for the ancestor of 40000, with nothing counted yet.
void BM_TriangleOfAnAncestorOf40000(benchmark::State& state)
{
    QTemporaryDir dir;
    tav::bench::LoadedSession loaded(descendancyFile(dir, 40000));
    Session& session = loaded.session;
    const int32_t top = 1;
    tav::DescendantTriangle triangle;
    for (auto _ : state) {
        state.PauseTiming();
        session.descendantCache.clear();
        state.ResumeTiming();
        triangle = tav::descendantTriangle(session.records, session.descendantCache, top);
    }
    state.counters["individuals"] = session.records.individualCount();
    state.counters["descendants"] = triangle.descendants;
    state.counters["generations"] = double(triangle.perGeneration.size());
    state.counters["widest"] = triangle.widest();
}
BENCHMARK(BM_TriangleOfAnAncestorOf40000)->Unit(benchmark::kMillisecond);

// Show descendants (eldest) from the top of the view of 1000 boxes: the
// walk, the layout and the drawing of all of them, and the window's repaint.
void BM_CommandOnThousandBoxes(benchmark::State& state)
{
    FullView view;
    Session& session = view.loaded.session;
    session.curInd = 1;
    session.tree.treeBuilt = false;
    const auto window = treeWindowOf(session);
    window->activate();
    window->select(1);
    QImage canvas = windowCanvas();
    for (auto _ : state) {
        window->run(tav::TreeCommand::ShowDescendantsEldest);
        paintAsTheWindow(window->drawing(), canvas);
    }
    state.counters["boxes"] = double(window->drawing().boxes.size());
}
BENCHMARK(BM_CommandOnThousandBoxes)->Unit(benchmark::kMillisecond);

// Painting the view of 1000 boxes: 0 all of it, scaled to fit a large
// image; 1 a window's worth at 100%.
void BM_PaintThousandBoxes(benchmark::State& state)
{
    FullView view;
    const tav::TreeDrawing drawing =
        tav::treeDrawing(view.model, view.loaded.session.records, view.loaded.session.settings, 1);
    const bool whole = state.range(0) == 0;
    QImage canvas =
        whole ? QImage(1600, 1200, QImage::Format_ARGB32_Premultiplied) : windowCanvas();
    for (auto _ : state) {
        if (whole)
            tav::bench::paintScaledToFit(drawing, canvas);
        else
            paintAsTheWindow(drawing, canvas);
    }
    state.counters["boxes"] = double(drawing.boxes.size());
}
BENCHMARK(BM_PaintThousandBoxes)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// Exporting the view of 1000 boxes, whole, as a file: 0 PNG, 1 SVG, 2 PDF
// (the bytes made, without the disk).
void BM_ExportThousandBoxes(benchmark::State& state)
{
    FullView view;
    const tav::Picture picture = tav::treePicture(
        tav::treeDrawing(view.model, view.loaded.session.records, view.loaded.session.settings, 0));
    const tav::PictureFormat format = tav::PictureFormat(state.range(0));
    qsizetype bytes = 0;
    for (auto _ : state)
        bytes = tav::pictureBytes(picture, format)->size();
    state.SetLabel(format == tav::PictureFormat::Png   ? "PNG"
                   : format == tav::PictureFormat::Svg ? "SVG"
                                                       : "PDF");
    state.counters["KB"] = double(bytes) / 1024;
    state.counters["width"] = picture.bounds.width();
}
BENCHMARK(BM_ExportThousandBoxes)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

// Printing the view of 1000 boxes at full size across pages, into a PDF
// (bytes, not the disk), as the print preview and the printer ask for it:
// each page paints only the boxes that meet it.
void BM_PrintThousandBoxesFullSize(benchmark::State& state)
{
    FullView view;
    const tav::Picture picture = tav::treePicture(
        tav::treeDrawing(view.model, view.loaded.session.records, view.loaded.session.settings, 0));
    int pages = 0;
    for (auto _ : state) {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter writer(&buffer);
        writer.setResolution(1200);
        pages = tav::paintOnPages(writer, picture, tav::PageScale::FullSize);
    }
    state.counters["pages"] = pages;
}
BENCHMARK(BM_PrintThousandBoxesFullSize)->Unit(benchmark::kMillisecond);

// The largest PNG made: 16384 x 8192 pixels (128 megapixels) of the view of
// 1000 boxes, with the peak memory of the process, which must stay under
// 1 GB whatever the tree.
void BM_LargestPng(benchmark::State& state)
{
    FullView view;
    const tav::TreeDrawing drawing =
        tav::treeDrawing(view.model, view.loaded.session.records, view.loaded.session.settings, 0);
    const QRectF bounds(0, 0, tav::largestPngSide / tav::pngScale - 2 * tav::pictureMargin,
                        tav::largestPngSide / 2 / tav::pngScale - 2 * tav::pictureMargin);
    const tav::Picture picture{bounds, [&](QPainter& painter, const QRectF&) {
                                   const double scale =
                                       std::min(bounds.width() / drawing.bounds.width(),
                                                bounds.height() / drawing.bounds.height());
                                   painter.scale(scale, scale);
                                   painter.translate(-drawing.bounds.topLeft());
                                   tav::treePicture(drawing).paint(painter, QRectF());
                               }};
    qsizetype bytes = 0;
    for (auto _ : state)
        bytes = tav::pictureBytes(picture, tav::PictureFormat::Png)->size();
    const QSize size = tav::pngSize(picture, tav::pngScaleFor(picture));
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    state.counters["megapixels"] = double(size.width()) * size.height() / (1 << 20);
    state.counters["KB"] = double(bytes) / 1024;
    state.counters["peak MB"] = double(usage.ru_maxrss) / 1024;
}
BENCHMARK(BM_LargestPng)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
