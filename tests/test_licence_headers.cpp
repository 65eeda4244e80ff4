// SPDX-License-Identifier: GPL-3.0-or-later
// Every source file names the project's licence in one SPDX line at its
// head; scripts/spdx-headers.sh adds it to the files that lack it.
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QStringList>

#include <gtest/gtest.h>

namespace {

const QString licence = QStringLiteral("SPDX-License-Identifier: GPL-3.0-or-later");

// The line that names the licence in a file of that name: first in C++ and
// CMake, second after a script's "#!" line.
bool namesLicence(const QString& name, const QStringList& lines)
{
    const bool cpp = name.endsWith(QLatin1String(".cpp")) || name.endsWith(QLatin1String(".h"));
    const QString line = (cpp ? QStringLiteral("// ") : QStringLiteral("# ")) + licence;
    const qsizetype at = lines.value(0).startsWith(QLatin1String("#!")) ? 1 : 0;
    return lines.value(at) == line;
}

}  // namespace

TEST(LicenceHeaderTest, EverySourceFileNamesTheLicence)
{
    const QDir source(QStringLiteral(TAV_SOURCE_DIR));
    const QStringList skipped = {QStringLiteral("build"), QStringLiteral("dist"),
                                 QStringLiteral(".git"), QStringLiteral(".cache"),
                                 QStringLiteral("screenshots")};
    QStringList lacking;
    int files = 0;
    QDirIterator it(source.path(),
                    {QStringLiteral("*.cpp"), QStringLiteral("*.h"), QStringLiteral("*.cmake"),
                     QStringLiteral("*.sh"), QStringLiteral("CMakeLists.txt")},
                    QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = source.relativeFilePath(it.next());
        if (skipped.contains(path.section(QLatin1Char('/'), 0, 0)))
            continue;
        QFile file(it.filePath());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        const QStringList lines = QString::fromUtf8(file.read(4096)).split(QLatin1Char('\n'));
        ++files;
        if (!namesLicence(path, lines))
            lacking << path;
    }
    EXPECT_GT(files, 200);
    EXPECT_TRUE(lacking.isEmpty()) << "run scripts/spdx-headers.sh; these lack the line:\n"
                                   << lacking.join(QLatin1Char('\n')).toStdString();
}
