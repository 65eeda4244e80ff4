#include "cli/CliApp.h"

#include "app/GedcomLoading.h"
#include "app/Messages.h"
#include "app/Session.h"
#include "calc/DescendantCounting.h"
#include "calc/RelationshipFinder.h"
#include "settings/RegistryStore.h"
#include "settings/SettingsPersistence.h"
#include "ui/browser/BrowserLogic.h"
#include "ui/find/FindLogic.h"
#include "ui/find/StatisticalQueries.h"
#include "ui/main/HeaderInformation.h"
#include "ui/main/HelpTopics.h"

#include <QDir>
#include <QRegularExpression>

#include <map>
#include <optional>

namespace tav {

namespace {

const char usageText[] =
    "usage: tav-cli [--surname-style N] [--surname-posn N] COMMAND FILE [ARGS...]\n"
    "commands:\n"
    "  info FILE                caption, source and note counts, GEDCOM header\n"
    "  relate FILE A B          how individuals A and B (slots) are related\n"
    "  descendants FILE SLOT    descendant, spouse, generation and largest-family totals\n"
    "  find FILE TEXT [--kinds IFSN] [--case]\n"
    "                           records holding the words of TEXT, as the find window lists them\n"
    "  query FILE INDEX [N]     statistical query INDEX (0 to 14; N for 4, 5, 6 and 8)\n"
    "  show FILE KIND [SLOT]    a record (IND, FAM, SOU, NOT and its SLOT) or a list\n"
    "                           (ALLINDS, ALLFAMS, ALLSOUR, ALLNOTS, ALLOCCU, ALLBIRT,\n"
    "                           ALLDEAT, ALLMARR) as the record browser shows it\n"
    "  help KEY                 a topic of help.txt in the current folder";

// Raised for a command argument that is not what the command takes.
struct UsageError {
    QString problem;
};

struct CliRun {
    const CliOutput& output;
    Session& session;
    QStringList args;  // the command's arguments after FILE
    const StderrMessages* messages = nullptr;

    void print(const QString& line) const { output.out(line); }

    // A report text, its CR LF line breaks printed as newlines.
    void printReport(const QString& text) const
    {
        QString plain = text;
        plain.replace(QLatin1String("\r\n"), QLatin1String("\n"));
        for (const QString& line : plain.split(QLatin1Char('\n')))
            print(line);
    }

    int32_t intArg(qsizetype i) const { return integerArgument(args.value(i)); }

    static int32_t integerArgument(const QString& text)
    {
        bool ok = false;
        const int value = text.toInt(&ok);
        if (!ok)
            throw UsageError{QStringLiteral("\"%1\" is not a whole number").arg(text)};
        return value;
    }

