// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/IntegrityReport.h"

#include "app/Session.h"
#include "calc/GedcomDateGrammar.h"
#include "calc/ReadDate.h"
#include "core/FileNames.h"
#include "reports/LineageGraph.h"
#include "reports/ReportLabels.h"

#include <QSet>
#include <algorithm>

namespace tav {

namespace {

// Records out of order come in thousands when a file is sorted by name: a
// few of each table show what is meant.
constexpr qsizetype outOfOrderShown = 10;

struct ProblemGroup {
    explicit ProblemGroup(QString kindText) : kind(std::move(kindText)) {}

    QString kind;
    QStringList lines;
    qsizetype total = 0;  // may exceed the lines listed
};

QString quoted(QStringView text) { return QLatin1Char('"') + text.toString() + QLatin1Char('"'); }

class IntegrityCheck {
public:
    explicit IntegrityCheck(const Session& session) : session_(session), r_(session.records) {}

    QStringList report();

private:
    QString person(int32_t slot) const
    {
        return personLabel(session_, slot) + QLatin1Char(' ') + xref(r_.individual(slot).xref);
    }
    QString family(int32_t slot) const
    {
        return familyLabel(session_, slot) + QLatin1Char(' ') + xref(r_.family(slot).xref);
    }
    // A cross-reference as the file writes it: "@I12@".
    QString xref(int32_t code) const { return crossReference(r_.xrefText(code)); }
    // Adds a problem line to a group.
    void add(ProblemGroup& group, const QString& line)
    {
        group.lines << QStringLiteral("  ") + line;
        ++group.total;
    }

    void checkLinks();
    void checkReturnedLinks();
    void checkTables();
    void checkIds(bool individuals);
    void checkDates();
    void checkParents();
    void checkLineage();

    const Session& session_;
    const RecordStore& r_;
    // Every individual's birth and death dates, read once (slot 0: none).
    std::vector<ReadDate> births_;
    std::vector<ReadDate> deaths_;

