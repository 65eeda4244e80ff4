// SPDX-License-Identifier: GPL-3.0-or-later
#include "windowlogic/browser/RecordGrids.h"

#include "app/Session.h"
#include "calc/Dates.h"
#include "calc/Names.h"
#include "core/DisplayText.h"
#include "core/TextNumbers.h"

namespace tav {

namespace {

QString personName(const Session& session, int32_t slot)
{
    return listName(session.records, slot, session.nameStyle());
}

void addRow(Grid& grid, const QString& item, const QString& details,
            const QString& hidden = QString())
{
    grid.rows.push_back({item, details, hidden});
}

// A row that shows a record's text as it stands.
void addRow(Grid& grid, const QString& item, QStringView details)
{
    addRow(grid, item, details.toString());
}

void addHeading(Grid& grid) { addRow(grid, QStringLiteral("Item"), QStringLiteral("Details")); }

// Item numbers as the platform's "##" format prints them: no padding.
QString numbered(const char* item, int k) { return QString::fromLatin1(item) + QString::number(k); }

struct ListKind {
    ViewKind kind;
    const char* caption;
    const char* heading;
};

const ListKind listKinds[] = {
    {ViewKind::AllIndividuals, "All individuals", "Individual"},
    {ViewKind::AllFamilies, "All families", "Family"},
    {ViewKind::AllSources, "All sources", "Source"},
    {ViewKind::AllNotes, "All notes", "Notes"},
    {ViewKind::AllOccupations, "All occupations", "Occupation"},
    {ViewKind::AllBirths, "All births and places", "Birth and place"},
    {ViewKind::AllDeaths, "All deaths and places", "Deaths"},
    {ViewKind::AllMarriages, "All marriages and places", "Marriage and place"},
};

const ListKind* findListKind(ViewKind kind)
{
    for (const ListKind& list : listKinds) {
        if (kind == list.kind)
            return &list;
    }
    return nullptr;
}

QString twoBlanks(QStringView a, QStringView b)
{
    return a.toString() + QStringLiteral("  ") + b.toString();
}

// The text of record k in a list.
QString listText(const Session& session, ViewKind kind, int32_t k)
{
    const RecordStore& r = session.records;
    switch (kind) {
    case ViewKind::AllIndividuals: return personName(session, k);
    case ViewKind::AllFamilies: {
        const Family& f = r.family(k);
        return personName(session, r.husbandOf(f)) + QStringLiteral(" & ") +
               personName(session, r.wifeOf(f));
    }
    case ViewKind::AllSources: return r.source(k).title.toString();
    case ViewKind::AllNotes: return r.note(k).text.toString();
    case ViewKind::AllOccupations: return r.individual(k).occupation.toString();
    case ViewKind::AllBirths:
        return twoBlanks(r.individual(k).birthDate, r.individual(k).birthPlace);
    case ViewKind::AllDeaths:
        return twoBlanks(r.individual(k).deathDate, r.individual(k).deathPlace);
    case ViewKind::AllMarriages:
        return twoBlanks(r.family(k).marriageDate, r.family(k).marriagePlace);
    default: return QString();
    }
}

int32_t listCount(const RecordStore& r, ViewKind kind)
{
    switch (kind) {
    case ViewKind::AllFamilies:
    case ViewKind::AllMarriages: return r.familyCount();
    case ViewKind::AllSources: return r.sourceCount();
    case ViewKind::AllNotes: return r.noteCount();
    default: return r.individualCount();
    }
}

}  // namespace

QString numberWithLetter(QChar letter, int64_t number)
{
    return number < 0 ? QStringLiteral("-") + letter + QString::number(-number)
                      : letter + QString::number(number);
}

QString Grid::cell(const Session& session, int32_t row, int column) const
{
    if (!isList())
        return row >= 0 && size_t(row) < rows.size() && column >= 0 && column < 3
                   ? rows[size_t(row)][size_t(column)]
                   : QString();
    if (row == 0)
        return column < 2 ? rows[0][size_t(column)] : QString();
    if (row < 1 || row > listCount)
        return QString();
    if (column == 0)
        return QString::number(row);
    return column == 1 ? listText(session, listKind, row) : QString();
}

Grid individualGrid(const Session& session, int32_t slot)
{
    const RecordStore& r = session.records;
    const Individual& p = r.individual(slot);
    Grid grid;
    grid.caption = shortenedText(personName(session, slot)) + QStringLiteral(" (") +
                   QString::number(slot) + QLatin1Char(')');
    addHeading(grid);
    addRow(grid, QStringLiteral("No."), signedText(slot));
    addRow(grid, QStringLiteral("Name"), personName(session, slot));
    // The file's later NAME lines: a married name, an alias, another script.
    for (const QStringView other : r.otherNames(p))
        addRow(grid, QStringLiteral("Also known as"),
               formatName(other, NameSurname | NameGivenAsWritten, session.nameStyle()));
    addRow(grid, QStringLiteral("Sex"), p.sex);
    addRow(grid, QStringLiteral("Occ"), p.occupation);
    addRow(grid, QStringLiteral("Birth date"), p.birthDate);
    addRow(grid, QStringLiteral("Birth place"), p.birthPlace);
    addRow(grid, QStringLiteral("Death date"), p.deathDate);
    for (int k = 1; k <= p.spouseFamilyCount; ++k)
        addRow(grid, numbered("Fams ", k), signedText(r.spouseFamilyOf(p, k)));
    if (p.hasChildFamily())
        addRow(grid, QStringLiteral("Famc"), signedText(r.childFamilyOf(p)));
    QString label;
    const int32_t age = calcAge(p.birthDate, p.deathDate, label, session.today());
    addRow(grid, QStringLiteral("Age "),
           age == -1 ? QStringLiteral("Cannot calculate")
                     : signedText(age) + QLatin1Char(' ') + label);
    if (!p.note.isEmpty())
        addRow(grid, QStringLiteral("Note "), p.note);
    grid.fitWindow = true;
    return grid;
}

Grid familyGrid(const Session& session, int32_t slot)
{
    const RecordStore& r = session.records;
    const Family& f = r.family(slot);
    Grid grid;
    grid.caption = QStringLiteral("Family (") + QString::number(slot) + QLatin1Char(')');
    addHeading(grid);
    addRow(grid, QStringLiteral("No."), QString::number(slot));
    const auto person = [&](const QString& item, int32_t slot) {
        addRow(grid, item, personName(session, slot), QString::number(slot));
    };
    person(QStringLiteral("Husband"), r.husbandOf(f));
    person(QStringLiteral("Wife"), r.wifeOf(f));
    for (int k = 1; k <= f.childCount; ++k)
        person(numbered("Child ", k), r.childOf(f, k));
    addRow(grid, QStringLiteral("Marr. date"), f.marriageDate);
    addRow(grid, QStringLiteral("Marr. place"), f.marriagePlace);
    addRow(grid, QStringLiteral("Divorce?"),
           f.divorced ? QStringLiteral("Yes") : QStringLiteral("No"));
    grid.fitWindow = true;
    return grid;
}

Grid sourceGrid(const Session& session, int32_t slot)
{
    const Source& s = session.records.source(slot);
    Grid grid;
    grid.caption = QStringLiteral("Source (") + numberWithLetter(u'S', s.id) + QLatin1Char(')');
    addHeading(grid);
    addRow(grid, QStringLiteral("No."), numberWithLetter(u'S', s.id));
    addRow(grid, QStringLiteral("Title"), s.title);
    addRow(grid, QStringLiteral("Author"), s.author);
    addRow(grid, QStringLiteral("Publ"), s.publication);
    addRow(grid, QStringLiteral("Note"), s.note);
    grid.fitWindow = true;
    return grid;
}

Grid noteGrid(const Session& session, int32_t slot)
{
    const Note& n = session.records.note(slot);
    Grid grid;
    // The caption gives the slot; the "No." row the number the file gives the note.
    grid.caption = QStringLiteral("Note ") + QString::number(slot);
    addHeading(grid);
    addRow(grid, QStringLiteral("No."), numberWithLetter(u'N', n.id));
    addRow(grid, QStringLiteral("Note"), n.text);
    grid.fitWindow = true;
    return grid;
}

Grid listGrid(const Session& session, ViewKind kind)
{
    const ListKind* list = findListKind(kind);
    Grid grid;
    if (!list)
        return grid;
    grid.caption = QString::fromLatin1(list->caption);
    grid.listKind = kind;
    grid.listCount = listCount(session.records, kind);
    addRow(grid, QStringLiteral("Number"), QString::fromLatin1(list->heading));
    return grid;
}

Grid gridFor(const Session& session, ViewKind kind, int32_t slot)
{
    switch (kind) {
    case ViewKind::Individual: return individualGrid(session, slot);
    case ViewKind::Family: return familyGrid(session, slot);
    case ViewKind::Source: return sourceGrid(session, slot);
    case ViewKind::Note: return noteGrid(session, slot);
    default: return listGrid(session, kind);
    }
}

}  // namespace tav
