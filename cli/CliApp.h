#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace tav {

// Output of one tav-cli run: `out` gets standard output lines, `err`
// standard error lines (each call is one line, without its newline).
struct CliOutput {
    std::function<void(const QString& line)> out;
    std::function<void(const QString& line)> err;
};

// Runs tav-cli with its arguments (without the program name) and returns
// the exit status: 0 done, 1 FILE cannot be opened, 2 usage error,
// 3 a fault was reported after the load.
int runCli(const QStringList& arguments, const CliOutput& output);

}  // namespace tav