    // Runs a routine of the viewer; a fault it raises is reported as the
    // viewer would and gives the exit status 3.
    int run(const std::function<void()>& routine) const { return session.guarded(routine) ? 0 : 3; }
};

struct Command {
    int minArgs;  // after FILE
    int maxArgs;
    std::function<int(CliRun&)> run;
};

int infoCommand(CliRun& run)
{
    const RecordStore& records = run.session.records;
    run.print(run.session.mainCaption);
    run.print(QStringLiteral("Sources: %1").arg(records.sourceCount()));
    run.print(QStringLiteral("Notes: %1").arg(records.noteCount()));
    for (const QString& line : headerInformationLines(records))
        run.print(line);
    return 0;
}

// Grid cells and list lines with their control characters made visible.
QString escaped(const QString& text)
{
    QString out;
    out.reserve(text.size());
    for (QChar c : text) {
        switch (c.unicode()) {
        case u'\\': out += QLatin1String("\\\\"); break;
        case u'\r': out += QLatin1String("\\r"); break;
        case u'\n': out += QLatin1String("\\n"); break;
        case u'\t': out += QLatin1String("\\t"); break;
        default: out += c;
        }
    }
    return out;
}

// The browser's caption and every grid row: item, TAB, details, and in the
// family grid TAB and the hidden slot where there is one.
void printGrid(const CliRun& run, const BrowserLogic& browser)
{
    run.print(browser.caption());
    const bool family = run.session.viewKind == QLatin1String("FAM");
    for (int32_t row = 0; row < browser.rowCount(); ++row) {
        QString line =
            escaped(browser.cell(row, 0)) + QLatin1Char('\t') + escaped(browser.cell(row, 1));
        if (family && !browser.cell(row, 2).isEmpty())
            line += QLatin1Char('\t') + escaped(browser.cell(row, 2));
        run.print(line);
    }
}

// The results heading and list of the find window, and the record the
// browser opens on when the window opens it.
int printResults(CliRun& run, const FindLogic& find, bool browserOpened, int messagesBefore)
{
    const bool fault = run.messages && run.messages->messageCount() > messagesBefore;
    run.print(find.heading());
    for (const QString& line : find.lines())
        run.print(escaped(line));
    if (browserOpened && !fault) {
        BrowserLogic browser(run.session);
        if (!browser.gridLoad())
            return 3;
        run.print(QString());
        printGrid(run, browser);
    }
    return fault ? 3 : 0;
}

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
                throw UsageError{QStringLiteral("--kinds takes letters of IFSN")};
            find.kinds = {letters.contains(u'I'), letters.contains(u'F'), letters.contains(u'S'),
                          letters.contains(u'N')};
        } else {
            throw UsageError{QStringLiteral("unknown find option \"%1\"").arg(run.args[i])};
        }
    }
    bool opened = false;
    run.session.windowRequested = [&opened](AppWindow window) {
        opened = opened || window == AppWindow::List;
    };
    const int before = run.messages ? run.messages->messageCount() : 0;
    find.find();
    return printResults(run, find, opened, before);
}

int queryCommand(CliRun& run)
{
    const int32_t index = run.intArg(0);
    if (index < 0 || index > 14)
        throw UsageError{QStringLiteral("INDEX is 0 to 14")};
    const bool takesNumber = queryTakesNumber(index);
    if (run.args.size() != (takesNumber ? 2 : 1))
        throw UsageError{takesNumber ? QStringLiteral("query %1 needs N").arg(index)
                                     : QStringLiteral("query %1 takes no N").arg(index)};
    FindLogic find(run.session);
    bool opened = false;
    run.session.windowRequested = [&opened](AppWindow window) {
        opened = opened || window == AppWindow::List;
    };
    const int before = run.messages ? run.messages->messageCount() : 0;
    find.queryChosen(index);
    if (takesNumber) {
        find.numberText = run.args[1];
        find.go();
    }
    return printResults(run, find, opened, before);
}

int showCommand(CliRun& run)
{
    const QString kind = run.args.value(0);
    if (isRecordKind(kind)) {
        if (run.args.size() != 2)
            throw UsageError{QStringLiteral("%1 needs a SLOT").arg(kind)};
        const int32_t slot = run.intArg(1);
        if (kind == QLatin1String("IND"))
            run.session.curInd = slot;
        else if (kind == QLatin1String("FAM"))
            run.session.curFam = slot;
        else if (kind == QLatin1String("SOU"))
            run.session.curSou = slot;
        else
            run.session.curNote = slot;
    } else if (!isListKind(kind) || run.args.size() != 1) {
        throw UsageError{
            QStringLiteral("\"%1\" is not a kind to show").arg(run.args.join(QLatin1Char(' ')))};
    }
    BrowserLogic browser(run.session);
    run.session.viewKind = kind;
    run.session.listCaller = QStringLiteral("frmTav");
    if (!browser.gridLoad())
        return 3;
    printGrid(run, browser);
    return 0;
}

int relateCommand(CliRun& run)
{
    const int32_t a = run.intArg(0), b = run.intArg(1);
    if (const int status = run.run([&] { findRelationship(run.session, a, b); }))
        return status;
    run.printReport(run.session.reportText);
    return 0;
}

