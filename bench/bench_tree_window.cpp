// SPDX-License-Identifier: GPL-3.0-or-later
// The family tree window itself on a generated file of 40000 individuals:
// from the main window's "family tree from top" to the painted window, and
// each command of the Tree menu through the repaint of the canvas.
#include "bench/BenchFiles.h"
#include "settings/RegistryStore.h"
#include "ui/WindowManager.h"
#include "ui/main/MainWindow.h"
#include "ui/tree/TreeCanvas.h"
#include "ui/tree/TreeWindow.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

// The main window on the generated file, loaded once.
struct Viewer {
    QTemporaryDir config;
    tav::RegistryStore store{config.filePath(QStringLiteral("Tav.reg"))};
    tav::RecordingMessages messages;
    tav::Session session{messages};
    tav::MainWindow window{session, store, QCoreApplication::applicationDirPath()};

    Viewer()
    {
        window.startUp(tav::bench::generatedFile(40000));
        window.show();
        QApplication::processEvents();
    }

    // "family tree from top" with its Go button, up to the painted canvas.
    tav::TreeWindow* treeFromTop()
    {
        window.treeSelector()->setCurrentIndex(1);
        window.treeButton()->click();
        tav::TreeWindow* tree = window.windows().treeWindow();
        tree->canvas()->viewport()->repaint();
        return tree;
    }
};

Viewer& viewer()
{
    static Viewer shown;
    return shown;
}

void BM_FamilyTreeFromTopToThePaintedWindow(benchmark::State& state)
{
    Viewer& v = viewer();
    int32_t persons = 0;
    for (auto _ : state) {
        state.PauseTiming();
        v.session.descendantCache.clear();
        if (tav::TreeWindow* open = v.window.windows().treeWindow()) {
            open->close();
            QApplication::processEvents();  // a new window each time
        }
        state.ResumeTiming();
        persons = v.treeFromTop()->logic().model().nTreeInd;
    }
    state.counters["persons"] = persons;
}
BENCHMARK(BM_FamilyTreeFromTopToThePaintedWindow)->Unit(benchmark::kMillisecond);

// Six commands on the tree from the top, each through the repaint of the
// canvas: Show descendants (most) on the first line child, GoBack, Show
// descendants (eldest), GoBack, Set top on it, Show parents on the new top.
void BM_SixTreeCommandsThroughRepaint(benchmark::State& state)
{
    using tav::TreeCommand;
    Viewer& v = viewer();
    tav::TreeWindow* tree = v.treeFromTop();
    const auto lineChild = [tree] {
        const tav::TreeFamily& first = tree->logic().model().family(1);
        return first.indSt + std::max(1, first.childShown);
    };
    const auto run = [&](TreeCommand command, int32_t slot) {
        tree->select(slot);
        if (!tree->action(command)->isEnabled())
            state.SkipWithError("a command does not apply on this tree");
        tree->action(command)->trigger();
        tree->canvas()->viewport()->repaint();
    };
    for (auto _ : state) {
        const int32_t child = lineChild();
        run(TreeCommand::ShowDescendantsMost, child);
        run(TreeCommand::GoBack, child);
        run(TreeCommand::ShowDescendantsEldest, child);
        run(TreeCommand::GoBack, child);
        run(TreeCommand::SetTop, child);
        run(TreeCommand::ShowParents, 1);
        state.PauseTiming();
        tree = v.treeFromTop();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_SixTreeCommandsThroughRepaint)->Unit(benchmark::kMillisecond);

}  // namespace
