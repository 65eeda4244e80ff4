// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/HtmlAncestorsReport.h"
#include "tests/AncestorsFixtures.h"
#include "tests/CliTest.h"
#include "tests/HtmlChecks.h"
#include "tests/TestSupport.h"

#include <QDir>

using namespace tav;
using tav::test::htmlProblems;
using tav::test::mainLines;

class AncestorsReportTest : public CliTest {
protected:
    QByteArray page(int32_t root, int generations)
    {
        return htmlAncestorsReport(session.records, NameStyle{5, 1}, QDate(2026, 11, 21), root,
                                   generations);
    }
};

TEST_F(AncestorsReportTest, PageOfFourGenerationsAsWorkedOut)
{
    ASSERT_TRUE(load(tav::test::fourGenerations()));
    const QByteArray html = page(1, 5);
    EXPECT_EQ(htmlProblems(html), QStringList());
    EXPECT_TRUE(html.contains("<title>Ancestors of Rose Ash</title>"));
    EXPECT_TRUE(html.contains("<h1>Ancestors of Rose Ash</h1>"));
    EXPECT_TRUE(html.contains("<dt>Ancestors</dt><dd>7</dd>"));
    EXPECT_TRUE(html.contains("<dt>Places known</dt><dd>7 of 30</dd>"));
    EXPECT_TRUE(html.contains("From test.ged, 21 November 2026."));
    // Rose and Ann may be living: no years, and no date or place for the
    // marriage of 1985. Ned's of 1948 shows, his death being known.
    EXPECT_EQ(mainLines(html), QStringList({
                                   "Generation 1",
                                   "1 Rose Ash",
                                   "Generation 2: Parents 2 of 2 known",
                                   "Parents of Rose Ash (1)",
                                   "2 Tom William Ash (b.1950  d.2010)",
                                   "3 Ann Birch",
                                   "Generation 3: Grandparents 2 of 4 known",
                                   "Parents of Tom William Ash (2)",
                                   "4 Ned Ash (b.1920  d.1990)",
                                   "5 Mother not recorded",
                                   "  m. 1948",
                                   "Parents of Ann Birch (3)",
                                   "6 Father not recorded",
                                   "7 Eva Cole (b.1925  d.2000)",
                                   "Generation 4: Great-grandparents 2 of 8 known",
                                   "Parents of Ned Ash (4)",
                                   "8 Abe Ash (b.1890  d.1960)",
                                   "9 Ida Dunn (b.1895  d.1970)",
                                   "  m. 12 JUN 1915, Leeds, Yorkshire, England",
                                   "Generation 5: 2nd great-grandparents 1 of 16 known",
                                   "Parents of Abe Ash (8)",
                                   "16 Old Ash (b.1860  d.1930)",
                                   "17 Mother not recorded",
                               }));

    // Over two generations the page ends with the parents; a person without
    // known parents gets a page that says so.
    EXPECT_EQ(mainLines(page(1, 2)).size(), 6);
    const QByteArray alone = page(8, 3);
    EXPECT_EQ(htmlProblems(alone), QStringList());
    EXPECT_TRUE(alone.contains("The file names no parents of Old Ash."));
}

TEST_F(AncestorsReportTest, RepeatedAncestorsLinkBothWaysAndAreWrittenOnce)
{
    ASSERT_TRUE(load(tav::test::cousinsWhoMarried()));
    const QByteArray html = page(9, 5);
    EXPECT_EQ(htmlProblems(html), QStringList());
    const QStringList lines = mainLines(html);
    EXPECT_TRUE(lines.contains("8 Gus Hart (b.1800  d.1870) \u2013 also number 14"));
    EXPECT_TRUE(lines.contains("14 Gus Hart (b.1800  d.1870) \u2013 the same person as number 8, "
                               "whose forebears are written there"));
    EXPECT_TRUE(lines.contains("  m. 1825"));
    EXPECT_EQ(lines.count("Parents of Gus Hart (8)"), 1) << "not again for 14";
    EXPECT_EQ(html.count("href=\"#a8\""), 2) << "from 14, and from his parents' couple";
    EXPECT_EQ(html.count("href=\"#a14\""), 1);
    EXPECT_TRUE(html.contains("<dt>Ancestors</dt><dd>9</dd>"));
    EXPECT_TRUE(html.contains("<dt>Places known</dt><dd>12 of 30</dd>")) << "28 is Old's too";
    EXPECT_TRUE(html.contains("where cousins married"));
}

