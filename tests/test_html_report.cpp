// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GedcomLoading.h"
#include "reports/DescendancyOutline.h"
#include "reports/HtmlDescendantsReport.h"
#include "reports/HtmlText.h"
#include "tests/CliTest.h"
#include "tests/HtmlChecks.h"
#include "tests/TestSupport.h"
#include "tests/TreeTestSupport.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

using namespace tav;
using tav::test::gedcomText;
using tav::test::htmlProblems;
using tav::test::lineFile;
using tav::test::mainLines;

namespace {

// Adam and Eve's children Carl and Dora; Carl's son Emil marries Dora's
// daughter Fay, so their sons Gus and Hal, and Gus's son Kai, descend from
// Adam along two lines. Today is 21 Nov 2026: Gus (born 1930), Joy (1935)
// and Kai (1960) may be living and get no years, and Gus and Joy's marriage
// no date or place; Liv's death is not known, so her marriage of 1950 to Hal
// stays private too, while Emil and Fay, both dead, show theirs of 1927.
const QByteArray cousinFamily = gedcomText({
    // clang-format off
    "0 @I1@ INDI", "1 NAME Adam /Hart/", "1 BIRT", "2 DATE 1820", "1 DEAT", "2 DATE 1890",
        "1 FAMS @F1@",
    "0 @I2@ INDI", "1 NAME Eve /Lee/", "1 BIRT", "2 DATE 1825", "1 DEAT", "2 DATE 1900",
        "1 FAMS @F1@",
    "0 @I3@ INDI", "1 NAME Carl /Hart/", "1 BIRT", "2 DATE 1850", "1 DEAT", "2 DATE 1920",
        "1 FAMC @F1@", "1 FAMS @F2@",
    "0 @I4@ INDI", "1 NAME Dora /Hart/", "1 BIRT", "2 DATE 1852", "1 FAMC @F1@", "1 FAMS @F3@",
    "0 @I5@ INDI", "1 NAME Ida \"Kitty\" /O'Neil/", "1 FAMS @F2@",
    "0 @I6@ INDI", "1 NAME Emil /Hart/", "1 BIRT", "2 DATE 1881", "1 DEAT", "2 DATE 1950",
        "1 FAMC @F2@", "1 FAMS @F4@",
    "0 @I7@ INDI", "1 NAME Zo\xc3\xab /\xce\xa9\xce\xbc\xce\xad\xce\xb3\xce\xb1/", "1 FAMS @F3@",
    "0 @I8@ INDI", "1 NAME Fay /Hart/", "1 BIRT", "2 DATE 1883", "1 DEAT", "2 DATE 1960",
        "1 FAMC @F3@", "1 FAMS @F4@",
    "0 @I9@ INDI", "1 NAME Gus /Hart/", "1 BIRT", "2 DATE 1930", "1 FAMC @F4@", "1 FAMS @F5@",
    "0 @I10@ INDI", "1 NAME Hal /Hart/", "1 BIRT", "2 DATE 1927", "1 DEAT", "2 DATE 2000",
        "1 FAMC @F4@", "1 FAMS @F6@",
    "0 @I11@ INDI", "1 NAME Joy /Kim/", "1 BIRT", "2 DATE 1935", "1 FAMS @F5@",
    "0 @I12@ INDI", "1 NAME Kai /Hart/", "1 BIRT", "2 DATE 1960", "1 FAMC @F5@",
    "0 @I13@ INDI", "1 NAME Liv /Ray/", "1 FAMS @F6@",
    "0 @F1@ FAM", "1 HUSB @I1@", "1 WIFE @I2@", "1 MARR", "2 DATE 1845",
        "2 PLAC Bath & Wells,Somerset,", "1 CHIL @I3@", "1 CHIL @I4@",
    "0 @F2@ FAM", "1 HUSB @I3@", "1 WIFE @I5@", "1 MARR", "2 DATE 1880", "2 PLAC <Cork>",
        "1 CHIL @I6@",
    "0 @F3@ FAM", "1 HUSB @I7@", "1 WIFE @I4@", "1 CHIL @I8@",
    "0 @F4@ FAM", "1 HUSB @I6@", "1 WIFE @I8@", "1 MARR", "2 DATE 12 MAY 1927", "1 CHIL @I9@",
        "1 CHIL @I10@",
    "0 @F5@ FAM", "1 HUSB @I9@", "1 WIFE @I11@", "1 MARR", "2 DATE 1955", "2 PLAC Leeds",
        "1 CHIL @I12@",
    "0 @F6@ FAM", "1 HUSB @I10@", "1 WIFE @I13@", "1 MARR", "2 DATE 1950", "2 PLAC York",
    // clang-format on
});

// The heading's numbers: the three counts, and the different people when
// they are fewer than the descendants counted.
QString totals(const QByteArray& html)
{
    static const QRegularExpression number(QStringLiteral(
        "<dt>(Descendants|Spouses|Generations)</dt><dd>(\\d+)</dd>|names (\\d+) different"));
    QStringList found;
    for (const auto& match : number.globalMatch(QString::fromUtf8(html)))
        found << (match.captured(3).isEmpty()
                      ? match.captured(2) + ' ' + match.captured(1).toLower()
                      : "; " + match.captured(3) + " different");
    return found.join(", ").replace(", ;", ";");
}

}  // namespace

