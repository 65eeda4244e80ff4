// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/TestSupport.h"
#include "windowlogic/find/FindLogic.h"

using namespace tav;
using tav::test::gedcomText;

namespace {

// Ada (1800-1890) and Bob (1805-1895) both die at 90; Cy dies at 1, Di in
// her first year; Ed's dates are approximate. Jo (b. 10 JUN 1820) marries
// Fay (b. 1850) on 15 JUN 1870, the day their first child is born, then
// twins born "1875"; later he marries Kay (b. 1 JAN 1830), childless, on
// 1 JAN 1850. Gus and Lu have twins born the same day. Ivy and Ola share the
// earliest birth; Hal is the latest born.
const QByteArray family = gedcomText({
    "0 @I1@ INDI\n1 NAME Ada /Old/\n1 SEX F\n1 BIRT\n2 DATE 1 JAN 1800\n1 DEAT\n"
    "2 DATE 1 JAN 1890\n1 FAMS @F1@",
    "0 @I2@ INDI\n1 NAME Bob /Old/\n1 SEX M\n1 BIRT\n2 DATE 1 JAN 1805\n1 DEAT\n"
    "2 DATE 1 JAN 1895\n1 FAMS @F1@",
    "0 @I3@ INDI\n1 NAME Cy /Old/\n1 BIRT\n2 DATE 5 MAY 1830\n1 DEAT\n2 DATE 6 MAY 1831\n"
    "1 FAMC @F1@",
    "0 @I4@ INDI\n1 NAME Di /Baby/\n1 BIRT\n2 DATE 1 JAN 1840\n1 DEAT\n2 DATE 1 JUN 1840",
    "0 @I5@ INDI\n1 NAME Ed /Abt/\n1 BIRT\n2 DATE ABT 1850\n1 DEAT\n2 DATE 1900",
    "0 @I6@ INDI\n1 NAME Fay /Wed/\n1 SEX F\n1 BIRT\n2 DATE 1850\n1 FAMS @F2@",
    "0 @I7@ INDI\n1 NAME Gus /Twin/\n1 SEX M\n1 BIRT\n2 DATE 1850\n1 FAMS @F4@",
    "0 @I8@ INDI\n1 NAME Hal /Late/\n1 BIRT\n2 DATE 1 DEC 1990",
    "0 @I9@ INDI\n1 NAME Ivy /Early/\n1 BIRT\n2 DATE 1 JAN 1700",
    "0 @I10@ INDI\n1 NAME Jo /Wed/\n1 SEX M\n1 BIRT\n2 DATE 10 JUN 1820\n1 FAMS @F2@\n"
    "1 FAMS @F3@",
    "0 @I11@ INDI\n1 NAME Kit /Wed/\n1 BIRT\n2 DATE 15 JUN 1870\n1 FAMC @F2@",
    "0 @I12@ INDI\n1 NAME Lin /Wed/\n1 BIRT\n2 DATE 1875\n1 FAMC @F2@",
    "0 @I13@ INDI\n1 NAME Max /Wed/\n1 BIRT\n2 DATE 1875\n1 FAMC @F2@",
    "0 @I14@ INDI\n1 NAME Kay /Second/\n1 SEX F\n1 BIRT\n2 DATE 1 JAN 1830\n1 FAMS @F3@",
    "0 @I15@ INDI\n1 NAME Lu /Twin/\n1 SEX F\n1 BIRT\n2 DATE 1852\n1 FAMS @F4@",
    "0 @I16@ INDI\n1 NAME Ned /Twin/\n1 BIRT\n2 DATE 2 FEB 1880\n1 FAMC @F4@",
    "0 @I17@ INDI\n1 NAME Oz /Twin/\n1 BIRT\n2 DATE 2 FEB 1880\n1 FAMC @F4@",
    "0 @I18@ INDI\n1 NAME Ola /Early/\n1 BIRT\n2 DATE 1 JAN 1700",
    "0 @F1@ FAM\n1 HUSB @I2@\n1 WIFE @I1@\n1 CHIL @I3@\n1 MARR\n2 DATE 1 JAN 1830",
    "0 @F2@ FAM\n1 HUSB @I10@\n1 WIFE @I6@\n1 CHIL @I11@\n1 CHIL @I12@\n1 CHIL @I13@\n"
    "1 MARR\n2 DATE 15 JUN 1870",
    "0 @F3@ FAM\n1 HUSB @I10@\n1 WIFE @I14@\n1 MARR\n2 DATE 1 JAN 1850",
    "0 @F4@ FAM\n1 HUSB @I7@\n1 WIFE @I15@\n1 CHIL @I16@\n1 CHIL @I17@",
});

}  // namespace

class QueryTest : public tav::test::SessionTest {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(load(family));
        QObject::connect(&session, &Session::windowRequested,
                         [this](const WindowRequest& w) { shown.push_back(w.window); });
    }

    // Runs a query as the window does and gives the slots found.
    std::vector<int32_t> query(int index, const char* n = nullptr)
    {
        find.queryChosen(queryAt(index));
        if (n) {
            find.numberText = QString::fromLatin1(n);
            find.go();
        }
        const FindResults& r = session.findResults;
        const FindResults::Table& t =
            r[r[FindResults::Families].count ? FindResults::Families : FindResults::Individuals];
        return std::vector<int32_t>(t.entries.begin() + 1, t.entries.begin() + 1 + t.count);
    }

    using Slots = std::vector<int32_t>;
    FindLogic find{session};
    std::vector<AppWindow> shown;
};

