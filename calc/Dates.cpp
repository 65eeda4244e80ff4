// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/Dates.h"

#include "core/TextNumbers.h"

#include <cmath>

namespace tav {

namespace {

constexpr char16_t monthLetters[] = u"JANFEBMARAPRMAYJUNJULAUGSEPOCTNOVDEC";
constexpr qsizetype monthLettersLength = 36;

// 1-based position of `word` (upper-cased as it is compared) in the month
// letters, 0 when absent; an empty word is found at 1.
qsizetype monthPosition(QStringView word)
{
    if (word.isEmpty())
        return 1;
    if (word.size() > monthLettersLength)
        return 0;
    QChar upper[monthLettersLength];
    for (qsizetype i = 0; i < word.size(); ++i) {
        const QChar c = word[i];
        upper[i] =
            c.unicode() < 128
                ? QChar(c.unicode() >= u'a' && c.unicode() <= u'z' ? c.unicode() - 32 : c.unicode())
                : c.toUpper();
    }
    const QStringView needle(upper, word.size());
    const QStringView haystack(monthLetters, monthLettersLength);
    return haystack.indexOf(needle) + 1;
}

// The month from a position in the month letters: (pos - 1) / 3 + 1 worked
// out in floating point and rounded, halves to even. Unknown words (0) give 1.
int32_t monthFromPosition(qsizetype position) { return toLong((double(position) - 1) / 3 + 1); }

int32_t numberOf(QStringView text) { return toLong(leadingNumber(text)); }

// Signed 32-bit arithmetic, as everywhere: a result out of range is the
// Overflow fault (a year such as -2147483648 in a file), never a wrong age.
int32_t long32(int64_t value) { return toLong(double(value)); }

qsizetype find(QStringView text, char16_t c, qsizetype from)
{
    const qsizetype at = text.indexOf(QChar(c), from);
    return at < 0 ? 0 : at + 1;  // 1-based, 0 when absent
}

}  // namespace

int32_t parseDate(QStringView text, int32_t& day, int32_t& month, int32_t& year)
{
    if (text.isEmpty())
        return 0;

    // A bare number is a year, taken to mean the middle of that year.
    if (isWholeNumber(text)) {
        year = numberOf(text);
        month = 6;
        day = 15;
        return -1;
    }

    const char16_t first = text[0].unicode();
    if (first >= u'0' && first <= u'9') {
        // Day month year, separated by "-" or blanks, each separator looked
        // for as "-" first. Positions below are 1-based, 0 meaning none.
        qsizetype p1 = find(text, u'-', 0);
        if (p1 == 0)
            p1 = find(text, u' ', 0);
        if (p1 == 0)
            day = 15;
        else
            day = numberOf(text.left(p1 - 1));
        qsizetype p2 = find(text, u'-', p1);
        if (p2 == 0)
            p2 = find(text, u' ', p1);
        if (p2 == 0) {
            p2 = p1;
            p1 = 0;
        }
        if (p2 == 0)
            return 0;
        month = monthFromPosition(monthPosition(text.mid(p1, p2 - p1 - 1)));
        year = numberOf(text.mid(p2));
        return year < 100 ? 0 : -1;
    }

    // Month year. Qualifiers such as ABT or BEF are not months: unusable.
    const qsizetype position = monthPosition(text.left(3));
    if (position == 0)
        return 0;
    month = monthFromPosition(position);
    year = text.size() > 3 ? numberOf(text.mid(3)) : 0;
    return year < 100 ? 0 : -1;
}

int32_t compareDates(QStringView a, QStringView b)
{
    int32_t dayA = 0, monthA = 0, yearA = 0;
    int32_t dayB = 0, monthB = 0, yearB = 0;
    if (!parseDate(a, dayA, monthA, yearA) || !parseDate(b, dayB, monthB, yearB))
        return -1;
    if (yearA != yearB)
        return yearA < yearB ? 0 : 2;
    if (monthA != monthB)
        return monthA < monthB ? 0 : 2;
    if (dayA != dayB)
        return dayA < dayB ? 0 : 2;
    return 1;
}

int32_t calcAge(QStringView birth, QStringView death, QString& label, QDate today)
{
    int32_t birthDay = 0, birthMonth = 0, birthYear = 0;
    if (!parseDate(birth, birthDay, birthMonth, birthYear))
        return -1;
    int32_t endDay = 0, endMonth = 0, endYear = 0;
    if (parseDate(death, endDay, endMonth, endYear)) {
        label = QStringLiteral("at death");
    } else if (!death.isEmpty()) {
        label = QStringLiteral("cannot calculate");
        return -1;
    } else {
        endDay = today.day();
        endMonth = today.month();
        endYear = today.year();
        label = QStringLiteral("now");
    }
    const bool beforeBirthday =
        endMonth < birthMonth || (endMonth == birthMonth && endDay < birthDay);
    const int32_t age = long32(int64_t(endYear) - birthYear - (beforeBirthday ? 1 : 0));
    if (age > 100 && label == QLatin1String("now"))
        label = QStringLiteral("if alive");
    return age;
}

int32_t yearsBetween(QStringView a, QStringView b)
{
    int32_t dayA = 0, monthA = 0, yearA = 0;
    int32_t dayB = 0, monthB = 0, yearB = 0;
    if (!parseDate(a, dayA, monthA, yearA) || !parseDate(b, dayB, monthB, yearB))
        return -1;
    int32_t diff = long32(std::abs(int64_t(yearB) - yearA));
    // Within one year A always counts as the earlier date, so a B earlier
    // in that year gives -1, the same as "cannot compute".
    const bool aEarlier = yearB >= yearA;
    const int32_t laterMonth = aEarlier ? monthB : monthA, laterDay = aEarlier ? dayB : dayA;
    const int32_t earlierMonth = aEarlier ? monthA : monthB, earlierDay = aEarlier ? dayA : dayB;
    if (laterMonth < earlierMonth || (laterMonth == earlierMonth && laterDay < earlierDay))
        --diff;
    return diff;
}

QString dateText(QDate date)
{
    const QString month = QString::fromUtf16(monthLetters + (date.month() - 1) * 3, 3);
    return QStringLiteral("%1 %2 %3").arg(date.day()).arg(month).arg(date.year());
}

}  // namespace tav
