// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/RegistryStore.h"
#include "settings/Settings.h"
#include "settings/SettingsPersistence.h"
#include "tests/TestSupport.h"
#include "windowlogic/main/HelpTopics.h"
#include "windowlogic/main/MainWindowLogic.h"
#include "windowlogic/main/RecentFiles.h"
#include "windowlogic/options/OptionsLogic.h"
#include "windowlogic/text/TextViewerLogic.h"

#include <QDir>

using namespace tav;
using tav::test::gedcomText;

TEST(SplitPath, BackslashSlashColonAndBareNames)
{
    const struct {
        const char* path;
        const char* name;
        const char* folder;
    } cases[] = {{"/home/a/x.ged", "x.ged", "/home/a/"},
                 {"C:x.ged", "x.ged", "C:\\"},
                 {"x.ged", "x.ged", ""},
                 {"C:\\a/b\\c.ged", "c.ged", "C:\\a/b\\"}};
    for (const auto& c : cases) {
        QString name, folder;
        splitPath(QString::fromLatin1(c.path), name, folder);
        EXPECT_EQ(name, QString::fromLatin1(c.name)) << c.path;
        EXPECT_EQ(folder, QString::fromLatin1(c.folder)) << c.path;
    }
}

TEST(RecentFileList, NewestFirstWithoutDuplicatesAndAtMostTen)
{
    Settings s;
    const auto list = [&s] {
        QStringList l;
        for (int i = 1; i <= s.recentCount; ++i)
            l << s.recentFiles[size_t(i)];
        return l;
    };
    for (const char* p : {"C:\\c\\z.ged", "C:\\A\\X.GED", "C:\\b\\y.ged"})
        addRecentFile(s, QString::fromLatin1(p));
    EXPECT_FALSE(addRecentFile(s, QStringLiteral("C:\\a\\x.ged")));
    EXPECT_EQ(list(), QStringList({"C:\\a\\x.ged", "C:\\b\\y.ged", "C:\\c\\z.ged"}))
        << "the older spelling is dropped";
    EXPECT_FALSE(addRecentFile(s, QStringLiteral("C:\\a\\x.ged")));
    EXPECT_EQ(list(), QStringList({"C:\\a\\x.ged", "C:\\b\\y.ged", "C:\\c\\z.ged"}))
        << "reopening the top file";
    for (int i = 4; i <= 10; ++i)
        EXPECT_TRUE(addRecentFile(s, QStringLiteral("f%1.ged").arg(i)));
    EXPECT_EQ(s.recentCount, 10);
    EXPECT_EQ(s.recentFiles[10], QStringLiteral("C:\\c\\z.ged"));
    EXPECT_FALSE(addRecentFile(s, QStringLiteral("eleventh.ged")));
    EXPECT_EQ(s.recentCount, 10);
    EXPECT_EQ(s.recentFiles[1], QStringLiteral("eleventh.ged"));
    EXPECT_EQ(s.recentFiles[10], QStringLiteral("C:\\b\\y.ged")) << "the tenth fell off";
}

TEST(HelpTopicText, TopicsRunToTheNextMarkerLessItsLineBreak)
{
    const QString help =
        QStringLiteral("preface\r\n***!!!Find\r\nUse the find window.\r\n***!!!List\r\nLists.\r\n"
                       "***!!!TreeView\r\nViews.\r\n***!!!Tree\r\nTrees.\r\n");
    EXPECT_EQ(helpTopic(help, QStringLiteral("Find")), QStringLiteral("\r\nUse the find window."));
    EXPECT_EQ(helpTopic(help, QStringLiteral("Tree")), QStringLiteral("View\r\nViews."))
        << "a key that begins another key finds the first in the file";
    EXPECT_EQ(helpTopic(help, QStringLiteral("TreeView")), QStringLiteral("\r\nViews."));
    EXPECT_EQ(helpTopic(QStringLiteral("***!!!Last\r\nThe end.\r\n"), QStringLiteral("Last")),
              QStringLiteral("\r\nThe end"))
        << "the last topic loses the file's last three characters";
    EXPECT_EQ(helpTopic(help, QStringLiteral("Options")), QString());
    EXPECT_EQ(helpTopic(help, QStringLiteral("find")), QString())
        << "keys are matched with their case";
}

class MainWindowLogicTest : public tav::test::SessionTest {
protected:
    MainWindowLogicTest() : store(dir.filePath(QStringLiteral("config/Tav.reg"))) {}

    MainWindowLogic logic() { return MainWindowLogic(session, store, dir.path()); }

    RegistryStore store;
};

TEST_F(MainWindowLogicTest, CommandLineFileMayBeQuotedAndItsFolderBecomesCurrent)
{
    const QString path = writeFile(gedcomText({"0 @I1@ INDI", "0 @I2@ INDI", "0 @F1@ FAM"}),
                                   "my data/two people.ged");
    MainWindowLogic withFile = logic();
    withFile.startUp(QLatin1Char('"') + path + QLatin1Char('"'));
    EXPECT_TRUE(withFile.commandsEnabled());
    EXPECT_EQ(QDir::currentPath(), dir.filePath(QStringLiteral("my data")))
        << "its folder becomes the current one";
    EXPECT_TRUE(withFile.recentItems()[1].visible && withFile.recentSeparatorVisible());
}