TEST_F(QueryTest, BirthsAndDeaths)
{
    EXPECT_EQ(query(0), (Slots{9, 18})) << "earliest born, ties in file order";
    EXPECT_EQ(session.curInd, 18) << "the last candidate stays current";
    EXPECT_TRUE(shown.empty());
    EXPECT_EQ(query(1), Slots{8});
    EXPECT_EQ(shown, std::vector<AppWindow>{AppWindow::List})
        << "a single result opens the browser";
    EXPECT_EQ(query(2), (Slots{1, 2}));
    EXPECT_EQ(query(3), Slots{3}) << "a death in the first year never counts";
    EXPECT_EQ(session.findResults.selected, 1);
}

TEST_F(QueryTest, CountsAndDescendants)
{
    EXPECT_EQ(query(4, "2"), Slots{2});
    EXPECT_EQ(query(5, "1"), Slots{3}) << "N = 1: the childless families";
    EXPECT_EQ(query(6, "1"), Slots{10});
    EXPECT_TRUE(shown.empty()) << "queries run by Go open no browser, even on one result";
    EXPECT_EQ(query(7), (Slots{6, 10})) << "Fay and Jo both have three";
    EXPECT_EQ(query(8, "1"), (Slots{6, 7, 10, 15}));
    find.go();
    EXPECT_EQ(session.findResults[FindResults::Individuals].count, 8)
        << "a second run adds to the first";
    EXPECT_EQ(find.heading(), QStringLiteral("Results (8 items found)"));
    find.numberText = QStringLiteral("x");
    find.go();
    EXPECT_EQ(session.findResults[FindResults::Individuals].count, 8)
        << "a number that is not one computes nothing";
}

TEST_F(QueryTest, MarriagesAndChildren)
{
    EXPECT_EQ(query(9), Slots{2}) << "the elder wife (Ada) is never considered";
    EXPECT_EQ(query(10), Slots{10}) << "Jo at 50";
    EXPECT_EQ(query(11), (Slots{6, 14})) << "Fay and Kay at 20";
    EXPECT_EQ(query(12), Slots{2}) << "the child born on the wedding day";
    EXPECT_EQ(query(13), (Slots{2, 4})) << "two bare years are the same day";
    EXPECT_EQ(query(14), Slots{2});
}

TEST_F(QueryTest, NothingQualifyingListsTheCurrentRecordOrNothing)
{
    ASSERT_TRUE(load(gedcomText({"0 @I1@ INDI", "1 NAME A /B/", "0 @I2@ INDI", "0 @F1@ FAM"})));
    session.curInd = 2;
    EXPECT_EQ(query(2), Slots{2}) << "no death dates: the individual current before";
    EXPECT_EQ(query(14), Slots{}) << "this query starts empty";
}

TEST_F(QueryTest, AResultPastTwoHundredStopsTheQueryWithANoteNotAFault)
{
    QByteArray text;
    for (int k = 1; k <= 205; ++k)
        text += "0 @I" + QByteArray::number(k) + "@ INDI\n0 @F" + QByteArray::number(k) + "@ FAM\n";
    ASSERT_TRUE(load(text));
    EXPECT_EQ(query(5, "1").size(), 200u);
    ASSERT_EQ(messages.entries.size(), 1u);
    EXPECT_EQ(messages.entries[0].text, QStringLiteral("Only the first 200 results are listed."));
    EXPECT_EQ(messages.entries[0].kind, MessageKind::Information);
    EXPECT_EQ(find.heading(), QStringLiteral("Results (200 items found)"));
    EXPECT_EQ(find.lines().size(), 201);
    EXPECT_EQ(find.lines().last(), QStringLiteral("F200. ? & ?"));
    EXPECT_EQ(find.limitNote(),
              QStringLiteral("Only the first 200 families are listed; there may be more."));
    EXPECT_EQ(query(7).size(), 200u) << "everyone ties at no descendants";
    EXPECT_EQ(messages.entries.size(), 2u);
    EXPECT_EQ(query(2, nullptr).size(), 1u) << "one entry: the candidate held before";
    EXPECT_EQ(find.limitNote(), QString());

    // A line deeper than 100 levels is still a fault, and the results so far are listed.
    text.clear();
    for (int k = 1; k <= 102; ++k)
        text += "0 @I" + QByteArray::number(k) + "@ INDI\n1 FAMS @F" + QByteArray::number(k) +
                "@\n1 FAMC @F" + QByteArray::number(k - 1) + "@\n";
    for (int k = 1; k <= 102; ++k)
        text += "0 @F" + QByteArray::number(k) + "@ FAM\n1 HUSB @I" + QByteArray::number(k) +
                "@\n1 CHIL @I" + QByteArray::number(k + 1) + "@\n";
    ASSERT_TRUE(load(text));
    messages.clear();
    EXPECT_FALSE(find.queryChosen(Query::MostDescendants));
    EXPECT_EQ(messages.texts(), QStringList{QStringLiteral("Error no:  9 Subscript out of range")});
    EXPECT_EQ(find.heading(), QStringLiteral("Results (0 item found)"));
}
