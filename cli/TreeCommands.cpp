#include "app/Session.h"
#include "cli/CliCommands.h"
#include "cli/CliRun.h"
#include "draw/TreeFont.h"
#include "ui/tree/TreeLayout.h"
#include "ui/tree/TreeModel.h"
#include "ui/tree/TreeViewFile.h"

namespace tav {

namespace {

enum class TreeWalk { Most, Eldest, First };

struct TreeOptions {
    TreeWalk walk = TreeWalk::Most;
    int32_t fontSize = 0;
};

// The options after SLOT: --walk most|eldest|first and --font-size 1 to 4.
TreeOptions treeOptions(const CliRun& run)
{
    TreeOptions options{TreeWalk::Most, run.session.settings.FontSize};
    for (qsizetype i = 1; i < run.args.size(); ++i) {
        const QString& option = run.args[i];
        if (option != QLatin1String("--walk") && option != QLatin1String("--font-size"))
            throw UsageError{QStringLiteral("unknown tree option \"%1\"").arg(option)};
        if (i + 1 >= run.args.size())
            throw UsageError{option + QStringLiteral(" needs a value")};
        const QString value = run.args[++i];
        if (option == QLatin1String("--walk")) {
            if (value == QLatin1String("most"))
                options.walk = TreeWalk::Most;
            else if (value == QLatin1String("eldest"))
                options.walk = TreeWalk::Eldest;
            else if (value == QLatin1String("first"))
                options.walk = TreeWalk::First;
            else
                throw UsageError{QStringLiteral("--walk takes most, eldest or first")};
        } else {
            options.fontSize = CliRun::integerArgument(value);
            if (options.fontSize < 1 || options.fontSize > 4)
                throw UsageError{QStringLiteral("--font-size takes 1 to 4")};
        }
    }
    return options;
}

}  // namespace

int treeCommand(CliRun& run)
{
    const int32_t slot = run.slotArg(0, ViewKind::Individual);
    const TreeOptions options = treeOptions(run);
    Session& session = run.session;
    session.settings.FontSize = options.fontSize;
    const FontMeasure measure(options.fontSize);
    TreeModel model(session.records, session.settings, session.tree,
                    [&session] { return session.today(); });
    // As the tree window builds a new tree, with the walk asked for.
    const int status = run.run([&] {
        model.clearArrays(1, 1);
        model.prepareTopPerson(slot, measure);
        switch (options.walk) {
        case TreeWalk::Most: model.prepareDescendents3(1, 0, 0); break;
        case TreeWalk::Eldest: model.prepareDescendents(1, 0, 1); break;
        case TreeWalk::First: model.prepareDescendents2(1, 0, 1); break;
        }
        layoutManager(model, measure, generationGap(options.fontSize));
    });
    if (status != 0)
        return status;
    for (const QString& line : treeViewLines(model))
        run.print(line);
    return 0;
}

}  // namespace tav
