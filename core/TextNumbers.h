// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>
#include <cstdint>
#include <string_view>

// The number rules every routine shares: reading a leading number out of a
// text, deciding whether a whole text is a number, and turning a floating
// value into a 32- or 16-bit integer with halves rounded to even.
namespace tav {

// The leading number of a text: optional sign, digits, one decimal point;
// blanks anywhere in it are skipped; 0 when there is none. "1850/51" is 1850.
double leadingNumber(QStringView text);
double leadingNumber(const char* bytes, qsizetype length);

// The number a text starts with, read as the platform's numeric conversion
// reads a typed number: blanks anywhere are skipped; "&H1F" is hexadecimal
// and "&O17" octal (four digits or fewer make a 16-bit value, so "&HFFFF" is
// -1); otherwise an optional sign, digits, a decimal point and an exponent
// ("1e1" is 10, "2D3" is 2000); 0 when there is none.
double numericValue(QStringView text);

// True when the whole text is one number: optional surrounding blanks and sign,
// digits with at most one decimal point.
bool isWholeNumber(QStringView text);

// Round half to even and narrow; out of range raises the Overflow fault.
int32_t toLong(double value);
int16_t toInteger(double value);

// Number-to-text as the platform prints a number: a leading blank stands in
// for the sign of a positive number (" 12", "-3").
QString signedText(long long value);

// The value of every digit of the text, in order ("@N1A2@" is 12, "N" is 0);
// past the largest 64-bit number, that number.
int64_t digitsValue(QStringView text);
int64_t digitsValue(std::string_view bytes);

}  // namespace tav
