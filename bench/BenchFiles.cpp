// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/BenchFiles.h"

#include "app/GedcomLoading.h"
#include "bench/GedcomGenerator.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdlib>

namespace tav::bench {

QString generatedFile(int individuals, bool shuffled, GeneratorOptions::Xrefs xrefs)
{
    static QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("generated-%1%2-%3.ged")
                                          .arg(individuals)
                                          .arg(shuffled ? "-shuffled" : "")
                                          .arg(int(xrefs)));
    if (!QFile::exists(path)) {
        QFile file(path);
        GeneratorOptions options;
        options.individuals = individuals;
        options.shuffled = shuffled;
        options.xrefs = xrefs;
        if (!file.open(QIODevice::WriteOnly) || file.write(generateGedcom(options)) < 0)
            std::abort();
    }
    return path;
}

QString sharedFile(const char* name)
{
    const QString path =
        QDir(QStringLiteral(TAV_SHARED_GEDCOM_DIR)).filePath(QString::fromLatin1(name));
    return QFileInfo::exists(path) ? path : QString();
}

LoadedSession::LoadedSession(const QString& path)
    : loaded(!path.isEmpty() && loadGedcom(session, path))
{}

Session& generatedSession()
{
    static LoadedSession file(generatedFile(40000));
    return file.session;
}

}  // namespace tav::bench
