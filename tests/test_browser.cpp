// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/TestSupport.h"
#include "windowlogic/browser/BrowserLogic.h"

using namespace tav;
using tav::test::gedcomText;

namespace {

// Rows of the grid as "item|details|hidden" lines, for whole-grid checks.
QStringList rows(const BrowserLogic& b)
{
    QStringList lines;
    for (int32_t r = 0; r < b.rowCount(); ++r) {
        QString line = b.cell(r, 0) + QLatin1Char('|') + b.cell(r, 1);
        if (!b.cell(r, 2).isEmpty())
            line += QLatin1Char('|') + b.cell(r, 2);
        lines << line;
    }
    return lines;
}

const QByteArray records = gedcomText({
    "0 @I1@ INDI\n1 NAME John /smith/\n1 SEX M\n1 OCCU Miller\n1 BIRT\n2 DATE 3 MAR 1850\n"
    "2 PLAC Leeds\n1 DEAT\n2 DATE 1 JAN 1914\n1 FAMS @F2@\n1 FAMS @F1@\n1 FAMS @F9@\n"
    "1 FAMC @F3@\n1 NOTE @N7@",
    "0 @I2@ INDI\n1 NAME Ann /Lee/\n1 BIRT\n2 DATE ABT 1850\n1 NOTE Kind and clever.\n"
    "2 CONT A weaver.",
    "0 @I3@ INDI\n1 NAME Tom /Smith/\n1 BIRT\n2 DATE 21 NOV 1996\n1 FAMC @F1@",
    "0 @I4@ INDI",
    "0 @F1@ FAM\n1 HUSB @I1@\n1 WIFE @I2@\n1 CHIL @I3@\n1 CHIL @I8@\n1 MARR\n2 DATE 1875\n"
    "2 PLAC York",
    "0 @F2@ FAM\n1 HUSB @I1@\n1 DIV",
    "0 @F3@ FAM",
    "0 @S12@ SOUR\n1 TITL Parish register\n1 PUBL 1950\n1 NOTE @N8@",
    "0 @N7@ NOTE\n1 CONC About John.",
    "0 @N8@ NOTE\n1 CONC Register note.",
});

}  // namespace

class BrowserTest : public tav::test::SessionTest {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(load(records));
        // Surname first: given names as written keep their trailing blank,
        // which a surname placed after them would show as a double blank.
        session.settings.SurnameStyle = 5;
        session.settings.SurnamePosn = 2;
    }

    // Asks the browser for a kind by its code ("IND", "ALLINDS" ...) and a slot.
    void show(const char* kind, int32_t slot = 0)
    {
        const ViewKind viewKind = viewKindFromCode(QString::fromLatin1(kind));
        if (isRecordKind(viewKind))
            session.currentSlot(viewKind) = slot;
        session.browser = {viewKind, BrowserCaller::MainWindow, false};
        browser.activate();
    }

    BrowserLogic browser{session};
};

TEST_F(BrowserTest, IndividualGrids)
{
    show("IND", 1);
    EXPECT_EQ(browser.caption(), QStringLiteral("Smith, John (1)"));
    EXPECT_EQ(rows(browser),
              QStringList({"Item|Details", "No.| 1", "Name|Smith, John", "Sex|M", "Occ|Miller",
                           "Birth date|3 MAR 1850", "Birth place|Leeds", "Death date|1 JAN 1914",
                           "Fams 1| 2", "Fams 2| 1", "Fams 3| 0", "Famc| 3", "Age | 63 at death",
                           "Note |@N7@"}));
    show("IND", 2);
    EXPECT_EQ(rows(browser).mid(8),
              QStringList({"Age |Cannot calculate", "Note |Kind and clever.\r\nA weaver."}));
    show("IND", 3);
    EXPECT_EQ(rows(browser).mid(8), QStringList({"Famc| 1", "Age | 30 now"}));
    show("IND", 4);
    EXPECT_EQ(browser.rowCount(), 9) << "no links, no note: rows 0 to 7 and the age";
    EXPECT_EQ(browser.caption(), QStringLiteral("? (4)"));
    show("IND", 400);
    EXPECT_EQ(browser.caption(), QStringLiteral("? (400)"))
        << "an empty slot within the table's capacity";
}

