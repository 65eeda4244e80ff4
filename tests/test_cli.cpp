// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GedcomLoading.h"
#include "tests/CliTest.h"

#include <QDir>
#include <QRegularExpression>

using namespace tav;

TEST_F(CliTest, InfoPrintsCaptionCountsAndHeader)
{
    const QString path = writeFile(
        tav::test::gedcomText({"0 HEAD", "1 DATE 5 MAY 2005", "1 CHAR ANSI", "0 @I1@ INDI",
                               "0 @I2@ INDI", "0 @F1@ FAM", "0 @S1@ SOUR", "0 @N1@ NOTE"}),
        "info.ged");
    const CliResult r = runTavCli({QStringLiteral("info"), path});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, QStringList({path + " (2 individuals, 1 families)", "Sources: 1", "Notes: 1",
                                  "Version: not available", "Date: 5 MAY 2005", "Char set: ANSI"}));
    EXPECT_TRUE(r.err.isEmpty());
}

TEST_F(CliTest, LoadMessagesGoToStandardErrorInOrder)
{
    const QString path =
        writeFile(tav::test::gedcomText({"0 HEAD", "0 @I1@ INDI", "1 FAMS F1", "0 @F1@ FAM",
                                         "1 HUSB @I99999999999@", "1 CHIL I1"}),
                  "faults.ged");
    const CliResult r = runTavCli({QStringLiteral("info"), path});
    EXPECT_EQ(r.status, 0);
    // One line a message, though the viewer shows them in one box.
    EXPECT_EQ(r.err, QStringList({"Error no:  5 Invalid procedure call or argument",
                                  "Error no:  5 Invalid procedure call or argument"}));
    EXPECT_EQ(r.out.value(5), QStringLiteral("Char set: Unknown"));
}

TEST_F(CliTest, MissingFilesAndBadUsageHaveTheirOwnExitStatus)
{
    const QString missing = dir.filePath(QStringLiteral("none.ged"));
    const CliResult r = runTavCli({QStringLiteral("info"), missing});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, QStringList{
                         QStringLiteral("Cannot open %1: No such file or directory").arg(missing)});
    EXPECT_TRUE(r.out.isEmpty());

    EXPECT_EQ(runTavCli({}).status, 2);
    EXPECT_EQ(runTavCli({QStringLiteral("info")}).status, 2);
    EXPECT_EQ(runTavCli({QStringLiteral("info"), missing, QStringLiteral("extra")}).status, 2);
}

TEST_F(CliTest, RelateAndDescendantsPrintTheViewersTexts)
{
    const QString path = writeFile(
        tav::test::gedcomText({"0 @I1@ INDI", "1 NAME Ann /smith/", "1 SEX F", "1 FAMS @F1@",
                               "0 @I2@ INDI", "1 NAME Ben /Smith/", "1 SEX M", "1 FAMC @F1@",
                               "0 @F1@ FAM", "1 WIFE @I1@", "1 CHIL @I2@"}),
        "relate.ged");
    CliResult r =
        runTavCli({QStringLiteral("relate"), path, QStringLiteral("1"), QStringLiteral("2")});
    EXPECT_EQ(r.status, 0);
    // The wording is the relationship finder's; here, that it is printed.
    EXPECT_EQ(r.out.value(0), QStringLiteral("Ann /smith/ is mother of Ben /Smith/"));
    r = runTavCli({QStringLiteral("descendants"), path, QStringLiteral("1")});
    EXPECT_EQ(r.out,
              QStringList({"Descendants: 1", "Spouses: 1", "Generations: 1", "Largest family: 1"}));

    EXPECT_EQ(runTavCli({QStringLiteral("relate"), path, QStringLiteral("1")}).status, 2);
}

TEST_F(CliTest, SurnamesFollowTheSettingsFileAndTheOptions)
{
    const QString path =
        writeFile(tav::test::gedcomText({"0 @I1@ INDI", "1 NAME Ann /smith/"}), "names.ged");
    writeFile("Windows Registry Editor Version "
              "5.00\n\n[HKEY_CURRENT_USER\\Software\\Wendrake\\Tav\\General]\n"
              "\"SurnameStyle\"=dword:00000005\n\"SurnamePosn\"=dword:00000001\n",
              "config/Tav.reg");
    const CliResult fromSettings =
        runTavCli({QStringLiteral("show"), path, QStringLiteral("IND"), QStringLiteral("1")});
    const CliResult overridden =
        runTavCli({QStringLiteral("--surname-style"), QStringLiteral("4"), QStringLiteral("show"),
                   path, QStringLiteral("IND"), QStringLiteral("1"),
                   QStringLiteral("--surname-posn"), QStringLiteral("2")});
    const CliResult badOption = runTavCli(
        {QStringLiteral("--surname-style"), QStringLiteral("five"), QStringLiteral("info"), path});
    EXPECT_EQ(fromSettings.out.value(0), QStringLiteral("Ann  Smith (1)"));
    EXPECT_EQ(overridden.out.value(0), QStringLiteral("/SMITH/, Ann (1)"));
    EXPECT_EQ(badOption.status, 2);
    EXPECT_EQ(runTavCli({QStringLiteral("info"), path, QStringLiteral("--surname-posn")}).status,
              2);
}

