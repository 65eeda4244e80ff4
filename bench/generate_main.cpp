// SPDX-License-Identifier: GPL-3.0-or-later
// tav-generate: writes a generated GEDCOM file for benchmarks and demos.
#include "bench/GedcomGenerator.h"

#include <QFile>
#include <cstdio>
#include <cstdlib>
#include <cstring>

int main(int argc, char* argv[])
{
    tav::GeneratorOptions options;
    const char* outPath = nullptr;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--lf") == 0)
            options.crlf = false;
        else if (std::strcmp(argv[i], "--shuffle") == 0)
            options.shuffled = true;
        else if (std::strcmp(argv[i], "--long-ids") == 0)
            options.xrefs = tav::GeneratorOptions::Xrefs::Long;
        else if (std::strcmp(argv[i], "--text-ids") == 0)
            options.xrefs = tav::GeneratorOptions::Xrefs::Text;
        else if (std::strcmp(argv[i], "--seed") == 0 && i + 1 < argc)
            options.seed = std::strtoull(argv[++i], nullptr, 10);
        else if (options.individuals == 1000 && std::atoi(argv[i]) > 0 && !outPath)
            options.individuals = std::atoi(argv[i]);
        else
            outPath = argv[i];
    }
    if (!outPath) {
        std::fprintf(stderr,
                     "usage: tav-generate INDIVIDUALS OUT.ged [--lf] [--shuffle] [--long-ids | "
                     "--text-ids] [--seed N]\n");
        return 2;
    }
    QFile file(QString::fromLocal8Bit(outPath));
    if (!file.open(QIODevice::WriteOnly) || file.write(tav::generateGedcom(options)) < 0) {
        std::fprintf(stderr, "cannot write %s: %s\n", outPath, qPrintable(file.errorString()));
        return 1;
    }
    return 0;
}
