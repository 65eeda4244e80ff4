#include "cli/CliApp.h"

#include <QFileInfo>
#include <QStringList>
#include <cstdio>

namespace {

// The folder of this program, where help.txt may lie. Found without a
// QCoreApplication, since a drawing command makes a QGuiApplication later.
QString programFolder(const char* argv0)
{
    const QString self = QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath();
    return QFileInfo(self.isEmpty() ? QString::fromLocal8Bit(argv0) : self).absolutePath();
}

void writeLine(std::FILE* stream, const QString& line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
}

}  // namespace

int main(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
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
