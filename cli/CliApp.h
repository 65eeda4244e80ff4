// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <functional>

namespace tav {

struct CliRun;

// The commands that measure or paint text and so need Qt's drawing, which
// takes a process as long to load as a file of 40000 people takes to read:
// tav-cli-draw has them; tav-cli, which has not, becomes tav-cli-draw for
// them (`forwardDrawing`).
struct DrawingCommands {
    int (*tree)(CliRun& run);
    int (*exportPicture)(CliRun& run);
    // Makes a window system to measure and paint text with.
    void (*prepare)();
};

// Output of one tav-cli run: `out` gets standard output lines, `err`
// standard error lines (each call is one line, without its newline).
struct CliOutput {
    std::function<void(const QString& line)> out;
    std::function<void(const QString& line)> err;
    // Bytes for standard output as they stand (a CSV file printed whole);
    // when empty, they go to `out` a line at a time.
    std::function<void(const QByteArray& bytes)> bytes = {};
};

// What a run depends on beyond its arguments: where it writes, the settings
// file it reads (never writes), today's date, and the program's own folder
// (where help.txt is looked for after the current folder).
struct CliContext {
    CliOutput output;
    QString settingsFile;        // "" for the user's own settings file
    QDate today;                 // invalid for the system's date
    QString programFolder = {};  // "" to look in the current folder only
    // Called with the exit status once a command has run, while the loaded
    // file is still in memory: a process may end there and then, sparing
    // itself the freeing of 40000 records it will never read again.
    std::function<void(int status)> finished = {};
    // The drawing commands, where this program has them.
    const DrawingCommands* drawing = nullptr;
    // Where it has not: runs the command in the program that has them, and
    // gives the exit status when that cannot start.
    std::function<int()> forwardDrawing = {};
};

// Runs tav-cli with its arguments (without the program name) and returns
// the exit status: 0 done, 1 FILE cannot be opened, 2 usage error,
// 3 a fault was reported after the load. --help and --version print the
// usage or the version on standard output.
int runCli(const QStringList& arguments, const CliContext& context);

}  // namespace tav
