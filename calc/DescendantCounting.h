#pragma once

#include <cstdint>

namespace tav {

class RecordStore;

// Three numbers about the descendants of a person, from one walk down the
// lines of descent and cached in the individual records (a later load clears
// the cache). A descendant reached along two lines counts once per line.
//
// - descendants: every child of every family of the person and of each
//   descendant;
// - spouses: the marriages (spouse families) of the person and of each
//   descendant;
// - generations: the deepest level that has a child, the person being
//   level 1 (children only: 1; none: 0).
//
// A line more than 100 levels deep raises SubscriptOutOfRange.
int32_t countDescendants(RecordStore& records, int32_t individual);
int32_t countDescendantSpouses(RecordStore& records, int32_t individual);
int32_t countGenerations(RecordStore& records, int32_t individual);

// The spouse-family slot (1-10) whose children and their descendants score
// highest (family child count + a child's descendants, best child counting),
// the first slot winning a tie; 0 without families or children.
int32_t largestFamilySlot(RecordStore& records, int32_t individual);

// The individual with the most descendants, every one scored in slot order
// and the first winning a tie: the top of "family tree from top". 0 for a
// file without individuals.
int32_t individualWithMostDescendants(RecordStore& records);

}  // namespace tav
