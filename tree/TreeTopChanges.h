// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <cstdint>

namespace tav {

struct Family;
class RecordStore;
class TextMeasure;
class TreeModel;

// The place (1 to the stored children) of an individual among a family's
// children; 0 when the family does not list it.
int32_t childNumberIn(const RecordStore& records, const Family& family, int32_t individual);

// The family that "Show parents" puts above an individual: its family as a
// child, when that family names a parent and lists the individual among its
// children; 0 otherwise.
int32_t parentsFamilyOf(const RecordStore& records, int32_t individual);

// The view becomes the person in `slot` as the top person, with the eldest
// line below (the tables a new tree of that person with the eldest-line
// walk would have).
void setTopPerson(TreeModel& model, int32_t slot, const TextMeasure& measure);

// The parents of the descendant in `slot` become the top of the view: the
// father (the mother when the family names no father) is the top person,
// family 1 is the parents' family with all its children and the person as
// its line child, and below it the person's own families of the old view
// follow in order, renumbered. Returns the person's new slot. Passing the
// tree's capacity raises SubscriptOutOfRange before anything changes.
int32_t showParents(TreeModel& model, int32_t slot, const TextMeasure& measure, QDate today);

}  // namespace tav