TEST_F(CliTest, ShowPrintsTheBrowsersGridsOfRealFiles)
{
    TAV_REQUIRE_SHARED_FILE(royal, "royal92.ged");
    // F14: HUSB I57, WIFE I52, CHIL I58 to I61, DIV N (a divorce, whatever its
    // value), MARR 20 NOV 1947 at Westminster Abbey.
    CliResult r =
        runTavCli({QStringLiteral("show"), royal, QStringLiteral("FAM"), QStringLiteral("14")});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(
        r.out,
        QStringList({"Family (14)", "Item\tDetails", "No.\t14", "Husband\tMOUNTBATTEN, Philip\t57",
                     "Wife\tWINDSOR, Elizabeth_II Alexandra Mary\t52",
                     "Child 1\tWINDSOR, Charles Philip Arthur\t58",
                     "Child 2\tWINDSOR, Anne Elizabeth Alice\t59",
                     "Child 3\tWINDSOR, Andrew Albert Christian\t60",
                     "Child 4\tWINDSOR, Edward Anthony Richard\t61", "Marr. date\t20 NOV 1947",
                     "Marr. place\tWestminster,Abbey,London,England", "Divorce?\tYes"}));
    EXPECT_EQ(runTavCli({QStringLiteral("show"), royal, QStringLiteral("ALLINDS")}).out.size(),
              3010 + 2);

    TAV_REQUIRE_SHARED_FILE(pres, "pres2020.ged");
    // N1 is CONC and CONT lines: CONC joins "wa" and "s legally", CONT breaks the line.
    r = runTavCli({QStringLiteral("show"), pres, QStringLiteral("NOT"), QStringLiteral("1")});
    EXPECT_EQ(
        r.out.value(3),
        QStringLiteral("Note\tBill Clinton was born William Jefferson Blythe IV.  His last name "
                       "was legally\\r\\nchanged to Clinton on 12 June 1962 in Garland, Arkansas."
                       "  Won the 1992\\r\\nelection over then president George Bush (votes not "
                       "currently available).\\r\\nHe was inaugurated as the 42nd President of "
                       "the United States\\r\\non 20 January 1993."));

    EXPECT_EQ(runTavCli({QStringLiteral("show"), royal, QStringLiteral("IND")}).status, 2);
    EXPECT_EQ(runTavCli({QStringLiteral("show"), royal, QStringLiteral("PEOPLE")}).status, 2);
}

// Where help.txt is looked for is the working folder's concern; this is the
// command's wiring: the program folder passed on, the topic, the refusals.
TEST_F(CliTest, HelpPrintsATopicOfTheInstalledHelpFile)
{
    const QString before = QDir::currentPath();
    writeFile("***!!!Find\r\nFirst line.\r\nSecond line.\r\n***!!!List\r\n",
              "usr/share/tav/help.txt");
    const QString program = dir.filePath(QStringLiteral("usr/bin"));
    QDir().mkpath(program);
    QDir::setCurrent(dir.path());
    CliResult r = runTavCli({QStringLiteral("help"), QStringLiteral("Find")}, program);
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, QStringList({"", "First line.", "Second line."}));
    const CliResult unknown =
        runTavCli({QStringLiteral("help"), QStringLiteral("Nothing")}, program);
    EXPECT_EQ(unknown.status, 1);
    EXPECT_EQ(unknown.err, QStringList{QStringLiteral("There is no help topic Nothing.")});
    EXPECT_TRUE(unknown.out.isEmpty());
    QDir::setCurrent(before);
}

TEST_F(CliTest, HelpAndVersionOptionsAnswerOnStandardOutput)
{
    CliResult r = runTavCli({QStringLiteral("--help")});
    EXPECT_EQ(r.status, 0);
    EXPECT_TRUE(r.err.isEmpty());
    EXPECT_TRUE(r.out.value(0).startsWith(QStringLiteral("usage: tav-cli ")));
    EXPECT_TRUE(
        r.out.contains(QStringLiteral("  --version                  the version of tav-cli")));
    EXPECT_EQ(runTavCli({QStringLiteral("-h")}).out, r.out);

    r = runTavCli({QStringLiteral("--version")});
    EXPECT_EQ(r.status, 0);
    ASSERT_EQ(r.out.size(), 1);
    EXPECT_TRUE(
        QRegularExpression(QStringLiteral("^tav-cli \\d+\\.\\d+$")).match(r.out[0]).hasMatch())
        << r.out[0].toStdString();

    // A mistake is still a usage error, on standard error.
    r = runTavCli({QStringLiteral("--verbose"), QStringLiteral("x.ged")});
    EXPECT_EQ(r.status, 2);
    EXPECT_TRUE(r.out.isEmpty());
    EXPECT_EQ(r.err.value(0), QStringLiteral("tav-cli: unknown command \"--verbose\""));
    EXPECT_TRUE(r.err.value(1).startsWith(QStringLiteral("usage: tav-cli ")));
}