TEST(HtmlChecks, FindWhatAnHtmlParserWouldRepairOrAValidatorReport)
{
    const auto page = [](const char* body) {
        return QByteArray("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\" />"
                          "<title>t</title></head><body>") +
               body + "</body></html>";
    };
    EXPECT_EQ(htmlProblems(page("<p id=\"a\"><a href=\"#a\">x</a></p>")), QStringList());
    EXPECT_EQ(htmlProblems(page("<p>a &amp; b <ol><li>x</li></ol></p>")),
              QStringList{"block <ol> in <p>"});
    EXPECT_EQ(htmlProblems(page("<ol><p>x</p></ol><li>y</li>")),
              QStringList({"<p> in <ol>", "<li> in <body>"}));
    EXPECT_EQ(htmlProblems(page("<p id=\"a\">x</p><p id=\"a\"><a href=\"#b\">y</a></p>")),
              QStringList({"id a twice", "link to #b leads nowhere"}));
    const QStringList unclosed = htmlProblems(page("<div/><br>"));
    EXPECT_TRUE(unclosed.contains("self-closed <div>"));
    EXPECT_TRUE(unclosed.last().startsWith("not well-formed")) << unclosed.join('|').toStdString();
}

class HtmlReportTest : public CliTest {
protected:
    QByteArray page(int32_t top, NameStyle style = {5, 1})
    {
        return htmlDescendantsReport(session.records, session.descendantCache, style,
                                     session.today(), top);
    }
};

TEST_F(HtmlReportTest, HandBuiltFamilyAsWorkedOut)
{
    ASSERT_TRUE(load(cousinFamily));
    const QByteArray html = page(1);
    EXPECT_EQ(htmlProblems(html), QStringList());
    EXPECT_EQ(mainLines(html),
              QStringList({
                  "Adam Hart (b.1820  d.1890)",
                  "  m. Eve Lee (b.1825  d.1900), 1845, Bath & Wells, Somerset",
                  "    1 Carl Hart (b.1850  d.1920)",
                  "      m. Ida \"Kitty\" O'neil, 1880, <Cork>",
                  "        2 Emil Hart (b.1881  d.1950)",
                  "          m. Fay Hart (b.1883  d.1960), 12 MAY 1927 \u2013 also a descendant, "
                  "under Dora Hart",
                  "            3 Gus Hart",
                  "              m. Joy Kim",
                  "                4 Kai Hart",
                  "            3 Hal Hart (b.1927  d.2000)",
                  "              m. Liv Ray",
                  "    1 Dora Hart (b.1852)",
                  "      m. Zo\u00eb \u03a9\u03bc\u03ad\u03b3\u03b1",
                  "        2 Fay Hart (b.1883  d.1960)",
                  "          m. Emil Hart (b.1881  d.1950), 12 MAY 1927 \u2013 also a descendant, "
                  "under Carl Hart",
                  "            3 Gus Hart \u2013 written above, under Emil Hart",
                  "            3 Hal Hart (b.1927  d.2000) \u2013 written above, under Emil Hart",
              }));
    // Each person once, with an anchor; every later meeting links to it.
    EXPECT_EQ(html.count("<li class=\"person\" id=\"i9\">"), 1);
    EXPECT_EQ(html.count("href=\"#i9\""), 1) << "Gus, met again under Fay";
    EXPECT_EQ(html.count("href=\"#i8\""), 1) << "Fay, Emil's wife";
    EXPECT_TRUE(html.contains("<title>Descendants of Adam Hart</title>"));
    // Lines of descent: Carl, Dora; Emil; Gus, Hal; Kai; Fay; Gus, Hal; Kai.
    EXPECT_EQ(totals(html), "10 descendants, 9 spouses, 4 generations; 7 different");
    EXPECT_TRUE(html.contains("From test.ged, 21 November 2026."));
}

