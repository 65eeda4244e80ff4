// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Session.h"
#include "cli/CliCommands.h"
#include "cli/CliRun.h"
#include "core/TextNumbers.h"
#include "windowlogic/browser/BrowserLogic.h"
#include "windowlogic/find/FindLogic.h"

#include <QRegularExpression>

namespace tav {

namespace {

// Notes whether a command of the find window opened the browser; it
// stops listening when it goes.
class BrowserWatch : public QObject {
public:
    explicit BrowserWatch(Session& session)
    {
        connect(&session, &Session::windowRequested, this, [this](const WindowRequest& request) {
            opened_ = opened_ || request.window == AppWindow::List;
        });
    }
    bool opened() const { return opened_; }

private:
    bool opened_ = false;
};

// The results heading and list of the find window, and the record the
// browser opens on when the window opens it.
int printResults(CliRun& run, const FindLogic& find, bool browserOpened, bool done)
{
    run.print(find.heading());
    for (const QString& line : find.lines())
        run.print(escaped(line));
    if (browserOpened && done) {
        BrowserLogic browser(run.session);
        if (!browser.gridLoad())
            return 3;
        run.print(QString());
        printGrid(run, browser);
    }
    return done ? 0 : 3;
}

}  // namespace

int findCommand(CliRun& run)
{
    FindLogic find(run.session);
    find.searchText = run.args.value(0);
    for (qsizetype i = 1; i < run.args.size(); ++i) {
        if (run.args[i] == QLatin1String("--case")) {
            find.caseSensitive = true;
        } else if (run.args[i] == QLatin1String("--kinds") && i + 1 < run.args.size()) {
            const QString letters = run.args[++i].toUpper();
            if (letters.isEmpty() ||
                letters.contains(QRegularExpression(QStringLiteral("[^IFSN]"))))
                return run.refuse(usageProblem(QStringLiteral("--kinds takes letters of IFSN")));
            find.kinds = {letters.contains(u'I'), letters.contains(u'F'), letters.contains(u'S'),
                          letters.contains(u'N')};
        } else {
            return run.refuse(
                usageProblem(QStringLiteral("unknown find option \"%1\"").arg(run.args[i])));
        }
    }
    const BrowserWatch watch(run.session);
    const bool done = find.find();
    return printResults(run, find, watch.opened(), done);
}

int queryCommand(CliRun& run)
{
    const Result<int32_t> index = run.intArg(0);
    if (!index && !CliRun::isWholeNumberText(run.args.value(0)))
        return run.refuse(index.message());
    if (!index || !isQueryIndex(*index))
        return run.refuse(usageProblem(QStringLiteral("INDEX is 0 to 14")));
    const Query query = queryAt(*index);
    const bool takesNumber = queryTakesNumber(query);
    if (run.args.size() != (takesNumber ? 2 : 1))
        return run.refuse(usageProblem(takesNumber
                                           ? QStringLiteral("query %1 needs N").arg(*index)
                                           : QStringLiteral("query %1 takes no N").arg(*index)));
    // N as the window's box takes it; anything else is no number at all.
    if (takesNumber && !isWholeNumber(run.args[1]))
        return run.refuse(
            usageProblem(QStringLiteral("N must be a whole number, not \"%1\"").arg(run.args[1])));
    FindLogic find(run.session);
    const BrowserWatch watch(run.session);
    bool done = find.queryChosen(query);
    if (takesNumber) {
        find.numberText = run.args[1];
        done = find.go() && done;
    }
    return printResults(run, find, watch.opened(), done);
}

}  // namespace tav
