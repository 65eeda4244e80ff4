// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/RelationshipFinder.h"

#include "calc/Names.h"
#include "core/Fault.h"
#include "core/RecordStore.h"

#include <vector>

namespace tav {

namespace {

constexpr size_t maxAncestors = 15000;

struct Ancestor {
    int32_t individual;
    int32_t generation;  // 0 the person, 1 a parent, 2 a grandparent ...
};

// The person and every ancestor, generation by generation, father before
// mother. Each ancestor is kept once, at the nearest place it is reached:
// that keeps the order in which ancestors are first met, which is all the
// search below depends on, and keeps collapsed pedigrees small.
std::vector<Ancestor> ancestorList(const RecordStore& records, int32_t person)
{
    std::vector<Ancestor> list{{person, 0}};
    std::vector<bool> listed(size_t(records.individualCount()) + 2, false);
    const auto mark = [&listed](int32_t slot) {
        if (slot < 0 || size_t(slot) >= listed.size() || listed[size_t(slot)])
            return false;
        listed[size_t(slot)] = true;
        return true;
    };
    mark(person);
    for (size_t next = 0; next < list.size(); ++next) {
        const Ancestor entry = list[next];
        const Individual& individual = records.individual(entry.individual);
        if (!individual.hasChildFamily())
            continue;
        const Family& family = records.family(records.childFamilyOf(individual));
        for (int32_t parent : {records.husbandOf(family), records.wifeOf(family)}) {
            if (parent == 0 || !mark(parent))
                continue;
            if (list.size() >= maxAncestors)
                raiseFault(RuntimeFault::SubscriptOutOfRange);
            list.push_back({parent, entry.generation + 1});
        }
    }
    return list;
}

bool isMale(const Individual& person) { return person.sex == QLatin1String("M"); }

QString sentence(const Individual& first, const QString& word, const Individual& second)
{
    return first.name.toString() + QStringLiteral(" is ") + word + QStringLiteral(" of ") +
           second.name.toString();
}

// The word for one side of a line of descent: the elder side (father,
// uncle) or the younger (son, nephew), with "grand" and "great" as the
// distance asks.
QString lineWord(int32_t small, int32_t large, bool elder, bool male)
{
    QString word;
    int32_t grandFrom;
    if (small == 0) {
        word = elder ? (male ? "father" : "mother") : (male ? "son" : "daughter");
        grandFrom = 2;
    } else {
        word = elder ? (male ? "uncle" : "aunt") : (male ? "nephew" : "niece");
        grandFrom = 3;
    }
    if (large < grandFrom)
        return word;
    return QStringLiteral("the ") + QStringLiteral("great ").repeated(large - grandFrom) +
           QStringLiteral("grand ") + word;
}

QString bloodRelationship(const RecordStore& records, int32_t a, int32_t b, const QString& gap)
{
    const std::vector<Ancestor> listA = ancestorList(records, a);
    const std::vector<Ancestor> listB = ancestorList(records, b);

    // The common ancestor is the first of A's list that B's list holds, at
    // its first place in B's list.
    std::vector<int32_t> generationInB(size_t(records.individualCount()) + 2, -1);
    for (const Ancestor& entry : listB) {
        if (size_t(entry.individual) < generationInB.size() &&
            generationInB[size_t(entry.individual)] < 0)
            generationInB[size_t(entry.individual)] = entry.generation;
    }
    int32_t gA = -1, gB = -1;
    for (const Ancestor& entry : listA) {
        if (size_t(entry.individual) < generationInB.size() &&
            generationInB[size_t(entry.individual)] >= 0) {
            gA = entry.generation;
            gB = generationInB[size_t(entry.individual)];
            break;
        }
    }
    if (gA < 0)
        return QStringLiteral("No relationship found");

    const Individual& personA = records.individual(a);
    const Individual& personB = records.individual(b);
    const bool maleA = isMale(personA), maleB = isMale(personB);
    const auto pair = [&](const QString& wordA, const QString& wordB, bool closing) {
        return sentence(personA, wordA, personB) + gap + sentence(personB, wordB, personA) +
               (closing ? QStringLiteral(")") : QString());
    };

    if (gA == 0 && gB == 0)
        return personA.name.toString() + QStringLiteral(" is ") + personB.name.toString();
    if (gA == 1 && gB == 1)
        return pair(maleA ? "the brother" : "the sister", maleB ? "the brother" : "the sister",
                    true);
    if (gA == 0 && gB == 1)
        return pair(maleA ? "father" : "mother", maleB ? "son" : "daughter", true);
    if (gA == 1 && gB == 0)
        return pair(maleA ? "son" : "daughter", maleB ? "father" : "mother", true);
    if (gA >= 2 && gB >= 2) {
        const int32_t removed = std::abs(gA - gB);
        QString word = ordinalWord(std::min(gA, gB) - 1, u"ST") + QStringLiteral(" cousin ");
        if (removed > 0)
            word += ordinalWord(removed, u"ONCE") + QStringLiteral(" removed");
        return pair(word, word, true);
    }
    const int32_t small = std::min(gA, gB), large = std::max(gA, gB);
    return pair(lineWord(small, large, gA < gB, maleA), lineWord(small, large, gB < gA, maleB),
                false);
}

}  // namespace

QString relationshipText(const RecordStore& records, int32_t a, int32_t b, const QString& lineBreak)
{
    const QString gap = lineBreak + lineBreak;
    const Individual& personA = records.individual(a);
    const Individual& personB = records.individual(b);
    QString answer;
    bool spouses = false;
    for (int k = 1; k <= personA.spouseFamilyCount && !spouses; ++k) {
        const Family& family = records.family(records.spouseFamilyOf(personA, k));
        spouses = (isMale(personA) ? records.wifeOf(family) : records.husbandOf(family)) == b;
    }
    if (spouses) {
        const QString nameA = personA.name.toString(), nameB = personB.name.toString();
        answer = nameA + QStringLiteral(" is the ") + (isMale(personA) ? "husband" : "wife") +
                 QStringLiteral(" of ") + nameB + gap + nameB + QStringLiteral(" is the ") +
                 (isMale(personB) ? "husband" : "wife") + QStringLiteral(" of ") + nameA;
    } else {
        answer = bloodRelationship(records, a, b, gap);
    }
    return answer + gap + QStringLiteral("(Blood relations only)");
}

}  // namespace tav
