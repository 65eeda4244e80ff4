// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GedcomLoading.h"
#include "calc/RelationshipFinder.h"
#include "tests/TestSupport.h"

using namespace tav;

namespace {

// Four generations below Adam and Eve, and one outsider:
//   Adam + Eve: Abel, Ada
//   Abel + Wanda: Bob, Beth         Ada + Hal: Carl
//   Bob + Wilma: Dora               Carl + Win: Ed
//   Dora + Hugh: Dan                Ed + Wendy: Eli
//   Dan + Wren: Deb                 Eli + Willa: Emma
const QByteArray family = tav::test::gedcomText({
    "0 @I1@ INDI\n1 NAME Adam /Root/\n1 SEX M\n1 FAMS @F1@",
    "0 @I2@ INDI\n1 NAME Eve /Root/\n1 SEX F\n1 FAMS @F1@",
    "0 @I3@ INDI\n1 NAME Abel /Root/\n1 SEX M\n1 FAMC @F1@\n1 FAMS @F2@",
    "0 @I4@ INDI\n1 NAME Ada /Root/\n1 SEX F\n1 FAMC @F1@\n1 FAMS @F3@",
    "0 @I5@ INDI\n1 NAME Wanda /In/\n1 SEX F\n1 FAMS @F2@",
    "0 @I6@ INDI\n1 NAME Hal /Out/\n1 SEX M\n1 FAMS @F3@",
    "0 @I7@ INDI\n1 NAME Bob /Root/\n1 SEX M\n1 FAMC @F2@\n1 FAMS @F4@",
    "0 @I8@ INDI\n1 NAME Beth /Root/\n1 SEX F\n1 FAMC @F2@",
    "0 @I9@ INDI\n1 NAME Carl /Out/\n1 SEX M\n1 FAMC @F3@\n1 FAMS @F5@",
    "0 @I10@ INDI\n1 NAME Dora /Root/\n1 SEX F\n1 FAMC @F4@\n1 FAMS @F6@",
    "0 @I11@ INDI\n1 NAME Ed /Out/\n1 SEX M\n1 FAMC @F5@\n1 FAMS @F7@",
    "0 @I12@ INDI\n1 NAME Dan /Low/\n1 SEX M\n1 FAMC @F6@\n1 FAMS @F8@",
    "0 @I13@ INDI\n1 NAME Eli /Out/\n1 SEX M\n1 FAMC @F7@\n1 FAMS @F9@",
    "0 @I14@ INDI\n1 NAME Deb /Low/\n1 SEX F\n1 FAMC @F8@",
    "0 @I15@ INDI\n1 NAME Emma /Out/\n1 SEX F\n1 FAMC @F9@",
    "0 @I16@ INDI\n1 NAME Xavier /Alone/\n1 SEX M",
    "0 @F1@ FAM\n1 HUSB @I1@\n1 WIFE @I2@\n1 CHIL @I3@\n1 CHIL @I4@",
    "0 @F2@ FAM\n1 HUSB @I3@\n1 WIFE @I5@\n1 CHIL @I7@\n1 CHIL @I8@",
    "0 @F3@ FAM\n1 HUSB @I6@\n1 WIFE @I4@\n1 CHIL @I9@",
    "0 @F4@ FAM\n1 HUSB @I7@\n1 CHIL @I10@",
    "0 @F5@ FAM\n1 HUSB @I9@\n1 CHIL @I11@",
    "0 @F6@ FAM\n1 WIFE @I10@\n1 CHIL @I12@",
    "0 @F7@ FAM\n1 HUSB @I11@\n1 CHIL @I13@",
    "0 @F8@ FAM\n1 HUSB @I12@\n1 CHIL @I14@",
    "0 @F9@ FAM\n1 HUSB @I13@\n1 CHIL @I15@",
});

enum : int32_t {
    Adam = 1,
    Eve,
    Abel,
    Ada,
    Wanda,
    Hal,
    Bob,
    Beth,
    Carl,
    Dora,
    Ed,
    Dan,
    Eli,
    Deb,
    Emma,
    Xavier
};

const QString trailer = QStringLiteral("\r\n\r\n(Blood relations only)");

QString both(const char* first, const char* second)
{
    return QString::fromUtf8(first) + "\r\n\r\n" + second + trailer;
}

}  // namespace

