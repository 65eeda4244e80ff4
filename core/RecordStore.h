// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/InternedTexts.h"
#include "core/LargePages.h"
#include "core/TextArena.h"

#include <QString>
#include <QStringView>
#include <cstdint>
#include <span>
#include <vector>

namespace tav {

// Field names follow the GEDCOM file's meaning. A record knows its
// cross-reference (the text between the "@"s of its level-0 line) by its
// code among the store's cross-references, and its `id`: the value of the
// digits of that text, as numbers of records are shown. Slots count from 1
// in file order.
//
// A link is what the file writes: a FAMC, FAMS, HUSB, WIFE or CHIL line
// whose cross-reference could be read names the record of its kind whose
// cross-reference is the same text; a link the file does not write names
// none.
struct Link {
    int32_t xref = InternedTexts::none;  // none: no cross-reference was read
    int32_t slot = 0;                    // the record named; 0 when there is none

    bool written() const { return xref != InternedTexts::none; }
};

// The cross-reference a NOTE value points to when the whole value is a
// pointer ("@N12@" gives "N12"); empty when the value is text.
QStringView pointedXref(QStringView value);

// A record's texts are views of the store's text arena: they hold while the
// store holds the file, and whatever keeps one longer copies it
// (toString()).
struct Individual {
    int32_t xref = InternedTexts::none;
    int64_t id = 0;
    QStringView name;  // the first NAME
    QStringView sex;
    QStringView occupation;
    QStringView birthDate;
    QStringView birthPlace;
    QStringView deathDate;
    QStringView deathPlace;
    // Every FAMS line, in file order: links firstSpouseFamily onwards in
    // the store's links.
    int32_t spouseFamilyCount = 0;
    int32_t firstSpouseFamily = 0;
    Link childFamily;  // the last FAMC line
    // The later NAME lines, in file order, in the store's other names.
    int32_t otherNameCount = 0;
    int32_t firstOtherName = 0;
    QStringView note;

    bool hasChildFamily() const { return childFamily.written(); }
};

struct Family {
    int32_t xref = InternedTexts::none;
    int64_t id = 0;
    Link husband;
    Link wife;
    // Every CHIL line, in file order: links firstChild onwards in the
    // store's links.
    int32_t childCount = 0;
    int32_t firstChild = 0;
    QStringView marriageDate;
    QStringView marriagePlace;
    bool divorced = false;
};

struct Source {
    int32_t xref = InternedTexts::none;
    int64_t id = 0;
    QStringView title;
    QStringView author;
    QStringView publication;
    QStringView note;
};

struct Note {
    int32_t xref = InternedTexts::none;
    int64_t id = 0;
    QStringView text;
};

// The whole in-memory picture of one GEDCOM file. The tables are as large as
// their capacity: a slot from 0 to the capacity that holds no record reads as
// an empty record, and a slot outside that raises SubscriptOutOfRange.
class RecordStore {
public:
    static constexpr int32_t individualCapacity = 40000;
    static constexpr int32_t familyCapacity = 40000;
    static constexpr int32_t sourceCapacity = 4000;
    static constexpr int32_t noteCapacity = 4000;

    RecordStore();

    // Clears the tables, the truncation flags and the GEDCOM version; the
    // header date and character set deliberately survive into the next load.
    void resetRecords();

    int32_t individualCount() const { return int32_t(individuals_.size()) - 1; }
    int32_t familyCount() const { return int32_t(families_.size()) - 1; }
    int32_t sourceCount() const { return int32_t(sources_.size()) - 1; }
    int32_t noteCount() const { return int32_t(notes_.size()) - 1; }

    const Individual& individual(int32_t slot) const;
    const Family& family(int32_t slot) const;
    const Source& source(int32_t slot) const;
    const Note& note(int32_t slot) const;

