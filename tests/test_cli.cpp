#include "cli/CliApp.h"
#include "tests/TestSupport.h"

#include <QDir>
#include <QFile>

using namespace tav;

namespace {

struct CliResult {
    int status;
    QStringList out;
    QStringList err;
};

CliResult runTavCli(const QStringList& arguments)
{
    CliResult result{0, {}, {}};
    const CliOutput output{[&](const QString& line) { result.out << line; },
                           [&](const QString& line) { result.err << line; }};
    result.status = runCli(arguments, output);
    return result;
}

}  // namespace

class CliTest : public tav::test::SessionTest {};

TEST_F(CliTest, InfoPrintsCaptionCountsAndHeader)
{
    const QString path = writeFile(tav::test::gedcomText({"0 HEAD", "1 DATE 5 MAY 2005", "1 CHAR ANSI", "0 @I1@ INDI",
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
        writeFile(tav::test::gedcomText({"0 HEAD", "0 @I1@ INDI", "1 FAMS F1", "0 @F1@ FAM", "1 HUSB @I99999999999@"}),
                  "faults.ged");
    const CliResult r = runTavCli({QStringLiteral("info"), path});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.err, QStringList({"Error no:  5 Invalid procedure call or argument", "Error no:  6 Overflow"}));
    EXPECT_EQ(r.out.value(3), QStringLiteral("Version: not available"));
    EXPECT_EQ(r.out.value(5), QStringLiteral("Char set: Unknown"));
}

TEST_F(CliTest, MissingFilesAndBadUsageHaveTheirOwnExitStatus)
{
    const QString missing = dir.filePath(QStringLiteral("none.ged"));
    CliResult r = runTavCli({QStringLiteral("info"), missing});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, QStringList{QStringLiteral("Cannot open %1: No such file or directory").arg(missing)});
    EXPECT_TRUE(r.out.isEmpty());

    EXPECT_EQ(runTavCli({}).status, 2);
    EXPECT_EQ(runTavCli({QStringLiteral("info")}).status, 2);
    r = runTavCli({QStringLiteral("nonsense"), missing});
    EXPECT_EQ(r.status, 2);
    EXPECT_TRUE(r.err.first().contains(QStringLiteral("unknown command")));
    EXPECT_EQ(runTavCli({QStringLiteral("info"), missing, QStringLiteral("extra")}).status, 2);
}

TEST_F(CliTest, RelateAndDescendantsPrintTheViewersTexts)
{
    const QString path = writeFile(tav::test::gedcomText({"0 @I1@ INDI", "1 NAME Ann /smith/", "1 SEX F", "1 FAMS @F1@",
                                                           "0 @I2@ INDI", "1 NAME Ben /Smith/", "1 SEX M", "1 FAMC @F1@",
                                                           "0 @F1@ FAM", "1 WIFE @I1@", "1 CHIL @I2@"}),
                                   "relate.ged");
    CliResult r = runTavCli({QStringLiteral("relate"), path, QStringLiteral("1"), QStringLiteral("2")});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, QStringList({"Ann /smith/ is mother of Ben /Smith/", "", "Ben /Smith/ is son of Ann /smith/)", "",
                                  "(Blood relations only)"}));
    r = runTavCli({QStringLiteral("descendants"), path, QStringLiteral("1")});
    EXPECT_EQ(r.out, QStringList({"Descendants: 1", "Spouses: 1", "Generations: 1", "Largest family: 1"}));

    // A slot past the table's capacity is the viewer's fault message and status 3.
    r = runTavCli({QStringLiteral("relate"), path, QStringLiteral("1"), QStringLiteral("40001")});
    EXPECT_EQ(r.status, 3);
    EXPECT_EQ(r.err, QStringList{QStringLiteral("Error no:  9 Subscript out of range")});
    EXPECT_TRUE(r.out.isEmpty());
    EXPECT_EQ(runTavCli({QStringLiteral("descendants"), path, QStringLiteral("x")}).status, 2);
    EXPECT_EQ(runTavCli({QStringLiteral("relate"), path, QStringLiteral("1")}).status, 2);
}

TEST_F(CliTest, SurnameOptionsStandAnywhere)
{
    const QString path = writeFile(tav::test::gedcomText({"0 @I1@ INDI", "1 NAME Ann /smith/"}), "names.ged");
    // The relationship text uses names as stored; the options must still parse.
    const CliResult r = runTavCli({QStringLiteral("--surname-style"), QStringLiteral("5"), QStringLiteral("relate"), path,
                                   QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("--surname-posn"),
                                   QStringLiteral("1")});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out.first(), QStringLiteral("Ann /smith/ is Ann /smith/"));
    EXPECT_EQ(runTavCli({QStringLiteral("--surname-style"), QStringLiteral("five"), QStringLiteral("info"), path}).status, 2);
    EXPECT_EQ(runTavCli({QStringLiteral("info"), path, QStringLiteral("--surname-posn")}).status, 2);
}

TEST_F(CliTest, HelpPrintsATopicOfTheHelpFileInTheCurrentFolder)
{
    const QString before = QDir::currentPath();
    writeFile("***!!!Find\r\nFirst line.\r\nSecond line.\r\n***!!!List\r\n", "help.txt");
    QDir::setCurrent(dir.path());
    CliResult r = runTavCli({QStringLiteral("help"), QStringLiteral("Find")});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, QStringList({"", "First line.", "Second line."}));
    EXPECT_EQ(runTavCli({QStringLiteral("help"), QStringLiteral("Nothing")}).out, QStringList{QString()});
    QFile::remove(QStringLiteral("help.txt"));
    r = runTavCli({QStringLiteral("help"), QStringLiteral("Find")});
    QDir::setCurrent(before);
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(r.err.value(0).startsWith(QStringLiteral("Cannot open help.txt")));
}
