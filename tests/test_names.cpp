// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/Names.h"
#include "tests/TestSupport.h"

using namespace tav;
using tav::test::gedcomText;

class NamesTest : public tav::test::SessionTest {
protected:
    QString name(const char16_t* text, int flags, int style = 5, int posn = 1)
    {
        return formatName(QStringView(text), flags, NameStyle{style, posn});
    }
};

TEST_F(NamesTest, GivenNamesByFlags)
{
    const char16_t* john = u"John William /smith/";
    EXPECT_EQ(name(john, 1 + 2), QStringLiteral("John Smith"));
    EXPECT_EQ(name(john, 1 + 2 + 4), QStringLiteral("John William Smith"));
    EXPECT_EQ(name(john, 1 + 8 + 16), QStringLiteral("J. W. Smith"));
    EXPECT_EQ(name(john, 2), QStringLiteral("John"));
    EXPECT_EQ(name(john, 32), QStringLiteral("John William"));
    EXPECT_EQ(name(john, 32 + 2 + 1), QStringLiteral("John William  Smith"))
        << "given part as written, blank kept";
    EXPECT_EQ(name(u"John William", 2 + 4), QStringLiteral("John"))
        << "no blank after the second name";
    EXPECT_EQ(name(u"John  Paul /X/", 2 + 16), QStringLiteral("John"))
        << "an empty second name has no initial";
    EXPECT_EQ(name(u"", 3), QStringLiteral("?"));
}

// Henry VIII is never "Henry V.", another king: under every one of the 64
// flag sets the number is whole or absent, as the second given name is.
TEST_F(NamesTest, RegnalNumbersAreNeverShortened)
{
    for (int flags = 0; flags < 64; ++flags) {
        const QString henry = name(u"Henry VIII /Tudor/", flags, 2, 2);
        const bool second = (flags & (NameGivenAsWritten | NameSecondGiven | NameSecondInitial));
        EXPECT_EQ(henry.contains(QStringLiteral("VIII")), second)
            << flags << " " << henry.toStdString();
        EXPECT_FALSE(henry.contains(QStringLiteral("V."))) << flags;
        EXPECT_FALSE(henry.contains(QStringLiteral("I."))) << flags;
    }
    EXPECT_EQ(name(u"Henry VIII /Tudor/", 1 + 2 + 16, 2, 2), QStringLiteral("TUDOR, Henry VIII"));
    EXPECT_EQ(name(u"Louis XIV /de Bourbon/", 1 + 8 + 16, 5, 1),
              QStringLiteral("L. XIV De bourbon"));
    EXPECT_EQ(name(u"XIV Louis /B/", 8 + 16), QStringLiteral("XIV L.")) << "first or second";
    EXPECT_EQ(name(u"John Vincent /Doe/", 1 + 2 + 16, 2, 2), QStringLiteral("DOE, John V."))
        << "only words made wholly of I, V and X";
    EXPECT_EQ(name(u"Mary Ix /Doe/", 2 + 16), QStringLiteral("Mary I.")) << "capitals only";
}

TEST_F(NamesTest, SurnameStylesAndPositions)
{
    const QStringList styled = {"smith", "SMITH",   "/smith/", "/SMITH/",
                                "Smith", "/Smith/", "/smith/"};
    for (int style = 1; style <= 7; ++style)
        EXPECT_EQ(name(u"Ann /smith/", 3, style, 2), styled[style - 1] + QStringLiteral(", Ann"))
            << style;
    EXPECT_EQ(name(u"Ann /sMITH/", 1 + 2, 5, 1), QStringLiteral("Ann Smith"));
    EXPECT_EQ(name(u"/smith/", 1 + 2, 5, 1), QStringLiteral(" Smith"))
        << "the leading blank is kept";
    EXPECT_EQ(name(u"/smith/", 1 + 2, 5, 2), QStringLiteral("Smith,"));
    EXPECT_EQ(name(u"John", 1 + 2, 3, 1), QStringLiteral("John"));
    EXPECT_EQ(name(u"John", 1 + 2, 3, 2), QStringLiteral(", John"));
    EXPECT_EQ(name(u"John", 1 + 2, 1, 1), QStringLiteral("John"))
        << "no surname at all stays empty";
}

