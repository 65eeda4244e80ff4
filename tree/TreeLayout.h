// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tav {

struct TreeTables;
class TextMeasure;

// The height of the tree window's toolbar, in tree units: the top person's
// box begins just under it.
constexpr int32_t treeToolbarHeight = 30;

// Gives every box of the view its place and size, and every family the
// values its connecting lines are drawn from, generation by generation:
// the top person, then each family in table order under its head. Widths
// and the line height come from `measure`, rounded half to even; `gap` is
// the generation gap of the font size.
void layoutManager(TreeTables& tree, const TextMeasure& measure, int32_t gap);

// Places person slot 1, centred on x = 0, just under the toolbar.
void layoutTopPerson(TreeTables& tree, const TextMeasure& measure);

// Places the spouse and the children of family slot `f` under its head.
void layoutFamily(TreeTables& tree, int32_t f, const TextMeasure& measure, int32_t gap);

}  // namespace tav