TEST_F(CliTest, FindAndQueryListTheResultsAsTheFindWindowDoes)
{
    TAV_REQUIRE_SHARED_FILE(royal, "royal92.ged");
    // Philip (I57) is husband in F14 and a child in F28 (CHIL @I57@), so
    // both families hold his name too.
    CliResult r = runTavCli({QStringLiteral("find"), royal, QStringLiteral("philip mount")});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, QStringList({"Results (3 items found)", "-------INDIVIDUALS-------",
                                  "I057. MOUNTBATTEN, Philip", "-------FAMILIES-------",
                                  "F14. MOUNTBATTEN, Philip & WINDSOR, Elizabeth_II Alexandra Mary",
                                  "F28. , Andrew of_Greece & , Alice of_Battenberg"}));
    // Families with more than 12 children: counting CHIL lines gives F39
    // (15), F435 (13) and F464 (15); families lie in slots equal to their numbers.
    r = runTavCli({QStringLiteral("query"), royal, QStringLiteral("4"), QStringLiteral("12")});
    EXPECT_EQ(r.out, QStringList({"Results (3 items found)", "-------FAMILIES-------",
                                  "F39. HANOVER, George_III & , (Sophia) Charlotte",
                                  "F435. , Frederick William_I & HANOVER, Sophia Dorothea",
                                  "F464. , Edward_I (Longshanks) & , Eleanor of_Castile"}));
    EXPECT_EQ(runTavCli({QStringLiteral("query"), royal, QStringLiteral("4")}).status, 2)
        << "N is required";
    EXPECT_EQ(runTavCli({QStringLiteral("find"), royal, QStringLiteral("x"),
                         QStringLiteral("--kinds"), QStringLiteral("Q")})
                  .status,
              2);
}

// John /Smith/ and Mary /Jones/ with twins born "1930" (15 June); a source
// and a note that mention Smith. The lines themselves are the find window's
// and the browser's; here, that every kind is searched, a note's line end is
// printed as an escape, and one result is followed by its record.
TEST_F(CliTest, FindAndQueryPrintEveryKindAndASingleResultsRecord)
{
    const QString path = writeFile(
        tav::test::gedcomText({
            "0 @I1@ INDI\n1 NAME John /Smith/\n1 SEX M\n1 BIRT\n2 DATE 1 JAN 1900\n1 FAMS @F1@",
            "0 @I2@ INDI\n1 NAME Mary /Jones/\n1 SEX F\n1 BIRT\n2 DATE 5 MAY 1905\n1 FAMS @F1@",
            "0 @I3@ INDI\n1 NAME Ann /Smith/\n1 SEX F\n1 BIRT\n2 DATE 1930\n1 FAMC @F1@",
            "0 @I4@ INDI\n1 NAME Tom /Smith/\n1 SEX M\n1 BIRT\n2 DATE 1930\n1 FAMC @F1@",
            "0 @F1@ FAM\n1 HUSB @I1@\n1 WIFE @I2@\n1 CHIL @I3@\n1 CHIL @I4@\n1 MARR\n2 DATE 1928",
            "0 @S1@ SOUR\n1 TITL Parish register of Smithfield",
            "0 @N1@ NOTE\n1 CONT Smith family papers",
        }),
        "smith.ged");
    CliResult r = runTavCli({QStringLiteral("find"), path, QStringLiteral("smith")});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out.value(0), QStringLiteral("Results (6 items found)"));
    EXPECT_EQ(r.out.last(), QStringLiteral("N1. \\r\\nSmith family papers"));
    EXPECT_TRUE(r.err.isEmpty());

    // Born 5 May 1905, no death: 121 on the run's today, so probably dead.
    r = runTavCli({QStringLiteral("find"), path, QStringLiteral("MARY"), QStringLiteral("--kinds"),
                   QStringLiteral("i")});
    EXPECT_EQ(r.out.mid(0, 5), QStringList({"Results (1 item found)", "-------INDIVIDUALS-------",
                                            "I002. JONES, Mary", "", "JONES, Mary (2)"}));
    EXPECT_EQ(r.out.last(), QStringLiteral("Age \t 121 if alive"));
    r = runTavCli({QStringLiteral("find"), path, QStringLiteral("MARY"), QStringLiteral("--case")});
    EXPECT_EQ(r.out, QStringList({"Results (0 item found)", "-------NO RECORDS-------"}));

    // The twins query finds one family, and a query chosen from the list
    // opens the browser on it.
    r = runTavCli({QStringLiteral("query"), path, QStringLiteral("13")});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out.mid(0, 5), QStringList({"Results (1 item found)", "-------FAMILIES-------",
                                            "F1. SMITH, John & JONES, Mary", "", "Family (1)"}));
    EXPECT_EQ(r.out.last(), QStringLiteral("Divorce?\tNo"));
}

