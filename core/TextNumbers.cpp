#include "core/TextNumbers.h"

#include "core/Fault.h"

#include <cmath>

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

int32_t digitsValue(QStringView text)
{
    double value = 0;
    for (QChar c : text) {
        if (isDigit(c.unicode()))
            value = value * 10 + (c.unicode() - u'0');
    }
    return toLong(value);
}

}  // namespace tav