TEST_F(AncestorsReportTest, TavCliPrintsTheChartAndWritesItsReportAndPicture)
{
    ASSERT_TRUE(load(tav::test::fourGenerations()));
    const QString path = dir.filePath("test.ged");
    CliResult r = runTavCli({"ancestors", path, "1"});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, QStringList({"1\tASH, Rose\t1", "2\tASH, Tom William\t2", "3\tBIRCH, Ann\t3",
                                  "4\tASH, Ned\t4", "7\tCOLE, Eva\t5", "8\tASH, Abe\t6",
                                  "9\tDUNN, Ida\t7", "16\tASH, Old\t8"}));
    EXPECT_TRUE(r.err.isEmpty());
    r = runTavCli({"--surname-posn", "1", "ancestors", path, "2", "--generations", "2"});
    // As the lists show names: the given part as written, its blank kept.
    EXPECT_EQ(r.out, QStringList({"1\tTom William  ASH\t2", "2\tNed  ASH\t4"}));

    ASSERT_TRUE(load(tav::test::cousinsWhoMarried()));
    r = runTavCli({"ancestors", path, "9", "--generations", "10"});
    EXPECT_EQ(r.out.mid(9), QStringList({"14\t= 8", "15\t= 9", "16\tHART, Old\t10"}));

    for (const QStringList& wrong : {QStringList{"ancestors", path, "9", "--generations", "11"},
                                     QStringList{"ancestors", path, "9", "--depth", "3"}}) {
        r = runTavCli(wrong);
        EXPECT_EQ(r.status, 2) << wrong.join(' ').toStdString();
        EXPECT_TRUE(r.out.isEmpty());
    }
    EXPECT_EQ(runTavCli({"ancestors", path, "9", "--generations", "1"}).err.value(0),
              "tav-cli: --generations takes 2 to 10");

    // The report and the picture of the chart.
    QDir::setCurrent(dir.path());
    r = runTavCli({"html", path, "9", "--ancestors"});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, QStringList{dir.filePath("tav-ancestors.htm")});
    EXPECT_TRUE(test::fileBytes(dir.filePath("tav-ancestors.htm"))
                    .contains("<dt>Generations</dt><dd>5</dd>"));

    const QString out = dir.filePath("three.htm");
    r = runTavCli({"html", path, "9", out, "--ancestors", "--generations", "3"});
    EXPECT_EQ(r.out, QStringList{out});
    // Kid's parents and grandparents, all known.
    EXPECT_TRUE(test::fileBytes(out).contains("<dt>Generations</dt><dd>3</dd></div>\n"
                                              "<div><dt>Ancestors</dt><dd>6</dd>"));
    EXPECT_EQ(runTavCli({"html", path, "9", "--generations", "3"}).status, 2);
    EXPECT_EQ(runTavCli({"html", path, "9", out, "other.htm"}).status, 2);

    const QString svg = dir.filePath("chart.svg");
    r = runTavCli({"export", path, "9", svg, "--ancestors", "--generations", "4"});
    EXPECT_EQ(r.status, 0) << r.err.join('\n').toStdString();
    const QByteArray drawn = test::fileBytes(svg);
    EXPECT_TRUE(drawn.contains(">= 8<"));
    EXPECT_FALSE(drawn.contains(">Old<")) << "the fifth generation is not drawn";
    EXPECT_EQ(runTavCli({"export", path, "9", svg, "--ancestors", "--walk", "most"}).status, 2);
    EXPECT_EQ(runTavCli({"export", path, "9", svg, "--generations", "4"}).status, 2);
}
