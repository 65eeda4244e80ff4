// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Fault.h"
#include "tests/TestSupport.h"

using namespace tav;
using tav::test::gedcomText;

class RecordStoreTest : public tav::test::SessionTest {};

// Of two records with one cross-reference, the first in file order; the
// whole text counts, so I5 and I05 are two records, and the kinds keep apart.
TEST_F(RecordStoreTest, RecordsInAnyOrderAreFoundAndTheFirstOfACrossReferenceWins)
{
    ASSERT_TRUE(load(gedcomText({"0 @I9@ INDI", "0 @I2@ INDI", "0 @I5@ INDI", "0 @I1@ INDI",
                                 "0 @I7@ INDI", "0 @I5@ INDI", "0 @I05@ INDI", "0 @F4@ FAM",
                                 "0 @F0@ FAM", "0 @F4@ FAM", "0 @I9@ FAM"})));
    const RecordStore& r = session.records;
    const std::pair<const char16_t*, int32_t> expected[] = {
        {u"I9", 1},  {u"I2", 2}, {u"I5", 3}, {u"I1", 4}, {u"I7", 5},
        {u"I05", 7}, {u"I3", 0}, {u"5", 0},  {u"F4", 0}, {u"", 0}};
    for (const auto& [xref, slot] : expected)
        EXPECT_EQ(r.indIndexFromId(xref), slot) << QStringView(xref).toString().toStdString();
    EXPECT_EQ(r.famIndexFromId(u"F4"), 1) << "the first of two families F4";
    EXPECT_EQ(r.famIndexFromId(u"F0"), 2);
    EXPECT_EQ(r.famIndexFromId(u"I9"), 4);
    EXPECT_EQ(r.famIndexFromId(u"I7"), 0);
    EXPECT_EQ(r.individual(7).id, 5) << "the number shown is the digits' value";
    EXPECT_EQ(r.xrefText(r.individual(7).xref), QStringLiteral("I05"));
    // A new load forgets the old file's cross-references.
    ASSERT_TRUE(load(gedcomText({"0 HEAD"})));
    EXPECT_EQ(r.indIndexFromId(u"I5"), 0);
    EXPECT_EQ(r.famIndexFromId(u"F0"), 0);
}

TEST_F(RecordStoreTest, EmptySlotsReadAsEmptyRecordsAndSlotsPastCapacityFault)
{
    ASSERT_TRUE(load(gedcomText({"0 @I1@ INDI", "1 NAME A /B/", "0 @S1@ SOUR", "1 TITL T"})));
    const RecordStore& r = session.records;
    EXPECT_EQ(r.individual(1).name, QStringLiteral("A /B/"));
    for (int32_t slot : {0, 2, 4000}) {
        EXPECT_TRUE(r.individual(slot).name.isEmpty());
        EXPECT_EQ(r.family(slot).childCount, 0);
        EXPECT_EQ(r.note(slot).id, 0);
    }
    EXPECT_TRUE(r.source(2).title.isEmpty());
    EXPECT_TRUE(r.individual(40000).name.isEmpty());
    EXPECT_THROW(r.individual(40001), RuntimeFault);
    EXPECT_THROW(r.individual(-1), RuntimeFault);
    EXPECT_THROW(r.family(INT32_MAX), RuntimeFault);
    EXPECT_THROW(r.source(4001), RuntimeFault);
    EXPECT_THROW(r.note(4001), RuntimeFault);
}

// Links name families at any slot: no 16-bit limit.
TEST_F(RecordStoreTest, FamiliesBeyondSlot32767AreLinkedLikeAnyOther)
{
    QByteArray text = "0 @I1@ INDI\n1 FAMS @F32768@\n1 FAMC @F32767@\n";
    for (int f = 1; f <= 32768; ++f)
        text += "0 @F" + QByteArray::number(f) + "@ FAM\n";
    ASSERT_TRUE(load(text));
    EXPECT_EQ(session.records.familyCount(), 32768);
    EXPECT_EQ(session.records.famIndexFromId(u"F32768"), 32768);
    EXPECT_TRUE(messages.entries.empty());
    EXPECT_EQ(session.records.spouseFamilyOf(ind(1), 1), 32768);
    EXPECT_EQ(session.records.childFamilyOf(ind(1)), 32767);
}

TEST_F(RecordStoreTest, ANewLoadKeepsHeaderDateAndCharacterSetButNotVersion)
{
    ASSERT_TRUE(
        load(gedcomText({"0 HEAD", "1 DATE 1 JAN 2000", "1 CHAR ANSI", "1 GEDC", "2 VERS 5.5"})));
    EXPECT_EQ(session.records.gedcomVersion, QStringLiteral("5.5"));
    ASSERT_TRUE(load(gedcomText({"0 HEAD", "1 SOUR X", "0 @I1@ INDI"})));
    EXPECT_EQ(session.records.headerDate, QStringLiteral("1 JAN 2000"));
    EXPECT_EQ(session.records.characterSet, QStringLiteral("ANSI"));
    EXPECT_TRUE(session.records.gedcomVersion.isEmpty());
}
