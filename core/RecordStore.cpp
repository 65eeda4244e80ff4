#include "core/RecordStore.h"

#include "core/Fault.h"
#include "core/TextNumbers.h"

#include <algorithm>

namespace tav {

namespace {

const Individual emptyIndividual{};
const Family emptyFamily{};
const Source emptySource{};
const Note emptyNote{};

}  // namespace

RecordStore::RecordStore()
{
    // Room for every slot up front, as the tables are fixed in size: the
    // reader never moves records, and pages no file reaches stay untouched.
    individuals_.reserve(size_t(individualCapacity) + 1);
    families_.reserve(size_t(familyCapacity) + 1);
    resetRecords();
}

void RecordStore::resetRecords()
{
    gedcomVersion.clear();
    individuals_.assign(1, Individual{});
    families_.assign(1, Family{});
    sources_.assign(1, Source{});
    notes_.assign(1, Note{});
    individualIds_.build(individuals_);
    familyIds_.build(families_);
    individualsTruncated = familiesTruncated = sourcesTruncated = notesTruncated = false;
}

template <typename Record>
void RecordStore::IdIndex::build(const std::vector<Record>& table)
{
    const size_t count = table.size() - 1;
    byId.clear();
    sorted.clear();
    if (count == 0) {
        direct = true;
        lowest = 0;
        return;
    }
    int64_t low = table[1].id, high = table[1].id;
    for (size_t k = 2; k <= count; ++k) {
        low = std::min<int64_t>(low, table[k].id);
        high = std::max<int64_t>(high, table[k].id);
    }
    // A direct table as long as the ids' range, when that stays within a
    // few times the number of records.
    direct = uint64_t(high - low) <= 4 * uint64_t(count) + 1024;
    lowest = low;
    if (direct) {
        byId.assign(size_t(high - low) + 1, 0);
        for (size_t k = 1; k <= count; ++k) {
            int32_t& slot = byId[size_t(table[k].id - low)];
            if (slot == 0)
                slot = int32_t(k);
        }
        return;
    }
    sorted.reserve(count);
    for (size_t k = 1; k <= count; ++k)
        sorted.emplace_back(table[k].id, int32_t(k));
    std::sort(sorted.begin(), sorted.end());
}

int32_t RecordStore::IdIndex::find(int32_t id) const
{
    if (direct) {
        const int64_t at = int64_t(id) - lowest;
        return at >= 0 && uint64_t(at) < byId.size() ? byId[size_t(at)] : 0;
    }
    // The first pair of the id holds its lowest slot: the first in file order.
    const auto found = std::lower_bound(sorted.begin(), sorted.end(), std::pair{id, int32_t(0)});
    return found != sorted.end() && found->first == id ? found->second : 0;
}

void RecordStore::indexIds()
{
    individualIds_.build(individuals_);
    familyIds_.build(families_);
}

template <typename Record>
const Record& recordAt(const std::vector<Record>& table, int32_t slot, int32_t capacity,
                       const Record& empty)
{
    if (slot < 0 || slot > capacity)
        raiseFault(RuntimeFault::SubscriptOutOfRange);
    return slot >= 1 && size_t(slot) < table.size() ? table[size_t(slot)] : empty;
}

const Individual& RecordStore::individual(int32_t slot) const
{
    return recordAt(individuals_, slot, individualCapacity, emptyIndividual);
}

const Family& RecordStore::family(int32_t slot) const
{
    return recordAt(families_, slot, familyCapacity, emptyFamily);
}

const Source& RecordStore::source(int32_t slot) const
{
    return recordAt(sources_, slot, sourceCapacity, emptySource);
}

const Note& RecordStore::note(int32_t slot) const
{
    return recordAt(notes_, slot, noteCapacity, emptyNote);
}

int32_t RecordStore::indIndexFromId(int32_t id) const { return individualIds_.find(id); }

int16_t RecordStore::famIndexFromId(int32_t id) const { return toInteger(familyIds_.find(id)); }

int32_t RecordStore::childFamilyOf(const Individual& person) const
{
    return person.hasChildFamily() ? famIndexFromId(person.childFamilyId) : 0;
}

int32_t RecordStore::spouseFamilyOf(const Individual& person, int k) const
{
    return person.hasSpouseFamily(k) ? famIndexFromId(person.spouseFamilyId[size_t(k)]) : 0;
}

int32_t RecordStore::husbandOf(const Family& family) const
{
    return family.husbandWritten ? indIndexFromId(family.husbandId) : 0;
}

int32_t RecordStore::wifeOf(const Family& family) const
{
    return family.wifeWritten ? indIndexFromId(family.wifeId) : 0;
}

int32_t RecordStore::childOf(const Family& family, int k) const
{
    return family.hasChild(k) ? indIndexFromId(family.childId[size_t(k)]) : 0;
}

}  // namespace tav
