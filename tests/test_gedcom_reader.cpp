#include "app/GedcomLoading.h"
#include "tests/TestSupport.h"

using namespace tav;
using tav::test::gedcomText;

class ReaderTest : public tav::test::SessionTest {};

TEST_F(ReaderTest, ReadsEveryFieldOfEveryRecordKind)
{
    ASSERT_TRUE(load(gedcomText({"0 HEAD",
                                 "1 DATE 2 FEB 2020",
                                 "1 GEDC",
                                 "2 VERS 5.5.1",
                                 "1 CHAR UTF-8",
                                 "0 @I3@ INDI",
                                 "1 NAME  John /Smith/  ",
                                 "1 SEX M ",
                                 "1 OCCU Miller",
                                 "1 BIRT",
                                 "2 DATE 1 JAN 1900",
                                 "2 PLAC London",
                                 "1 DEAT",
                                 "2 DATE 1970",
                                 "2 PLAC Leeds",
                                 "1 FAMS @F2@",
                                 "1 FAMS @F9@",
                                 "1 FAMC @F7@",
                                 "1 NOTE  First line ",
                                 "2 CONT second line",
                                 "2 CONC , more",
                                 "0 @I4@ INDI",
                                 "1 NAME Mary /Jones/",
                                 "1 DEAT",
                                 "2 PLACE York",
                                 "0 @I5@ INDI",
                                 "1 DEAT",
                                 "2 PLACE Ripon",
                                 "2 PLAC Whitby",
                                 "1 BIRT",
                                 "2 PLACE Kendal",
                                 "0 @F2@ FAM",
                                 "1 HUSB @I3@",
                                 "1 WIFE @I4@",
                                 "1 CHIL @I4@",
                                 "1 CHIL @I99@",
                                 "1 MARR",
                                 "2 DATE 3 MAR 1925",
                                 "2 PLAC  Bath ",
                                 "1 DIV N",
                                 "0 @F7@ FAM",
                                 "0 @S12@ SOUR",
                                 "1 TITL Parish register",
                                 "1 AUTH Clerk",
                                 "1 PUBL 1950",
                                 "1 NOTE see also",
                                 "0 @N0012@ NOTE ignored text",
                                 "1 CONC Part one",
                                 "1 CONT  Part two ",
                                 "0 TRLR"})));

    const RecordStore& r = session.records;
    EXPECT_EQ(r.headerDate, QStringLiteral("2 FEB 2020"));
    EXPECT_EQ(r.gedcomVersion, QStringLiteral("5.5.1"));
    EXPECT_EQ(r.characterSet, QStringLiteral("UTF-8"));

    const Individual& john = ind(1);
    EXPECT_EQ(john.id, 3);
    EXPECT_EQ(john.name, QStringLiteral("John /Smith/"));
    EXPECT_EQ(john.sex, QStringLiteral("M"));
    EXPECT_EQ(john.occupation, QStringLiteral("Miller"));
    EXPECT_EQ(john.birthDate, QStringLiteral("1 JAN 1900"));
    EXPECT_EQ(john.birthPlace, QStringLiteral("London"));
    EXPECT_EQ(john.deathDate, QStringLiteral("1970"));
    EXPECT_EQ(john.deathPlace, QStringLiteral("Leeds")) << "the standard PLAC under DEAT";
    EXPECT_EQ(john.spouseFamilyCount, 2);
    EXPECT_EQ(john.spouseFamilyId[2], 9);
    EXPECT_EQ(john.spouseFamilyIndex[1], 1);
    EXPECT_EQ(john.spouseFamilyIndex[2], 0);
    EXPECT_EQ(john.childFamilyIndex, 2);
    EXPECT_EQ(john.note, QStringLiteral(" First line \r\nsecond line, more"));
    EXPECT_EQ(ind(2).deathPlace, QStringLiteral("York")) << "and the spelling PLACE";
    EXPECT_EQ(ind(3).deathPlace, QStringLiteral("Whitby")) << "the later line wins";
    EXPECT_TRUE(ind(3).birthPlace.isEmpty()) << "under BIRT only PLAC is a place";

    const Family& f = fam(1);
    EXPECT_EQ(f.husbandIndex, 1);
    EXPECT_EQ(f.wifeIndex, 2);
    EXPECT_EQ(f.childCount, 2);
    EXPECT_EQ(f.childIndex[1], 2);
    EXPECT_EQ(f.childIndex[2], 0);
    EXPECT_EQ(f.marriageDate, QStringLiteral("3 MAR 1925"));
    EXPECT_EQ(f.marriagePlace, QStringLiteral("Bath"));
    EXPECT_TRUE(f.divorced) << "any DIV line marks a divorce";

    EXPECT_EQ(r.source(1).id, 12);
    EXPECT_EQ(r.source(1).title, QStringLiteral("Parish register"));
    EXPECT_EQ(r.source(1).author, QStringLiteral("Clerk"));
    EXPECT_EQ(r.source(1).publication, QStringLiteral("1950"));
    EXPECT_EQ(r.source(1).note, QStringLiteral("see also"));
    EXPECT_EQ(r.note(1).id, 12);
    EXPECT_EQ(r.note(1).text, QStringLiteral("Part one\r\n Part two "));
    EXPECT_TRUE(messages.entries.empty());
}

TEST_F(ReaderTest, SubmittersAreSkippedButSourceNumbersAreRead)
{
    ASSERT_TRUE(load(gedcomText({"0 @SUBM@ SUBM", "1 TITL not a source", "0 @S1@ SOUR",
                                 "1 TITL Real", "0 @SUB1@ SUBM", "1 TITL skipped too"})));
    EXPECT_EQ(session.records.sourceCount(), 1);
    EXPECT_EQ(session.records.source(1).id, 1);
    EXPECT_EQ(session.records.source(1).title, QStringLiteral("Real"));
}