TEST_F(BrowserTest, FamilySourceAndNoteGrids)
{
    show("FAM", 1);
    EXPECT_EQ(browser.caption(), QStringLiteral("Family (1)"));
    EXPECT_EQ(rows(browser), QStringList({"Item|Details", "No.|1", "Husband|Smith, John|1",
                                          "Wife|Lee, Ann|2", "Child 1|Smith, Tom|3", "Child 2|?|0",
                                          "Marr. date|1875", "Marr. place|York", "Divorce?|No"}));
    show("FAM", 2);
    EXPECT_EQ(rows(browser),
              QStringList({"Item|Details", "No.|2", "Husband|Smith, John|1", "Wife|?|0",
                           "Marr. date|", "Marr. place|", "Divorce?|Yes"}))
        << "a childless family has 7 rows";
    show("SOU", 1);
    EXPECT_EQ(browser.caption(), QStringLiteral("Source (S12)"));
    EXPECT_EQ(rows(browser), QStringList({"Item|Details", "No.|S12", "Title|Parish register",
                                          "Author|", "Publ|1950", "Note|@N8@"}));
    show("NOT", 2);
    EXPECT_EQ(browser.caption(), QStringLiteral("Note 2")) << "the caption gives the slot";
    EXPECT_EQ(rows(browser), QStringList({"Item|Details", "No.|N8", "Note|Register note."}));
    EXPECT_EQ(browser.fitRequests(), 4);
}

TEST_F(BrowserTest, ListsHaveARowForEveryRecord)
{
    show("ALLOCCU");
    EXPECT_EQ(browser.caption(), QStringLiteral("All occupations"));
    EXPECT_EQ(rows(browser), QStringList({"Number|Occupation", "1|Miller", "2|", "3|", "4|"}));
    show("ALLBIRT");
    EXPECT_EQ(rows(browser).value(1), QStringLiteral("1|3 MAR 1850  Leeds"));
    EXPECT_EQ(rows(browser).value(4), QStringLiteral("4|  "));
    show("ALLFAMS");
    EXPECT_EQ(rows(browser), QStringList({"Number|Family", "1|Smith, John & Lee, Ann",
                                          "2|Smith, John & ?", "3|? & ?"}));
    show("ALLMARR");
    EXPECT_EQ(browser.caption(), QStringLiteral("All marriages and places"));
    show("ALLNOTS");
    EXPECT_EQ(rows(browser).value(0), QStringLiteral("Number|Notes"));
    EXPECT_EQ(browser.fitRequests(), 0) << "lists keep the window's height";
    EXPECT_EQ(browser.positionToken(), QStringLiteral("*ALLNOTS "));
}

TEST_F(BrowserTest, RowsFollowTheirLinks)
{
    std::vector<AppWindow> shown;
    QObject::connect(&session, &Session::windowRequested,
                     [&](const WindowRequest& w) { shown.push_back(w.window); });
    show("IND", 1);
    browser.rowClicked(9);  // Fams 2
    EXPECT_EQ(browser.caption(), QStringLiteral("Family (1)"));
    browser.rowClicked(4);  // Child 1
    EXPECT_EQ(browser.caption(), QStringLiteral("Smith, Tom (3)"));
    show("IND", 1);
    browser.rowClicked(13);  // Note @N7@: the note record numbered 7
    EXPECT_EQ(browser.caption(), QStringLiteral("Note 1"));
    show("SOU", 1);
    browser.rowClicked(5);
    EXPECT_EQ(browser.caption(), QStringLiteral("Note 2"));
    show("IND", 2);
    browser.rowClicked(9);  // a note written out goes to the text viewer
    EXPECT_EQ(session.report.text, QStringLiteral("Kind and clever.\r\nA weaver."));
    EXPECT_EQ(shown, std::vector<AppWindow>{AppWindow::Text});
    EXPECT_EQ(browser.caption(), QStringLiteral("Lee, Ann (2)"));

    for (const auto& [list, row, caption] : {std::tuple{"ALLOCCU", 3, "Smith, Tom (3)"},
                                             {"ALLDEAT", 1, "Smith, John (1)"},
                                             {"ALLMARR", 2, "Family (2)"},
                                             {"ALLSOUR", 1, "Source (S12)"},
                                             {"ALLNOTS", 2, "Note 2"}}) {
        show(list);
        browser.rowClicked(0);
        EXPECT_EQ(viewKindCode(session.browser.viewKind), QString::fromLatin1(list))
            << "the heading row opens nothing";
        browser.rowClicked(row);
        EXPECT_EQ(browser.caption(), QString::fromLatin1(caption)) << list;
    }
}

