// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <functional>

namespace tav {

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
};

// Runs tav-cli with its arguments (without the program name) and returns
// the exit status: 0 done, 1 FILE cannot be opened, 2 usage error,
// 3 a fault was reported after the load. --help and --version print the
// usage or the version on standard output.
int runCli(const QStringList& arguments, const CliContext& context);

}  // namespace tav