// A number that names no record, whatever its size, is decision of the
// file: "There is no individual N in this file."; what is no number where
// one is needed is a usage error. Both exit with status 2 and print nothing.
TEST_F(CliTest, RefusalsSayWhetherTheNumberOrTheArgumentIsWrong)
{
    const QString path =
        writeFile(test::gedcomText({"0 @I1@ INDI", "1 NAME Ann /Bo/", "0 @I2@ INDI", "0 @F1@ FAM",
                                    "1 CHIL @I1@", "1 CHIL @I2@"}),
                  "two.ged");
    const struct {
        QStringList arguments;
        QString firstError;
    } refused[] = {
        {{"show", path, "IND", "99999999999"}, "There is no individual 99999999999 in this file."},
        {{"show", path, "FAM", "-99999999999999999999"},
         "There is no family -99999999999999999999 in this file."},
        {{"relate", path, "1", "+3"}, "There is no individual +3 in this file."},
        {{"relate", path, "1", "-1"}, "There is no individual -1 in this file."},
        {{"descendants", path, "3"}, "There is no individual 3 in this file."},
        {{"descendants", path, "0"}, "There is no individual 0 in this file."},
        {{"html", path, "3"}, "There is no individual 3 in this file."},
        {{"ancestors", path, "3"}, "There is no individual 3 in this file."},
        {{"show", path, "IND", "abc"}, "tav-cli: \"abc\" is not a whole number"},
        {{"query", path, "4", "abc"}, "tav-cli: N must be a whole number, not \"abc\""},
        {{"query", path, "4", ""}, "tav-cli: N must be a whole number, not \"\""},
        {{"query", path, "99999999999"}, "tav-cli: INDEX is 0 to 14"},
        {{"tree", path, "1", "--font-size", "99999999999"},
         "tav-cli: \"99999999999\" is too large a number"},
    };
    for (const auto& c : refused) {
        const CliResult r = runTavCli(c.arguments);
        EXPECT_EQ(r.status, 2) << c.arguments.join(' ').toStdString();
        EXPECT_EQ(r.err.value(0), c.firstError) << c.arguments.join(' ').toStdString();
        EXPECT_TRUE(r.out.isEmpty()) << c.arguments.join(' ').toStdString();
    }
    EXPECT_EQ(runTavCli({"query", path, "4", " 1"}).status, 0) << "N as the window's box takes it";
}

// Control characters in the file reach standard output as \xHH: a NUL, an
// escape that would colour the terminal, a C1 control; TAB, CR and LF keep
// their own escapes in grids and lines, and reports keep line ends.
TEST_F(CliTest, ControlCharactersArePrintedAsEscapes)
{
    const char raw[] = "1 NAME Jo\x01hn\0x\x1B[31m\xC2\x85 /Sm\tith/";
    const QByteArray name(raw, sizeof raw - 1);
    const QString path = writeFile("0 @I1@ INDI\n" + name + "\n1 OCCU a\\b\n", "controls.ged");
    const CliResult shown = runTavCli({"show", path, "IND", "1"});
    ASSERT_EQ(shown.status, 0);
    EXPECT_EQ(shown.out.value(0), QStringLiteral("SM\tITH, Jo\\x01hn\\x00x\\x1B[31m\\x85 (1)"));
    EXPECT_TRUE(
        shown.out.contains(QStringLiteral("Name\tSM\\tITH, Jo\\x01hn\\x00x\\x1B[31m\\x85")));
    EXPECT_TRUE(
        shown.out.filter(QStringLiteral("Occ")).value(0).endsWith(QStringLiteral("\ta\\\\b")))
        << "a backslash in a cell is doubled";
    const CliResult found = runTavCli({"find", path, "Jo"});
    ASSERT_EQ(found.status, 0);
    EXPECT_TRUE(
        found.out.contains(QStringLiteral("I001. SM\\tITH, Jo\\x01hn\\x00x\\x1B[31m\\x85")));
    const CliResult report = runTavCli({"report", path, "GivenNames"});
    for (const CliResult* r : {&shown, &found, &report}) {
        for (const QString& line : r->out)
            EXPECT_FALSE(std::any_of(line.begin(), line.end(), [](QChar c) {
                return c < u' ' && c != u'\t';
            })) << line.toStdString();
    }
}