TEST_F(BrowserTest, BackForwardPreviousNextAndListAll)
{
    show("IND", 2);
    EXPECT_FALSE(browser.backEnabled());
    EXPECT_TRUE(browser.nextPreviousEnabled());
    show("FAM", 1);
    EXPECT_EQ(browser.backHistory(), QStringLiteral("*IND00002"));
    browser.moveBackForward(BrowserMove::Back);
    EXPECT_EQ(browser.caption(), QStringLiteral("Lee, Ann (2)"));
    EXPECT_EQ(browser.forwardHistory(), QStringLiteral("*FAM00001"));
    EXPECT_FALSE(browser.backEnabled());
    // Forward onto a family takes the forward history from the back history.
    browser.moveBackForward(BrowserMove::Forward);
    EXPECT_EQ(browser.caption(), QStringLiteral("Family (1)"));
    EXPECT_EQ(browser.backHistory(), QStringLiteral("*IND00002"));
    EXPECT_EQ(browser.forwardHistory(), QString()) << "the first 0 characters of the back history";

    show("IND", 3);  // back: IND2 FAM1
    browser.moveBackForward(BrowserMove::Back);
    EXPECT_EQ(browser.caption(), QStringLiteral("Family (1)"));
    browser.moveBackForward(BrowserMove::Back);
    EXPECT_EQ(browser.forwardHistory(), QStringLiteral("*IND00003*FAM00001"));
    browser.moveBackForward(BrowserMove::Forward);
    EXPECT_EQ(browser.caption(), QStringLiteral("Family (1)"));
    EXPECT_EQ(browser.forwardHistory(), QStringLiteral("*IND00002"))
        << "a piece of the back history";
    EXPECT_TRUE(browser.forwardEnabled());

    show("IND", 1);
    browser.moveBackForward(BrowserMove::Previous);
    EXPECT_EQ(session.curInd, 1) << "Previous keeps slot 1";
    show("IND", 4);
    browser.moveBackForward(BrowserMove::Next);
    EXPECT_EQ(session.curInd, 4) << "Next keeps the last slot";
    browser.moveBackForward(BrowserMove::Previous);
    EXPECT_EQ(browser.caption(), QStringLiteral("Smith, Tom (3)"));

    browser.listAll();
    EXPECT_EQ(browser.caption(), QStringLiteral("All individuals"));
    EXPECT_FALSE(browser.nextPreviousEnabled());
    browser.listAll();
    EXPECT_EQ(browser.caption(), QStringLiteral("All families"));
    browser.moveBackForward(BrowserMove::Next);
    EXPECT_EQ(browser.caption(), QStringLiteral("All families")) << "lists do not step";
    browser.moveBackForward(BrowserMove::Back);
    EXPECT_EQ(browser.caption(), QStringLiteral("All individuals"));

    // Back and Forward restore the whole slot, four digits too.
    QByteArray many;
    for (int i = 1; i <= 1234; ++i)
        many +=
            "0 @I" + QByteArray::number(i) + "@ INDI\n1 NAME P" + QByteArray::number(i) + " /Q/\n";
    many += "0 @F1@ FAM\n0 @F2@ FAM\n";
    ASSERT_TRUE(load(many));
    show("IND", 1234);
    EXPECT_EQ(browser.positionToken(), QStringLiteral("*IND01234"));
    show("IND", 1000);
    show("FAM", 2);
    browser.moveBackForward(BrowserMove::Back);
    EXPECT_EQ(browser.caption(), QStringLiteral("Q, P1000 (1000)")) << "not slot 0";
    browser.moveBackForward(BrowserMove::Back);
    EXPECT_EQ(browser.caption(), QStringLiteral("Q, P1234 (1234)")) << "not slot 234";
    browser.moveBackForward(BrowserMove::Forward);
    EXPECT_EQ(browser.caption(), QStringLiteral("Q, P1000 (1000)"));
    EXPECT_EQ(session.curInd, 1000);
    browser.moveBackForward(BrowserMove::Forward);
    EXPECT_EQ(browser.caption(), QStringLiteral("Family (2)"));
}

TEST_F(BrowserTest, AFaultKeepsTheGridAndTheHistory)
{
    show("IND", 1);
    show("FAM", 1);
    const QString back = browser.backHistory(), token = browser.positionToken();
    show("IND", 40001);
    EXPECT_EQ(messages.texts(), QStringList{QStringLiteral("Error no:  9 Subscript out of range")});
    EXPECT_EQ(browser.caption(), QStringLiteral("Family (1)"));
    EXPECT_EQ(browser.backHistory(), back);
    EXPECT_EQ(browser.positionToken(), token);
    show("SOU", -1);
    EXPECT_EQ(messages.entries.size(), 2u);
    EXPECT_EQ(browser.caption(), QStringLiteral("Family (1)"));
}
