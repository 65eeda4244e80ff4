// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/RegistryStore.h"
#include "tests/TestSupport.h"
#include "windowlogic/main/HelpTopics.h"
#include "windowlogic/main/MainWindowLogic.h"
#include "windowlogic/main/WorkingFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace tav;

namespace {

// A folder in which no new file can be made. Permission bits stop an
// ordinary user; an administrator passes them, so then /proc stands in,
// where nobody can make a file.
QString unwritableFolder(const QString& parent)
{
    const QString folder = QDir(parent).filePath(QStringLiteral("read-only"));
    QDir().mkpath(folder);
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner);
    if (!canCreateFilesIn(folder))
        return folder;
    if (QFileInfo(QStringLiteral("/proc")).isDir() && !canCreateFilesIn(QStringLiteral("/proc")))
        return QStringLiteral("/proc");
    return QString();
}

}  // namespace

// Each test has its own home, data folder and current folder, and gives the
// process's back afterwards.
class WorkingFolderTest : public tav::test::SessionTest {
protected:
    WorkingFolderTest()
    {
        qputenv("HOME", dir.filePath(QStringLiteral("home")).toLocal8Bit());
        qputenv("XDG_DATA_HOME", dir.filePath(QStringLiteral("data")).toLocal8Bit());
    }
    ~WorkingFolderTest() override
    {
        QFile::setPermissions(dir.filePath(QStringLiteral("read-only")),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        restore("HOME", home);
        restore("XDG_DATA_HOME", dataHome);
    }
    static void restore(const char* name, const QByteArray& value)
    {
        if (value.isNull())
            qunsetenv(name);
        else
            qputenv(name, value);
    }

    QByteArray home = qgetenv("HOME");
    QByteArray dataHome = qgetenv("XDG_DATA_HOME");
};

TEST_F(WorkingFolderTest, AWritableProgramFolderIsUsedAndNothingElseIsMade)
{
    const QString program = dir.filePath(QStringLiteral("unpacked/bin"));
    QDir().mkpath(program);
    EXPECT_EQ(workingFolder(program), program);
    EXPECT_FALSE(QFileInfo::exists(dir.filePath(QStringLiteral("data/Tav"))));
    EXPECT_EQ(QDir(program).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList())
        << "the probe file is gone";
}

TEST_F(WorkingFolderTest, AnUnwritableProgramFolderGivesTheDataFolderCreated)
{
    const QString program = unwritableFolder(dir.path());
    if (program.isEmpty())
        GTEST_SKIP() << "no folder here refuses new files";
    const QString data = dir.filePath(QStringLiteral("data/Tav"));
    EXPECT_EQ(workingFolder(program), data);
    EXPECT_TRUE(QFileInfo(data).isDir());
    EXPECT_EQ(workingFolder(program), data) << "an existing data folder is used as it is";

    // The viewer's start-up moves there, so its view file and report have a home.
    RegistryStore store(dir.filePath(QStringLiteral("config/Tav.reg")));
    MainWindowLogic main(session, store, program);
    main.startUp(QString());
    EXPECT_EQ(QDir::currentPath(), data);
    EXPECT_EQ(main.caption(), QStringLiteral("File not open!"));
}

TEST_F(WorkingFolderTest, ARelativeOrEmptyDataHomeIsIgnored)
{
    const QString fallback = dir.filePath(QStringLiteral("home/.local/share/Tav"));
    EXPECT_EQ(userDataFolder(), dir.filePath(QStringLiteral("data/Tav")));
    qputenv("XDG_DATA_HOME", "relative/data");
    EXPECT_EQ(userDataFolder(), fallback);
    qputenv("XDG_DATA_HOME", "");
    EXPECT_EQ(userDataFolder(), fallback);
    qunsetenv("XDG_DATA_HOME");
    EXPECT_EQ(userDataFolder(), fallback);

    const QString program = unwritableFolder(dir.path());
    if (program.isEmpty())
        GTEST_SKIP() << "no folder here refuses new files";
    EXPECT_EQ(workingFolder(program), fallback);
    EXPECT_TRUE(QFileInfo(fallback).isDir()) << "made with its parents";
}

TEST_F(WorkingFolderTest, HelpIsFoundInTheCurrentFolderThenBesideTheProgramThenInShareTav)
{
    const QString program = dir.filePath(QStringLiteral("prefix/bin"));
    const QString current = dir.filePath(QStringLiteral("work"));
    // Each copy names its place; the place that answers is taken away in turn.
    const std::pair<const char*, QString> places[] = {
        {"current", writeFile("current", "work/help.txt")},
        {"beside", writeFile("beside", "prefix/bin/help.txt")},
        {"installed", writeFile("installed", "prefix/share/tav/help.txt")},
    };
    QDir::setCurrent(current);
    for (const auto& [name, path] : places) {
        const Result<QString> text = readHelpFile(program);
        ASSERT_TRUE(text) << name;
        EXPECT_EQ(*text, QLatin1String(name));
        QFile::remove(path);
    }
    const Result<QString> none = readHelpFile(program);
    EXPECT_FALSE(none);
    EXPECT_TRUE(none.message().startsWith(QStringLiteral("Cannot open help.txt")));

    // Without a program folder only the current folder counts: no ../share/tav
    // from wherever tav-cli happens to be run.
    writeFile("beside the work folder", "share/tav/help.txt");
    EXPECT_FALSE(readHelpFile(QString()));
}
