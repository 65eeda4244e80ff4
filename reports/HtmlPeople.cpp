// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/HtmlPeople.h"

#include "calc/ReadDate.h"
#include "core/FileNames.h"
#include "core/RecordStore.h"
#include "reports/HtmlText.h"

#include <QFileInfo>
#include <QLocale>
#include <QStringList>
#include <optional>

namespace tav {

namespace {

// Quiet on screen, black and white on paper: the rules of every report.
const char commonStyle[] = R"css(
body { font: 16px/1.45 Georgia, "DejaVu Serif", "Liberation Serif", serif; color: #222;
  background: #fff; max-width: 70em; margin: 2em auto; padding: 0 1.5em; }
header { max-width: 46em; }
h1 { font-weight: normal; font-size: 2em; margin: 0 0 .4em; padding-bottom: .2em;
  border-bottom: 2px solid #8b6b4a; }
.totals { display: flex; flex-wrap: wrap; gap: .8em; margin: 1em 0; padding: 0; }
.totals div { border: 1px solid #ddd0bd; background: #faf6ef; border-radius: 4px;
  padding: .35em 1em; min-width: 7em; }
.totals dt { font: .75em sans-serif; text-transform: uppercase; letter-spacing: .06em;
  color: #6b5a48; }
.totals dd { margin: 0; font-size: 1.6em; }
.explain { color: #555; font-size: .9em; margin: .4em 0; }
.warning, .note { color: #8a3b12; font-style: italic; }
main { margin-top: 1.6em; }
ol, ul { list-style: none; margin: 0; padding: 0; }
p { margin: 0; }
.name { font-weight: bold; }
.years { white-space: pre; color: #555; }
.m { font-style: italic; color: #8b6b4a; }
.see { font-style: italic; color: #777; font-size: .92em; }
a { color: inherit; text-decoration: underline dotted #8b6b4a; }
footer { margin-top: 2.5em; padding-top: .4em; border-top: 1px solid #ccc; color: #777;
  font-size: .8em; }
@page { margin: 16mm 14mm 18mm; }
@media print {
  body { font-size: 10pt; color: #000; max-width: none; margin: 0; padding: 0; }
  h1 { border-bottom-color: #000; }
  .totals div { background: none; border-color: #999; }
  .totals dt, .explain, .years, .see, .m, .warning, .note, footer { color: #000; }
  a { text-decoration: none; }
  h1, .totals { break-after: avoid; }
  .totals div { break-inside: avoid; }
}
)css";

// A page never faults: a year that cannot be read, one past 32 bits
// included, is no year.
std::optional<int32_t> yearOf(QStringView date)
{
    const ReadDate read(date);
    return read.valid ? std::optional<int32_t>(read.year) : std::nullopt;
}

// Less than a hundred years before `today`: may concern someone alive.
bool withinACentury(QDate today, int32_t year) { return int64_t(today.year()) - year < 100; }

bool deathKnown(const Individual& person) { return yearOf(person.deathDate).has_value(); }

}  // namespace

QString htmlPageStart(const QString& title, QLatin1StringView ownStyle)
{
    return QStringLiteral("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n"
                          "<meta charset=\"utf-8\" />\n"
                          "<meta name=\"viewport\" content=\"width=device-width, "
                          "initial-scale=1\" />\n"
                          "<meta name=\"generator\" content=\"Tav\" />\n<title>") +
           htmlEscaped(title) + QStringLiteral("</title>\n<style>") + QLatin1String(commonStyle) +
           ownStyle + QStringLiteral("</style>\n</head>\n<body>\n");
}

QString htmlPageEnd(const RecordStore& records, QDate today)
{
    const QString file = shownFileName(QFileInfo(records.fileName).fileName());
    return QStringLiteral("<footer><p>From %1, %2. Written by Tav.</p></footer>\n"
                          "</body>\n</html>\n")
        .arg(htmlEscaped(file), QLocale::c().toString(today, QStringLiteral("d MMMM yyyy")));
}

QString placeText(QStringView place)
{
    QStringList parts;
    for (const QStringView part : place.split(QLatin1Char(',')))
        if (const QString simple = part.toString().simplified(); !simple.isEmpty())
            parts << simple;
    return parts.join(QStringLiteral(", "));
}

HtmlPeople::HtmlPeople(const RecordStore& records, NameStyle style, QDate today)
    : records_(records), style_(style), today_(today)
{}

QString HtmlPeople::name(int32_t slot) const
{
    const QStringView text = records_.individual(slot).name;
    const QString given = formatName(text, NameGivenAsWritten, style_).simplified();
    if (formatName(text, NameSurname, NameStyle{1, 1}).trimmed().isEmpty())
        return given.isEmpty() ? QStringLiteral("?") : given;
    if (given.isEmpty())
        return formatName(text, NameSurname, NameStyle{style_.surnameStyle, 1}).simplified();
    return formatName(text, NameSurname | NameGivenAsWritten, style_).simplified();
}

QString HtmlPeople::years(int32_t slot) const
{
    const QString label = personYears(records_, slot, today_);
    return label.isEmpty()
               ? QString()
               : QStringLiteral(" <span class=\"years\">") + label + QStringLiteral("</span>");
}

bool HtmlPeople::mayBeLiving(const Individual& person) const
{
    return !deathKnown(person) && withinACentury(today_, yearOf(person.birthDate).value_or(0));
}

bool HtmlPeople::marriageShown(const Family& family, int32_t one, int32_t other) const
{
    for (const int32_t spouse : {one, other}) {
        if (spouse != 0 && mayBeLiving(records_.individual(spouse)))
            return false;
    }
    const std::optional<int32_t> year = yearOf(family.marriageDate);
    const bool recent = year && withinACentury(today_, *year);
    if (!recent)
        return true;
    for (const int32_t spouse : {one, other}) {
        if (spouse != 0 && !deathKnown(records_.individual(spouse)))
            return false;
    }
    return true;
}

QString HtmlPeople::marriageDetails(const Family& family, int32_t husband, int32_t wife) const
{
    QString text;
    if (!marriageShown(family, husband, wife))
        return text;
    for (const QString& part :
         {family.marriageDate.toString().simplified(), placeText(family.marriagePlace)}) {
        if (!part.isEmpty())
            text += QStringLiteral(", ") + htmlEscaped(part);
    }
    return text;
}

}  // namespace tav
