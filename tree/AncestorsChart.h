// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tree/TreeDrawing.h"
#include "tree/TreeLabels.h"

#include <QDate>
#include <cstdint>

namespace tav {

class Ahnentafel;
class RecordStore;
class TextMeasure;
struct Settings;

// How the chart shows the person at a place, in the tree's terms: the root
// is the top person; a father carries the line as the tree's descendants
// do (his surname is his child's, so the tree's labels leave it out unless
// ViewSurnames asks), and a mother comes into it as the tree's spouses do.
TreeBoxRole ancestorBoxRole(int32_t number);
TreeLabelRole ancestorLabelRole(int32_t number);

// The father's line from the root (numbers 1, 2, 4, 8 ...): the line that
// ViewMainLine draws in the stronger colour.
bool onFathersLine(int32_t number);

// The ancestors chart laid out as the tree's painter paints it: one column
// per generation from the root at the left, each box the tree's label of
// its person (boxes of a column as wide as its widest label), each child
// centred between its parents' places, a fork joining it to them. An
// unknown parent's place stays empty but keeps its room beside the known
// one, so that fathers stand above and mothers below; the forebears of an
// unknown parent take no room at all. A person met again has no forebears
// drawn and carries the tag "= n" where they would stand. Boxes are in
// ascending numbers and a box's slot is its number; none is selected.
TreeDrawing ancestorsDrawing(const Ahnentafel& chart, const RecordStore& records,
                             const Settings& settings, const TextMeasure& measure, QDate today);

// Highlights the box of a number (0: none) and no other.
void selectAncestorBox(TreeDrawing& drawing, int32_t number);

}  // namespace tav
