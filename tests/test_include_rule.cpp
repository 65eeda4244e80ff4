// SPDX-License-Identifier: GPL-3.0-or-later
// Every library folder uses only the folders below it. The table here is the
// rule; the README's Layout shows the same table to readers.

#include "tests/QtPrinters.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <algorithm>
#include <map>
#include <set>

namespace {

// The folders each library folder may include from, besides itself. Folders
// that build no library (tests, fuzz, bench, scripts) may include anything.
const std::map<QString, std::set<QString>>& allowedIncludes()
{
    static const std::map<QString, std::set<QString>> table = {
        {"core", {}},
        {"calc", {"core"}},
        {"settings", {"core"}},
        {"app", {"core", "calc", "settings"}},
        {"reports", {"core", "calc", "settings", "app"}},
        {"tree", {"core", "calc", "settings", "app"}},
        {"windowlogic", {"core", "calc", "settings", "app", "reports", "tree"}},
        {"draw", {"core", "calc", "settings", "app", "tree"}},
        {"cli", {"core", "calc", "settings", "app", "reports", "tree", "windowlogic", "draw"}},
        {"ui", {"core", "calc", "settings", "app", "reports", "tree", "windowlogic", "draw"}},
    };
    return table;
}

// Folders of the source tree that hold no library code.
const std::set<QString> otherFolders = {"tests", "fuzz",    "bench", "scripts", "resources",
                                        "samples", "build", "dist",  "screenshots"};

// "calc/Dates.cpp includes ui/main/MainWindow.h" for every include of the
// project's own files that the table does not allow, and a line for every
// folder of C++ code that the table does not know.
std::vector<QString> brokenRules(const QString& root)
{
    static const QRegularExpression include(QStringLiteral(R"(^\s*#\s*include\s*"([^"]+)\")"));
    std::vector<QString> broken;
    const QDir top(root);
    for (const QString& folder : top.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (otherFolders.count(folder) || folder.startsWith(u'.'))
            continue;
        const auto rule = allowedIncludes().find(folder);
        QDirIterator files(top.filePath(folder), {QStringLiteral("*.h"), QStringLiteral("*.cpp")},
                           QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            const QString name = top.relativeFilePath(path);
            if (rule == allowedIncludes().end()) {
                broken.push_back(name + QStringLiteral(" lies in a folder the rule does not name"));
                continue;
            }
            QFile file(path);
            if (!file.open(QIODevice::ReadOnly)) {
                broken.push_back(name + QStringLiteral(" cannot be read"));
                continue;
            }
            while (!file.atEnd()) {
                const auto match = include.match(QString::fromUtf8(file.readLine()));
                if (!match.hasMatch())
                    continue;
                const QString target = match.captured(1);
                const QString targetFolder = target.section(u'/', 0, 0);
                if (!target.contains(u'/') ||
                    (targetFolder != folder && !rule->second.count(targetFolder)))
                    broken.push_back(name + QStringLiteral(" includes ") + target);
            }
        }
    }
    return broken;
}

void copyFile(const QString& from, const QString& to, const QByteArray& extra = {})
{
    QFile in(from);
    ASSERT_TRUE(in.open(QIODevice::ReadOnly)) << from.toStdString();
    QDir().mkpath(QFileInfo(to).path());
    QFile out(to);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(extra + in.readAll());
}

}  // namespace

TEST(IncludeRuleTest, EveryIncludeOfTheLibrariesPointsDown)
{
    const std::vector<QString> broken = brokenRules(QStringLiteral(TAV_SOURCE_DIR));
    for (const QString& line : broken)
        ADD_FAILURE() << line.toStdString();
    EXPECT_TRUE(QFile::exists(QStringLiteral(TAV_SOURCE_DIR "/ui/main/MainWindow.cpp")))
        << "the rule was checked on the real tree";
}

// The rule test itself must catch a wrong edge: a copy of real files with an
// upward include, a file without its folder, and a folder the table lacks.
TEST(IncludeRuleTest, AnUpwardIncludeIsCaught)
{
    QTemporaryDir copy;
    const QString source = QStringLiteral(TAV_SOURCE_DIR);
    copyFile(source + "/calc/Dates.cpp", copy.filePath("calc/Dates.cpp"),
             "#include \"ui/main/MainWindow.h\"\n#include \"core/Fault.h\"\n");
    copyFile(source + "/draw/TreeFont.h", copy.filePath("draw/TreeFont.h"),
             "  #  include \"windowlogic/tree/TreeWindowLogic.h\"\n#include \"TreeFont.h\"\n");
    copyFile(source + "/ui/main/MainWindow.h", copy.filePath("ui/main/MainWindow.h"));
    copyFile(source + "/core/Fault.h", copy.filePath("newlib/Fault.h"));
    copyFile(source + "/core/Fault.h", copy.filePath("tests/Anything.h"),
             "#include \"ui/main/MainWindow.h\"\n");

    std::vector<QString> broken = brokenRules(copy.path());
    std::sort(broken.begin(), broken.end());
    const std::vector<QString> expected = {
        "calc/Dates.cpp includes ui/main/MainWindow.h",
        "draw/TreeFont.h includes TreeFont.h",
        "draw/TreeFont.h includes windowlogic/tree/TreeWindowLogic.h",
        "newlib/Fault.h lies in a folder the rule does not name",
    };
    EXPECT_EQ(broken, expected);
}
