// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/TestSupport.h"

using namespace tav;
using tav::test::gedcomText;
using namespace Qt::StringLiterals;  // "..."_ba keeps embedded NULs

namespace {
const QString invalidCall = QStringLiteral("Error no:  5 Invalid procedure call or argument");
}  // namespace

class ReaderFaultTest : public tav::test::SessionTest {};

// A link without its "@"s is the reader's fault 5, reported once the load
// ends; the statement is skipped and the list keeps a place with no link.
TEST_F(ReaderFaultTest, CrossReferenceWithoutAtSignsIsReportedAndSkipped)
{
    ASSERT_TRUE(load(gedcomText({"0 @I1@ INDI", "1 FAMS F1", "1 FAMC @F1", "1 FAMS @F1@",
                                 "0 @F1@ FAM", "1 HUSB", "1 WIFE @I1@", "1 CHIL I1@"})));
    const RecordStore& r = session.records;
    EXPECT_EQ(ind(1).spouseFamilyCount, 2) << "the count still grows";
    EXPECT_FALSE(r.spouseFamilyLink(ind(1), 1).written());
    EXPECT_EQ(spouseFamily(1, 2), 1);
    EXPECT_FALSE(ind(1).hasChildFamily());
    EXPECT_EQ(fam(1).childCount, 1);
    EXPECT_FALSE(fam(1).husband.written());
    EXPECT_EQ(fam(1).wife.slot, 1);
    EXPECT_EQ(messages.texts(),
              QStringList{QStringList({invalidCall, invalidCall, invalidCall, invalidCall})
                              .join(QStringLiteral("\r\n"))});
}

// Numbers of records are the digits of their cross-references in 64 bits:
// twelve digits and more never overflow.
TEST_F(ReaderFaultTest, LargeNumbersInCrossReferencesNeverOverflow)
{
    ASSERT_TRUE(
        load(gedcomText({"0 @I99999999999@ INDI", "1 NAME Still /Read/", "1 FAMC @F88888888888@",
                         "0 @F88888888888@ FAM", "1 CHIL @I99999999999@", "0 @N77777777777@ NOTE",
                         "1 CONC kept", "0 @I123456789012345678901234@ INDI"})));
    EXPECT_EQ(ind(1).id, 99999999999);
    EXPECT_EQ(ind(1).name, QStringLiteral("Still /Read/"));
    EXPECT_EQ(session.records.note(1).id, 77777777777);
    EXPECT_EQ(session.records.note(1).text, QStringLiteral("kept"));
    EXPECT_EQ(ind(2).id, INT64_MAX) << "past 64 bits, the largest number";
    EXPECT_TRUE(messages.entries.empty());
}

TEST_F(ReaderFaultTest, CapacityMessagesAppearOncePerTableAndLaterRecordsAreSkipped)
{
    QByteArray text;
    text.reserve(40002 * 40);
    for (int i = 1; i <= 40002; ++i)
        text +=
            "0 @I" + QByteArray::number(i) + "@ INDI\n1 NAME P" + QByteArray::number(i) + " /X/\n";
    for (int s = 1; s <= 4001; ++s)
        text += "0 @S" + QByteArray::number(s) + "@ SOUR\n";
    for (int n = 1; n <= 4001; ++n)
        text += "0 @N" + QByteArray::number(n) + "@ NOTE\n";
    text += "0 @F1@ FAM\n1 HUSB @I40000@\n1 WIFE @I40001@\n";
    ASSERT_TRUE(load(text));
    const RecordStore& r = session.records;
    EXPECT_EQ(r.individualCount(), 40000);
    EXPECT_EQ(r.sourceCount(), 4000);
    EXPECT_EQ(r.noteCount(), 4000);
    EXPECT_EQ(r.familyCount(), 1);
    EXPECT_EQ(ind(40000).name, QStringLiteral("P40000 /X/"))
        << "lines of skipped records go nowhere";
    EXPECT_EQ(fam(1).husband.slot, 40000);
    EXPECT_EQ(fam(1).wife.slot, 0);
    EXPECT_TRUE(r.individualsTruncated);
    EXPECT_FALSE(r.familiesTruncated);
    // One box for the load, a line for each table.
    EXPECT_EQ(messages.texts(),
              QStringList{"Maximum no. of individuals (40000) has been exceeded. Truncating...\r\n"
                          "Maximum no. of sources (4000) has been exceeded. Truncating...\r\n"
                          "Maximum no. of notes (4000) has been exceeded. Truncating..."});
    EXPECT_EQ(messages.entries[0].title, QStringLiteral("Tav"));
    EXPECT_EQ(messages.entries[0].kind, MessageKind::Warning);
}

TEST_F(ReaderFaultTest, BadInputNeverCrashesOrHangs)
{
    QByteArray garbage(1 << 20, '\0');
    uint32_t x = 12345;
    for (char& c : garbage) {
        x = x * 1103515245u + 12345u;
        c = char(x >> 24);
    }
    EXPECT_TRUE(load(garbage, "garbage.ged"));

    EXPECT_TRUE(load("          \n\n\r\r\n   "_ba, "blanks.ged"));
    EXPECT_EQ(session.records.individualCount(), 0);

    EXPECT_TRUE(load("0 @I1@ INDI\n1 NAME A\0B /C/\n\0\0\0\n0 @I2\0@ INDI\n"_ba, "nul.ged"));
    EXPECT_EQ(session.records.individualCount(), 2);
    EXPECT_EQ(ind(1).name, QString::fromUtf8("A\0B /C/", 7));

    EXPECT_TRUE(load("0 @\n0 @I\n0 @S\n0 @N\n0 @F\n1\n2\n1 FAMS\n0 H\n@I1@\n", "short.ged"));
}