int descendantsCommand(CliRun& run)
{
    const int32_t slot = run.intArg(0);
    RecordStore& records = run.session.records;
    return run.run([&] {
        const int32_t descendants = countDescendants(records, slot);
        const int32_t spouses = countDescendantSpouses(records, slot);
        const int32_t generations = countGenerations(records, slot);
        const int32_t largest = largestFamilySlot(records, slot);
        run.print(QStringLiteral("Descendants: %1").arg(descendants));
        run.print(QStringLiteral("Spouses: %1").arg(spouses));
        run.print(QStringLiteral("Generations: %1").arg(generations));
        run.print(QStringLiteral("Largest family: %1").arg(largest));
    });
}

const std::map<QString, Command>& commands()
{
    static const std::map<QString, Command> table = {
        {QStringLiteral("info"), {0, 0, infoCommand}},
        {QStringLiteral("relate"), {2, 2, relateCommand}},
        {QStringLiteral("descendants"), {1, 1, descendantsCommand}},
        {QStringLiteral("show"), {1, 2, showCommand}},
        {QStringLiteral("find"), {1, 4, findCommand}},
        {QStringLiteral("query"), {1, 2, queryCommand}},
    };
    return table;
}

int usage(const CliOutput& output, const QString& problem)
{
    if (!problem.isEmpty())
        output.err(QStringLiteral("tav-cli: ") + problem);
    for (const QString& line : QString::fromLatin1(usageText).split(QLatin1Char('\n')))
        output.err(line);
    return 2;
}

}  // namespace

int runCli(const QStringList& arguments, const CliOutput& output)
{
    // The surname options may stand anywhere; everything else is positional.
    QStringList positional;
    std::optional<int32_t> surnameStyle, surnamePosn;
    try {
        for (qsizetype i = 0; i < arguments.size(); ++i) {
            const QString& arg = arguments[i];
            if (arg == QLatin1String("--surname-style") || arg == QLatin1String("--surname-posn")) {
                if (i + 1 >= arguments.size())
                    return usage(output, arg + QStringLiteral(" needs a number"));
                (arg.endsWith(QLatin1String("style")) ? surnameStyle : surnamePosn) =
                    CliRun::integerArgument(arguments[++i]);
            } else {
                positional << arg;
            }
        }
    } catch (const UsageError& error) {
        return usage(output, error.problem);
    }
    if (positional.value(0) == QLatin1String("help")) {
        if (positional.size() != 2)
            return usage(output, QStringLiteral("help takes one KEY"));
        QString text, problem;
        if (!readHelpFile(QDir::currentPath(), text, problem)) {
            output.err(problem);
            return 1;
        }
        StderrMessages messages(output.err);
        Session session(messages);
        CliRun run{output, session, {}};
        return run.run([&] { run.printReport(helpTopic(text, positional[1])); });
    }
    if (positional.size() < 2)
        return usage(output, positional.isEmpty() ? QString() : QStringLiteral("FILE is missing"));
    const auto found = commands().find(positional[0]);
    if (found == commands().end())
        return usage(output, QStringLiteral("unknown command \"%1\"").arg(positional[0]));
    const Command& command = found->second;
    const QStringList args = positional.mid(2);
    if (args.size() < command.minArgs || args.size() > command.maxArgs)
        return usage(output,
                     QStringLiteral("wrong number of arguments for \"%1\"").arg(positional[0]));

    StderrMessages messages(output.err);
    Session session(messages);
    // The viewer's settings apply here too; they are read, never written.
    RegistryStore store;
    if (!store.loadProblem().isEmpty())
        output.err(
            QStringLiteral("tav-cli: the settings file %1 is damaged (%2); using the defaults")
                .arg(RegistryStore::defaultRegistryFile(), store.loadProblem()));
    loadSettings(session.settings, store, QStringLiteral("ALL"));
    if (surnameStyle)
        session.settings.SurnameStyle = *surnameStyle;
    if (surnamePosn)
        session.settings.SurnamePosn = *surnamePosn;
    QString failure;
    if (!loadGedcom(session, positional[1], &failure)) {
        output.err(failure);
        return 1;
    }
    CliRun run{output, session, args, &messages};
    try {
        return command.run(run);
    } catch (const UsageError& error) {
        return usage(output, error.problem);
    }
}

}  // namespace tav
