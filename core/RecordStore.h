#pragma once

#include <QString>
#include <array>
#include <cstdint>
#include <vector>

namespace tav {

// Field names follow the GEDCOM file's meaning; `...Id` fields hold the number
// inside a cross-reference such as @F12@, `...Index` fields the resolved slot
// (0 = none or not found). Slots count from 1 in file order.
//
// A link is what the file writes: a FAMC, FAMS, HUSB, WIFE or CHIL line whose
// cross-reference could be read names a record even when its number is 0
// (@F0@), and a link the file does not write names none, whatever record 0
// holds. The `...Written` flags say which links were read.

struct Individual {
    static constexpr int maxSpouseFamilies = 10;

    int32_t id = 0;
    QString name;
    QString sex;
    QString occupation;
    QString birthDate;
    QString birthPlace;
    QString deathDate;
    QString deathPlace;
    int32_t spouseFamilyCount = 0;  // FAMS lines seen; only the first 10 are kept
    std::array<int32_t, maxSpouseFamilies + 1> spouseFamilyId{};
    std::array<int32_t, maxSpouseFamilies + 1> spouseFamilyIndex{};
    int32_t childFamilyId = 0;
    int32_t childFamilyIndex = 0;
    bool childFamilyWritten = false;
    uint16_t spouseFamiliesWritten = 0;  // bit k: FAMS link k was read
    QString note;

    bool hasChildFamily() const { return childFamilyWritten; }
    bool hasSpouseFamily(int k) const
    {
        return k >= 1 && k <= maxSpouseFamilies && (spouseFamiliesWritten >> k) & 1;
    }

    // Number of FAMS entries actually stored (the count may run past 10).
    int storedSpouseFamilies() const
    {
        return spouseFamilyCount < maxSpouseFamilies ? spouseFamilyCount : maxSpouseFamilies;
    }
};

struct Family {
    static constexpr int maxChildren = 20;

    int32_t id = 0;
    int32_t husbandId = 0;
    int32_t wifeId = 0;
    int32_t husbandIndex = 0;
    int32_t wifeIndex = 0;
    bool husbandWritten = false;
    bool wifeWritten = false;
    uint32_t childrenWritten = 0;  // bit k: CHIL link k was read
    int32_t childCount = 0;        // CHIL lines seen; only the first 20 are kept
    std::array<int32_t, maxChildren + 1> childId{};
    std::array<int32_t, maxChildren + 1> childIndex{};
    QString marriageDate;
    QString marriagePlace;
    bool divorced = false;

    bool hasChild(int k) const { return k >= 1 && k <= maxChildren && (childrenWritten >> k) & 1; }

    int storedChildren() const { return childCount < maxChildren ? childCount : maxChildren; }
};

struct Source {
    int32_t id = 0;
    QString title;
    QString author;
    QString publication;
    QString note;
};

struct Note {
    int32_t id = 0;
    QString text;
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

    // Called once the reader has set every record's id: builds the index
    // from ids to slots that the lookups answer from.
    void indexIds();

    // Slot of the record with this cross-reference number, 0 when absent; of
    // two records with one number, the first in file order. Records may lie
    // in any order in the file.
    int32_t indIndexFromId(int32_t id) const;
    // The family lookup's result is 16-bit: a match above slot 32767 raises Overflow.
    int16_t famIndexFromId(int32_t id) const;

    // The slot a link of a record names: looked up when the file wrote the
    // link, 0 when it did not (or names no record). A family beyond slot
    // 32767 raises Overflow, as the family lookup does.
    int32_t childFamilyOf(const Individual& person) const;
    int32_t spouseFamilyOf(const Individual& person, int k) const;
    int32_t husbandOf(const Family& family) const;
    int32_t wifeOf(const Family& family) const;
    int32_t childOf(const Family& family, int k) const;

    QString fileName;
    QString headerDate;
    QString gedcomVersion;
    QString characterSet;
    bool individualsTruncated = false;
    bool familiesTruncated = false;
    bool sourcesTruncated = false;
    bool notesTruncated = false;

private:
    std::vector<Individual> individuals_;  // element 0 is the unused slot 0
    std::vector<Family> families_;
    std::vector<Source> sources_;
    std::vector<Note> notes_;
    // The slot of each id, built once per load. Ids that lie close together
    // (the usual numbering, in any order) are looked up in a direct table;
    // sparse ones by a binary search of the ids in order. Either way the
    // first record of an id wins.
    struct IdIndex {
        std::vector<int32_t> byId;  // slot of id `lowest + i`, when `direct`
        int64_t lowest = 0;
        std::vector<std::pair<int32_t, int32_t>> sorted;  // (id, slot), when not `direct`
        bool direct = true;

        // Fills the index in place: reusing the buffers keeps a reload from
        // freeing and reallocating large blocks.
        template <typename Record>
        void build(const std::vector<Record>& table);
        int32_t find(int32_t id) const;
    };
    IdIndex individualIds_;
    IdIndex familyIds_;
};

}  // namespace tav