TEST_F(ReaderTest, UnknownRecordsCarryOverOntoTheRecordBeforeThem)
{
    ASSERT_TRUE(load(gedcomText({"0 @I1@ INDI", "1 NAME John /Smith/", "0 @R1@ REPO",
                                 "1 NAME Archive", "0 @S2@ SOUR", "1 TITL Book", "0 @M1@ OBJE",
                                 "1 TITL Photo", "0 TRLR", "1 AUTH After the trailer"})));
    EXPECT_EQ(ind(1).name, QStringLiteral("Archive"));
    EXPECT_EQ(session.records.source(1).title, QStringLiteral("Photo"));
    EXPECT_EQ(session.records.source(1).author, QStringLiteral("After the trailer"));
}

TEST_F(ReaderTest, ContinuationsUnderAnyOtherTagOfAnIndividualExtendTheNote)
{
    ASSERT_TRUE(
        load(gedcomText({"0 @I1@ INDI", "1 NAME A /B/", "2 CONC abc", "1 BIRT", "2 CONT not a note",
                         "1 OCCU Smith", "2 CONT xyz", "1 _CUSTOM", "2 CONC !"})));
    EXPECT_EQ(ind(1).note, QStringLiteral("abc\r\nxyz!"));
    EXPECT_EQ(ind(1).name, QStringLiteral("A /B/"));
}

TEST_F(ReaderTest, LevelOneTagIsKeptAcrossRecords)
{
    // The last level-1 tag of one record still routes a stray level-2 line of the next.
    ASSERT_TRUE(
        load(gedcomText({"0 @I1@ INDI", "1 BIRT", "2 DATE 1800", "0 @I2@ INDI", "2 DATE 1801"})));
    EXPECT_EQ(ind(2).birthDate, QStringLiteral("1801"));
}

TEST_F(ReaderTest, NoteRecordsKeepOnlyTheirContinuationLines)
{
    ASSERT_TRUE(load(
        gedcomText({"0 @N7@ NOTE Some text", "0 @N8@ NOTE", "1 CONC x", "1 CONT y", "2 CONT z"})));
    EXPECT_EQ(session.records.note(1).id, 7);
    EXPECT_TRUE(session.records.note(1).text.isEmpty());
    EXPECT_EQ(session.records.note(2).text, QStringLiteral("x\r\ny"));
}

TEST_F(ReaderTest, IndentedOrTabSeparatedLinesAreMisreadSilently)
{
    ASSERT_TRUE(
        load(gedcomText({"0 @I1@ INDI", " 1 NAME Indented /Name/", "1\tSEX\tF", "1 OCCU\tWeaver",
                         "3 NAME Level /Three/", "x NAME Not /Numeric/", "1.5 NAME Half /Up/"})));
    const Individual& p = ind(1);
    EXPECT_TRUE(p.sex.isEmpty());
    EXPECT_EQ(p.occupation, QStringLiteral(""));  // the tag read is "OCCU\tWeaver"
    EXPECT_EQ(p.name, QString()) << "level 3, non-numeric and 1.5 (rounds to 2) lines set no name";
    EXPECT_TRUE(messages.entries.empty());
}

TEST_F(ReaderTest, EmptyFileGivesZeroCountsAndCurrentIndividualOne)
{
    ASSERT_TRUE(load(QByteArray(), "empty.ged"));
    EXPECT_EQ(session.records.individualCount(), 0);
    EXPECT_EQ(session.records.familyCount(), 0);
    EXPECT_EQ(session.curInd, 1);
    EXPECT_EQ(loadedCaption(session.records), dir.filePath(QStringLiteral("empty.ged")) +
                                                  QStringLiteral(" (0 individuals, 0 families)"));
}

TEST_F(ReaderTest, ProgressRunsToFileLengthPlus200OnEvery80thLevel0Line)
{
    QByteArray text;
    for (int i = 1; i <= 200; ++i)
        text += "0 @I" + QByteArray::number(i) + "@ INDI\n1 NAME X /Y/\n";
    const QString path = writeFile(text, "progress.ged");
    qint64 maximum = -1;
    std::vector<qint64> values;
    bool finished = false;
    LoadProgress progress{[&](qint64 m) { maximum = m; }, [&](qint64 v) { values.push_back(v); },
                          [&] { finished = true; }};
    ASSERT_TRUE(loadGedcom(session, path, progress));
    EXPECT_EQ(maximum, text.size() + 200);
    // The bar moves to the read position just after level-0 lines 80 and 160.
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(values[0], text.indexOf("0 @I80@") + qint64(strlen("0 @I80@ INDI\n")));
    EXPECT_EQ(values[1], text.indexOf("0 @I160@") + qint64(strlen("0 @I160@ INDI\n")));
    EXPECT_TRUE(finished);
}

TEST_F(ReaderTest, AFileThatCannotBeReadLeavesTheSessionAsItWas)
{
    ASSERT_TRUE(load(gedcomText({"0 @I1@ INDI", "1 NAME Kept /Here/"}), "kept.ged"));
    const QString missing = dir.filePath(QStringLiteral("missing.ged"));
    const Outcome noFile = loadGedcom(session, missing);
    EXPECT_FALSE(noFile);
    EXPECT_EQ(noFile.message(),
              QStringLiteral("Cannot open %1: No such file or directory").arg(missing));
    EXPECT_EQ(loadGedcom(session, dir.path()).message(),
              QStringLiteral("Cannot open %1: Is a directory").arg(dir.path()));
    EXPECT_EQ(ind(1).name, QStringLiteral("Kept /Here/"));
    EXPECT_TRUE(session.records.fileName.endsWith(QStringLiteral("kept.ged")));
}
