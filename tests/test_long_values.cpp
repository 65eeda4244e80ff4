// SPDX-License-Identifier: GPL-3.0-or-later
// Values far beyond GEDCOM's 255 characters a line: cut at 1 MB when read,
// shortened where one line shows them, whole where the text is the point.
#include "core/DisplayText.h"
#include "core/GedcomReader.h"
#include "settings/RegistryStore.h"
#include "tests/CliTest.h"
#include "tests/TreeTestSupport.h"
#include "windowlogic/browser/BrowserLogic.h"
#include "windowlogic/find/FindLogic.h"
#include "windowlogic/main/MainWindowLogic.h"
#include "windowlogic/tree/TreeWindowLogic.h"

using namespace tav;

namespace {

// Two people: a father whose surname is `surnameBytes` long and his son,
// and a note of one 3 MB line.
QByteArray longValuesFile(qsizetype surnameBytes)
{
    return "0 HEAD\n1 CHAR UTF-8\n"
           "0 @I1@ INDI\n1 NAME John /" +
           QByteArray(surnameBytes, 'W') +
           "/\n1 FAMS @F1@\n"
           "0 @I2@ INDI\n1 NAME Kid /Wu/\n1 FAMC @F1@\n"
           "0 @F1@ FAM\n1 HUSB @I1@\n1 CHIL @I2@\n"
           "0 @N1@ NOTE " +
           QByteArray(3 * 1024 * 1024, 'n') + "\n0 TRLR\n";
}

}  // namespace

class LongValuesTest : public CliTest {};

// Lines longer than 1 MB are cut there, with one message for the load
// however many there are; what is read of them stays.
TEST_F(LongValuesTest, ALineLongerThanOneMegabyteIsCutWithOneMessage)
{
    ASSERT_TRUE(load(longValuesFile(2 * 1024 * 1024)));
    EXPECT_EQ(messages.texts(),
              QStringList{QStringLiteral("2 lines are longer than 1 MB (the first is line 4); they "
                                         "are cut there.")});
    const QString name = ind(1).name.toString();
    EXPECT_EQ(name.size(), GedcomReader::longestLine - qsizetype(sizeof("1 NAME ") - 1));
    EXPECT_TRUE(name.startsWith(QStringLiteral("John /WWW")));
    EXPECT_EQ(ind(2).name, QStringLiteral("Kid /Wu/")) << "the lines after it read as ever";
    EXPECT_EQ(session.records.note(1).text.size(),
              GedcomReader::longestLine - qsizetype(sizeof("0 @N1@ NOTE ") - 1));

    // A UTF-8 character across the cut is not split into halves.
    QByteArray accented = "0 @I1@ INDI\n1 NAME ";
    accented += QByteArray(GedcomReader::longestLine - accented.size() + 11, 'a');
    accented += "\xC3\xA9\xC3\xA9\n";
    ASSERT_TRUE(load(accented));
    EXPECT_FALSE(ind(1).name.contains(QChar::ReplacementCharacter));
}

// A name of a million characters: every one-line display shows its first
// 497 characters and "...", the grid and the tooltip the whole of it, and
// tav-cli draws the tree saying nothing about fonts (a PNG of the whole
// label would be too wide even at an eighth of its size, and refused).
TEST_F(LongValuesTest, OneLineDisplaysShortenALongNameAndGridsKeepItWhole)
{
    ASSERT_TRUE(load(longValuesFile(1000000)));
    const QString whole = QString(1000000, QLatin1Char('W')) + QStringLiteral(", John");

    EXPECT_EQ(shortenedText(QString(500, QLatin1Char('x'))), QString(500, QLatin1Char('x')));
    EXPECT_EQ(shortenedText(QString(501, QLatin1Char('x'))),
              QString(497, QLatin1Char('x')) + QStringLiteral("..."));
    const QString emoji = QString(496, QLatin1Char('x')) + QStringLiteral("\U0001F600 and more");
    EXPECT_EQ(shortenedText(emoji).size(), 499) << "a surrogate pair is never cut";
    EXPECT_FALSE(hasWordLongerThan(QStringLiteral("Statistics\r\nFile: a.ged")));
    EXPECT_TRUE(hasWordLongerThan(QStringLiteral("1\t") + QString(1001, QLatin1Char('W'))));

    TreeWindowLogic tree(session, [](int) { return std::make_unique<test::StubMeasure>(); });
    session.curInd = 1;
    ASSERT_TRUE(tree.activate());
    const QString label = tree.model().person(1).label;
    EXPECT_EQ(label.size(), longestShownText);
    EXPECT_TRUE(label.endsWith(QStringLiteral("WWW...")));
    EXPECT_LE(tree.caption().size(), QStringLiteral("Family tree - ").size() + longestShownText);
    tree.select(1);
    EXPECT_LE(tree.statusText().size(), longestShownText + 10);
    EXPECT_TRUE(tree.toolTip(1).startsWith(whole + QLatin1Char('\n'))) << "the tooltip is whole";

    BrowserLogic browser(session);
    session.browser.viewKind = ViewKind::Individual;
    ASSERT_TRUE(browser.gridLoad());
    EXPECT_LE(browser.caption().size(), longestShownText + 10);
    EXPECT_EQ(browser.cell(2, 1), whole) << "the grid's Name row is whole";

    FindLogic find(session);
    find.searchText = QStringLiteral("John");
    ASSERT_TRUE(find.find());
    ASSERT_GE(find.lines().size(), 2);
    EXPECT_EQ(find.lines()[1].size(), longestShownText);

    RegistryStore store(settingsFile());
    MainWindowLogic main(session, store, dir.path());
    main.setCurrentIndividualText(QStringLiteral("1"));
    EXPECT_EQ(main.currentIndividualName().size(), longestShownText);

    const CliResult drawn =
        runTavCli({QStringLiteral("export"), dir.filePath(QStringLiteral("test.ged")),
                   QStringLiteral("1"), dir.filePath(QStringLiteral("tree.png"))});
    EXPECT_EQ(drawn.status, 0);
    EXPECT_EQ(drawn.err, QStringList{QStringLiteral("Line 12 is longer than 1 MB; it is cut "
                                                    "there.")});
}
