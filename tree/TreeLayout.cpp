// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/TreeLayout.h"

#include "core/Fault.h"
#include "core/TextNumbers.h"
#include "tree/TextMeasure.h"
#include "tree/TreeTables.h"

namespace tav {

namespace {

// Layout's arithmetic is 32-bit: a result outside that range is an overflow.
int32_t narrow(int64_t value)
{
    if (value < INT32_MIN || value > INT32_MAX)
        raiseFault(RuntimeFault::Overflow);
    return int32_t(value);
}

// A place or a size given to a box or a row stays within the geometry
// limit, so everything that draws the view can add two of them.
int32_t placed(int64_t value)
{
    if (value < -TreeTables::geometryLimit || value > TreeTables::geometryLimit)
        raiseFault(RuntimeFault::Overflow);
    return int32_t(value);
}

// Every measured width becomes whole tree units, halves to even.
int32_t measuredWidth(const TextMeasure& measure, const QString& text)
{
    return placed(toLong(measure.textWidth(text)));
}

}  // namespace

void layoutManager(TreeTables& tree, const TextMeasure& measure, int32_t gap)
{
    layoutTopPerson(tree, measure);
    for (int32_t f = 1; f <= tree.nTreeFam; ++f)
        layoutFamily(tree, f, measure, gap);
}

void layoutTopPerson(TreeTables& tree, const TextMeasure& measure)
{
    TreePerson& top = tree.person(1);
    top.width = measuredWidth(measure, top.label);
    top.height = placed(toLong(measure.lineHeight()));
    top.x = toLong(-top.width / 2.0);
    top.y = treeToolbarHeight;
}

void layoutFamily(TreeTables& tree, int32_t f, const TextMeasure& measure, int32_t gap)
{
    TreeFamily& family = tree.family(f);
    const TreePerson& head = tree.person(family.head);
    const int32_t lineHeight = placed(toLong(measure.lineHeight()));
    const int32_t centre = toLong(head.x + head.width / 2.0);
    const int32_t bottom = placed(int64_t(head.y) + head.height);
    family.layout2 = bottom;
    family.layout4 = gap;

    // The spouse stands under the head, centred on it, 0.35 of a line lower.
    const int32_t s = family.indSt;
    TreePerson& spouse = tree.person(s);
    spouse.width = measuredWidth(measure, spouse.label);
    spouse.x = placed(toLong(centre - spouse.width / 2.0));
    spouse.y = placed(toLong(0.35 * lineHeight + bottom));
    spouse.height = lineHeight;

    // The record's children are the family's entries after the spouse.
    const int32_t n = family.nChildren;
    int32_t total = 0;
    for (int32_t k = 1; k <= n; ++k)
        total =
            toLong(double(total) + measure.textWidth(tree.person(narrow(int64_t(s) + k)).label));

    // Children stand 20 apart, closer in wide rows. The row is first
    // measured with the gap of 20: wider than 1000 it takes the gap of 7,
    // even where the gap of 10 would have brought it under 1000.
    int32_t spread = 100;
    int32_t childGap = 0;
    if (n > 0) {
        const auto spreadWith = [&](int32_t g) { return narrow(int64_t(n - 1) * g + total); };
        childGap = 20;
        spread = spreadWith(childGap);
        if (spread > 1000)
            childGap = 7;
        else if (spread > 800)
            childGap = 10;
        spread = spreadWith(childGap);
    }

    // The row starts 47.5 hundredths of its spread left of a head at x = 0,
    // and further left the further right the head stands.
    const int32_t left =
        placed(int64_t(centre) - toLong(double(narrow((int64_t(centre) + 475) * spread)) / 1000.0));
    family.layout1 = left;
    family.layout3 = placed(spread);

    const int32_t rowTop = placed(int64_t(bottom) + gap - lineHeight);
    if (n == 1) {
        // A single child stands centred under the head, wherever the row would start.
        TreePerson& child = tree.person(s + 1);
        child.width = measuredWidth(measure, child.label);
        child.x = placed(toLong(centre - child.width / 2.0));
        child.y = rowTop;
        child.height = lineHeight;
        return;
    }
    int32_t x = left;
    for (int32_t k = 1; k <= n; ++k) {
        TreePerson& child = tree.person(narrow(int64_t(s) + k));
        child.x = x;
        child.width = measuredWidth(measure, child.label);
        child.height = lineHeight;
        child.y = rowTop;
        x = placed(int64_t(x) + child.width + childGap);
    }
}

}  // namespace tav
