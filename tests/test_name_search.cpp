// SPDX-License-Identifier: GPL-3.0-or-later
// Going to a person by name: which people the box offers for the letters
// typed, and in which order.
#include "settings/RegistryStore.h"
#include "tests/TestSupport.h"
#include "windowlogic/main/MainWindowLogic.h"

using namespace tav;
using tav::test::gedcomText;

namespace {

const QByteArray people =
    gedcomText({"0 @I1@ INDI", "1 NAME Catherine /Smith/", "1 BIRT", "2 DATE 1850", "1 DEAT",
                "2 DATE 1910", "0 @I2@ INDI", "1 NAME Mary Catherine /Jones/", "0 @I3@ INDI",
                "1 NAME Cathérine /Åberg/", "0 @I4@ INDI", "1 NAME John /Cathcart/", "0 @I5@ INDI",
                "1 NAME catherine /smith/", "0 @I6@ INDI", "1 NAME Ann /Smith/",
                "1 NAME Cathy /Smith/", "0 @I7@ INDI", "1 NAME Marie-Thérèse /Habsbourg/"});

}  // namespace

class NameSearchTest : public tav::test::SessionTest {
protected:
    std::vector<int32_t> offered(const QString& typed)
    {
        std::vector<int32_t> found;
        for (const MainWindowLogic::Completion& completion : main.completions(typed))
            found.push_back(completion.slot);
        return found;
    }

    RegistryStore store{dir.filePath(QStringLiteral("Tav.reg"))};
    MainWindowLogic main{session, store, QString()};
};

TEST_F(NameSearchTest, WordsBeginNamesInAnyOrderAccentsAndCaseIgnored)
{
    ASSERT_TRUE(load(people));
    // A first word that begins the first given name or the surname comes
    // first; then by surname and given names; equal names by number.
    EXPECT_EQ(offered(QStringLiteral("cath")), (std::vector<int32_t>{3, 4, 1, 5, 2, 6}));
    EXPECT_EQ(offered(QStringLiteral("CATH")), offered(QStringLiteral("cath")));
    EXPECT_EQ(offered(QStringLiteral("smith cath")), (std::vector<int32_t>{6, 1, 5}))
        << "the surname first; Ann by her other name Cathy";
    EXPECT_EQ(offered(QStringLiteral("Catherine Smith")), (std::vector<int32_t>{1, 5}));
    EXPECT_EQ(offered(QStringLiteral("catherine")), (std::vector<int32_t>{3, 1, 5, 2}))
        << "whole words before parts, accents ignored";
    EXPECT_EQ(offered(QStringLiteral("catherine s")), (std::vector<int32_t>{1, 5}));
    EXPECT_EQ(offered(QStringLiteral("aberg")), (std::vector<int32_t>{3}));
    EXPECT_EQ(offered(QStringLiteral("therese")), (std::vector<int32_t>{7}))
        << "a hyphen parts words";
    EXPECT_EQ(offered(QStringLiteral("marie-th")), (std::vector<int32_t>{7}));
    EXPECT_TRUE(offered(QStringLiteral("zz")).empty());
    EXPECT_TRUE(offered(QStringLiteral("12")).empty()) << "a number is a number";
    EXPECT_TRUE(offered(QStringLiteral("  ")).empty());
}

TEST_F(NameSearchTest, AnOfferShowsNameNumberAndYearsAndPickingItFillsTheBox)
{
    ASSERT_TRUE(load(people));
    session.settings.SurnamePosn = 2;
    const std::vector<MainWindowLogic::Completion> lines = main.completions(QStringLiteral("smi"));
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[1].text, QStringLiteral("SMITH, Catherine (1)  (b.1850  d.1910)"));
    EXPECT_EQ(lines[0].text, QStringLiteral("SMITH, Ann (6)")) << "no years to show";

    main.completionChosen(5);
    EXPECT_EQ(main.currentIndividualText(), QStringLiteral(" 5"));
    EXPECT_EQ(main.currentIndividualName(), QStringLiteral("SMITH, catherine"));

    // A new file is searched afresh.
    ASSERT_TRUE(load(gedcomText({"0 @I1@ INDI", "1 NAME Zoe /Smith/"})));
    EXPECT_EQ(offered(QStringLiteral("smi")), (std::vector<int32_t>{1}));
}
