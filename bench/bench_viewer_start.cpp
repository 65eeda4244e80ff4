// SPDX-License-Identifier: GPL-3.0-or-later
// The viewer's start as a user sees it: from starting the process (its
// libraries loaded, the settings read, the file loaded) to the main window
// painted with the file's caption, on the generated 40000-person file and,
// for Qt's own share, on an empty file. Each repetition is one start, timed
// from outside until the viewer says it has painted (TAV_STARTUP_TIME=quit);
// its ending is not timed. Needs a display: run under xvfb-run. Arguments 2
// and 3 start another build's viewer, named by TAV_BASELINE_VIEWER, in the
// same run (one that prints its caption line without ending is ended).
#include "bench/BenchFiles.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <csignal>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace {

// Starts the viewer on `file` and returns the seconds until it printed its
// caption line, or a negative number when it failed.
double secondsToCaption(std::string program, const QByteArray& file,
                        const QByteArray& configFolder)
{
    int pipeEnds[2];
    if (pipe(pipeEnds) != 0)
        return -1;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipeEnds[1], STDERR_FILENO);
    posix_spawn_file_actions_addclose(&actions, pipeEnds[0]);

    // The caller's environment, with the timing switched on and settings of
    // our own (so no other file is auto-loaded and the user's are untouched).
    std::vector<std::string> variables{"TAV_STARTUP_TIME=quit",
                                       "XDG_CONFIG_HOME=" + configFolder.toStdString()};
    for (char** variable = environ; *variable; ++variable) {
        const std::string text(*variable);
        if (text.rfind("TAV_", 0) != 0 && text.rfind("XDG_CONFIG_HOME=", 0) != 0)
            variables.push_back(text);
    }
    std::vector<char*> environment;
    for (std::string& text : variables)
        environment.push_back(text.data());
    environment.push_back(nullptr);
    std::string argument = file.toStdString();
    char* arguments[] = {program.data(), argument.data(), nullptr};

    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    const int spawned =
        posix_spawn(&child, program.c_str(), &actions, nullptr, arguments, environment.data());
    posix_spawn_file_actions_destroy(&actions);
    close(pipeEnds[1]);
    if (spawned != 0) {
        close(pipeEnds[0]);
        return -1;
    }
    std::string output;
    double seconds = -1;
    char buffer[4096];
    for (;;) {
        const ssize_t got = read(pipeEnds[0], buffer, sizeof buffer);
        if (got <= 0)
            break;
        output.append(buffer, size_t(got));
        if (output.find(" ms after start\n") != std::string::npos) {
            seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start)
                          .count();
            break;
        }
    }
    close(pipeEnds[0]);
    kill(child, SIGTERM);
    int status = 0;
    waitpid(child, &status, 0);
    return seconds;
}

// Argument 0: the generated 40000-person file; 1: an empty file; 2 and 3:
// the same with the baseline viewer.
void BM_ViewerStart(benchmark::State& state)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        state.SkipWithError("no display: run under xvfb-run");
        return;
    }
    const bool baseline = state.range(0) >= 2;
    if (baseline && qEnvironmentVariableIsEmpty("TAV_BASELINE_VIEWER")) {
        state.SkipWithError("TAV_BASELINE_VIEWER is not set");
        return;
    }
    const std::string program =
        baseline ? qEnvironmentVariable("TAV_BASELINE_VIEWER").toStdString() : TAV_VIEWER_PROGRAM;
    QTemporaryDir folder;
    QByteArray file = QFile::encodeName(tav::bench::generatedFile(40000));
    if (state.range(0) % 2 == 1) {
        file = QFile::encodeName(folder.filePath(QStringLiteral("empty.ged")));
        QFile empty(QFile::decodeName(file));
        if (!empty.open(QIODevice::WriteOnly)) {
            state.SkipWithError("cannot write the empty file");
            return;
        }
    }
    const QByteArray config = QFile::encodeName(folder.filePath(QStringLiteral("config")));
    QDir().mkpath(QFile::decodeName(config));
    for (auto _ : state) {
        const double seconds = secondsToCaption(program, file, config);
        if (seconds < 0) {
            state.SkipWithError("the viewer did not start");
            break;
        }
        state.SetIterationTime(seconds);
    }
}
BENCHMARK(BM_ViewerStart)
    ->Arg(0)
    ->Arg(1)
    ->Arg(2)
    ->Arg(3)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(7)
    ->ComputeStatistics("min", [](const std::vector<double>& v) {
        return *std::min_element(v.begin(), v.end());
    })
    ->ReportAggregatesOnly(true);

}  // namespace

BENCHMARK_MAIN();
