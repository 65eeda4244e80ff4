// SPDX-License-Identifier: GPL-3.0-or-later
// tav-cli, and tav-cli-draw: the same program, the second with the commands
// that measure or paint text (built with TAV_CLI_DRAWS). tav-cli loads Qt
// Core alone and becomes tav-cli-draw for those commands; where a process
// cannot become another (Windows), tav-cli is built whole.
#include "cli/CliApp.h"
#include "core/FileNames.h"

#ifdef TAV_CLI_DRAWS
#include "cli/CliCommands.h"
#else
#include <QDir>
#include <cerrno>
#include <cstring>
#include <unistd.h>
#endif

#include <QFileInfo>
#include <QStringList>
#include <cstdio>
#include <cstdlib>

namespace {

// The folder of this program, where help.txt may lie. Found without a
// QCoreApplication, since a drawing command makes a QGuiApplication later.
QString programFolder(const char* argv0)
{
    const QString self = QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath();
    return QFileInfo(self.isEmpty() ? tav::fileNameFromBytes(argv0) : self).absolutePath();
}

void writeLine(std::FILE* stream, const QString& line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
}

#ifndef TAV_CLI_DRAWS
// Becomes tav-cli-draw, beside this program (a build) or in
// ../libexec/tav from it (an installation), with the same arguments; the
// exit status when it cannot.
int becomeDrawingProgram(const QString& folder, char* argv[])
{
    QString program = QDir(folder).filePath(QStringLiteral("tav-cli-draw"));
    if (!QFileInfo(program).isExecutable())
        program = QDir(folder).filePath(QStringLiteral("../libexec/tav/tav-cli-draw"));
    const QByteArray path = tav::fileNameToBytes(QDir::cleanPath(program));
    std::fflush(stdout);
    ::execv(path.constData(), argv);
    std::fprintf(stderr, "tav-cli: cannot start %s: %s\n", path.constData(),
                 std::strerror(errno));
    return 1;
}
#endif

}  // namespace

int main(int argc, char* argv[])
{
    // Arguments are file names as often as not: their bytes are kept, so a
    // name that is not UTF-8 still names its file.
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << tav::fileNameFromBytes(argv[i]);
    const QString folder = programFolder(argv[0]);
    tav::CliContext context{{[](const QString& line) { writeLine(stdout, line); },
                             [](const QString& line) { writeLine(stderr, line); },
                             [](const QByteArray& bytes) {
                                 std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
                             }},
                            QString(),
                            {},
                            folder,
                            [](int status) {
                                // What was written is flushed; the memory
                                // goes back with the process.
                                std::fflush(stdout);
                                std::fflush(stderr);
                                std::_Exit(status);
                            }};
#ifdef TAV_CLI_DRAWS
    context.drawing = &tav::drawingCommands();
#else
    context.forwardDrawing = [&folder, argv] { return becomeDrawingProgram(folder, argv); };
#endif
    return tav::runCli(arguments, context);
}
