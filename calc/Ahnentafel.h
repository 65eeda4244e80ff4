// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

namespace tav {

class RecordStore;

// A person's father and mother: the husband and the wife of the family the
// person is a child of (the FAMC link); 0 when the file names none.
int32_t fatherOf(const RecordStore& records, int32_t individual);
int32_t motherOf(const RecordStore& records, int32_t individual);

// A person's forebears numbered as genealogists number them: the person is
// 1, the father of n is 2n and the mother 2n + 1, so generation g holds the
// numbers 2^(g-1) to 2^g - 1.
//
// Where cousins married, one ancestor is reached along several lines. Such
// a person stands at every place, but only the first (lowest number)
// carries on to their own forebears; a later place refers to the first and
// the places above it stay empty, so the numbering never repeats a branch
// and stays within 2^generations places.
class Ahnentafel {
public:
    static constexpr int minGenerations = 2;
    static constexpr int maxGenerations = 10;
    static constexpr int defaultGenerations = 5;

    Ahnentafel() = default;
    // The forebears of `root` over `generations` (kept within 2 to 10).
    Ahnentafel(const RecordStore& records, int32_t root, int generations);

    int32_t root() const { return individualAt(1); }
    int generations() const { return generations_; }
    // The highest number of the chart: 2^generations - 1.
    int32_t lastNumber() const { return (int32_t(1) << generations_) - 1; }

    // The individual at a place; 0 for an empty place (an unknown parent, a
    // place above a repeated ancestor, a number outside the chart).
    int32_t individualAt(int32_t number) const;
    // For a person met again: the number where they stand first; else 0.
    int32_t firstNumberOf(int32_t number) const;
    // The later places of the person who stands first at `number`, in order.
    std::vector<int32_t> repeatsOf(int32_t number) const;
    // True when the chart goes on from the place to the person's parents:
    // a first meeting below the last generation.
    bool continuesAt(int32_t number) const;
    // The person a place stands for, also above a repeated ancestor, where
    // the chart leaves it empty: the one at the matching place above the
    // first meeting. 0 when unknown.
    int32_t forebearAt(int32_t number) const;
    // The places that hold a person, in ascending order.
    const std::vector<int32_t>& places() const { return places_; }
    // The different people of the chart, the root included.
    int32_t distinctPeople() const { return distinct_; }

    // 1 for the root, 2 for the parents ...; 0 for numbers below 1.
    static int generationOf(int32_t number);

private:
    int generations_ = 0;
    std::vector<int32_t> individual_;  // by number; element 0 unused
    std::vector<int32_t> first_;       // by number: the first place of a repeat, else 0
    std::vector<int32_t> places_;
    int32_t distinct_ = 0;
};

}  // namespace tav
