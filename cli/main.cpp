#include "cli/CliApp.h"

#include <QStringList>
#include <cstdio>

namespace {

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
                                   [](const QString& line) { writeLine(stderr, line); }},
                                  QString(),
                                  {}};
    return tav::runCli(arguments, context);
}
