// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/Dates.h"
#include "calc/GedcomDateGrammar.h"

#include "tests/QtPrinters.h"

#include <gtest/gtest.h>

using namespace tav;

namespace {

struct Parsed {
    int32_t ok, day, month, year;
    bool operator==(const Parsed&) const = default;
};

Parsed parsed(const char16_t* text)
{
    Parsed p{0, 0, 0, 0};
    p.ok = parseDate(QStringView(text), p.day, p.month, p.year);
    return p;
}

void PrintTo(const Parsed& p, std::ostream* os)
{
    *os << p.ok << ": " << p.day << "/" << p.month << "/" << p.year;
}

const QDate today(2026, 11, 21);

}  // namespace

TEST(ParseDate, DayMonthYearForms)
{
    EXPECT_EQ(parsed(u"12 MAR 1850"), (Parsed{-1, 12, 3, 1850}));
    EXPECT_EQ(parsed(u"12-mar-1850"), (Parsed{-1, 12, 3, 1850}));
    EXPECT_EQ(parsed(u"12-MAR 1850"), (Parsed{-1, 12, 3, 1850}));
    EXPECT_EQ(parsed(u"12 MARCH 1850"), (Parsed{-1, 12, 1, 1850})) << "MARCH is unknown: January";
    EXPECT_EQ(parsed(u"1 ARA 1850"), (Parsed{-1, 1, 3, 1850}))
        << "a fragment rounds to the nearest month";
    EXPECT_EQ(parsed(u"5 1850"), (Parsed{-1, 5, 1, 1850}))
        << "one separator: the day is also the month word";
    EXPECT_EQ(parsed(u"12 DEC 1850/51"), (Parsed{-1, 12, 12, 1850}));
    EXPECT_EQ(parsed(u"3 DEC 1 8 5 0"), (Parsed{-1, 3, 12, 1850}))
        << "blanks inside a number are skipped";
    EXPECT_EQ(parsed(u"12 MAR-1850"), (Parsed{-1, 12, 1, 1850})) << "the dash is looked for first";
}

TEST(ParseDate, MonthYearAndBareYear)
{
    EXPECT_EQ(parsed(u"MAR 1850"), (Parsed{-1, 0, 3, 1850})) << "the day keeps the caller's value";
    EXPECT_EQ(parsed(u"1850"), (Parsed{-1, 15, 6, 1850}));
    EXPECT_EQ(parsed(u" 1850 "), (Parsed{-1, 15, 6, 1850}));
    EXPECT_EQ(parsed(u"50"), (Parsed{-1, 15, 6, 50})) << "a bare number has no lower bound";
    EXPECT_EQ(parsed(u"1850.5"), (Parsed{-1, 15, 6, 1850})) << "halves round to even";
    EXPECT_EQ(parsed(u"1851.5"), (Parsed{-1, 15, 6, 1852}));
}

TEST(ParseDate, UnusableTexts)
{
    for (const char16_t* text :
         {u"", u"ABT 1850", u"BEF 1850", u"AFT 1850", u"BET 1850 AND 1860", u"EST 1850",
          u"FROM 1850 TO 1860", u"MAR 50", u"1 MAR 50", u"12 MAR 85", u"MAR 85", u"1850s",
          u"1850/51", u"@#DJULIAN@ 1850", u"12 MAR"})
        EXPECT_EQ(parsed(text).ok, 0) << QString::fromUtf16(text).toStdString();
}

TEST(CompareDates, OrdersByYearMonthDay)
{
    EXPECT_EQ(compareDates(u"1 JAN 1850", u"1850"), 0) << "a bare year is mid-June";
    EXPECT_EQ(compareDates(u"MAR 1850", u"1 MAR 1850"), 0) << "a missing day is 0";
    EXPECT_EQ(compareDates(u"15 JUN 1850", u"1850"), 1);
    EXPECT_EQ(compareDates(u"2 FEB 1851", u"1 MAR 1850"), 2);
    EXPECT_EQ(compareDates(u"", u"1850"), -1);
    EXPECT_EQ(compareDates(u"1850", u"ABT 1850"), -1);
}

