// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/HtmlDescendantsReport.h"

#include "app/Session.h"
#include "calc/DescendantCounting.h"
#include "core/Fault.h"
#include "core/FileNames.h"
#include "core/RecordStore.h"
#include "reports/DescendancyOutline.h"
#include "reports/HtmlPeople.h"
#include "reports/HtmlText.h"
#include "reports/ReportLabels.h"

#include <QDir>

namespace tav {

namespace {

// The descendancy's own rules. Lines of many generations indent less the
// deeper they go, and not at all beyond the 40th (the generation numbers
// still tell), so that even a hundred fit a page.
const char ownStyle[] = R"css(
ol.children { margin-left: .75em; padding-left: .85em; border-left: 1px solid #ddd0bd; }
ol.deeper { margin-left: .2em; padding-left: .3em; }
ol.deepest { margin: 0; padding: 0; border: none; }
.entry { padding: .15em 0 0 2.1em; text-indent: -2.1em; }
.marriage, .family > .note { padding-left: 3.3em; text-indent: -1.2em; }
li.note { padding-left: 2.1em; }
.gen { display: inline-block; min-width: 1.5em; margin-right: .15em; padding: 0 .2em;
  text-indent: 0; font: bold .72em/1.6 sans-serif; text-align: center; color: #fff;
  background: #8b6b4a; border-radius: 3px; vertical-align: .12em; }
.marriage { color: #333; }
.again .name { font-weight: normal; }
@media print {
  .gen { color: #000; background: none; border: 1px solid #777; }
  ol.children { border-left-color: #aaa; }
  .marriage { break-after: avoid; }
  .entry, .marriage { break-inside: avoid; }
}
)css";

class PageWriter {
public:
    PageWriter(const RecordStore& records, DescendantCache& descendants, NameStyle style,
               QDate today, int32_t top)
        : records_(records), descendants_(descendants), today_(today),
          peopleText_(records, style, today), outline_(records, top)
    {}

    QByteArray page()
    {
        const QString topName = name(outline_.top());
        html_ +=
            htmlPageStart(QStringLiteral("Descendants of ") + topName, QLatin1StringView(ownStyle));
        writeHeader(topName);
        html_ += QStringLiteral("<main>\n<ol class=\"descendancy\">\n");
        for (const OutlineStep& step : outline_.steps())
            write(step);
        html_ += QStringLiteral("</ol>\n</main>\n");
        html_ += htmlPageEnd(records_, today_);
        return html_.toUtf8();
    }

private:
    QString name(int32_t slot) const { return peopleText_.name(slot); }
    QString years(int32_t slot) const { return peopleText_.years(slot); }

    static QString anchor(int32_t slot) { return QStringLiteral("i%1").arg(slot); }

    QString link(int32_t slot, const char* cssClass) const
    {
        return QStringLiteral("<a class=\"%1\" href=\"#%2\">%3</a>")
            .arg(QLatin1String(cssClass), anchor(slot), htmlEscaped(name(slot)));
    }

    // Where a person's full entry stands, for a reader of the printed page.
    QString whereWritten(int32_t slot) const
    {
        const int32_t under = outline_.writtenUnder(slot);
        return under == 0 ? QStringLiteral("at the head of the list")
                          : QStringLiteral("under ") + htmlEscaped(name(under));
    }

    void writeHeader(const QString& topName)
    {
        const QString who = htmlEscaped(topName);
        html_ += QStringLiteral("<header>\n<h1>Descendants of ") + who + QStringLiteral("</h1>\n");
        const int32_t top = outline_.top();
        int32_t descendants = 0, spouses = 0, generations = 0;
        QString problem;
        try {
            descendants = countDescendants(records_, descendants_, top);
            spouses = countDescendantSpouses(records_, descendants_, top);
            generations = countGenerations(records_, descendants_, top);
        } catch (const RuntimeFault& fault) {
            problem = fault.number() == RuntimeFault::SubscriptOutOfRange
                          ? QStringLiteral("a line runs deeper than %1 levels")
                                .arg(DescendancyOutline::maxLevels)
                          : QStringLiteral("\u201c%1\u201d").arg(htmlEscaped(fault.messageText()));
        }
        if (problem.isEmpty()) {
            html_ += QStringLiteral(
                         "<dl class=\"totals\">\n"
                         "<div><dt>Descendants</dt><dd>%1</dd></div>\n"
                         "<div><dt>Spouses</dt><dd>%2</dd></div>\n"
                         "<div><dt>Generations</dt><dd>%3</dd></div>\n</dl>\n"
                         "<p class=\"explain\">Descendants: the children of %4 and of every "
                         "descendant, counted once for each line of descent. Spouses: the "
                         "marriages of %4 and of the descendants. Generations: the generations "
                         "of descendants.</p>\n")
                         .arg(descendants)
                         .arg(spouses)
                         .arg(generations)
                         .arg(who);
        } else {
            html_ += QStringLiteral("<p class=\"warning\">The descendants of %1 cannot be "
                                    "counted: %2.</p>\n")
                         .arg(who, problem);
        }
        const int32_t distinct = outline_.distinctDescendants();
        if (distinct == 0) {
            html_ +=
                QStringLiteral("<p class=\"explain\">%1 has no descendants in this file.</p>\n")
                    .arg(who);
        } else if (!problem.isEmpty() || distinct != descendants) {
            html_ += QStringLiteral("<p class=\"explain\">The list names %1 different "
                                    "descendants. Each is written once; where a line of descent "
                                    "meets one again, a reference leads to the first place.</p>\n")
                         .arg(distinct);
        }
        if (outline_.cutShort())
            html_ += QStringLiteral("<p class=\"warning\">Lines deeper than %1 levels are written "
                                    "down to the %1th; a note marks where they go on.</p>\n")
                         .arg(DescendancyOutline::maxLevels);
        if (distinct > 0)
            html_ += QStringLiteral(
                         "<p class=\"explain\">The number before a name gives its generation "
                         "below %1: 1 for children, 2 for grandchildren. Descendants are in "
                         "bold, their spouses follow \u201cm.\u201d People who may "
                         "still be living (born less than 100 years ago, no death recorded) are "
                         "shown without dates, and their marriages without date and "
                         "place.</p>\n")
                         .arg(who);
        html_ += QStringLiteral("</header>\n");
    }

    void write(const OutlineStep& step)
    {
        switch (step.kind) {
        case OutlineStep::Person:
            openChildren();
            people_.push_back(step.slot);
            html_ += QStringLiteral("<li class=\"person\" id=\"%1\"><p class=\"entry\">")
                         .arg(anchor(step.slot)) +
                     generation(step.generation) + QStringLiteral("<span class=\"name\">") +
                     htmlEscaped(name(step.slot)) + QStringLiteral("</span>") + years(step.slot) +
                     QStringLiteral("</p>\n");
            break;
        case OutlineStep::PersonAgain:
            openChildren();
            html_ += QStringLiteral("<li class=\"person again\"><p class=\"entry\">") +
                     generation(step.generation) + link(step.slot, "name") + years(step.slot) +
                     QStringLiteral(" <span class=\"see\">\u2013 written above, ") +
                     whereWritten(step.slot) + QStringLiteral("</span></p></li>\n");
            break;
        case OutlineStep::PersonEnd:
            people_.pop_back();
            html_ += QStringLiteral("</li>\n");
            break;
        case OutlineStep::Family:
            html_ += QStringLiteral("<div class=\"family\"><p class=\"marriage\">") +
                     marriage(step.slot, people_.back(), step.other) + QStringLiteral("</p>\n");
            childrenOpen_.push_back(false);
            break;
        case OutlineStep::FamilyEnd:
            if (childrenOpen_.back())
                html_ += QStringLiteral("</ol>\n");
            childrenOpen_.pop_back();
            html_ += QStringLiteral("</div>\n");
            break;
        case OutlineStep::LineTooDeep:
            html_ += QStringLiteral("<p class=\"note\">The line goes on: its children are more "
                                    "than %1 levels down and are not written.</p>\n")
                         .arg(DescendancyOutline::maxLevels);
            break;
        }
    }

    // A family's children stand in a list of their own, opened with the first;
    // one family is open for each generation above them.
    void openChildren()
    {
        if (childrenOpen_.empty() || childrenOpen_.back())
            return;
        const qsizetype generation = qsizetype(childrenOpen_.size());
        html_ += generation > 40   ? QStringLiteral("<ol class=\"children deepest\">\n")
                 : generation > 12 ? QStringLiteral("<ol class=\"children deeper\">\n")
                                   : QStringLiteral("<ol class=\"children\">\n");
        childrenOpen_.back() = true;
    }

    static QString generation(int32_t generation)
    {
        return generation == 0 ? QString()
                               : QStringLiteral("<span class=\"gen\">%1</span> ").arg(generation);
    }

    // "m. SPOUSE (years), DATE, PLACE"; the spouse linked when also a descendant.
    QString marriage(int32_t familySlot, int32_t head, int32_t spouse) const
    {
        const Family& family = records_.family(familySlot);
        QString text;
        const bool kin = outline_.written(spouse);
        if (spouse == 0)
            text = QStringLiteral("<span class=\"m\">Spouse not recorded</span>");
        else if (kin)
            text = QStringLiteral("<span class=\"m\">m.</span> ") + link(spouse, "spouse") +
                   years(spouse);
        else
            text = QStringLiteral("<span class=\"m\">m.</span> <span class=\"spouse\">") +
                   htmlEscaped(name(spouse)) + QStringLiteral("</span>") + years(spouse);
        text += peopleText_.marriageDetails(family, head, spouse);
        if (kin)
            text += QStringLiteral(" <span class=\"see\">\u2013 also a descendant, ") +
                    whereWritten(spouse) + QStringLiteral("</span>");
        return text;
    }

    const RecordStore& records_;
    DescendantCache& descendants_;
    QDate today_;
    HtmlPeople peopleText_;
    DescendancyOutline outline_;
    QString html_;
    std::vector<int32_t> people_;     // the descendants being written, the top first
    std::vector<bool> childrenOpen_;  // per family being written
};

}  // namespace

QString htmlReportPath(const QString& folder)
{
    return QDir(folder.isEmpty() ? QDir::currentPath() : folder)
        .filePath(QStringLiteral("tav.htm"));
}

QByteArray htmlDescendantsReport(const RecordStore& records, DescendantCache& descendants,
                                 NameStyle style, QDate today, int32_t top)
{
    return PageWriter(records, descendants, style, today, top).page();
}

Result<QString> writeHtmlDescendantsReport(Session& session, int32_t top, const QString& path)
{
    return writeWholeFile(path, htmlDescendantsReport(session.records, session.descendantCache,
                                                      session.nameStyle(), session.today(), top));
}

}  // namespace tav
