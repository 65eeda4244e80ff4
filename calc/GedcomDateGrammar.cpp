// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/GedcomDateGrammar.h"

#include <QString>
#include <QStringList>
#include <array>

namespace tav {

namespace {

enum class Calendar { Gregorian, Julian, Hebrew, French, Other };

constexpr std::array<const char*, 12> gregorianMonths = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                                         "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};
constexpr std::array<const char*, 13> hebrewMonths = {
    "TSH", "CSH", "KSL", "TVT", "SHV", "ADR", "ADS", "NSN", "IYR", "SVN", "TMZ", "AAV", "ELL"};
constexpr std::array<const char*, 13> frenchMonths = {"VEND", "BRUM", "FRIM", "NIVO", "PLUV",
                                                      "VENT", "GERM", "FLOR", "PRAI", "MESS",
                                                      "THER", "FRUC", "COMP"};

bool allDigits(QStringView text, qsizetype fewest, qsizetype most)
{
    if (text.size() < fewest || text.size() > most)
        return false;
    for (const QChar c : text) {
        if (c < u'0' || c > u'9')
            return false;
    }
    return true;
}

template <size_t N>
bool oneOf(QStringView word, const std::array<const char*, N>& words)
{
    for (const char* w : words) {
        if (word == QLatin1String(w))
            return true;
    }
    return false;
}

// Reads the words of a date, upper-cased, from a position.
class DateWords {
public:
    explicit DateWords(QStringView text)
        : words_(text.toString().toUpper().split(QLatin1Char(' '), Qt::SkipEmptyParts))
    {}

    bool atEnd() const { return at_ >= words_.size(); }
    QStringView peek(qsizetype ahead = 0) const
    {
        return at_ + ahead < words_.size() ? QStringView(words_[at_ + ahead]) : QStringView();
    }
    bool take(const char* word)
    {
        if (peek() != QLatin1String(word))
            return false;
        ++at_;
        return true;
    }

    // [calendar] [[day] month] year [epoch]
    bool date()
    {
        const Calendar calendar = this->calendar();
        QStringView word = next();
        if (allDigits(word, 1, 2) && isMonth(calendar, peek())) {
            const int day = word.toInt();
            if (day < 1 || day > 31)
                return false;
            word = next();
        }
        if (isMonth(calendar, word))
            word = next();
        if (!year(calendar, word))
            return false;
        take("B.C.") || take("BC") || take("BCE");  // an epoch may follow
        return true;
    }

private:
    QStringView next() { return at_ < words_.size() ? QStringView(words_[at_++]) : QStringView(); }

    Calendar calendar()
    {
        if (take("@#DGREGORIAN@") || take("GREGORIAN"))
            return Calendar::Gregorian;
        if (take("@#DJULIAN@") || take("JULIAN"))
            return Calendar::Julian;
        if (take("@#DHEBREW@") || take("HEBREW"))
            return Calendar::Hebrew;
        if (take("FRENCH_R"))
            return Calendar::French;
        if (peek() == QLatin1String("@#DFRENCH") && peek(1) == QLatin1String("R@")) {
            at_ += 2;
            return Calendar::French;
        }
        if (take("@#DROMAN@") || take("@#DUNKNOWN@"))
            return Calendar::Other;
        return Calendar::Gregorian;
    }

    static bool isMonth(Calendar calendar, QStringView word)
    {
        switch (calendar) {
        case Calendar::Hebrew: return oneOf(word, hebrewMonths);
        case Calendar::French: return oneOf(word, frenchMonths);
        default: return oneOf(word, gregorianMonths);
        }
    }

    // 1 to 4 digits; in the Gregorian calendar also a dual year, 1456/57,
    // or written whole, 1637/1638 (the next year: 1056/1060 is no dual year).
    static bool year(Calendar calendar, QStringView word)
    {
        const qsizetype slash = word.indexOf(u'/');
        if (slash < 0)
            return allDigits(word, 1, 4);
        const QStringView first = word.left(slash), second = word.mid(slash + 1);
        if (calendar != Calendar::Gregorian || !allDigits(first, 1, 4))
            return false;
        return allDigits(second, 1, 2) ||
               (allDigits(second, 4, 4) && second.toInt() == first.toInt() + 1);
    }

    QStringList words_;
    qsizetype at_ = 0;
};

// Everything but a phrase: a date, approximated, a range or a period.
bool dateValue(QStringView text)
{
    DateWords words(text);
    if (words.take("ABT") || words.take("CAL") || words.take("EST") || words.take("BEF") ||
        words.take("AFT") || words.take("TO")) {
        return words.date() && words.atEnd();
    }
    if (words.take("BET"))
        return words.date() && words.take("AND") && words.date() && words.atEnd();
    if (words.take("FROM")) {
        if (!words.date())
            return false;
        return words.atEnd() || (words.take("TO") && words.date() && words.atEnd());
    }
    return words.date() && words.atEnd();
}

bool plainDate(QStringView text)
{
    DateWords words(text);
    return words.date() && words.atEnd();
}

bool isPhrase(QStringView text) { return text.startsWith(u'(') && text.endsWith(u')'); }

}  // namespace

bool isGedcomDate(QStringView text)
{
    const QStringView value = text.trimmed();
    if (value.isEmpty())
        return false;
    if (isPhrase(value))
        return true;
    // INT DATE (DATE_PHRASE)
    const qsizetype open = value.indexOf(u'(');
    if (open > 0) {
        const QStringView date = value.left(open).trimmed();
        return isPhrase(value.mid(open)) && date.size() > 4 &&
               date.left(4).compare(QLatin1String("INT "), Qt::CaseInsensitive) == 0 &&
               plainDate(date.mid(4));
    }
    return dateValue(value);
}

}  // namespace tav
