// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Fault.h"
#include "core/TextNumbers.h"

#include <gtest/gtest.h>

using namespace tav;

// A number typed into a box, read as the platform reads one.
TEST(TextNumbersTest, TypedNumbersReadAsThePlatformReadsThem)
{
    const std::pair<const char16_t*, double> cases[] = {
        {u" 12", 12},    {u"1e1", 10},    {u"2D3", 2000},      {u"1.5E-1", 0.15}, {u"&H10", 16},
        {u"&h1f", 31},   {u"&HFFFF", -1}, {u"&H10000", 65536}, {u"&O17", 15},     {u"&o777", 511},
        {u"1 2 3", 123}, {u"-4", -4},     {u"+7", 7},          {u"abc", 0},       {u"", 0},
        {u"12abc", 12},  {u"1e", 1},      {u"3.2.1", 3.2},     {u"&X12", 0},      {u"\t9\n", 9}};
    for (const auto& [text, value] : cases)
        EXPECT_DOUBLE_EQ(numericValue(QStringView(text)), value)
            << QString::fromUtf16(text).toStdString();
}

TEST(TextNumbersTest, RoundingIsHalfToEvenAndOverflowIsAFault)
{
    EXPECT_EQ(toLong(2.5), 2);
    EXPECT_EQ(toLong(3.5), 4);
    EXPECT_EQ(toLong(-2.5), -2);
    EXPECT_EQ(toInteger(32767.4), 32767);
    EXPECT_THROW(toInteger(32767.5), RuntimeFault);
    EXPECT_THROW(toLong(2147483648.0), RuntimeFault);
    EXPECT_EQ(signedText(12), QStringLiteral(" 12"));
    EXPECT_EQ(signedText(-3), QStringLiteral("-3"));
    EXPECT_EQ(digitsValue(u"@N1A2@"), 12);
}
