// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GedcomLoading.h"
#include "tests/TestSupport.h"

using namespace tav;
using tav::test::gedcomText;

class ReaderTest : public tav::test::SessionTest {};

TEST_F(ReaderTest, ReadsEveryFieldOfEveryRecordKind)
{
    ASSERT_TRUE(load(gedcomText({"0 HEAD\n1 DATE 2 FEB 2020\n1 GEDC\n2 VERS 5.5.1\n1 CHAR UTF-8",
                                 "0 @I3@ INDI\n1 NAME  John /Smith/  \n1 SEX M \n1 OCCU Miller",
                                 "1 BIRT\n2 DATE 1 JAN 1900\n2 PLAC London",
                                 "1 DEAT\n2 DATE 1970\n2 PLAC Leeds",
                                 "1 FAMS @F2@\n1 FAMS @F9@\n1 FAMC @F7@",
                                 "1 NOTE  First line \n2 CONT second line\n2 CONC , more",
                                 "0 @I4@ INDI\n1 NAME Mary /Jones/\n1 DEAT\n2 PLACE York",
                                 "0 @I5@ INDI\n1 DEAT\n2 PLACE Ripon\n2 PLAC Whitby",
                                 "1 BIRT\n2 PLACE Kendal",
                                 "0 @F2@ FAM\n1 HUSB @I3@\n1 WIFE @I4@\n1 CHIL @I4@\n1 CHIL @I99@",
                                 "1 MARR\n2 DATE 3 MAR 1925\n2 PLAC  Bath \n1 DIV N",
                                 "0 @F7@ FAM",
                                 "0 @S12@ SOUR\n1 TITL Parish register\n1 AUTH Clerk\n1 PUBL 1950",
                                 "1 NOTE see also",
                                 "0 @N0012@ NOTE\n1 CONC Part one\n1 CONT  Part two ",
                                 "0 TRLR"})));

    const RecordStore& r = session.records;
    const Individual& john = ind(1);
    EXPECT_EQ(john.name, QStringLiteral("John /Smith/"));
    EXPECT_EQ(john.sex, QStringLiteral("M"));
    EXPECT_EQ(john.occupation, QStringLiteral("Miller"));
    EXPECT_EQ(john.birthDate, QStringLiteral("1 JAN 1900"));
    EXPECT_EQ(john.birthPlace, QStringLiteral("London"));
    EXPECT_EQ(john.deathDate, QStringLiteral("1970"));
    EXPECT_EQ(john.deathPlace, QStringLiteral("Leeds")) << "the standard PLAC under DEAT";
    EXPECT_EQ(john.spouseFamilyCount, 2);
    EXPECT_EQ(xref(r.spouseFamilyLink(john, 2).xref), QStringLiteral("F9"));
    EXPECT_EQ(spouseFamily(1, 1), 1);
    EXPECT_EQ(spouseFamily(1, 2), 0);
    EXPECT_EQ(childFamily(1), 2);
    EXPECT_EQ(john.note, QStringLiteral(" First line \r\nsecond line, more"));
    EXPECT_EQ(ind(2).deathPlace, QStringLiteral("York")) << "and the spelling PLACE";
    EXPECT_EQ(ind(3).deathPlace, QStringLiteral("Whitby")) << "the later line wins";
    EXPECT_TRUE(ind(3).birthPlace.isEmpty()) << "under BIRT only PLAC is a place";

    const Family& f = fam(1);
    EXPECT_EQ(f.husband.slot, 1);
    EXPECT_EQ(f.wife.slot, 2);
    EXPECT_EQ(f.childCount, 2);
    EXPECT_EQ(child(1, 1), 2);
    EXPECT_EQ(child(1, 2), 0);
    EXPECT_EQ(xref(r.childLink(f, 2).xref), QStringLiteral("I99"));
    EXPECT_EQ(f.marriageDate, QStringLiteral("3 MAR 1925"));
    EXPECT_EQ(f.marriagePlace, QStringLiteral("Bath"));
    EXPECT_TRUE(f.divorced) << "any DIV line marks a divorce";

    EXPECT_EQ(r.source(1).id, 12);
    EXPECT_EQ(r.source(1).title, QStringLiteral("Parish register"));
    EXPECT_EQ(r.source(1).author, QStringLiteral("Clerk"));
    EXPECT_EQ(r.source(1).publication, QStringLiteral("1950"));
    EXPECT_EQ(r.source(1).note, QStringLiteral("see also"));
    EXPECT_EQ(r.note(1).text, QStringLiteral("Part one\r\n Part two "));
    EXPECT_TRUE(messages.entries.empty());
}

