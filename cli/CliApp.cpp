// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CliApp.h"

#include "app/GedcomLoading.h"
#include "app/Messages.h"
#include "app/Session.h"
#include "cli/CliCommands.h"
#include "cli/CliRun.h"
#include "settings/RegistryStore.h"
#include "settings/SettingsPersistence.h"
#include "windowlogic/main/HelpTopics.h"

#include <optional>

namespace tav {

namespace {

struct Command {
    const char* name;
    const char* synopsis;     // the arguments after the name, for the usage text
    const char* description;  // lines separated by "\n"
    int minArgs;              // after FILE
    int maxArgs;
    int (*run)(CliRun&);
    // A command that measures or paints text: one of the drawing commands.
    int (*DrawingCommands::*draw)(CliRun&) = nullptr;
};

// In the order of the usage text.
const Command commandTable[] = {
    {"info", "FILE", "caption, source and note counts, GEDCOM header", 0, 0, infoCommand},
    {"relate", "FILE A B", "how individuals A and B (slots) are related", 2, 2, relateCommand},
    {"descendants", "FILE SLOT", "descendant, spouse, generation and largest-family totals", 1, 1,
     descendantsCommand},
    {"find", "FILE TEXT [--kinds IFSN] [--case]",
     "records holding the words of TEXT, as the find window lists them", 1, 4, findCommand},
    {"query", "FILE INDEX [N]", "statistical query INDEX (0 to 14; N for 4, 5, 6 and 8)", 1, 2,
     queryCommand},
    {"show", "FILE KIND [SLOT] [--csv]",
     "a record (IND, FAM, SOU, NOT and its SLOT) or a list\n"
     "(ALLINDS, ALLFAMS, ALLSOUR, ALLNOTS, ALLOCCU, ALLBIRT,\n"
     "ALLDEAT, ALLMARR) as the record browser shows it;\n"
     "--csv: as the browser saves it as CSV",
     1, 3, showCommand},
    {"report", "FILE KIND", "a text report: Basic, GivenNames, ChildNaming or\nGedcomIntegrity", 1,
     1, reportCommand},
    {"tree", "FILE SLOT [--walk most|eldest|first] [--font-size N]",
     "the family tree of SLOT as the view file holds it", 1, 5, nullptr, &DrawingCommands::tree},
    {"ancestors", "FILE SLOT [--generations N]",
     "the ancestors chart of SLOT over N generations (2 to 10,\ndefault 5), one line a place: "
     "number, name, slot",
     1, 3, ancestorsCommand},
    {"html", "FILE SLOT [OUT] [--ancestors [--generations N]]",
     "writes the HTML descendants report of individual SLOT\nto OUT (default: tav.htm in the "
     "current folder);\n--ancestors: the ancestors report (default\ntav-ancestors.htm)",
     1, 5, htmlCommand},
    {"export", "FILE SLOT OUT [--walk W] [--font-size N] [--ancestors [--generations N]]",
     "draws the tree of `tree` into OUT as the tree window\npaints it: .png, .svg or .pdf by "
     "its extension;\n--ancestors: the ancestors chart instead",
     2, 9, nullptr, &DrawingCommands::exportPicture},
};

// The help command reads no GEDCOM file.
const Command helpCommand = {"help",
                             "KEY",
                             "a topic of help.txt, from the current folder,\n"
                             "beside tav-cli or ../share/tav from there",
                             1,
                             1,
                             nullptr};

const Command* findCommand(const QString& name)
{
    for (const Command& command : commandTable) {
        if (name == QLatin1String(command.name))
            return &command;
    }
    return nullptr;
}

// The usage text, one line a command: its name and arguments, then its
// description in a column of its own.
QStringList usageLines()
{
    constexpr qsizetype column = 27;
    QStringList lines = {
        QStringLiteral(
            "usage: tav-cli [--surname-style N] [--surname-posn N] COMMAND FILE [ARGS...]"),
        QStringLiteral("commands:")};
    const auto add = [&lines](const Command& command) {
        QString head = QStringLiteral("  ") + QLatin1String(command.name) + QLatin1Char(' ') +
                       QLatin1String(command.synopsis);
        const QStringList description = QString::fromLatin1(command.description).split('\n');
        if (head.size() + 1 > column) {
            lines << head;
            head.clear();
        }
        for (const QString& text : description) {
            lines << head.leftJustified(column, QLatin1Char(' ')) + text;
            head.clear();
        }
    };
    for (const Command& command : commandTable)
        add(command);
    add(helpCommand);
    return lines;
}

// Asked for with --help: the usage on standard output, as users expect.
int help(const CliOutput& output)
{
    for (const QString& line : usageLines())
        output.out(line);
    output.out(QStringLiteral("  --help, -h                 this text"));
    output.out(QStringLiteral("  --version                  the version of tav-cli"));
    output.out(QStringLiteral(
        "exit status: 0 done, 1 FILE cannot be opened, 2 usage error, 3 a fault was reported"));
    return 0;
}

// The usage alone on standard error, for a run without a command.
int usage(const CliOutput& output)
{
    for (const QString& line : usageLines())
        output.err(line);
    return refusedStatus;
}

int usage(const CliOutput& output, const QString& problem)
{
    for (const QString& line : usageProblem(problem).split(QLatin1Char('\n')))
        output.err(line);
    return refusedStatus;
}

// The surname options may stand anywhere; everything else is positional.
struct Arguments {
    QStringList positional;
    std::optional<int32_t> surnameStyle;
    std::optional<int32_t> surnamePosn;
};

Result<Arguments> parseArguments(const QStringList& arguments)
{
    Arguments parsed;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& arg = arguments[i];
        if (arg == QLatin1String("--surname-style") || arg == QLatin1String("--surname-posn")) {
            if (i + 1 >= arguments.size())
                return Outcome::failed(usageProblem(arg + QStringLiteral(" needs a number")));
            const Result<int32_t> number = CliRun::integerArgument(arguments[++i]);
            if (!number)
                return Outcome::failed(number.message());
            (arg.endsWith(QLatin1String("style")) ? parsed.surnameStyle : parsed.surnamePosn) =
                *number;
        } else {
            parsed.positional << arg;
        }
    }
    return parsed;
}

int runHelp(const QString& key, const CliOutput& output, const QString& programFolder)
{
    const Result<QString> help = readHelpFile(programFolder);
    if (!help) {
        output.err(help.message());
        return 1;
    }
    if (!hasHelpTopic(*help, key)) {
        output.err(QStringLiteral("There is no help topic %1.").arg(withControlsShown(key)));
        return 1;
    }
    StderrMessages messages(output.err);
    Session session(messages);
    CliRun run{output, session, {}};
    return run.run([&] { run.printReport(helpTopic(*help, key)); });
}

// Loads the settings (read, never written) and FILE, then runs the command.
int runCommand(const Command& command, const Arguments& arguments, const CliContext& context)
{
    const CliOutput& output = context.output;
    StderrMessages messages(output.err);
    Session session(messages);
    session.setToday(context.today);
    const QString settingsFile = context.settingsFile.isEmpty()
                                     ? RegistryStore::defaultRegistryFile()
                                     : context.settingsFile;
    RegistryStore store(settingsFile);
    for (const QString& problem : store.loadProblems())
        output.err(QStringLiteral("tav-cli: ") + problem);
    loadSettings(session.settings, store, QStringLiteral("ALL"));
    if (arguments.surnameStyle)
        session.settings.SurnameStyle = *arguments.surnameStyle;
    if (arguments.surnamePosn)
        session.settings.SurnamePosn = *arguments.surnamePosn;
    // A command line reads its input to the end: a pipe, `<(...)`, /dev/stdin.
    if (const Outcome loaded =
            loadGedcom(session, arguments.positional[1], {}, OddFiles::ReadToEnd);
        !loaded) {
        output.err(loaded.message());
        return 1;
    }
    CliRun run{output, session, arguments.positional.mid(2)};
    int status = 3;
    // Commands guard the routines that fault; a fault anywhere else still
    // ends the run as one, never as an abort.
    session.guarded([&] {
        if (command.draw) {
            context.drawing->prepare();
            status = (context.drawing->*command.draw)(run);
        } else {
            status = command.run(run);
        }
    });
    if (context.finished)
        context.finished(status);
    return status;
}

}  // namespace

