// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/TestSupport.h"
#include "windowlogic/browser/BrowserLogic.h"
#include "windowlogic/find/FindLogic.h"
#include "windowlogic/find/ResultsListing.h"

using namespace tav;
using tav::test::gedcomText;

namespace {

// Result slots of one kind, in order.
std::vector<int32_t> found(const Session& s, FindResults::Kind kind)
{
    const FindResults::Table& t = s.findResults[kind];
    return std::vector<int32_t>(t.entries.begin() + 1, t.entries.begin() + 1 + t.count);
}

}  // namespace

class FindTest : public tav::test::SessionTest {
protected:
    void SetUp() override
    {
        QObject::connect(&session, &Session::windowRequested,
                         [this](const WindowRequest& w) { shown.push_back(w.window); });
    }

    void findText(const char* text, bool caseSensitive = false, SearchKinds kinds = {})
    {
        find.searchText = QString::fromUtf8(text);
        find.caseSensitive = caseSensitive;
        find.kinds = kinds;
        find.find();
    }

    FindLogic find{session};
    std::vector<AppWindow> shown;
};

TEST_F(FindTest, WordsMatchAnywhereInAnyOrder)
{
    ASSERT_TRUE(load(gedcomText({"0 @I1@ INDI", "1 NAME John /Smith/", "0 @I2@ INDI",
                                 "1 NAME Johnson /Smithers/", "0 @I3@ INDI", "1 NAME Mary /Smith/",
                                 "1 OCCU Weaver", "0 @I4@ INDI", "1 NAME Hans /MÜLLER/", "1 BIRT",
                                 "2 PLAC Köln"})));
    findText("smith john");
    EXPECT_EQ(found(session, FindResults::Individuals), (std::vector<int32_t>{1, 2}));
    EXPECT_TRUE(shown.empty()) << "two results: the browser stays shut";
    findText("müller köln");
    EXPECT_EQ(found(session, FindResults::Individuals), std::vector<int32_t>{4})
        << "case is ignored in any script";
    findText("HANS MÜLLER", true);
    EXPECT_EQ(session.findResults.total, 0);
    findText("Hans MÜLLER", true);
    EXPECT_EQ(found(session, FindResults::Individuals), std::vector<int32_t>{4});
    shown.clear();
    findText("weaver");
    EXPECT_EQ(found(session, FindResults::Individuals), std::vector<int32_t>{3});
    EXPECT_EQ(shown, std::vector<AppWindow>{AppWindow::List}) << "one result opens the browser";
    EXPECT_EQ(session.browser.viewKind, ViewKind::Individual);
    EXPECT_EQ(session.curInd, 3);
    EXPECT_EQ(session.browser.caller, BrowserCaller::FindWindow);
    EXPECT_FALSE(session.browser.loaded);

    EXPECT_EQ(searchWords(QStringLiteral(" a b c d e ")), QStringList({"a", "b", "c", "d"}));
    EXPECT_EQ(searchWords(QStringLiteral("a  b")), QStringList({"a", "", "b"}));
    findText("john  smith");
    EXPECT_EQ(session.findResults.total, 2) << "an empty word matches everything";
}

TEST_F(FindTest, NumbersKindsAndTheNoteFoundThroughItsSource)
{
    QByteArray text;
    for (int i = 1; i <= 130; ++i)
        text += "0 @I" + QByteArray::number(i) + "@ INDI\n";
    text += gedcomText({"0 @F12@ FAM", "0 @S1@ SOUR", "1 TITL One", "0 @S2@ SOUR", "0 @S3@ SOUR",
                        "1 AUTH Wright", "0 @N1@ NOTE", "1 CONC first", "0 @N2@ NOTE",
                        "0 @N3@ NOTE", "1 CONC third"});
    ASSERT_TRUE(load(text));
    findText("I12");
    EXPECT_EQ(found(session, FindResults::Individuals),
              (std::vector<int32_t>{12, 120, 121, 122, 123, 124, 125, 126, 127, 128, 129}));
    findText("F12", false, {true, false, true, true});
    EXPECT_EQ(session.findResults.total, 0) << "families not searched";
    findText("wright");
    EXPECT_EQ(found(session, FindResults::Sources), std::vector<int32_t>{3});
    EXPECT_EQ(found(session, FindResults::Notes), std::vector<int32_t>{3})
        << "note 3 reads source 3's author";
    findText("");
    EXPECT_EQ(session.findResults[FindResults::Individuals].count, 130);
    EXPECT_EQ(session.findResults.total, 130 + 1 + 3 + 3);

    QByteArray many;
    for (int i = 1; i <= 250; ++i)
        many += "0 @I" + QByteArray::number(i) + "@ INDI\n1 NAME Al /Lee/\n";
    ASSERT_TRUE(load(many));
    findText("lee");
    EXPECT_EQ(session.findResults.total, 200) << "at most 200 of a kind, silently";
}

