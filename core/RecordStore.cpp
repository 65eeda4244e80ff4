#include "core/RecordStore.h"

#include "core/Fault.h"
#include "core/TextNumbers.h"

namespace tav {

namespace {

const Individual emptyIndividual{};
const Family emptyFamily{};
const Source emptySource{};
const Note emptyNote{};

// Binary search over slots 1..count of a table kept in ascending id order.
// The probes follow the original lookup exactly (first probe in the upper
// half, the last two candidates both examined); the one guard added is that a
// search which can no longer narrow (a one-record table, an empty table)
// answers 0 instead of probing the same slot forever.
int32_t findSlotById(const std::vector<int32_t>& ids, int32_t id)
{
    const int32_t count = int32_t(ids.size()) - 1;
    if (count < 1)
        return 0;
    int32_t lo = 1;
    int32_t hi = count;
    int32_t mid = (hi - 1) / 2 + 1;
    for (;;) {
        if (hi - lo == 1 || ids[size_t(mid)] == id) {
            if (ids[size_t(mid)] == id)
                return mid;
            if (ids[size_t(hi)] == id)
                return hi;
            return 0;
        }
        if (hi - lo < 1)
            return 0;
        if (ids[size_t(mid)] <= id)
            lo = mid;
        else
            hi = mid;
        mid = lo + (hi - lo) / 2;
    }
}

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
    ids.resize(table.size());
    for (size_t k = 0; k < table.size(); ++k)
        ids[k] = table[k].id;
    const size_t count = ids.size() - 1;
    direct = count > 0 && ids[1] >= 0;
    for (size_t k = 2; k <= count && direct; ++k)
        direct = ids[k] > ids[k - 1];
    // Sparse numbering would make the direct table large: search instead.
    if (direct && size_t(ids[count]) > 4 * count + 1024)
        direct = false;
    byId.clear();
    if (direct) {
        byId.resize(size_t(ids[count]) + 1, 0);
        for (size_t k = 1; k <= count; ++k)
            byId[size_t(ids[k])] = int32_t(k);
    }
}

int32_t RecordStore::IdIndex::find(int32_t id) const
{
    if (direct)
        return id >= 0 && size_t(id) < byId.size() ? byId[size_t(id)] : 0;
    return findSlotById(ids, id);
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

void RecordStore::clearDescendantCache()
{
    for (Individual& person : individuals_)
        person.descCounted = false;
}

}  // namespace tav
