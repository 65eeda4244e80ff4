// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/HtmlAncestorsReport.h"

#include "app/Session.h"
#include "calc/Ahnentafel.h"
#include "core/RecordStore.h"
#include "reports/HtmlPeople.h"
#include "reports/HtmlText.h"

#include <QDir>
#include <QStringList>

namespace tav {

namespace {

// Couples stand side by side as cards while the page is wide enough.
const char ownStyle[] = R"css(
h2 { font-weight: normal; font-size: 1.3em; margin: 1.4em 0 .5em; padding-bottom: .1em;
  border-bottom: 1px solid #ddd0bd; }
h2 .known { font: .62em sans-serif; color: #6b5a48; margin-left: .6em; }
ol.couples { display: flex; flex-wrap: wrap; gap: .7em; }
li.couple { flex: 1 1 20em; max-width: 34em; border: 1px solid #ddd0bd; border-radius: 4px;
  padding: .35em .7em .45em; background: #fdfbf7; }
.child { font-size: .85em; color: #6b5a48; margin-bottom: .15em; }
.entry { padding-left: 2.6em; text-indent: -2.6em; }
.num { display: inline-block; min-width: 2.1em; margin-right: .15em; text-indent: 0;
  font: bold .72em/1.6 sans-serif; text-align: center; color: #fff; background: #5d7fa3;
  border-radius: 3px; vertical-align: .12em; }
.mother .num { background: #a98763; }
.unknown { color: #888; font-style: italic; }
.again .name { font-weight: normal; }
.marriage { padding-left: 3.1em; color: #333; }
@media print {
  body { max-width: none; }
  li.couple { background: none; border-color: #999; break-inside: avoid; }
  .num, .mother .num { color: #000; background: none; border: 1px solid #777; }
  .child, h2 .known { color: #000; }
  h2 { break-after: avoid; }
}
)css";

QString anchor(int32_t number) { return QStringLiteral("a%1").arg(number); }

// "Parents", "Grandparents", "Great-grandparents", "2nd great-grandparents".
QString generationName(int generation)
{
    switch (generation) {
    case 1: return QString();
    case 2: return QStringLiteral("Parents");
    case 3: return QStringLiteral("Grandparents");
    case 4: return QStringLiteral("Great-grandparents");
    default: return ordinalWord(generation - 3, u"ST") + QStringLiteral(" great-grandparents");
    }
}

class PageWriter {
public:
    PageWriter(const RecordStore& records, NameStyle style, QDate today, int32_t root,
               int generations)
        : records_(records), today_(today), people_(records, style, today),
          chart_(records, root, generations)
    {}

    QByteArray page()
    {
        const QString rootName =
            chart_.root() != 0 ? people_.name(chart_.root()) : QStringLiteral("?");
        html_ +=
            htmlPageStart(QStringLiteral("Ancestors of ") + rootName, QLatin1StringView(ownStyle));
        writeHeader(htmlEscaped(rootName));
        html_ += QStringLiteral("<main>\n");
        for (int generation = 1; generation <= chart_.generations(); ++generation)
            writeGeneration(generation);
        html_ += QStringLiteral("</main>\n");
        html_ += htmlPageEnd(records_, today_);
        return html_.toUtf8();
    }

private:
    void writeHeader(const QString& who)
    {
        html_ += QStringLiteral("<header>\n<h1>Ancestors of ") + who + QStringLiteral("</h1>\n");
        const int32_t ancestors = std::max(0, chart_.distinctPeople() - 1);
        int32_t known = 0;
        for (int32_t number = 2; number <= chart_.lastNumber(); ++number)
            known += chart_.forebearAt(number) != 0 ? 1 : 0;
        html_ += QStringLiteral("<dl class=\"totals\">\n"
                                "<div><dt>Generations</dt><dd>%1</dd></div>\n"
                                "<div><dt>Ancestors</dt><dd>%2</dd></div>\n"
                                "<div><dt>Places known</dt><dd>%3 of %4</dd></div>\n</dl>\n")
                     .arg(chart_.generations())
                     .arg(ancestors)
                     .arg(known)
                     .arg(chart_.lastNumber() - 1);
        if (ancestors == 0) {
            html_ += QStringLiteral("<p class=\"explain\">The file names no parents of %1.</p>\n")
                         .arg(who);
        } else {
            html_ += QStringLiteral(
                         "<p class=\"explain\">Each ancestor has a number: %1 is 1, the father "
                         "of number n is 2n and the mother 2n + 1, so fathers have even "
                         "numbers and mothers odd ones. Generation by generation, each couple "
                         "is named with the child whose parents they are. People who may "
                         "still be living (born less than 100 years ago, no death recorded) "
                         "are shown without dates, and their marriages without date and "
                         "place.</p>\n")
                         .arg(who);
        }
        if (chart_.distinctPeople() < int32_t(chart_.places().size()))
            html_ += QStringLiteral(
                "<p class=\"explain\">Some ancestors are reached along more than one line, "
                "where cousins married. Each is written in full at the first number, with "
                "links to the others; at a later number a link leads back to the first, and "
                "their forebears are not written again. The ancestors counted are different "
                "people; the places known count each line.</p>\n");
        html_ += QStringLiteral("</header>\n");
    }

    void writeGeneration(int generation)
    {
        const int32_t first = int32_t(1) << (generation - 1);
        const int32_t last = 2 * first - 1;
        int32_t known = 0;
        for (int32_t number = first; number <= last; ++number)
            known += chart_.forebearAt(number) != 0 ? 1 : 0;
        QString heading = QStringLiteral("Generation %1").arg(generation);
        if (generation > 1)
            heading += QStringLiteral(": ") + generationName(generation) +
                       QStringLiteral(" <span class=\"known\">%1 of %2 known</span>")
                           .arg(known)
                           .arg(first);
        html_ +=
            QStringLiteral("<h2 id=\"g%1\">").arg(generation) + heading + QStringLiteral("</h2>\n");
        if (generation == 1) {
            html_ += QStringLiteral("<ol class=\"couples\">\n<li class=\"couple\">") + entry(1) +
                     QStringLiteral("</li>\n</ol>\n");
            return;
        }
        // A couple for each child whose parents the chart shows.
        QString couples;
        for (int32_t father = first; father <= last; father += 2) {
            const int32_t child = father / 2;
            if (!chart_.continuesAt(child) ||
                (chart_.individualAt(father) == 0 && chart_.individualAt(father + 1) == 0))
                continue;
            couples += QStringLiteral("<li class=\"couple\"><p class=\"child\">Parents of ") +
                       link(child) + QStringLiteral(" (%1)</p>\n").arg(child) + entry(father) +
                       entry(father + 1) + marriage(child) + QStringLiteral("</li>\n");
        }
        if (couples.isEmpty())
            html_ += QStringLiteral("<p class=\"explain\">No one of this generation is known "
                                    "on the lines written above.</p>\n");
        else
            html_ +=
                QStringLiteral("<ol class=\"couples\">\n") + couples + QStringLiteral("</ol>\n");
    }

    // "<span class="num">12</span> NAME (years)", with the links of a person
    // met more than once.
    QString entry(int32_t number) const
    {
        const int32_t person = chart_.individualAt(number);
        const QString side = number == 1       ? QString()
                             : number % 2 == 0 ? QStringLiteral(" father")
                                               : QStringLiteral(" mother");
        const QString num = QStringLiteral("<span class=\"num\">%1</span> ").arg(number);
        if (person == 0)
            return QStringLiteral("<p class=\"entry%1\" id=\"%2\">").arg(side, anchor(number)) +
                   num +
                   QStringLiteral("<span class=\"unknown\">%1 not recorded</span></p>\n")
                       .arg(number % 2 == 0 ? QStringLiteral("Father") : QStringLiteral("Mother"));
        const int32_t firstNumber = chart_.firstNumberOf(number);
        if (firstNumber != 0)
            return QStringLiteral("<p class=\"entry again%1\" id=\"%2\">")
                       .arg(side, anchor(number)) +
                   num + link(firstNumber) + people_.years(person) +
                   QStringLiteral(" <span class=\"see\">\u2013 the same person as number %1, "
                                  "whose forebears are written there</span></p>\n")
                       .arg(firstNumber);
        QString text = QStringLiteral("<p class=\"entry%1\" id=\"%2\">").arg(side, anchor(number)) +
                       num + QStringLiteral("<span class=\"name\">") +
                       htmlEscaped(people_.name(person)) + QStringLiteral("</span>") +
                       people_.years(person);
        const std::vector<int32_t> repeats = chart_.repeatsOf(number);
        if (!repeats.empty()) {
            QStringList links;
            for (const int32_t repeat : repeats)
                links << QStringLiteral("<a href=\"#%1\">%2</a>").arg(anchor(repeat)).arg(repeat);
            text += QStringLiteral(" <span class=\"see\">\u2013 also number ") +
                    links.join(QStringLiteral(", ")) + QStringLiteral("</span>");
        }
        return text + QStringLiteral("</p>\n");
    }

    QString link(int32_t number) const
    {
        return QStringLiteral("<a class=\"name\" href=\"#%1\">%2</a>")
            .arg(anchor(number), htmlEscaped(people_.name(chart_.individualAt(number))));
    }

    // The parents' marriage: their family as the child's family in the file.
    QString marriage(int32_t child) const
    {
        const int32_t familySlot =
            records_.childFamilyOf(records_.individual(chart_.individualAt(child)));
        if (familySlot == 0)
            return QString();
        const Family& family = records_.family(familySlot);
        const QString details =
            people_.marriageDetails(family, records_.husbandOf(family), records_.wifeOf(family));
        if (details.isEmpty())
            return QString();
        // The details begin with the comma that joins them to what precedes.
        return QStringLiteral("<p class=\"marriage\"><span class=\"m\">m.</span> ") +
               details.mid(2) + QStringLiteral("</p>\n");
    }

    const RecordStore& records_;
    QDate today_;
    HtmlPeople people_;
    Ahnentafel chart_;
    QString html_;
};

}  // namespace

QString ancestorsReportPath(const QString& folder)
{
    return QDir(folder.isEmpty() ? QDir::currentPath() : folder)
        .filePath(QStringLiteral("tav-ancestors.htm"));
}

QByteArray htmlAncestorsReport(const RecordStore& records, NameStyle style, QDate today,
                               int32_t root, int generations)
{
    return PageWriter(records, style, today, root, generations).page();
}

Result<QString> writeHtmlAncestorsReport(Session& session, int32_t root, int generations,
                                         const QString& path)
{
    return writeWholeFile(path, htmlAncestorsReport(session.records, session.nameStyle(),
                                                    session.today(), root, generations));
}

}  // namespace tav
