// SPDX-License-Identifier: GPL-3.0-or-later
// Taking what a window shows elsewhere: grids, lists and results as CSV and
// tab-separated text, reports as text files, and tav-cli printing the same.
#include "app/GedcomLoading.h"
#include "core/TableText.h"
#include "tests/CliTest.h"
#include "windowlogic/browser/BrowserLogic.h"
#include "windowlogic/find/FindLogic.h"
#include "windowlogic/text/TextViewerLogic.h"

#include <QFile>

using namespace tav;
using tav::test::gedcomText;

class CopyAndSaveTest : public CliTest {};

// RFC 4180: commas, quotes and line breaks put a field in quotes, its
// quotes doubled; records end in CR LF. The clipboard's tab-separated text
// quotes the same way.
TEST_F(CopyAndSaveTest, CsvAndTabSeparatedQuoting)
{
    const TextTable rows = {
        {"Item", "Details"},          {"plain", "Smith, John"}, {"quote", "the \"Old\" farm"},
        {"lines", "first\r\nsecond"}, {" spaced ", ""},         {"tab", "a\tb"},
    };
    EXPECT_EQ(csvBytes(rows), QByteArray("Item,Details\r\n"
                                         "plain,\"Smith, John\"\r\n"
                                         "quote,\"the \"\"Old\"\" farm\"\r\n"
                                         "lines,\"first\r\nsecond\"\r\n"
                                         " spaced ,\r\n"
                                         "tab,a\tb\r\n"));
    EXPECT_EQ(tabSeparated(rows), QStringLiteral("Item\tDetails\n"
                                                 "plain\tSmith, John\n"
                                                 "quote\t\"the \"\"Old\"\" farm\"\n"
                                                 "lines\t\"first\r\nsecond\"\n"
                                                 " spaced \t\n"
                                                 "tab\t\"a\tb\"\n"));
    EXPECT_EQ(csvBytes({{QString::fromUtf8("Zelníčková")}}), QByteArray("Zelníčková\r\n"))
        << "UTF-8, no byte order mark";
}

// The browser's CSV of a grid is what tav-cli show --csv prints, byte for
// byte, and holds the grid's shown columns with the heading row first.
TEST_F(CopyAndSaveTest, AGridsCsvIsWhatTavCliPrints)
{
    const QString path = writeFile(
        gedcomText({"0 @I1@ INDI", "1 NAME John /Smith, Jr/", "1 OCCU Miller, \"the elder\"",
                    "1 NOTE First line", "2 CONT second line", "0 @I2@ INDI", "1 NAME Ann /Lee/"}),
        "csv.ged");
    ASSERT_TRUE(loadGedcom(session, path));
    QByteArray john;
    for (const auto& [kind, slot] :
         {std::pair{ViewKind::Individual, 1}, std::pair{ViewKind::AllOccupations, 0}}) {
        BrowserLogic browser(session);
        session.openBrowser(kind, slot, BrowserCaller::MainWindow);
        browser.activate();
        const QByteArray csv = csvBytes(browser.table());
        if (slot)
            john = csv;

        QByteArray printed;
        const CliContext context{{[](const QString&) {}, [](const QString&) {},
                                  [&printed](const QByteArray& bytes) { printed += bytes; }},
                                 settingsFile(),
                                 QDate(2026, 11, 21)};
        QStringList arguments{QStringLiteral("show"), path, viewKindCode(kind)};
        if (slot)
            arguments << QString::number(slot);
        arguments << QStringLiteral("--csv");
        EXPECT_EQ(runCli(arguments, context), 0);
        EXPECT_EQ(printed, csv);
    }
    const QList<QByteArray> lines = john.split('\n');
    EXPECT_EQ(lines.value(0), "Item,Details\r");
    EXPECT_EQ(lines.value(2), "Name,\"SMITH, JR, John\"\r");
    EXPECT_TRUE(john.contains("Note ,\"First line\r\nsecond line\"\r\n"));
}

// The results as a table: a number and a text for each record line.
TEST_F(CopyAndSaveTest, ResultsAndReportsAreSavedAsShown)
{
    ASSERT_TRUE(load(gedcomText({"0 @I1@ INDI", "1 NAME Ann /Lee/", "0 @F1@ FAM", "1 HUSB @I1@",
                                 "0 @S1@ SOUR", "1 TITL Lee, Ann: letters"})));
    FindLogic find(session);
    find.searchText = QStringLiteral("lee");
    ASSERT_TRUE(find.find());
    const TextTable table = find.resultTable();
    EXPECT_EQ(table, (TextTable{{"Record", "Text"},
                                {"I001", "LEE, Ann"},
                                {"F1", "LEE, Ann & ?"},
                                {"S1", "Lee, Ann: letters"}}));
    EXPECT_EQ(find.resultRows({0, 3, 5}),
              (TextTable{{"F1", "LEE, Ann & ?"}, {"S1", "Lee, Ann: letters"}}))
        << "section lines are none";

    session.showReport(QStringLiteral("Line one\r\nLine two"), QStringLiteral("Find relationship"));
    const TextViewerLogic viewer(session);
    EXPECT_EQ(viewer.suggestedFileName(), QStringLiteral("Find relationship.txt"));
    const QString saved = dir.filePath(QStringLiteral("report.txt"));
    ASSERT_TRUE(viewer.saveAs(saved));
    EXPECT_EQ(test::fileBytes(saved), QByteArray("Line one\nLine two\n"));
    EXPECT_FALSE(viewer.saveAs(dir.filePath(QStringLiteral("no/such/folder/report.txt"))));
}
