// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/Ahnentafel.h"

#include "core/RecordStore.h"

#include <algorithm>
#include <bit>
#include <unordered_map>

namespace tav {

namespace {

const Family* parentsOf(const RecordStore& records, int32_t individual)
{
    if (individual <= 0 || individual > records.individualCount())
        return nullptr;
    const int32_t family = records.childFamilyOf(records.individual(individual));
    return family != 0 ? &records.family(family) : nullptr;
}

}  // namespace

int32_t fatherOf(const RecordStore& records, int32_t individual)
{
    const Family* family = parentsOf(records, individual);
    return family ? records.husbandOf(*family) : 0;
}

int32_t motherOf(const RecordStore& records, int32_t individual)
{
    const Family* family = parentsOf(records, individual);
    return family ? records.wifeOf(*family) : 0;
}

Ahnentafel::Ahnentafel(const RecordStore& records, int32_t root, int generations)
    : generations_(std::clamp(generations, minGenerations, maxGenerations))
{
    const size_t size = size_t(lastNumber()) + 1;
    individual_.assign(size, 0);
    first_.assign(size, 0);
    if (root <= 0 || root > records.individualCount())
        return;
    // In ascending numbers each person is first met at their lowest number.
    std::unordered_map<int32_t, int32_t> firstPlace;
    firstPlace.reserve(size);
    for (int32_t number = 1; number <= lastNumber(); ++number) {
        int32_t person = root;
        if (number > 1) {
            const int32_t child = number / 2;
            if (individual_[size_t(child)] == 0 || first_[size_t(child)] != 0)
                continue;
            const int32_t childPerson = individual_[size_t(child)];
            person =
                number % 2 == 0 ? fatherOf(records, childPerson) : motherOf(records, childPerson);
            if (person == 0)
                continue;
        }
        individual_[size_t(number)] = person;
        places_.push_back(number);
        const auto [met, isNew] = firstPlace.try_emplace(person, number);
        if (isNew)
            ++distinct_;
        else
            first_[size_t(number)] = met->second;
    }
}

int32_t Ahnentafel::individualAt(int32_t number) const
{
    return number >= 1 && size_t(number) < individual_.size() ? individual_[size_t(number)] : 0;
}

int32_t Ahnentafel::firstNumberOf(int32_t number) const
{
    return number >= 1 && size_t(number) < first_.size() ? first_[size_t(number)] : 0;
}

std::vector<int32_t> Ahnentafel::repeatsOf(int32_t number) const
{
    std::vector<int32_t> repeats;
    for (const int32_t place : places_) {
        if (place > number && first_[size_t(place)] == number)
            repeats.push_back(place);
    }
    return repeats;
}

int32_t Ahnentafel::forebearAt(int32_t number) const
{
    if (number < 1 || number > lastNumber())
        return 0;
    if (individual_[size_t(number)] != 0)
        return individual_[size_t(number)];
    // The nearest place below that holds a person: a repeat, or the end
    // of what is known.
    for (int shift = 1; (number >> shift) >= 1; ++shift) {
        const int32_t below = number >> shift;
        if (individual_[size_t(below)] == 0)
            continue;
        const int32_t first = first_[size_t(below)];
        if (first == 0)
            return 0;
        // The same path upwards from the first place; a lower number.
        const int32_t path = number & ((int32_t(1) << shift) - 1);
        return forebearAt((first << shift) | path);
    }
    return 0;
}

bool Ahnentafel::continuesAt(int32_t number) const
{
    return individualAt(number) != 0 && firstNumberOf(number) == 0 &&
           generationOf(number) < generations_;
}

int Ahnentafel::generationOf(int32_t number)
{
    return number >= 1 ? std::bit_width(uint32_t(number)) : 0;
}

}  // namespace tav
