#include "core/Fault.h"
#include "core/TextNumbers.h"

#include "tests/QtPrinters.h"

#include <gtest/gtest.h>

using namespace tav;

TEST(LeadingNumber, ReadsSignDigitsAndPointSkippingBlanks)
{
    EXPECT_EQ(leadingNumber(u"1850/51"), 1850);
    EXPECT_EQ(leadingNumber(u"1850 (approx)"), 1850);
    EXPECT_EQ(leadingNumber(u"  12 "), 12);
    EXPECT_EQ(leadingNumber(u"1 8 5 0"), 1850);
    EXPECT_EQ(leadingNumber(u"-3.5x"), -3.5);
    EXPECT_EQ(leadingNumber(u"+7"), 7);
    EXPECT_EQ(leadingNumber(u"1.2.3"), 1.2);
    EXPECT_EQ(leadingNumber(u"MAR 1850"), 0);
    EXPECT_EQ(leadingNumber(u""), 0);
    EXPECT_EQ(leadingNumber("12@ INDI", 8), 12);
}

TEST(WholeNumber, AcceptsOnlyASingleNumberWithSurroundingBlanks)
{
    for (const char16_t* yes : {u"1850", u" 1850 ", u"-50", u"+3", u"12.5", u"5.", u".5"})
        EXPECT_TRUE(isWholeNumber(yes)) << QString::fromUtf16(yes).toStdString();
    for (const char16_t* no : {u"", u" ", u"1850a", u"12 MAR 1850", u"1 2", u".", u"-", u"1.2.3"})
        EXPECT_FALSE(isWholeNumber(no)) << QString::fromUtf16(no).toStdString();
}

TEST(Narrowing, RoundsHalvesToEvenAndFaultsOutsideTheRange)
{
    EXPECT_EQ(toLong(2.5), 2);
    EXPECT_EQ(toLong(3.5), 4);
    EXPECT_EQ(toLong(-2.5), -2);
    EXPECT_EQ(toLong(1849.6), 1850);
    EXPECT_EQ(toInteger(32767), 32767);
    EXPECT_EQ(toInteger(-32768), -32768);
    try {
        toInteger(32768);
        FAIL() << "no overflow";
    } catch (const RuntimeFault& fault) {
        EXPECT_EQ(fault.messageText(), QStringLiteral("Error no:  6 Overflow"));
    }
    EXPECT_THROW(toLong(2147483648.0), RuntimeFault);
    EXPECT_EQ(toLong(-2147483648.0), INT32_MIN);
}

TEST(DigitsValue, KeepsEveryDigitInOrder)
{
    EXPECT_EQ(digitsValue(u"N"), 0);
    EXPECT_EQ(digitsValue(u"@N0012@"), 12);
    EXPECT_EQ(digitsValue(u"@N1A2@"), 12);
    EXPECT_THROW(digitsValue(u"@N99999999999@"), RuntimeFault);
    EXPECT_EQ(signedText(12), QStringLiteral(" 12"));
    EXPECT_EQ(signedText(-3), QStringLiteral("-3"));
}