TEST_F(FindTest, ResultLinesAndHeadings)
{
    ASSERT_TRUE(load(gedcomText({"0 @I1@ INDI", "1 NAME Ann /Lee/", "0 @F7@ FAM", "1 HUSB @I1@",
                                 "0 @S3@ SOUR", "1 TITL Register", "0 @N2@ NOTE", "1 CONC Text"})));
    FindResults& r = session.findResults;
    EXPECT_EQ(resultLines(session), QStringList{QStringLiteral("-------NO RECORDS-------")});
    r[FindResults::Individuals] = {{0, 1, 1234}, 2};
    r[FindResults::Families] = {{0, 1}, 1};
    r[FindResults::Sources] = {{0, 1}, 1};
    r[FindResults::Notes] = {{0, 1}, 1};
    r.total = 5;
    EXPECT_EQ(resultLines(session),
              QStringList({"-------INDIVIDUALS-------", "I001. LEE, Ann", "I1234. ?",
                           "-------FAMILIES-------", "F1. LEE, Ann & ?", "-------SOURCES-------",
                           "S1. Register", "-------NOTES-------", "N1. Text"}));
}

TEST_F(FindTest, EveryLineOpensItsRecordWhateverSectionsAreEmpty)
{
    QByteArray text;
    for (int i = 1; i <= 3; ++i)
        text += "0 @I" + QByteArray::number(i) + "@ INDI\n0 @F" + QByteArray::number(i) +
                "@ FAM\n0 @S" + QByteArray::number(i) + "@ SOUR\n";
    text += "0 @N1@ NOTE\n0 @N2@ NOTE\n0 @N3@ NOTE\n";
    ASSERT_TRUE(load(text));
    const char* kinds[4] = {"IND", "FAM", "SOU", "NOT"};
    for (int mask = 0; mask < 16; ++mask) {
        FindResults& r = session.findResults;
        for (int k = 0; k < 4; ++k)
            r.tables[size_t(k)] =
                (mask & (1 << k)) ? FindResults::Table{{0, 3, 1}, 2} : FindResults::Table{};
        r.total = r.sum();
        FindLogic reopened(session);  // lists the results it finds
        const QStringList lines = reopened.lines();
        int seen = 0;
        for (int line = 0; line < lines.size(); ++line) {
            session.browser.viewKind = ViewKind::None;
            reopened.lineChosen(line);
            if (lines[line].startsWith(QLatin1Char('-'))) {
                EXPECT_EQ(session.browser.viewKind, ViewKind::None) << "headers open nothing";
                continue;
            }
            const int kind = QStringLiteral("IFSN").indexOf(lines[line][0]);
            const int position = seen++ % 2 + 1;
            EXPECT_EQ(viewKindCode(session.browser.viewKind), QLatin1String(kinds[kind]))
                << mask << " line " << line;
            const int32_t current[4] = {session.curInd, session.curFam, session.curSou,
                                        session.curNote};
            EXPECT_EQ(current[kind], position == 1 ? 3 : 1) << mask << " line " << line;
            EXPECT_EQ(r.selected, position);
        }
        EXPECT_EQ(seen, 2 * __builtin_popcount(unsigned(mask)));
    }
}

TEST_F(FindTest, BrowserOpenedFromFindStepsThroughTheResults)
{
    ASSERT_TRUE(load(
        gedcomText({"0 @I1@ INDI", "1 NAME A /X/", "0 @I2@ INDI", "1 NAME B /X/", "0 @I3@ INDI",
                    "0 @F1@ FAM", "1 HUSB @I1@", "0 @F2@ FAM", "0 @N1@ NOTE", "1 CONC X note"})));
    findText("x");  // individuals 1 and 2, family 1, note 1
    find.lineChosen(1);
    BrowserLogic browser(session);
    browser.activate();
    EXPECT_EQ(browser.caption(), QStringLiteral("X, A (1)"));
    const auto steps = [&](BrowserMove move) {
        QStringList captions;
        for (int i = 0; i < 6; ++i) {
            browser.moveBackForward(move);
            captions << browser.caption() + QLatin1Char('/') +
                            viewKindCode(session.browser.viewKind);
        }
        return captions;
    };
    EXPECT_EQ(steps(BrowserMove::Next),
              QStringList({"X, B (2)/IND", "X, B (2)/FAM", "Family (1)/FAM", "Family (1)/SOU",
                           "Family (1)/NOT", "Note 1/NOT"}));
    browser.moveBackForward(BrowserMove::Next);
    EXPECT_EQ(session.findResults.selected, 1) << "past the last note the position stays";
    EXPECT_EQ(steps(BrowserMove::Previous),
              QStringList({"Note 1/SOU", "Note 1/FAM", "Family (1)/FAM", "Family (1)/IND",
                           "X, B (2)/IND", "X, A (1)/IND"}));
}