TEST_F(HtmlReportTest, NamesAreEscapedStayUtf8AndNeedNoCommaWithoutAPart)
{
    ASSERT_TRUE(load(cousinFamily));
    const QByteArray html = page(1, {2, 2});
    EXPECT_TRUE(html.contains("O&#39;NEIL, Ida &quot;Kitty&quot;"));
    EXPECT_TRUE(html.contains("\xce\xa9\xce\x9c\xce\x88\xce\x93\xce\x91, Zo\xc3\xab"))
        << "upper-cased Greek, in UTF-8";
    EXPECT_EQ(htmlEscaped(u"a\u0001b\u009fc\uffff\xd800"),
              QStringLiteral("a\ufffdb\ufffdc\ufffd\ufffd"));
    EXPECT_EQ(htmlEscaped(u"\U0001F333\t<&>\"'"),
              QStringLiteral("\U0001F333\t&lt;&amp;&gt;&quot;&#39;"));

    ASSERT_TRUE(
        load(gedcomText({"0 @I1@ INDI", "1 NAME Ferdinand_II  //", "1 FAMS @F1@", "0 @I2@ INDI",
                         "1 NAME /Smith/ Jr", "1 FAMC @F1@", "0 @I3@ INDI", "1 FAMC @F1@",
                         "0 @F1@ FAM", "1 HUSB @I1@", "1 CHIL @I2@", "1 CHIL @I3@"})));
    EXPECT_EQ(mainLines(page(1, {2, 2})),
              QStringList({"Ferdinand_II", "  Spouse not recorded", "    1 SMITH Jr", "    1 ?"}));
    EXPECT_TRUE(page(1).contains("<h1>Descendants of Ferdinand_II</h1>"));
}

TEST_F(HtmlReportTest, LinesDeeperThanOneHundredLevelsEndInANote)
{
    ASSERT_TRUE(load(lineFile(150)));
    const QByteArray html = page(1);
    EXPECT_EQ(htmlProblems(html), QStringList());
    EXPECT_TRUE(html.contains("The descendants of P1 cannot be counted: a line runs deeper than "
                              "100 levels."));
    const QStringList lines = mainLines(html);
    ASSERT_EQ(lines.size(), 2 * 100 + 1);
    EXPECT_EQ(lines[2 * 99].trimmed(), "99 P100") << "the 100th level is written";
    EXPECT_EQ(lines.back().trimmed(), "The line goes on: its children are more than 100 levels "
                                      "down and are not written.");
    EXPECT_TRUE(messages.texts().isEmpty()) << "no fault reported";

    ASSERT_TRUE(load(lineFile(100)));
    EXPECT_FALSE(page(1).contains("class=\"note\""));
    EXPECT_EQ(totals(page(1)), "99 descendants, 99 spouses, 99 generations");
}

TEST_F(HtmlReportTest, OutlineWritesEachPersonOnceEvenOnACircle)
{
    // Bad links: A's child B is A's parent too, and B's family lists A
    // twice and a child that does not exist.
    ASSERT_TRUE(
        load(gedcomText({"0 @I1@ INDI", "1 FAMS @F1@", "1 FAMC @F2@", "0 @I2@ INDI", "1 FAMS @F2@",
                         "1 FAMC @F1@", "0 @F1@ FAM", "1 HUSB @I1@", "1 CHIL @I2@", "0 @F2@ FAM",
                         "1 HUSB @I2@", "1 CHIL @I1@", "1 CHIL @I1@", "1 CHIL @I77@"})));
    const DescendancyOutline outline(session.records, 1);
    using S = OutlineStep;
    EXPECT_EQ(outline.steps(), (std::vector<S>{{S::Person, 1, 0, 0},
                                               {S::Family, 1, 0, 0},
                                               {S::Person, 2, 1, 0},
                                               {S::Family, 2, 1, 0},
                                               {S::PersonAgain, 1, 2, 0},
                                               {S::PersonAgain, 1, 2, 0},
                                               {S::FamilyEnd, 2, 1, 0},
                                               {S::PersonEnd, 2, 1, 0},
                                               {S::FamilyEnd, 1, 0, 0},
                                               {S::PersonEnd, 1, 0, 0}}));
    EXPECT_EQ(outline.distinctDescendants(), 1);
    EXPECT_EQ(htmlProblems(page(1)), QStringList());
}

