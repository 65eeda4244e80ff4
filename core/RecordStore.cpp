// SPDX-License-Identifier: GPL-3.0-or-later
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
    sources_.reserve(size_t(sourceCapacity) + 1);
    notes_.reserve(size_t(noteCapacity) + 1);
    resetRecords();
}

void RecordStore::resetRecords()
{
    gedcomVersion.clear();
    individuals_.assign(1, Individual{});
    families_.assign(1, Family{});
    sources_.assign(1, Source{});
    notes_.assign(1, Note{});
    links_.clear();
    otherNames_.clear();
    texts_.clear();
    xrefs_.clear();
    individualByXref_.clear();
    familyByXref_.clear();
    individualsTruncated = familiesTruncated = sourcesTruncated = notesTruncated = false;
}

QStringView pointedXref(QStringView value)
{
    const QStringView text = value.trimmed();
    if (text.size() < 3 || !text.startsWith(u'@') || !text.endsWith(u'@'))
        return {};
    const QStringView inner = text.mid(1, text.size() - 2);
    return inner.contains(u'@') || inner.contains(u' ') ? QStringView() : inner;
}

void RecordStore::expectFileBytes(qsizetype bytes)
{
    // A link line takes at least a dozen bytes ("1 CHIL @I1@" and its end).
    links_.reserve(size_t(bytes / 16));
}

int32_t RecordStore::addLink(int32_t& first, int32_t& count)
{
    if (count == 0)
        first = int32_t(links_.size());
    ++count;
    links_.emplace_back();
    return int32_t(links_.size()) - 1;
}

void RecordStore::addOtherName(Individual& person, QStringView name)
{
    if (person.otherNameCount == 0)
        person.firstOtherName = int32_t(otherNames_.size());
    ++person.otherNameCount;
    otherNames_.push_back(name);
}

namespace {

// The first slot of each cross-reference code among the records of a table.
template <typename Table>
void indexByXref(const Table& table, int32_t codes, std::vector<int32_t>& index)
{
    index.assign(size_t(codes), 0);
    for (size_t slot = table.size() - 1; slot >= 1; --slot) {
        const int32_t code = table[slot].xref;
        if (code >= 0)
            index[size_t(code)] = int32_t(slot);
    }
}

}  // namespace

void RecordStore::resolveLinks()
{
    const int32_t codes = xrefs_.count();
    indexByXref(individuals_, codes, individualByXref_);
    indexByXref(families_, codes, familyByXref_);
    // GEDCOM 7's @VOID@ is a link written to name no record.
    const int32_t voidCode = xrefs_.find("VOID");
    const auto resolve = [voidCode](Link& link, const std::vector<int32_t>& index) {
        link.slot = link.xref >= 0 && link.xref != voidCode ? index[size_t(link.xref)] : 0;
    };
    for (size_t slot = 1; slot < individuals_.size(); ++slot) {
        Individual& person = individuals_[slot];
        resolve(person.childFamily, familyByXref_);
        for (int32_t k = 0; k < person.spouseFamilyCount; ++k)
            resolve(links_[size_t(person.firstSpouseFamily + k)], familyByXref_);
    }
    for (size_t slot = 1; slot < families_.size(); ++slot) {
        Family& family = families_[slot];
        resolve(family.husband, individualByXref_);
        resolve(family.wife, individualByXref_);
        for (int32_t k = 0; k < family.childCount; ++k)
            resolve(links_[size_t(family.firstChild + k)], individualByXref_);
    }
}

template <typename Table, typename Record>
const Record& recordAt(const Table& table, int32_t slot, int32_t capacity, const Record& empty)
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

namespace {

int32_t slotOf(const InternedTexts& xrefs, const std::vector<int32_t>& index, QStringView xref)
{
    const QByteArray bytes = xref.toUtf8();
    const int32_t code = xrefs.find(std::string_view(bytes.constData(), size_t(bytes.size())));
    return code >= 0 && size_t(code) < index.size() ? index[size_t(code)] : 0;
}

}  // namespace

int32_t RecordStore::indIndexFromId(QStringView xref) const
{
    return slotOf(xrefs_, individualByXref_, xref);
}

int32_t RecordStore::famIndexFromId(QStringView xref) const
{
    return slotOf(xrefs_, familyByXref_, xref);
}

int32_t RecordStore::noteIndexFromId(QStringView xref) const
{
    const QByteArray bytes = xref.toUtf8();
    const int32_t code = xrefs_.find(std::string_view(bytes.constData(), size_t(bytes.size())));
    if (code == InternedTexts::none)
        return 0;
    for (size_t slot = 1; slot < notes_.size(); ++slot) {
        if (notes_[slot].xref == code)
            return int32_t(slot);
    }
    return 0;
}

}  // namespace tav
