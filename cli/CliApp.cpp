#include "cli/CliApp.h"

#include "app/GedcomLoading.h"
#include "app/Messages.h"
#include "app/Session.h"
#include "ui/main/HeaderInformation.h"

#include <map>

namespace tav {

namespace {

const char usageText[] =
    "usage: tav-cli [--surname-style N] [--surname-posn N] COMMAND FILE [ARGS...]\n"
    "commands:\n"
    "  info FILE    caption, source and note counts, GEDCOM header";

struct CliRun {
    const CliOutput& output;
    Session& session;
    QStringList args;  // the command's arguments after FILE

    void print(const QString& line) const { output.out(line); }
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

const std::map<QString, Command>& commands()
{
    static const std::map<QString, Command> table = {
        {QStringLiteral("info"), {0, 0, infoCommand}},
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
    QStringList positional;
    for (qsizetype i = 0; i < arguments.size(); ++i)
        positional << arguments[i];

    if (positional.size() < 2)
        return usage(output, positional.isEmpty() ? QString() : QStringLiteral("FILE is missing"));
    const auto found = commands().find(positional[0]);
    if (found == commands().end())
        return usage(output, QStringLiteral("unknown command \"%1\"").arg(positional[0]));
    const Command& command = found->second;
    const QStringList args = positional.mid(2);
    if (args.size() < command.minArgs || args.size() > command.maxArgs)
        return usage(output, QStringLiteral("wrong number of arguments for \"%1\"").arg(positional[0]));

    StderrMessages messages(output.err);
    Session session(messages);
    QString failure;
    if (!loadGedcom(session, positional[1], &failure)) {
        output.err(failure);
        return 1;
    }
    CliRun run{output, session, args};
    return command.run(run);
}

}  // namespace tav