// A record is what its tag says, whatever its cross-reference looks like;
// the lines of any other record are its own and are skipped.
TEST_F(ReaderTest, RecordsAreReadByTheirTagAndOthersAreSkippedWhole)
{
    ASSERT_TRUE(load(gedcomText({"0 @SUBM@ SUBM", "1 TITL not a source",
                                 "0 @S1@ SUBM",   "1 NAME Submitter",
                                 "0 @I1@ INDI",   "1 NAME John /Smith/",
                                 "0 @R1@ REPO",   "1 NAME Archive",
                                 "0 @S2@ SOUR",   "1 TITL Book",
                                 "0 @I2@ indi",   "1 NAME Lower /Case/",
                                 "0 @F1@ FAMILY", "1 HUSB @I1@",
                                 "0  _PUBLISH",   "1 TITL Site",
                                 "0 TRLR",        "1 AUTH After the trailer"})));
    const RecordStore& r = session.records;
    EXPECT_EQ(r.sourceCount(), 1) << "SUBM is no source, whatever its id";
    EXPECT_EQ(r.source(1).title, QStringLiteral("Book"));
    EXPECT_TRUE(r.source(1).author.isEmpty());
    EXPECT_EQ(r.individualCount(), 1) << "tags are compared exactly";
    EXPECT_EQ(ind(1).name, QStringLiteral("John /Smith/")) << "a repository's NAME is its own";
    EXPECT_EQ(r.familyCount(), 0);
    EXPECT_TRUE(messages.entries.empty());
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

// The text on a note's level-0 line is its first line; GEDCOM 7's SNOTE
// records read as notes.
TEST_F(ReaderTest, NoteRecordsStartWithTheTextOfTheirLevel0Line)
{
    ASSERT_TRUE(load(gedcomText({"0 @N7@ NOTE Some text", "1 CONT and more", "1 CONC  here",
                                 "0 @N8@ NOTE", "1 CONC x", "1 CONT y", "2 CONT z",
                                 "0 @N9@ SNOTE Shared  ", "0 @N10@ NOTE @N7@"})));
    const RecordStore& r = session.records;
    ASSERT_EQ(r.noteCount(), 4);
    EXPECT_EQ(r.note(1).id, 7);
    EXPECT_EQ(r.note(1).text, QStringLiteral("Some text\r\nand more here"));
    EXPECT_EQ(r.note(2).text, QStringLiteral("x\r\ny"));
    EXPECT_EQ(r.note(3).text, QStringLiteral("Shared  ")) << "as it stands, as CONT values";
    EXPECT_EQ(r.note(4).text, QStringLiteral("@N7@"));
}

// Blanks and tabs before the level are indentation; lines that then do not
// start with a level, or have no blank after it, belong to no record and
// end none.
TEST_F(ReaderTest, IndentedLinesAreReadAndStrayLinesAreSkipped)
{
    ASSERT_TRUE(
        load(gedcomText({"  0 @I1@ INDI", " 1 NAME Indented /Name/", "\t 1 SEX F",
                         "a line of text broken off a note", "", "1\tOCCU\tWeaver", "1 OCCU Tailor",
                         "3 NAME Level /Three/", "x NAME Not /Numeric/", "1.5 NAME Half /Up/",
                         "    2 CONC !", "\t0 @F1@ FAM", "\t\t1 HUSB @I1@"})));
    const Individual& p = ind(1);
    EXPECT_EQ(p.name, QStringLiteral("Indented /Name/"));
    EXPECT_EQ(p.sex, QStringLiteral("F"));
    EXPECT_EQ(p.occupation, QStringLiteral("Tailor")) << "a stray line ends no record";
    EXPECT_EQ(p.note, QStringLiteral("!")) << "1.5 rounds to level 2, and it is no name";
    EXPECT_EQ(fam(1).husband.slot, 1);
    EXPECT_TRUE(messages.entries.empty());
}

TEST_F(ReaderTest, EmptyFileGivesZeroCountsAndCurrentIndividualOne)
{
    ASSERT_TRUE(load(QByteArray(), "empty.ged"));
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