class RelationshipTest : public tav::test::SessionTest {
protected:
    void SetUp() override { ASSERT_TRUE(load(family)); }
    QString relate(int32_t a, int32_t b)
    {
        return relationshipText(session.records, a, b, session.lineSeparator);
    }
};

TEST_F(RelationshipTest, SpousesSelfParentsAndSiblings)
{
    EXPECT_EQ(relate(Abel, Wanda), both("Abel /Root/ is the husband of Wanda /In/",
                                        "Wanda /In/ is the wife of Abel /Root/"));
    EXPECT_EQ(relate(Wanda, Abel), both("Wanda /In/ is the wife of Abel /Root/",
                                        "Abel /Root/ is the husband of Wanda /In/"));
    EXPECT_EQ(relate(Bob, Bob), QStringLiteral("Bob /Root/ is Bob /Root/") + trailer);
    EXPECT_EQ(relate(Beth, Wanda), both("Beth /Root/ is daughter of Wanda /In/",
                                        "Wanda /In/ is mother of Beth /Root/)"));
    EXPECT_EQ(relate(Bob, Beth), both("Bob /Root/ is the brother of Beth /Root/",
                                      "Beth /Root/ is the sister of Bob /Root/)"));
    EXPECT_EQ(relate(Bob, Xavier), QStringLiteral("No relationship found") + trailer);
}

TEST_F(RelationshipTest, GrandparentsUnclesAndTheirGreats)
{
    EXPECT_EQ(relate(Eve, Bob), both("Eve /Root/ is the grand mother of Bob /Root/",
                                     "Bob /Root/ is the grand son of Eve /Root/"));
    EXPECT_EQ(relate(Dan, Adam), both("Dan /Low/ is the great great grand son of Adam /Root/",
                                      "Adam /Root/ is the great great grand father of Dan /Low/"));
    EXPECT_EQ(relate(Ada, Bob),
              both("Ada /Root/ is aunt of Bob /Root/", "Bob /Root/ is nephew of Ada /Root/"));
    EXPECT_EQ(relate(Abel, Carl),
              both("Abel /Root/ is uncle of Carl /Out/", "Carl /Out/ is nephew of Abel /Root/"));
    EXPECT_EQ(relate(Ed, Abel), both("Ed /Out/ is the grand nephew of Abel /Root/",
                                     "Abel /Root/ is the grand uncle of Ed /Out/"));
    EXPECT_EQ(relate(Ada, Deb), both("Ada /Root/ is the great great grand aunt of Deb /Low/",
                                     "Deb /Low/ is the great great grand niece of Ada /Root/"));
}

TEST_F(RelationshipTest, CousinsAndRemovals)
{
    EXPECT_EQ(relate(Bob, Carl), both("Bob /Root/ is 1st cousin  of Carl /Out/",
                                      "Carl /Out/ is 1st cousin  of Bob /Root/)"));
    EXPECT_EQ(relate(Beth, Ed), both("Beth /Root/ is 1st cousin once removed of Ed /Out/",
                                     "Ed /Out/ is 1st cousin once removed of Beth /Root/)"));
    EXPECT_EQ(relate(Dora, Emma), both("Dora /Root/ is 2nd cousin twice removed of Emma /Out/",
                                       "Emma /Out/ is 2nd cousin twice removed of Dora /Root/)"));
    EXPECT_EQ(relate(Dan, Emma), both("Dan /Low/ is 3rd cousin once removed of Emma /Out/",
                                      "Emma /Out/ is 3rd cousin once removed of Dan /Low/)"));
    EXPECT_EQ(relate(Deb, Emma), both("Deb /Low/ is 4th cousin  of Emma /Out/",
                                      "Emma /Out/ is 4th cousin  of Deb /Low/)"));
}