int runCli(const QStringList& argumentList, const CliContext& context)
{
    const CliOutput& output = context.output;
    const Result<Arguments> arguments = parseArguments(argumentList);
    if (!arguments) {
        for (const QString& line : arguments.message().split(QLatin1Char('\n')))
            output.err(line);
        return refusedStatus;
    }
    const QStringList& positional = arguments->positional;
    const QString first = positional.value(0);
    if (first == QLatin1String("--help") || first == QLatin1String("-h"))
        return help(output);
    if (first == QLatin1String("--version")) {
        output.out(QStringLiteral("tav-cli " TAV_VERSION));
        return 0;
    }
    if (first == QLatin1String(helpCommand.name)) {
        if (positional.size() != 2)
            return usage(output, QStringLiteral("help takes one KEY"));
        return runHelp(positional[1], output, context.programFolder);
    }
    if (positional.isEmpty())
        return usage(output);
    if (positional.size() < 2)
        return usage(output, QStringLiteral("FILE is missing"));
    const Command* command = findCommand(positional[0]);
    if (!command)
        return usage(output, QStringLiteral("unknown command \"%1\"").arg(positional[0]));
    const qsizetype args = positional.size() - 2;
    if (args < command->minArgs || args > command->maxArgs)
        return usage(output,
                     QStringLiteral("wrong number of arguments for \"%1\"").arg(positional[0]));
    if (command->draw && !context.drawing) {
        if (context.forwardDrawing)
            return context.forwardDrawing();
        output.err(QStringLiteral("tav-cli: this program cannot draw; tav-cli-draw can"));
        return 1;
    }
    return runCommand(*command, *arguments, context);
}

QString usageProblem(const QString& problem)
{
    return (QStringList{QStringLiteral("tav-cli: ") + problem} + usageLines())
        .join(QLatin1Char('\n'));
}

}  // namespace tav
