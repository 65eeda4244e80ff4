// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/ViewKinds.h"
#include "cli/CliApp.h"
#include "core/Outcome.h"

#include <QString>
#include <QStringList>
#include <functional>

namespace tav {

class BrowserLogic;
class Session;

// The exit status of a run that refused its arguments.
constexpr int refusedStatus = 2;

// What standard error says about an argument the command does not take:
// "tav-cli: PROBLEM", then the usage.
QString usageProblem(const QString& problem);

// One command's run: the loaded session, the command's arguments after FILE,
// and where it prints.
struct CliRun {
    const CliOutput& output;
    Session& session;
    QStringList args;

    // A line of standard output, with control characters shown (see
    // withControlsShown).
    void print(const QString& line) const;
    // A report text, its CR LF line breaks printed as newlines.
    void printReport(const QString& text) const;
    // A file's bytes as they stand.
    void printBytes(const QByteArray& bytes) const;
    // The whole-number argument at `i`; a usage problem when it is not one
    // or does not fit 32 bits.
    Result<int32_t> intArg(qsizetype i) const { return integerArgument(args.value(i)); }
    // The argument at `i` as a slot of a record kind: a whole number of any
    // size from 1 to the count of that kind, else "There is no individual N
    // in this file."; anything but a whole number is a usage problem.
    Result<int32_t> slotArg(qsizetype i, ViewKind kind) const;
    static Result<int32_t> integerArgument(const QString& text);
    // Digits, with a sign or none: a whole number, however large.
    static bool isWholeNumberText(const QString& text);
    // Refuses the arguments: the message on standard error, status 2.
    int refuse(const QString& message) const;
    // Runs a routine of the viewer; a fault it raises is reported as the
    // viewer would and gives the exit status 3.
    int run(const std::function<void()>& routine) const;
};

// The value of --generations: a whole number from 2 to 10, else a usage
// problem.
Result<int32_t> generationsArgument(const QString& text);

// Grid cells and list lines with their control characters made visible:
// \\ for a backslash, \r, \n and \t, \xHH for any other (a NUL, an escape).
QString escaped(const QString& text);
// Any other text printed: control characters but TAB, CR and LF as \xHH,
// so that none reaches the terminal raw.
QString withControlsShown(const QString& text);

// The browser's caption and every grid row: item, TAB, details, and in the
// family grid TAB and the hidden slot where there is one.
void printGrid(const CliRun& run, const BrowserLogic& browser);
// The grid as the browser saves it as CSV.
void printGridCsv(const CliRun& run, const BrowserLogic& browser);

}  // namespace tav
