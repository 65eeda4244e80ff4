#include "core/Fault.h"
#include "tests/TestSupport.h"

using namespace tav;
using tav::test::gedcomText;

class RecordStoreTest : public tav::test::SessionTest {};

TEST_F(RecordStoreTest, LookupFindsSlotsByCrossReferenceNumber)
{
    ASSERT_TRUE(load(
        gedcomText({"0 @I1@ INDI", "0 @I5@ INDI", "0 @I9@ INDI", "0 @F3@ FAM", "0 @F8@ FAM"})));
    const RecordStore& r = session.records;
    EXPECT_EQ(r.indIndexFromId(5), 2);
    EXPECT_EQ(r.indIndexFromId(1), 1);
    EXPECT_EQ(r.indIndexFromId(9), 3);
    EXPECT_EQ(r.indIndexFromId(4), 0);
    EXPECT_EQ(r.indIndexFromId(10), 0);
    EXPECT_EQ(r.famIndexFromId(8), 2);
    EXPECT_EQ(r.famIndexFromId(3), 1);
    EXPECT_EQ(r.famIndexFromId(4), 0);
}

TEST_F(RecordStoreTest, LookupOverManyRecordsFindsEveryOne)
{
    // Close numbering and numbering far sparser than the table: every
    // record is found and no number in between.
    for (int step : {3, 100003}) {
        QByteArray text;
        for (int i = 1; i <= 1000; ++i)
            text += "0 @I" + QByteArray::number(i * step) + "@ INDI\n";
        ASSERT_TRUE(load(text));
        for (int i = 1; i <= 1000; ++i) {
            ASSERT_EQ(session.records.indIndexFromId(i * step), i);
            ASSERT_EQ(session.records.indIndexFromId(i * step + 1), 0);
        }
        EXPECT_EQ(session.records.indIndexFromId(0), 0);
        EXPECT_EQ(session.records.indIndexFromId(-5), 0);
    }
}

TEST_F(RecordStoreTest, RecordsInAnyOrderAreFoundAndTheFirstOfAnIdWins)
{
    ASSERT_TRUE(
        load(gedcomText({"0 @I9@ INDI", "0 @I2@ INDI", "0 @I5@ INDI", "0 @I1@ INDI", "0 @I7@ INDI",
                         "0 @I5@ INDI", "0 @F4@ FAM", "0 @F0@ FAM", "0 @F4@ FAM"})));
    const RecordStore& r = session.records;
    const int32_t expected[][2] = {{9, 1}, {2, 2}, {5, 3}, {1, 4}, {7, 5}, {3, 0}, {10, 0}};
    for (const auto& [id, slot] : expected)
        EXPECT_EQ(r.indIndexFromId(id), slot) << id;
    EXPECT_EQ(r.famIndexFromId(4), 1) << "the first of two families numbered 4";
    EXPECT_EQ(r.famIndexFromId(0), 2);

    // Sparse numbers, shuffled, with a repeat and negative numbers.
    ASSERT_TRUE(load(gedcomText({"0 @I700000@ INDI", "0 @I-3@ INDI", "0 @I2000000000@ INDI",
                                 "0 @I-3@ INDI", "0 @I0@ INDI", "0 @I1@ INDI"})));
    const int32_t sparse[][2] = {{700000, 1}, {-3, 2}, {2000000000, 3}, {0, 5}, {1, 6}, {2, 0}};
    for (const auto& [id, slot] : sparse)
        EXPECT_EQ(r.indIndexFromId(id), slot) << id;
}

TEST_F(RecordStoreTest, OneRecordAndEmptyTablesAnswerZeroForAnAbsentId)
{
    ASSERT_TRUE(load(gedcomText({"0 @I4@ INDI", "0 @F6@ FAM"})));
    EXPECT_EQ(session.records.indIndexFromId(4), 1);
    EXPECT_EQ(session.records.famIndexFromId(6), 1);
    EXPECT_EQ(session.records.indIndexFromId(3), 0);
    EXPECT_EQ(session.records.famIndexFromId(7), 0);
    ASSERT_TRUE(load(gedcomText({"0 HEAD"})));
    EXPECT_EQ(session.records.indIndexFromId(1), 0);
    EXPECT_EQ(session.records.famIndexFromId(0), 0);
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

TEST_F(RecordStoreTest, FamilyLookupAboveSlot32767Overflows)
{
    QByteArray text = "0 @I1@ INDI\n1 FAMS @F32768@\n1 FAMC @F32767@\n";
    for (int f = 1; f <= 32768; ++f)
        text += "0 @F" + QByteArray::number(f) + "@ FAM\n";
    ASSERT_TRUE(load(text));
    EXPECT_EQ(session.records.familyCount(), 32768);
    EXPECT_EQ(session.records.famIndexFromId(32767), 32767);
    EXPECT_THROW(session.records.famIndexFromId(32768), RuntimeFault);
    // The resolution pass reported the fault and left the slot at 0.
    EXPECT_EQ(messages.texts(), QStringList{QStringLiteral("Error no:  6 Overflow")});
    EXPECT_EQ(ind(1).spouseFamilyIndex[1], 0);
    EXPECT_EQ(ind(1).childFamilyIndex, 32767);
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
