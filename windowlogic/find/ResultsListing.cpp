// SPDX-License-Identifier: GPL-3.0-or-later
#include "windowlogic/find/ResultsListing.h"

#include "app/Session.h"
#include "calc/Names.h"
#include "core/DisplayText.h"
#include "windowlogic/browser/RecordGrids.h"

namespace tav {

namespace {

QString nameOf(const Session& session, int32_t slot)
{
    return listName(session.records, slot, session.nameStyle());
}

// The section's lines as a count: its header and its results, none when empty.
int32_t sectionLines(const FindResults::Table& table)
{
    return table.count > 0 ? table.count + 1 : 0;
}

}  // namespace

QString resultsHeading(const FindResults& results)
{
    return QStringLiteral("Results (%1 %2 found)")
        .arg(results.total)
        .arg(results.total < 2 ? QStringLiteral("item") : QStringLiteral("items"));
}

QStringList resultLines(const Session& session)
{
    const FindResults& results = session.findResults;
    const RecordStore& r = session.records;
    QStringList lines;
    const FindResults::Table& individuals = results[FindResults::Individuals];
    if (individuals.count >= 1) {
        lines << QStringLiteral("-------INDIVIDUALS-------");
        for (int32_t k = 1; k <= individuals.count; ++k) {
            const int32_t slot = individuals.entries[size_t(k)];
            // Individuals are padded to three digits; the other kinds are not.
            const QString number =
                slot < 0 ? QStringLiteral("-I%1").arg(-int64_t(slot), 3, 10, QLatin1Char('0'))
                         : QStringLiteral("I%1").arg(slot, 3, 10, QLatin1Char('0'));
            lines << number + QStringLiteral(". ") + nameOf(session, slot);
        }
    }
    const FindResults::Table& families = results[FindResults::Families];
    if (families.count > 0) {
        lines << QStringLiteral("-------FAMILIES-------");
        for (int32_t k = 1; k <= families.count; ++k) {
            const int32_t slot = families.entries[size_t(k)];
            const Family& f = r.family(slot);
            lines << numberWithLetter(u'F', slot) + QStringLiteral(". ") +
                         nameOf(session, r.husbandOf(f)) + QStringLiteral(" & ") +
                         nameOf(session, r.wifeOf(f));
        }
    }
    const FindResults::Table& sources = results[FindResults::Sources];
    if (sources.count > 0) {
        lines << QStringLiteral("-------SOURCES-------");
        for (int32_t k = 1; k <= sources.count; ++k)
            lines << numberWithLetter(u'S', sources.entries[size_t(k)]) + QStringLiteral(". ") +
                         r.source(sources.entries[size_t(k)]).title.toString();
    }
    const FindResults::Table& notes = results[FindResults::Notes];
    if (notes.count > 0) {
        lines << QStringLiteral("-------NOTES-------");
        for (int32_t k = 1; k <= notes.count; ++k)
            lines << numberWithLetter(u'N', notes.entries[size_t(k)]) + QStringLiteral(". ") +
                         r.note(notes.entries[size_t(k)]).text.toString();
    }
    if (results.total == 0)
        lines << QStringLiteral("-------NO RECORDS-------");
    for (QString& line : lines)
        line = shortenedText(line);
    return lines;
}

std::optional<ResultPosition> resultAtLine(const FindResults& results, const QString& line,
                                           int lineIndex)
{
    if (line.isEmpty())
        return std::nullopt;
    // A section's header stands at the place its slot 0 would take, so the
    // line's place less the lines of the sections above it is its slot.
    const int32_t individuals = sectionLines(results[FindResults::Individuals]);
    const int32_t families = sectionLines(results[FindResults::Families]);
    const int32_t sources = sectionLines(results[FindResults::Sources]);
    switch (line[0].unicode()) {
    case u'I': return ResultPosition{FindResults::Individuals, lineIndex};
    case u'F': return ResultPosition{FindResults::Families, lineIndex - individuals};
    case u'S': return ResultPosition{FindResults::Sources, lineIndex - individuals - families};
    case u'N':
        return ResultPosition{FindResults::Notes, lineIndex - individuals - families - sources};
    default: return std::nullopt;
    }
}

}  // namespace tav
