// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/TextNumbers.h"

#include "core/Fault.h"

#include <cmath>
#include <limits>

namespace tav {

namespace {

inline bool isBlank(char16_t c) { return c == u' ' || c == u'\t' || c == u'\n'; }
inline bool isDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

template <typename CharAt>
double leadingNumberOf(qsizetype length, CharAt at)
{
    qsizetype i = 0;
    while (i < length && isBlank(at(i)))
        ++i;
    bool negative = false;
    if (i < length && (at(i) == u'-' || at(i) == u'+')) {
        negative = at(i) == u'-';
        ++i;
    }
    double value = 0;
    double scale = 0;  // 0 while reading the whole part, then 0.1, 0.01 ...
    for (; i < length; ++i) {
        const char16_t c = at(i);
        if (isDigit(c)) {
            if (scale == 0) {
                value = value * 10 + (c - u'0');
            } else {
                value += (c - u'0') * scale;
                scale /= 10;
            }
        } else if (c == u'.' && scale == 0) {
            scale = 0.1;
        } else if (!isBlank(c)) {
            break;
        }
    }
    return negative ? -value : value;
}

}  // namespace

double leadingNumber(QStringView text)
{
    const QChar* data = text.data();
    return leadingNumberOf(text.size(), [data](qsizetype i) { return data[i].unicode(); });
}

double leadingNumber(const char* bytes, qsizetype length)
{
    return leadingNumberOf(
        length, [bytes](qsizetype i) { return char16_t(static_cast<unsigned char>(bytes[i])); });
}

double numericValue(QStringView text)
{
    QString compact;
    for (QChar c : text) {
        if (!isBlank(c.unicode()))
            compact += c;
    }
    if (compact.size() >= 2 && compact[0] == u'&') {
        const char16_t radixLetter = compact[1].toUpper().unicode();
        const int radix = radixLetter == u'H' ? 16 : radixLetter == u'O' ? 8 : 0;
        if (radix) {
            const auto digitOf = [radix](QChar c) {
                const char16_t u = c.toUpper().unicode();
                const int digit = u >= u'0' && u <= u'9'   ? u - u'0'
                                  : u >= u'A' && u <= u'F' ? 10 + (u - u'A')
                                                           : radix;
                return digit < radix ? digit : -1;
            };
            qsizetype end = 2;
            uint64_t value = 0;
            const qsizetype maxDigits = radix == 16 ? 8 : 11;
            while (end < compact.size() && end - 2 < maxDigits && digitOf(compact[end]) >= 0)
                value = value * uint64_t(radix) + uint64_t(digitOf(compact[end++]));
            const bool shortForm = radix == 16 ? end - 2 <= 4 : value <= 0xFFFF;
            return shortForm ? double(int16_t(uint16_t(value))) : double(int32_t(uint32_t(value)));
        }
        return 0;
    }
    qsizetype i = 0;
    const qsizetype n = compact.size();
    if (i < n && (compact[i] == u'-' || compact[i] == u'+'))
        ++i;
    const qsizetype mantissaStart = i;
    while (i < n && (isDigit(compact[i].unicode()) || compact[i] == u'.'))
        ++i;
    qsizetype end = i;
    if (i < n && (compact[i].toUpper() == u'E' || compact[i].toUpper() == u'D')) {
        qsizetype j = i + 1;
        if (j < n && (compact[j] == u'-' || compact[j] == u'+'))
            ++j;
        const qsizetype exponentDigits = j;
        while (j < n && isDigit(compact[j].unicode()))
            ++j;
        if (j > exponentDigits)
            end = j;
    }
    if (end == mantissaStart)
        return 0;
    QString number = compact.left(end);
    const qsizetype point = number.indexOf(u'.', number.indexOf(u'.') + 1);
    if (point >= 0)  // a second decimal point ends the number
        number = number.left(point);
    number.replace(u'D', u'E').replace(u'd', u'e');
    bool ok = false;
    const double value = number.toDouble(&ok);
    return ok ? value : leadingNumber(number);
}

bool isWholeNumber(QStringView text)
{
    qsizetype i = 0;
    const qsizetype n = text.size();
    while (i < n && text[i] == u' ')
        ++i;
    if (i < n && (text[i] == u'-' || text[i] == u'+'))
        ++i;
    bool digits = false;
    bool point = false;
    for (; i < n; ++i) {
        const char16_t c = text[i].unicode();
        if (isDigit(c)) {
            digits = true;
        } else if (c == u'.' && !point) {
            point = true;
        } else {
            break;
        }
    }
    while (i < n && text[i] == u' ')
        ++i;
    return digits && i == n;
}

int32_t toLong(double value)
{
    const double r = std::nearbyint(value);  // default rounding mode: halves to even
    if (!(r >= -2147483648.0 && r <= 2147483647.0))
        raiseFault(RuntimeFault::Overflow);
    return static_cast<int32_t>(r);
}

int16_t toInteger(double value)
{
    const double r = std::nearbyint(value);
    if (!(r >= -32768.0 && r <= 32767.0))
        raiseFault(RuntimeFault::Overflow);
    return static_cast<int16_t>(r);
}

QString signedText(long long value)
{
    return value < 0 ? QString::number(value) : QLatin1Char(' ') + QString::number(value);
}

namespace {

// The value so far with one more digit, or the largest number once past it.
int64_t withDigit(int64_t value, int digit)
{
    constexpr int64_t largest = std::numeric_limits<int64_t>::max();
    return value > (largest - digit) / 10 ? largest : value * 10 + digit;
}

}  // namespace

int64_t digitsValue(QStringView text)
{
    int64_t value = 0;
    for (const QChar c : text) {
        if (isDigit(c.unicode()))
            value = withDigit(value, c.unicode() - u'0');
    }
    return value;
}

int64_t digitsValue(std::string_view bytes)
{
    int64_t value = 0;
    for (const char c : bytes) {
        if (c >= '0' && c <= '9')
            value = withDigit(value, c - '0');
    }
    return value;
}

}  // namespace tav