    ProblemGroup missing_{QStringLiteral("Links to records that do not exist")};
    ProblemGroup oneSided_{QStringLiteral("Links that the other side does not return")};
    ProblemGroup capacity_{QStringLiteral("Tables at capacity")};
    ProblemGroup sharedIds_{QStringLiteral("Records that share a cross-reference")};
    ProblemGroup outOfOrder_{QStringLiteral("Records out of ascending order")};
    ProblemGroup unreadable_{QStringLiteral("Dates that are not GEDCOM dates")};
    ProblemGroup deathBeforeBirth_{QStringLiteral("Death before birth")};
    ProblemGroup unlikelyBirths_{QStringLiteral(
        "Children born before a parent was 12, after the mother was 55 or more than a year after "
        "the father died")};
    ProblemGroup earlyMarriages_{QStringLiteral("Marriages before a spouse's birth")};
    ProblemGroup oldAges_{QStringLiteral("Ages above 120")};
    ProblemGroup ownAncestors_{QStringLiteral("People who are their own ancestor")};
    ProblemGroup deepLines_{
        QStringLiteral("Descendant lines deeper than %1 levels").arg(countableLevels)};
};

// Every link the file wrote must name a record (GEDCOM 7's @VOID@ names
// none on purpose). A person's NOTE written as a pointer (@N12@) must name
// a note record.
void IntegrityCheck::checkLinks()
{
    const int32_t voidCode = r_.crossReferences().find("VOID");
    std::vector<char> isNote(size_t(r_.crossReferences().count()), 0);
    for (int32_t n = 1; n <= r_.noteCount(); ++n)
        isNote[size_t(r_.note(n).xref)] = 1;
    // `who` names the record only when there is something to say of it.
    const auto linked = [&](const auto& who, const char* tag, const Link& link, const char* kind) {
        if (link.written() && link.slot == 0 && link.xref != voidCode)
            add(missing_, who() + QStringLiteral(": %1 %2 names no %3")
                                    .arg(QLatin1String(tag), xref(link.xref), QLatin1String(kind)));
    };
    for (int32_t slot = 1; slot <= r_.individualCount(); ++slot) {
        const Individual& p = r_.individual(slot);
        const auto who = [&] { return person(slot); };
        linked(who, "FAMC", p.childFamily, "family");
        for (int k = 1; k <= p.spouseFamilyCount; ++k)
            linked(who, "FAMS", r_.spouseFamilyLink(p, k), "family");
        const QStringView pointer = pointedXref(p.note);
        if (pointer.isEmpty())
            continue;
        const QByteArray bytes = pointer.toUtf8();
        const int32_t code =
            r_.crossReferences().find(std::string_view(bytes.constData(), size_t(bytes.size())));
        if (code == InternedTexts::none || !isNote[size_t(code)])
            add(missing_, person(slot) + QStringLiteral(": NOTE ") + p.note.trimmed().toString() +
                              QStringLiteral(" names no note"));
    }
    for (int32_t slot = 1; slot <= r_.familyCount(); ++slot) {
        const Family& f = r_.family(slot);
        const auto who = [&] { return family(slot); };
        linked(who, "HUSB", f.husband, "individual");
        linked(who, "WIFE", f.wife, "individual");
        for (int k = 1; k <= f.childCount; ++k)
            linked(who, "CHIL", r_.childLink(f, k), "individual");
    }
}

// A FAMS must be answered by the family's HUSB or WIFE, a FAMC by one of its
// CHIL, and the other way round. Links are compared by cross-reference, so
// two records that share one (a group of their own) do not show here. The
// lists are looked up in sets of (record, cross-reference) pairs, so a
// person of a hundred marriages or a family of a thousand children costs
// no more than their links: linear, but for the sorting.
void IntegrityCheck::checkReturnedLinks()
{
    const auto pair = [](int32_t slot, int32_t code) {
        return (uint64_t(uint32_t(slot)) << 32) | uint32_t(code);
    };
    std::vector<uint64_t> childLinks, spouseLinks;
    for (int32_t slot = 1; slot <= r_.familyCount(); ++slot) {
        const Family& f = r_.family(slot);
        for (int k = 1; k <= f.childCount; ++k)
            childLinks.push_back(pair(slot, r_.childLink(f, k).xref));
    }
    for (int32_t slot = 1; slot <= r_.individualCount(); ++slot) {
        const Individual& p = r_.individual(slot);
        for (int k = 1; k <= p.spouseFamilyCount; ++k)
            spouseLinks.push_back(pair(slot, r_.spouseFamilyLink(p, k).xref));
    }
    std::sort(childLinks.begin(), childLinks.end());
    std::sort(spouseLinks.begin(), spouseLinks.end());
    const auto listed = [&](const std::vector<uint64_t>& links, int32_t slot, int32_t code) {
        return std::binary_search(links.begin(), links.end(), pair(slot, code));
    };

    for (int32_t slot = 1; slot <= r_.individualCount(); ++slot) {
        const Individual& p = r_.individual(slot);
        for (int k = 1; k <= p.spouseFamilyCount; ++k) {
            const int32_t f = r_.spouseFamilyOf(p, k);
            if (f == 0)
                continue;
            const Family& fam = r_.family(f);
            if (fam.husband.xref != p.xref && fam.wife.xref != p.xref)
                add(oneSided_,
                    person(slot) + QStringLiteral(": FAMS ") + xref(fam.xref) +
                        QStringLiteral(
                            ", but that family names this person neither HUSB nor WIFE"));
        }
        const int32_t f = r_.childFamilyOf(p);
        if (f != 0 && !listed(childLinks, f, p.xref))
            add(oneSided_, person(slot) + QStringLiteral(": FAMC ") + xref(r_.family(f).xref) +
                               QStringLiteral(", but that family has no CHIL for this person"));
    }
    for (int32_t slot = 1; slot <= r_.familyCount(); ++slot) {
        const Family& fam = r_.family(slot);
        const auto spouseReturns = [&](const char* tag, int32_t spouse) {
            if (spouse != 0 && !listed(spouseLinks, spouse, fam.xref))
                add(oneSided_, family(slot) + QStringLiteral(": ") + QLatin1String(tag) +
                                   QLatin1Char(' ') + person(spouse) +
                                   QStringLiteral(", but that person has no FAMS for this family"));
        };
        spouseReturns("HUSB", r_.husbandOf(fam));
        spouseReturns("WIFE", r_.wifeOf(fam));
        for (int k = 1; k <= fam.childCount; ++k) {
            const int32_t child = r_.childOf(fam, k);
            if (child == 0)
                continue;
            const Individual& c = r_.individual(child);
            if (c.childFamily.xref == fam.xref)
                continue;
            add(oneSided_,
                family(slot) + QStringLiteral(": CHIL ") + person(child) +
                    (c.hasChildFamily() ? QStringLiteral(", but that person's last FAMC names ") +
                                              xref(c.childFamily.xref)
                                        : QStringLiteral(", but that person has no FAMC")));
        }
    }
}

void IntegrityCheck::checkTables()
{
    const auto table = [&](const char* name, int32_t count, int32_t capacity, bool truncated) {
        if (count < capacity && !truncated)
            return;
        add(capacity_, QStringLiteral("%1: %2, the most the program holds")
                               .arg(QLatin1String(name))
                               .arg(capacity) +
                           (truncated ? QStringLiteral("; the file has more, which were not read")
                                      : QStringLiteral("; the file has no more")));
    };
    table("Individuals", r_.individualCount(), RecordStore::individualCapacity,
          r_.individualsTruncated);
    table("Families", r_.familyCount(), RecordStore::familyCapacity, r_.familiesTruncated);
    table("Sources", r_.sourceCount(), RecordStore::sourceCapacity, r_.sourcesTruncated);
    table("Notes", r_.noteCount(), RecordStore::noteCapacity, r_.notesTruncated);
}

// Cross-references shared by several records, found by sorting the (code,
// slot) pairs (n log n); records whose number (the digits of their
// cross-reference) is lower than the one before them, in one pass.
// Individuals and families: the tables that links name.
void IntegrityCheck::checkIds(bool individuals)
{
    const int32_t count = individuals ? r_.individualCount() : r_.familyCount();
    const auto codeOf = [&](int32_t slot) {
        return individuals ? r_.individual(slot).xref : r_.family(slot).xref;
    };
    const auto idOf = [&](int32_t slot) {
        return individuals ? r_.individual(slot).id : r_.family(slot).id;
    };
    const auto name = [&](int32_t slot) {
        return individuals ? personLabel(session_, slot) : familyLabel(session_, slot);
    };
    std::vector<std::pair<int32_t, int32_t>> codes;
    codes.reserve(size_t(count));
    qsizetype disordered = 0;
    for (int32_t slot = 1; slot <= count; ++slot) {
        codes.emplace_back(codeOf(slot), slot);
        if (slot == 1 || idOf(slot) >= idOf(slot - 1))
            continue;
        if (++disordered <= outOfOrderShown)
            outOfOrder_.lines << QStringLiteral("  %1 %2 follows %3")
                                     .arg(name(slot), xref(codeOf(slot)), xref(codeOf(slot - 1)));
    }
    if (disordered > outOfOrderShown)
        outOfOrder_.lines << QStringLiteral("  ... and %1 more %2")
                                 .arg(disordered - outOfOrderShown)
                                 .arg(individuals ? "individuals" : "families");
    outOfOrder_.total += disordered;

    std::sort(codes.begin(), codes.end());
    for (size_t k = 0; k < codes.size();) {
        size_t end = k + 1;
        while (end < codes.size() && codes[end].first == codes[k].first)
            ++end;
        if (end - k > 1) {
            QStringList holders;
            for (size_t j = k; j < end; ++j)
                holders << name(codes[j].second);
            add(sharedIds_,
                xref(codes[k].first) + QStringLiteral(": ") + holders.join(QStringLiteral("; ")));
        }
        k = end;
    }
}

// Dates that are no GEDCOM dates, and deaths before births and ages above
// 120 among those that can be read.
void IntegrityCheck::checkDates()
{
    // A date text that is written but is no GEDCOM date is listed, `who`
    // naming its record; the checks that follow need one they can read.
    const auto readable = [&](const ReadDate& date, QStringView text, const char* what,
                              const auto& who) {
        if (!text.isEmpty() && !isGedcomDate(text))
            add(unreadable_,
                who() + QStringLiteral(": %1 date ").arg(QLatin1String(what)) + quoted(text));
        return date.valid;
    };
    births_.assign(1, ReadDate());
    deaths_.assign(1, ReadDate());
    for (int32_t slot = 1; slot <= r_.individualCount(); ++slot) {
        const Individual& p = r_.individual(slot);
        const ReadDate& born = births_.emplace_back(p.birthDate);
        const ReadDate& died = deaths_.emplace_back(p.deathDate);
        const auto who = [&] { return person(slot); };
        const bool bornRead = readable(born, p.birthDate, "birth", who);
        const bool diedRead = readable(died, p.deathDate, "death", who);
        if (!bornRead || !diedRead)
            continue;
        const int32_t age = born.yearsUntil(died);
        if (died < born)
            add(deathBeforeBirth_,
                person(slot) + QStringLiteral(": born %1, died %2").arg(p.birthDate, p.deathDate));
        else if (age > 120)
            add(oldAges_, person(slot) + QStringLiteral(": %1 years at death (born %2, died %3)")
                                             .arg(age)
                                             .arg(p.birthDate, p.deathDate));
    }
    for (int32_t slot = 1; slot <= r_.familyCount(); ++slot) {
        const Family& f = r_.family(slot);
        const ReadDate married(f.marriageDate);
        if (!readable(married, f.marriageDate, "marriage", [&] { return family(slot); }))
            continue;
        for (const auto& [role, spouse] :
             {std::pair{"husband", r_.husbandOf(f)}, std::pair{"wife", r_.wifeOf(f)}}) {
            if (spouse > 0 && births_[size_t(spouse)].valid && married < births_[size_t(spouse)])
                add(earlyMarriages_,
                    family(slot) + QStringLiteral(": married %1, before the %2 %3 was born (%4)")
                                       .arg(f.marriageDate, QLatin1String(role), person(spouse),
                                            r_.individual(spouse).birthDate));
        }
    }
}

// Each child against the family's husband and wife, on the dates read by
// checkDates: one look per child and parent, linear.
void IntegrityCheck::checkParents()
{
    for (int32_t slot = 1; slot <= r_.familyCount(); ++slot) {
        const Family& f = r_.family(slot);
        const int32_t father = r_.husbandOf(f), mother = r_.wifeOf(f);
        const ReadDate& fatherDied = deaths_[size_t(father)];
        for (int k = 1; k <= f.childCount; ++k) {
            const int32_t child = r_.childOf(f, k);
            const ReadDate& born = births_[size_t(child)];
            if (child == 0 || !born.valid)
                continue;
            const auto start = [&] {
                return person(child) + QStringLiteral(": born ") +
                       r_.individual(child).birthDate.toString();
            };
            const auto parentAge = [&](int32_t parent, const char* role) {
                const ReadDate& parentBorn = births_[size_t(parent)];
                if (parent == 0 || !parentBorn.valid)
                    return;
                const int32_t age = parentBorn.yearsUntil(born);
                const auto parentText = [&] {
                    return QStringLiteral("the %1 %2").arg(QLatin1String(role), person(parent));
                };
                if (age < 0)
                    add(unlikelyBirths_,
                        start() + QStringLiteral(", before %1 was born (%2)")
                                      .arg(parentText(), r_.individual(parent).birthDate));
                else if (age < 12 || (parent == mother && age > 55))
                    add(unlikelyBirths_,
                        start() + QStringLiteral(", when %1 was %2").arg(parentText()).arg(age));
            };
            parentAge(father, "father");
            parentAge(mother, "mother");
            // More than a year after the father's death: after the same day a year on.
            if (father > 0 && fatherDied.valid && fatherDied.yearsUntil(born) >= 1 &&
                !(born.key() == std::tuple(fatherDied.year + 1, fatherDied.month, fatherDied.day)))
                add(unlikelyBirths_,
                    start() + QStringLiteral(", more than a year after the father %1 died (%2)")
                                  .arg(person(father), r_.individual(father).deathDate));
        }
    }
}

// Circles and depths of whole lines: one graph pass each, linear.
void IntegrityCheck::checkLineage()
{
    const LineageGraph ancestry(r_, Lineage::Ancestry);
    for (int32_t slot = 1; slot <= r_.individualCount(); ++slot) {
        if (ancestry.onCircle(slot))
            add(ownAncestors_, person(slot));
    }
    const LineageGraph descent(r_, Lineage::Descent);
    for (const int32_t slot : descent.deepLineHeads(countableLevels)) {
        const QString why =
            descent.onCircle(slot) ? QStringLiteral("is among their own descendants")
            : descent.depth(slot) == LineageGraph::endless
                ? QStringLiteral("the line runs into a circle of descent")
                : QStringLiteral("%1 levels of descendants").arg(descent.depth(slot));
        add(deepLines_, person(slot) + QStringLiteral(": ") + why);
    }
}

QStringList IntegrityCheck::report()
{
    checkLinks();
    checkReturnedLinks();
    checkTables();
    checkIds(true);
    checkIds(false);
    checkDates();
    checkParents();
    checkLineage();

    QStringList lines{QStringLiteral("File: ") + shownFileName(r_.fileName)};
    bool found = false;
    for (const ProblemGroup* group : {&missing_, &oneSided_, &capacity_, &sharedIds_, &outOfOrder_,
                                      &unreadable_, &deathBeforeBirth_, &unlikelyBirths_,
                                      &earlyMarriages_, &oldAges_, &ownAncestors_, &deepLines_}) {
        if (group->total == 0)
            continue;
        found = true;
        lines << QString() << QStringLiteral("%1: %2").arg(group->kind).arg(group->total)
              << group->lines;
    }
    if (!found)
        lines << QString() << QStringLiteral("No problems found.");
    return lines;
}

}  // namespace

QStringList integrityReport(Session& session) { return IntegrityCheck(session).report(); }

}  // namespace tav