TEST_F(HtmlReportTest, EveryChildIsWritten)
{
    QByteArray text = "0 @I1@ INDI\n";
    for (int k = 1; k <= 12; ++k)
        text += "1 FAMS @F" + QByteArray::number(k) + "@\n";
    text += "0 @F1@ FAM\n1 HUSB @I1@\n";
    for (int k = 2; k <= 23; ++k)
        text += "1 CHIL @I" + QByteArray::number(k) + "@\n";
    for (int k = 2; k <= 23; ++k)
        text += "0 @I" + QByteArray::number(k) + "@ INDI\n1 FAMC @F1@\n";
    ASSERT_TRUE(load(text));
    const QStringList lines = mainLines(page(1));
    EXPECT_EQ(lines.size(), 2 + 22) << lines.join('\n').toStdString();
    EXPECT_EQ(lines.count("    1 ?"), 22) << "every child, nameless, in generation 1";
}

TEST_F(HtmlReportTest, Royal92HabsburgsCheckedByHand)
{
    TAV_REQUIRE_SHARED_FILE(path, "royal92.ged");
    ASSERT_TRUE(loadGedcom(session, path));
    // Ferdinand II (I2419): Ferdinand III (F1139), whose children (F1138) are
    // Mariana and Leopold I. Mariana's daughter Margaret Teresa (F947)
    // married her uncle Leopold I (F1140), so their daughter Maria Antonia
    // and her son Joseph Ferdinand (F1144) are reached through both; Leopold's
    // second family (F1141) goes on to Charles VI, Maria Theresa (F1146) and
    // Joseph II (F1145). Eleven different descendants; thirteen lines.
    const int32_t ferdinand = session.records.indIndexFromId(u"I2419");
    const QByteArray html = page(ferdinand);
    EXPECT_EQ(htmlProblems(html), QStringList());
    EXPECT_EQ(mainLines(html),
              QStringList({
                  "Ferdinand_II (b.1578  d.1637)",
                  "  Spouse not recorded",
                  "    1 Ferdinand_III (b.1608  d.1657)",
                  "      m. Maria",
                  "        2 Mariana of_Austria",
                  "          m. Philip_IV (b.1605  d.1665), 1649",
                  "            3 Charles_II (b.1661  d.1700)",
                  "              m. Marie Louise (b.1662  d.1689)",
                  "            3 Margaret Teresa (b.1651  d.1673)",
                  "              m. Leopold_I (b.1640  d.1705) \u2013 also a descendant, under "
                  "Ferdinand_III",
                  "                4 Maria Antonia",
                  "                  m. Maximilian Emmanuel of_Bavaria",
                  "                    5 Joseph Ferdinand (d.1699)",
                  "        2 Leopold_I (b.1640  d.1705)",
                  "          m. Margaret Teresa (b.1651  d.1673) \u2013 also a descendant, under "
                  "Mariana of_Austria",
                  "            3 Maria Antonia \u2013 written above, under Margaret Teresa",
                  "          m. Eleanor of_Neuburg",
                  "            3 Joseph_I (b.1678  d.1711)",
                  "            3 Charles_VI (b.1685  d.1740)",
                  "              Spouse not recorded",
                  "                4 Maria Theresa (d.1780)",
                  "                  m. Francis_I Stephen (b.1708  d.1765), 1736",
                  "                    5 Joseph_II (b.1741  d.1790)",
              }));
    EXPECT_EQ(totals(html), "13 descendants, 11 spouses, 5 generations; 11 different");
}

TEST_F(HtmlReportTest, TavCliWritesThePageAndPrintsItsPath)
{
    ASSERT_TRUE(load(cousinFamily));
    const QString gedcom = dir.filePath("test.ged");
    const QString out = dir.filePath("out.htm");
    auto printed = runTavCli({"--surname-posn", "1", "html", gedcom, "4", out});
    EXPECT_EQ(printed.status, 0);
    EXPECT_EQ(printed.out, QStringList{out});
    EXPECT_TRUE(test::fileBytes(out).contains("<h1>Descendants of Dora HART</h1>"));

    // Without OUT: tav.htm in the current directory, which tav-cli keeps.
    QDir::setCurrent(dir.path());
    printed = runTavCli({"html", gedcom, "1"});
    EXPECT_EQ(printed.status, 0);
    EXPECT_EQ(printed.out, QStringList{dir.filePath("tav.htm")});
    EXPECT_TRUE(QFileInfo(dir.filePath("tav.htm")).size() > 0);

    const QString unwritable = dir.filePath("missing/out.htm");
    printed = runTavCli({"html", gedcom, "1", unwritable});
    EXPECT_EQ(printed.status, 1);
    EXPECT_TRUE(printed.out.isEmpty());
    ASSERT_EQ(printed.err.size(), 1);
    EXPECT_TRUE(printed.err[0].startsWith("Cannot save " + unwritable + ": "));
}