TEST_F(MainWindowLogicTest, AutoLoadAndRecentFilesOpenAndMissingOnesAreReported)
{
    const QString a = writeFile(gedcomText({"0 @I1@ INDI"}), "a.ged");
    const QString b = writeFile(gedcomText({"0 @I1@ INDI", "0 @I2@ INDI"}), "b.ged");
    session.settings.autoLoadFile = a;
    session.settings.recentFiles[1] = b;
    session.settings.recentFiles[2] = dir.filePath(QStringLiteral("gone.ged"));
    session.settings.recentCount = 2;
    ASSERT_TRUE(saveSettings(session.settings, store));
    session.settings = Settings{};

    MainWindowLogic main = logic();
    main.startUp(QString());
    EXPECT_EQ(session.records.fileName, a);
    EXPECT_EQ(main.recentItems()[1].caption, QStringLiteral("&0 a.ged"));
    EXPECT_EQ(main.recentItems()[3].caption, QStringLiteral("&2 gone.ged"));

    main.recentFileChosen(3);
    EXPECT_EQ(messages.texts(), QStringList{QStringLiteral("File not found.")});
    EXPECT_EQ(session.records.fileName, a) << "the list and the open file stay";
    main.recentFileChosen(2);
    EXPECT_EQ(session.records.individualCount(), 2);
    EXPECT_EQ(session.settings.recentFiles[1], b);

    main.fileOpenChosen(QString());
    EXPECT_EQ(session.records.fileName, b) << "a cancelled dialog changes nothing";
    EXPECT_EQ(main.caption(), b + QStringLiteral(" (2 individuals, 0 families)"));
}

TEST_F(MainWindowLogicTest, HeaderBoxCarriesValuesOverFromAnEarlierFile)
{
    MainWindowLogic main = logic();
    ASSERT_TRUE(
        load(gedcomText({"0 HEAD", "1 DATE 1 JAN 2001", "1 CHAR ANSEL", "1 GEDC", "2 VERS 5.5"})));
    ASSERT_TRUE(load(gedcomText({"0 @I1@ INDI"})));
    main.showHeaderInformation();
    ASSERT_EQ(messages.entries.size(), 1u);
    EXPECT_EQ(messages.entries[0].text,
              QStringLiteral("Version: not available\r\nDate: 1 JAN 2001\r\nChar set: ANSEL"));
    EXPECT_EQ(messages.entries[0].title, QStringLiteral("Gedcom header infomation"));
    main.showAbout();
    EXPECT_EQ(messages.entries[1].title, QStringLiteral("About"));
    EXPECT_TRUE(session.report.text.startsWith(QStringLiteral("Tav.exe \r\nVersion 1.0\r\n\r\n")));
}

TEST_F(MainWindowLogicTest, HelpTopicsComeFromTheFileBesideTheProgram)
{
    writeFile("***!!!QuickStart\r\nStart here.\r\n***!!!List\r\nx\r\n", "help.txt");
    QDir::setCurrent(QDir::tempPath());
    MainWindowLogic main = logic();
    main.showHelp(0);
    EXPECT_EQ(session.report.text, QStringLiteral("\r\nStart here."));
    EXPECT_EQ(session.report.title, QStringLiteral("Quick Start"));
}

TEST_F(MainWindowLogicTest, OptionsShowShortPathsAndCheckTheAutoLoadFile)
{
    EXPECT_EQ(OptionsLogic::shortenedPath(QString(40, u'a')), QString(40, u'a'));
    EXPECT_EQ(OptionsLogic::shortenedPath(QStringLiteral("b") + QString(40, u'a')),
              QStringLiteral("...") + QString(37, u'a'));

    session.settings.FontSize = 2;
    session.settings.SurnameStyle = 3;
    session.settings.autoLoadFile = QStringLiteral("/old.ged");
    OptionsLogic options(session, store);
    EXPECT_EQ(options.fontSizeIndex, 2);
    EXPECT_EQ(options.surnameStyleIndex, 2);
    options.fontSizeIndex = 0;
    options.autoLoadFileChosen(dir.filePath(QStringLiteral("missing.ged")));
    EXPECT_FALSE(options.accept());
    EXPECT_EQ(messages.texts(), QStringList{QStringLiteral("Cannot find autoload file!")});
    EXPECT_EQ(session.settings.FontSize, 2) << "nothing is taken while the dialog stays open";

    options.autoLoadTextEdited(QString());
    EXPECT_TRUE(options.accept());
    EXPECT_TRUE(session.settings.autoLoadFile.isEmpty());
    EXPECT_EQ(session.settings.FontSize, 4);
    Settings saved;
    loadSettings(saved, store, QStringLiteral("ALL"));
    EXPECT_EQ(saved.FontSize, 4) << "OK saves at once";
    EXPECT_EQ(saved.SurnameStyle, 3);
}

TEST(TextViewerPlacement, RightEdgeFullHeightLess450Twips)
{
    EXPECT_EQ(TextViewerLogic::placement(QRect(0, 0, 1280, 1024), 500), QRect(780, 0, 500, 994));
}