TEST(CalcAge, AtDeathNowIfAliveAndCannotCalculate)
{
    QString label = QStringLiteral("untouched");
    EXPECT_EQ(calcAge(u"", u"1900", label, today), -1);
    EXPECT_EQ(label, QStringLiteral("untouched"));
    EXPECT_EQ(calcAge(u"10 MAR 1850", u"9 MAR 1914", label, today), 63);
    EXPECT_EQ(label, QStringLiteral("at death"));
    EXPECT_EQ(calcAge(u"10 MAR 1850", u"10 MAR 1914", label, today), 64);
    EXPECT_EQ(calcAge(u"22 NOV 1996", u"", label, today), 29);
    EXPECT_EQ(label, QStringLiteral("now"));
    EXPECT_EQ(calcAge(u"21 NOV 1996", u"", label, today), 30);
    EXPECT_EQ(calcAge(u"1 JAN 1900", u"ABT 1900", label, today), -1);
    EXPECT_EQ(label, QStringLiteral("cannot calculate"));
    EXPECT_EQ(calcAge(u"1 JAN 1900", u"1 JAN 1890", label, today), -10)
        << "death before birth stays negative";
    EXPECT_EQ(label, QStringLiteral("at death"));
    EXPECT_EQ(calcAge(u"1 JAN 1925", u"", label, today), 101);
    EXPECT_EQ(label, QStringLiteral("if alive"));
}

TEST(YearsBetween, EitherOrderWithinTheYearQuirk)
{
    EXPECT_EQ(yearsBetween(u"10 MAR 1850", u"5 MAR 1850"), -1) << "same year, B earlier";
    EXPECT_EQ(yearsBetween(u"5 MAR 1860", u"10 MAR 1850"), 9);
    EXPECT_EQ(yearsBetween(u"10 MAR 1850", u"10 MAR 1860"), 10);
    EXPECT_EQ(yearsBetween(u"1850", u"1850"), 0);
    EXPECT_EQ(yearsBetween(u"1850", u""), -1);
    EXPECT_EQ(dateText(today), QStringLiteral("21 NOV 2026"));
}

// Every form of the GEDCOM date grammar is a date, in any case, whether or
// not parseDate can compute with it; a few texts that are not.
TEST(GedcomDateGrammarTest, EachFormIsADateAndOtherTextsAreNot)
{
    for (const char* date : {"1850",
                             "5",
                             "MAR 1850",
                             "12 MAR 1850",
                             "1 jan 1900",
                             "1456/57",
                             "ABT 1850",
                             "CAL 1850",
                             "EST 12 MAR 1850",
                             "BEF 1850",
                             "AFT MAR 1850",
                             "BET 1850 AND 1860",
                             "Bet 1511 and 1512",
                             "FROM 1850",
                             "TO 1860",
                             "FROM 1850 TO 1860",
                             "INT 1850 (about the war)",
                             "(after the war)",
                             "44 B.C.",
                             "44 BC",
                             "@#DJULIAN@ 12 MAR 1750",
                             "JULIAN 1 JAN 1700",
                             "@#DHEBREW@ 1 TSH 5600",
                             "@#DFRENCH R@ 1 VEND 10",
                             "FRENCH_R BRUM 11",
                             "  12   MAR   1850  "})
        EXPECT_TRUE(tav::isGedcomDate(QString::fromUtf8(date))) << date;
    for (const char* text : {"",
                             "circa 1850",
                             "12-MAR-1850",
                             "31 JUNE 1800",
                             "32 MAR 1850",
                             "MAR",
                             "12 MAR",
                             "BET 1850",
                             "FROM 1850 UNTIL 1860",
                             "INT 1850",
                             "INT (about)",
                             "1850?",
                             "12345",
                             "1456/57/58",
                             "1056/1060",
                             "@#DHEBREW@ 1 MAR 1850",
                             "@#DJULIAN@ 1456/57",
                             "ABT ABT 1850",
                             "1850 (about)"})
        EXPECT_FALSE(tav::isGedcomDate(QString::fromUtf8(text))) << text;
}
