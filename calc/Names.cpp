// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/Names.h"

#include "calc/ReadDate.h"
#include "core/RecordStore.h"

namespace tav {

namespace {

// Length of the first character, counting a surrogate pair as one.
qsizetype firstCharLength(QStringView text)
{
    return text.size() >= 2 && text[0].isHighSurrogate() && text[1].isLowSurrogate()
               ? 2
               : qMin<qsizetype>(1, text.size());
}

// The surname part "/smith/" styled: 1 smith, 2 SMITH, 3 /smith/, 4 /SMITH/,
// 5 Smith, 6 /Smith/; anything else as it stands.
QString styledSurname(QStringView surname, int32_t style)
{
    const auto inner = [surname] {
        return surname.size() >= 2 ? surname.mid(1, surname.size() - 2) : QStringView();
    };
    const auto capitalised = [](QStringView text) {
        const qsizetype first = firstCharLength(text);
        return text.left(first).toString().toUpper() + text.mid(first).toString().toLower();
    };
    switch (style) {
    case 1: return inner().toString();
    case 2: return inner().toString().toUpper();
    case 4: return surname.toString().toUpper();
    case 5: return capitalised(inner());
    case 6: return surname.left(1).toString() + capitalised(surname.mid(1));
    default: return surname.toString();
    }
}

// A regnal number (Henry VIII, Louis XIV): a word of the capitals I, V and X
// only, never shortened, or it would name another king.
bool isRegnalNumber(QStringView word)
{
    if (word.isEmpty())
        return false;
    for (const QChar c : word) {
        if (c != u'I' && c != u'V' && c != u'X')
            return false;
    }
    return true;
}

// A given name as an initial: "J." for John; a regnal number whole.
QString initial(QStringView word)
{
    if (isRegnalNumber(word))
        return word.toString();
    return word.left(firstCharLength(word)).toString() + QLatin1Char('.');
}

}  // namespace

QString formatName(QStringView name, int flags, NameStyle style)
{
    if (name.isEmpty())
        return QStringLiteral("?");
    // The surname runs from the first "/" to the next, both included (to the
    // end when there is no second); what follows it (Jr, II) is a suffix.
    const qsizetype slash = name.indexOf(u'/');
    const qsizetype closing = slash >= 0 ? name.indexOf(u'/', slash + 1) : -1;
    const QStringView given = slash >= 0 ? name.left(slash) : name;
    const QStringView surname = slash < 0     ? QStringView()
                                : closing < 0 ? name.mid(slash)
                                              : name.mid(slash, closing - slash + 1);
    const QStringView suffix = closing < 0 ? QStringView() : name.mid(closing + 1).trimmed();

    QString g;
    if (flags & NameGivenAsWritten) {
        g = given.toString();
    } else {
        qsizetype blank1 = given.indexOf(u' ');
        if (blank1 < 0)
            blank1 = given.size();
        const QStringView first = given.left(blank1);
        if (flags & NameFirstGiven)
            g = first.toString();
        else if ((flags & NameFirstInitial) && !first.isEmpty())
            g = initial(first);
        // A second name counts only when a blank follows it.
        const qsizetype blank2 = blank1 + 1 <= given.size() ? given.indexOf(u' ', blank1 + 1) : -1;
        if (flags & NameSecondGiven) {
            if (blank2 >= 0)
                g += QLatin1Char(' ') + given.mid(blank1 + 1, blank2 - blank1 - 1).toString();
        } else if (flags & NameSecondInitial) {
            if (blank2 > blank1 + 1)
                g += QLatin1Char(' ') + initial(given.mid(blank1 + 1, blank2 - blank1 - 1));
        }
    }

    QString result;
    if (flags & NameSurname) {
        const QString styled = styledSurname(surname, style.surnameStyle);
        result = style.surnamePosn == 1 ? g + QLatin1Char(' ') + styled
                                        : styled + QStringLiteral(", ") + g;
    } else {
        result = g;
    }
    qsizetype end = result.size();
    while (end > 0 && result[end - 1] == u' ')
        --end;
    result.truncate(end);
    if ((flags & NameSurname) && !suffix.isEmpty())
        result += QLatin1Char(' ') + suffix.toString();
    return result;
}

QString listName(const RecordStore& records, int32_t individual, NameStyle style)
{
    return formatName(records.individual(individual).name, NameSurname | NameGivenAsWritten, style);
}

namespace {

// The year of a date, false when it has none that can be read (a year past
// 32 bits included: a label never faults).
bool yearOf(QStringView date, int32_t& year)
{
    const ReadDate read(date);
    year = read.year;
    return read.valid;
}

}  // namespace

QString personYears(const RecordStore& records, int32_t individual, QDate today)
{
    const Individual& person = records.individual(individual);
    QString label;
    int32_t birthYear = 0;
    if (yearOf(person.birthDate, birthYear)) {
        const QString digits =
            QString::number(qAbs(int64_t(birthYear))).rightJustified(4, QLatin1Char('0'));
        label = QStringLiteral("(b.") + (birthYear < 0 ? QStringLiteral("-") : QString()) + digits;
    } else {
        birthYear = 0;
    }
    int32_t deathYear = 0;
    if (yearOf(person.deathDate, deathYear)) {
        label += (label.isEmpty() ? QStringLiteral("(d.") : QStringLiteral("  d.")) +
                 QString::number(deathYear) + QLatin1Char(')');
        return label;
    }
    // Privacy: someone born less than 100 years ago may be alive, so no years.
    if (int64_t(today.year()) - birthYear < 100)
        return QString();
    if (!label.isEmpty())
        label += QLatin1Char(')');
    return label;
}

int32_t countChildren(const RecordStore& records, int32_t individual)
{
    const Individual& person = records.individual(individual);
    int32_t children = 0;
    for (int k = 1; k <= person.spouseFamilyCount; ++k)
        children += records.family(records.spouseFamilyOf(person, k)).childCount;
    return children;
}

QString ordinalWord(int32_t n, QStringView kind)
{
    if (kind.compare(u"ST", Qt::CaseInsensitive) == 0) {
        const QString t = QString::number(n);
        const QChar d1 = t.back();
        const int d2 = t.size() >= 2 ? t.right(2).toInt() : 0;
        if (d2 < 11 || d2 > 13) {
            if (d1 == u'1')
                return t + QStringLiteral("st");
            if (d1 == u'2')
                return t + QStringLiteral("nd");
            if (d1 == u'3')
                return t + QStringLiteral("rd");
        }
        return t + QStringLiteral("th");
    }
    if (kind.compare(u"ONCE", Qt::CaseInsensitive) == 0) {
        switch (n) {
        case 0: return QStringLiteral("zero times");
        case 1: return QStringLiteral("once");
        case 2: return QStringLiteral("twice");
        case 3: return QStringLiteral("thrice");
        default: return n < 0 ? QString() : QString::number(n) + QStringLiteral(" times");
        }
    }
    return QString();
}

}  // namespace tav