TEST_F(RelationshipTest, DeepAndWideAncestriesGiveAnAnswerOrTheFault)
{
    // A single line of 60 generations: far past where doubling ancestor
    // numbers would overflow, still worded.
    QByteArray line;
    for (int i = 1; i <= 60; ++i)
        line += "0 @I" + QByteArray::number(i) + "@ INDI\n1 SEX M\n" +
                (i < 60 ? "1 FAMC @F" + QByteArray::number(i) + "@\n" : QByteArray());
    for (int i = 1; i < 60; ++i)
        line +=
            "0 @F" + QByteArray::number(i) + "@ FAM\n1 HUSB @I" + QByteArray::number(i + 1) + "@\n";
    ASSERT_TRUE(load(line));
    EXPECT_TRUE(relate(1, 60).startsWith(QStringLiteral(" is the ") +
                                         QStringLiteral("great ").repeated(57) +
                                         QStringLiteral("grand son of ")));

    // A full pedigree of 14 generations has 16383 distinct ancestors.
    QByteArray tree;
    for (int i = 1; i < 16384; ++i)
        tree += "0 @I" + QByteArray::number(i) + "@ INDI\n" +
                (i < 8192 ? "1 FAMC @F" + QByteArray::number(i) + "@\n" : QByteArray());
    for (int i = 1; i < 8192; ++i)
        tree += "0 @F" + QByteArray::number(i) + "@ FAM\n1 HUSB @I" + QByteArray::number(2 * i) +
                "@\n1 WIFE @I" + QByteArray::number(2 * i + 1) + "@\n";
    ASSERT_TRUE(load(tree));
    EXPECT_EQ(relate(2, 3), QStringLiteral("No relationship found") + trailer)
        << "8191 ancestors each: within the limit";
    EXPECT_FALSE(session.guarded([&] { relate(1, 2); }))
        << "16383 ancestors: past the 15000 the lists hold";
    EXPECT_EQ(messages.texts(), QStringList{QStringLiteral("Error no:  9 Subscript out of range")});
}

TEST_F(RelationshipTest, Royal92AnswersCheckedByHand)
{
    TAV_REQUIRE_SHARED_FILE(path, "royal92.ged");
    ASSERT_TRUE(loadGedcom(session, path));
    // Slots equal the file's numbers here (I1 to I3010 in order).
    // Victoria (I1) -> Edward VII (I4, F1) -> George V (I14, F2) -> George VI
    // (I32, F7) -> Elizabeth II (I52, F12).
    EXPECT_EQ(relate(1, 52), both("Victoria  /Hanover/ is the great great grand mother of "
                                  "Elizabeth_II Alexandra Mary/Windsor/",
                                  "Elizabeth_II Alexandra Mary/Windsor/ is the great great grand "
                                  "daughter of Victoria  /Hanover/"));
    // Margaret (I53, F12) and Philip (I57, F28) share Albert (I2) four
    // generations up on both sides (Margaret: George VI, George V, Edward
    // VII; Philip: Alice of Battenberg I101, Victoria of Hesse I38, Alice
    // I5), and Christian IX (I225): Margaret's great-great-grandfather through
    // Alexandra (I12, F74), Philip's great-grandfather through Andrew (I104,
    // F28) and William George I (I227, F75). Margaret's list meets Albert
    // first; Philip's meets Christian IX first.
    EXPECT_EQ(relate(53, 57),
              both("Margaret Rose /Windsor/ is 3rd cousin  of Philip  /Mountbatten/",
                   "Philip  /Mountbatten/ is 3rd cousin  of Margaret Rose /Windsor/)"));
    EXPECT_EQ(relate(57, 53),
              both("Philip  /Mountbatten/ is 2nd cousin once removed of Margaret Rose /Windsor/",
                   "Margaret Rose /Windsor/ is 2nd cousin once removed of Philip  /Mountbatten/)"));
    // Husband and wife, though also cousins: only the spouse sentences.
    EXPECT_EQ(relate(57, 52),
              both("Philip  /Mountbatten/ is the husband of Elizabeth_II Alexandra Mary/Windsor/",
                   "Elizabeth_II Alexandra Mary/Windsor/ is the wife of Philip  /Mountbatten/"));
}
