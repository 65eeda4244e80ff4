// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Session.h"
#include "calc/Ahnentafel.h"
#include "cli/CliApp.h"
#include "cli/CliCommands.h"
#include "cli/CliRun.h"
#include "cli/OffscreenGui.h"
#include "core/FileNames.h"
#include "draw/PictureExport.h"
#include "draw/TreeFont.h"
#include "draw/TreePainter.h"
#include "tree/AncestorsChart.h"
#include "tree/TreeDrawing.h"
#include "tree/TreeLayout.h"
#include "tree/TreeModel.h"
#include "tree/TreeViewFile.h"

#include <QDir>

namespace tav {

namespace {

enum class TreeWalk { Most, Eldest, First };

struct TreeOptions {
    TreeWalk walk = TreeWalk::Most;
    int32_t fontSize = 0;
    bool ancestors = false;  // the ancestors chart instead of the tree
    int32_t generations = Ahnentafel::defaultGenerations;
};

// The options from argument `first` on: --walk most|eldest|first and
// --font-size 1 to 4; --ancestors with --generations 2 to 10 when
// `chartToo`.
Result<TreeOptions> treeOptions(const CliRun& run, qsizetype first, bool chartToo)
{
    const auto refused = [](const QString& problem) {
        return Outcome::failed(usageProblem(problem));
    };
    TreeOptions options{TreeWalk::Most, run.session.settings.FontSize};
    bool walkGiven = false, generationsGiven = false;
    for (qsizetype i = first; i < run.args.size(); ++i) {
        const QString& option = run.args[i];
        if (chartToo && option == QLatin1String("--ancestors")) {
            options.ancestors = true;
            continue;
        }
        if (option != QLatin1String("--walk") && option != QLatin1String("--font-size") &&
            (!chartToo || option != QLatin1String("--generations")))
            return refused(QStringLiteral("unknown tree option \"%1\"").arg(option));
        if (i + 1 >= run.args.size())
            return refused(option + QStringLiteral(" needs a value"));
        const QString value = run.args[++i];
        if (option == QLatin1String("--walk")) {
            walkGiven = true;
            if (value == QLatin1String("most"))
                options.walk = TreeWalk::Most;
            else if (value == QLatin1String("eldest"))
                options.walk = TreeWalk::Eldest;
            else if (value == QLatin1String("first"))
                options.walk = TreeWalk::First;
            else
                return refused(QStringLiteral("--walk takes most, eldest or first"));
        } else if (option == QLatin1String("--generations")) {
            const Result<int32_t> generations = generationsArgument(value);
            if (!generations)
                return Outcome::failed(generations.message());
            options.generations = *generations;
            generationsGiven = true;
        } else {
            const Result<int32_t> size = CliRun::integerArgument(value);
            if (!size)
                return Outcome::failed(size.message());
            if (*size < 1 || *size > 4)
                return refused(QStringLiteral("--font-size takes 1 to 4"));
            options.fontSize = *size;
        }
    }
    if (options.ancestors && walkGiven)
        return refused(QStringLiteral("--walk is for the tree, not with --ancestors"));
    if (generationsGiven && !options.ancestors)
        return refused(QStringLiteral("--generations goes with --ancestors"));
    return options;
}

// Builds the tree of a slot as the tree window builds a new one, with the
// walk asked for, and lays it out; false after a fault (shown).
bool buildTree(CliRun& run, int32_t slot, const TreeOptions& options, TreeModel& model)
{
    Session& session = run.session;
    session.settings.FontSize = options.fontSize;
    const FontMeasure measure(options.fontSize);
    return run.run([&] {
        model.clearArrays(1, 1);
        model.prepareTopPerson(slot, measure);
        switch (options.walk) {
        case TreeWalk::Most: model.prepareDescendents3(1, 0, 0); break;
        case TreeWalk::Eldest: model.prepareDescendents(1, 0, 1); break;
        case TreeWalk::First: model.prepareDescendents2(1, 0, 1); break;
        }
        layoutManager(model, measure, generationGap(options.fontSize));
    }) == 0;
}

TreeModel newModel(Session& session)
{
    return TreeModel(session.records, session.descendantCache, session.settings, session.tree,
                     [&session] { return session.today(); });
}

}  // namespace

int treeCommand(CliRun& run)
{
    const Result<int32_t> slot = run.slotArg(0, ViewKind::Individual);
    if (!slot)
        return run.refuse(slot.message());
    const Result<TreeOptions> options = treeOptions(run, 1, false);
    if (!options)
        return run.refuse(options.message());
    TreeModel model = newModel(run.session);
    if (!buildTree(run, *slot, *options, model))
        return 3;
    for (const QString& line : treeViewLines(model))
        run.print(line);
    return 0;
}

int exportCommand(CliRun& run)
{
    const Result<int32_t> slot = run.slotArg(0, ViewKind::Individual);
    if (!slot)
        return run.refuse(slot.message());
    const QString out = run.args.value(1);
    if (!pictureFormatFor(out))
        return run.refuse(usageProblem(QStringLiteral("OUT must end in .png, .svg or .pdf")));
    const Result<TreeOptions> options = treeOptions(run, 2, true);
    if (!options)
        return run.refuse(options.message());
    Session& session = run.session;
    TreeDrawing drawing;
    if (options->ancestors) {
        // The chart as its window paints it, with the settings' options.
        session.settings.FontSize = options->fontSize;
        const Ahnentafel chart(session.records, *slot, options->generations);
        drawing = ancestorsDrawing(chart, session.records, session.settings,
                                   FontMeasure(options->fontSize), session.today());
    } else {
        TreeModel model = newModel(session);
        if (!buildTree(run, *slot, *options, model))
            return 3;
        // Drawn as the tree window paints it, with the settings' options and
        // no person selected.
        drawing = treeDrawing(model, session.records, session.settings, 0);
    }
    const Picture picture = treePicture(drawing);
    if (const Outcome written = exportPicture(picture, out); !written) {
        run.output.err(written.message());
        return 1;
    }
    if (const QString note = pictureNote(picture, out); !note.isEmpty())
        run.output.err(note);
    run.print(QDir::toNativeSeparators(shownFileName(absoluteFileName(out))));
    return 0;
}

const DrawingCommands& drawingCommands()
{
    static const DrawingCommands commands{treeCommand, exportCommand, ensureOffscreenGui};
    return commands;
}

}  // namespace tav