TEST_F(NamesTest, SuffixesAfterTheSurnameStayWholeUnderEveryStyle)
{
    // "/adams/" is the surname, "II" the suffix that ends the name.
    const QStringList styled = {"adams", "ADAMS", "/adams/", "/ADAMS/", "Adams", "/Adams/"};
    for (int style = 1; style <= 6; ++style) {
        EXPECT_EQ(name(u"John /adams/ II", 1 + 2, style, 1),
                  QStringLiteral("John ") + styled[style - 1] + QStringLiteral(" II"))
            << style;
        EXPECT_EQ(name(u"John /adams/  II ", 1 + 32, style, 2),
                  styled[style - 1] + QStringLiteral(", John II"))
            << style << ": the given part's blank is trimmed before the suffix";
    }
    EXPECT_EQ(name(u"John /Adams/ II", 2, 2, 2), QStringLiteral("John")) << "no surname, no suffix";
    EXPECT_EQ(name(u"Joseph Patrick /Kennedy/ Jr.", 1 + 2 + 16, 5, 1),
              QStringLiteral("Joseph P. Kennedy Jr."));
    EXPECT_EQ(name(u"/smith/ jr", 1 + 2, 5, 1), QStringLiteral(" Smith jr"));
    EXPECT_EQ(name(u"Al /smith", 1 + 2, 1, 1), QStringLiteral("Al smit"))
        << "an unclosed surname runs to the end";
    EXPECT_EQ(name(u"Al /smith/ ", 1 + 2, 2, 2), QStringLiteral("SMITH, Al"))
        << "a blank is no suffix";
}

TEST_F(NamesTest, CaseChangesWorkOnUnicode)
{
    EXPECT_EQ(name(u"Hans /müller/", 1 + 2, 2, 1), QStringLiteral(u"Hans MÜLLER"));
    EXPECT_EQ(name(u"Hans /MÜLLER/", 1 + 2, 5, 1), QStringLiteral(u"Hans Müller"));
    EXPECT_EQ(name(u"Åsa /östberg/", 1 + 8, 6, 1), QStringLiteral(u"Å. /Östberg/"));
    EXPECT_EQ(name(u"Karl /strauß/", 1, 4, 1), QStringLiteral(u" /STRAUSS/"));
}

TEST_F(NamesTest, PersonYearsHidesPossiblyLivingPeople)
{
    ASSERT_TRUE(load(
        gedcomText({"0 @I1@ INDI", "1 BIRT", "2 DATE 1850", "0 @I2@ INDI", "1 BIRT", "2 DATE 1986",
                    "0 @I3@ INDI", "1 BIRT", "2 DATE 850", "1 DEAT", "2 DATE 910", "0 @I4@ INDI",
                    "1 DEAT", "2 DATE 3 MAR 1910", "0 @I5@ INDI", "1 BIRT", "2 DATE ABT 1800"})));
    EXPECT_EQ(personYears(session.records, 1, session.today()), QStringLiteral("(b.1850)"));
    EXPECT_EQ(personYears(session.records, 2, session.today()), QString());
    EXPECT_EQ(personYears(session.records, 3, session.today()), QStringLiteral("(b.0850  d.910)"));
    EXPECT_EQ(personYears(session.records, 4, session.today()), QStringLiteral("(d.1910)"));
    EXPECT_EQ(personYears(session.records, 5, session.today()), QString());
}

TEST_F(NamesTest, CountChildrenAddsEveryOwnFamily)
{
    ASSERT_TRUE(load(
        gedcomText({"0 @I1@ INDI", "1 FAMS @F1@", "1 FAMS @F2@", "1 FAMS @F9@", "0 @I2@ INDI",
                    "0 @F1@ FAM", "1 CHIL @I2@", "1 CHIL @I7@", "0 @F2@ FAM", "1 CHIL @I2@"})));
    EXPECT_EQ(countChildren(session.records, 1), 3);
    EXPECT_EQ(countChildren(session.records, 2), 0);
}

TEST(OrdinalWord, OrdinalsAndRepetitions)
{
    const std::pair<int, const char*> ordinals[] = {
        {0, "0th"},     {1, "1st"},     {2, "2nd"},     {3, "3rd"},      {4, "4th"},
        {11, "11th"},   {12, "12th"},   {13, "13th"},   {21, "21st"},    {22, "22nd"},
        {101, "101st"}, {111, "111th"}, {112, "112th"}, {1003, "1003rd"}};
    for (const auto& [n, word] : ordinals)
        EXPECT_EQ(ordinalWord(n, u"ST"), QString::fromLatin1(word));
    EXPECT_EQ(ordinalWord(0, u"ONCE"), QStringLiteral("zero times"));
    EXPECT_EQ(ordinalWord(1, u"ONCE"), QStringLiteral("once"));
    EXPECT_EQ(ordinalWord(2, u"ONCE"), QStringLiteral("twice"));
    EXPECT_EQ(ordinalWord(3, u"ONCE"), QStringLiteral("thrice"));
    EXPECT_EQ(ordinalWord(5, u"once"), QStringLiteral("5 times"));
    EXPECT_EQ(ordinalWord(-1, u"ONCE"), QString());
    EXPECT_EQ(ordinalWord(12, u"st"), QStringLiteral("12th"));
    EXPECT_EQ(ordinalWord(1, u"TH"), QString());
}
