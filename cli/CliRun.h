#pragma once

#include "app/ViewKinds.h"
#include "cli/CliApp.h"

#include <QString>
#include <QStringList>
#include <functional>

namespace tav {

class BrowserLogic;
class Session;

// Raised for a command argument that is not what the command takes.
struct UsageError {
    QString problem;
};

// Raised for a record number that names no record of the file: the message
// goes to standard error and the exit status is 2.
struct NoSuchRecord {
    QString message;
};

// One command's run: the loaded session, the command's arguments after FILE,
// and where it prints.
struct CliRun {
    const CliOutput& output;
    Session& session;
    QStringList args;

    void print(const QString& line) const { output.out(line); }
    // A report text, its CR LF line breaks printed as newlines.
    void printReport(const QString& text) const;
    // The whole-number argument at `i`; a UsageError when it is not one.
    int32_t intArg(qsizetype i) const { return integerArgument(args.value(i)); }
    // The argument at `i` as a slot of a record kind: a whole number from 1 to
    // the count of that kind, else NoSuchRecord.
    int32_t slotArg(qsizetype i, ViewKind kind) const;
    static int32_t integerArgument(const QString& text);
    // Runs a routine of the viewer; a fault it raises is reported as the
    // viewer would and gives the exit status 3.
    int run(const std::function<void()>& routine) const;
};

// Grid cells and list lines with their control characters made visible:
// \\ for a backslash, \r, \n and \t.
QString escaped(const QString& text);

// The browser's caption and every grid row: item, TAB, details, and in the
// family grid TAB and the hidden slot where there is one.
void printGrid(const CliRun& run, const BrowserLogic& browser);

}  // namespace tav