    // Writable access for the reader; slot must be valid.
    Individual& individualAt(int32_t slot) { return individuals_[size_t(slot)]; }
    Family& familyAt(int32_t slot) { return families_[size_t(slot)]; }
    Source& sourceAt(int32_t slot) { return sources_[size_t(slot)]; }
    Note& noteAt(int32_t slot) { return notes_[size_t(slot)]; }

    Individual& addIndividual() { return individuals_.emplace_back(); }
    Family& addFamily() { return families_.emplace_back(); }
    Source& addSource() { return sources_.emplace_back(); }
    Note& addNote() { return notes_.emplace_back(); }
    // The index of the next entry of a record's list of links (its FAMS or
    // CHIL lines), which lie together: the reader adds a record's entries
    // before the next record's.
    int32_t addLink(int32_t& first, int32_t& count);
    // Room for the links of a file of this many bytes, so that they need
    // not move as it is read.
    void expectFileBytes(qsizetype bytes);
    Link& linkAt(int32_t index) { return links_[size_t(index)]; }
    void addOtherName(Individual& person, QStringView name);
    InternedTexts& crossReferences() { return xrefs_; }
    // Where the reader keeps the records' texts.
    TextArena& texts() { return texts_; }

    // Called once the reader has read every record: gives every link the
    // slot of the record it names.
    void resolveLinks();

    const InternedTexts& crossReferences() const { return xrefs_; }
    // "I12" for a record's or a link's cross-reference code; "" for none.
    QString xrefText(int32_t code) const { return xrefs_.text(code); }

    // Slot of the individual (family) whose cross-reference is this text,
    // 0 when there is none; of two records with one cross-reference, the
    // first in file order. Records may lie in any order in the file.
    int32_t indIndexFromId(QStringView xref) const;
    int32_t famIndexFromId(QStringView xref) const;
    int32_t noteIndexFromId(QStringView xref) const;

    // The slot a link of a record names; 0 when the file wrote none there,
    // or it names no record.
    int32_t childFamilyOf(const Individual& person) const { return person.childFamily.slot; }
    int32_t spouseFamilyOf(const Individual& person, int k) const
    {
        return spouseFamilyLink(person, k).slot;
    }
    int32_t husbandOf(const Family& family) const { return family.husband.slot; }
    int32_t wifeOf(const Family& family) const { return family.wife.slot; }
    int32_t childOf(const Family& family, int k) const { return childLink(family, k).slot; }

    // The k-th (from 1) FAMS or CHIL link; an empty link outside the list.
    const Link& spouseFamilyLink(const Individual& person, int k) const
    {
        return listEntry(person.firstSpouseFamily, person.spouseFamilyCount, k);
    }
    const Link& childLink(const Family& family, int k) const
    {
        return listEntry(family.firstChild, family.childCount, k);
    }

    // The person's names after the first, in file order.
    std::span<const QStringView> otherNames(const Individual& person) const
    {
        return std::span<const QStringView>(otherNames_)
            .subspan(size_t(person.firstOtherName), size_t(person.otherNameCount));
    }

    QString fileName;
    QString headerDate;
    QString gedcomVersion;
    QString characterSet;
    bool individualsTruncated = false;
    bool familiesTruncated = false;
    bool sourcesTruncated = false;
    bool notesTruncated = false;

private:
    const Link& listEntry(int32_t first, int32_t count, int k) const
    {
        static const Link none;
        return k >= 1 && k <= count ? links_[size_t(first + k - 1)] : none;
    }

    template <typename T>
    using Table = std::vector<T, LargePageAllocator<T>>;

    Table<Individual> individuals_;  // element 0 is the unused slot 0
    Table<Family> families_;
    std::vector<Source> sources_;
    std::vector<Note> notes_;
    Table<Link> links_;  // every record's FAMS or CHIL lines, a record's together
    std::vector<QStringView> otherNames_;
    TextArena texts_;
    InternedTexts xrefs_;
    // The first individual (family) slot of each cross-reference code, 0
    // for none; built once per load.
    std::vector<int32_t> individualByXref_;
    std::vector<int32_t> familyByXref_;
};

}  // namespace tav
