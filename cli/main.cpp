// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CliApp.h"
#include "core/FileNames.h"

#include <QFileInfo>
#include <QStringList>
#include <cstdio>

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

}  // namespace

int main(int argc, char* argv[])
{
    // Arguments are file names as often as not: their bytes are kept, so a
    // name that is not UTF-8 still names its file.
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << tav::fileNameFromBytes(argv[i]);
    const tav::CliContext context{{[](const QString& line) { writeLine(stdout, line); },
                                   [](const QString& line) { writeLine(stderr, line); },
                                   [](const QByteArray& bytes) {
                                       std::fwrite(bytes.constData(), 1, size_t(bytes.size()),
                                                   stdout);
                                   }},
                                  QString(),
                                  {},
                                  programFolder(argv[0])};
    return tav::runCli(arguments, context);
}
