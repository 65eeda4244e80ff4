// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/TreeDrawing.h"

#include "core/RecordStore.h"
#include "settings/Settings.h"
#include "tree/TreeTables.h"

#include <algorithm>
#include <cmath>

namespace tav {

namespace {

// A box is its label with room around it: a few units at the sides, inside
// the gaps that layout leaves between neighbours (7 units at the least), and
// 2 above and below, where the 0.35 of a line between a head and a spouse
// leaves no more.
constexpr double framePadding = 2;
constexpr double sidePadding = 3;
constexpr double minFrameWidth = 8;  // so that a child with an empty label still shows
constexpr double markWidth = 6;
constexpr double markHeight = 4;
constexpr double boundsMargin = 20;
// A missing spouse's "?" stands beside the line of descent, this far from it.
constexpr double besideLine = 4;

// Lines one unit wide lie on the middle of a unit, so that they are crisp
// at the natural size.
double crisp(double v) { return std::floor(v) + 0.5; }

double centreOf(const TreePerson& person) { return person.x + person.width / 2.0; }

QRectF frameOf(const TreePerson& person)
{
    return treeBoxFrame(QRectF(person.x, person.y, person.width, person.height));
}

// The "?" of a family without that spouse: a box as tall as the others, at
// least as wide as it is tall, just right of the line that runs from the
// head down to the children (layout centres the slot on that line).
QRectF missingSpouseFrame(const TreePerson& person)
{
    const double height = person.height + 2 * framePadding;
    const double width = std::max(height, person.width + 2 * sidePadding);
    return QRectF(crisp(centreOf(person)) + besideLine, person.y - framePadding, width, height);
}

// The mark sits outside the box where nothing else is drawn: above the
// right end of a descendant's box (its line comes in at the centre), below
// that of a spouse (whose head stands right above it).
QRectF markOf(const QRectF& frame, TreeBoxRole role)
{
    const double left = frame.right() - markWidth - 1;
    const double top =
        role == TreeBoxRole::Spouse ? frame.bottom() + 1 : frame.top() - markHeight - 1;
    return QRectF(left, top, markWidth, markHeight);
}

// Places are worked out in doubles: a view read from a file may put boxes
// anywhere layout can, and two of its numbers added may pass 32 bits.
double bottomOf(const TreePerson& person)
{
    return double(person.y) + double(person.height) + framePadding;
}

using LineMaker = TreeLineMaker;

}  // namespace

QRectF treeBoxFrame(const QRectF& text)
{
    QRectF frame = text.adjusted(-sidePadding, -framePadding, sidePadding, framePadding);
    if (frame.width() < minFrameWidth) {
        const double centre = frame.center().x();
        frame.setLeft(centre - minFrameWidth / 2);
        frame.setWidth(minFrameWidth);
    }
    return frame;
}

double crispLine(double v) { return crisp(v); }

void TreeLineMaker::add(QPointF from, QPointF to, bool mainLine)
{
    if (from == to)
        return;
    (mainLine ? main_ : plain_).push_back(TreeLine{QLineF(from, to), mainLine});
}

std::vector<TreeLine> TreeLineMaker::take()
{
    std::vector<TreeLine> lines = std::move(plain_);
    lines.insert(lines.end(), main_.begin(), main_.end());
    return lines;
}

QRectF treeDrawingBounds(const TreeDrawing& drawing)
{
    QRectF bounds;
    for (const TreeBox& box : drawing.boxes) {
        bounds = bounds.united(box.frame);
        if (!box.mark.isEmpty())
            bounds = bounds.united(box.mark);
        if (!box.referenceFrame.isEmpty())
            bounds = bounds.united(box.referenceFrame);
    }
    for (const TreeLine& line : drawing.lines)
        bounds = bounds.united(QRectF(line.line.p1(), line.line.p2()).normalized());
    return bounds.adjusted(-boundsMargin, -boundsMargin, boundsMargin, boundsMargin);
}

std::vector<TreeBoxRole> treeBoxRoles(const TreeTables& tree)
{
    std::vector<TreeBoxRole> roles(size_t(std::max(tree.nTreeInd, 0)) + 1, TreeBoxRole::Child);
    if (tree.nTreeInd >= 1)
        roles[1] = TreeBoxRole::Top;
    for (int32_t f = 1; f <= tree.nTreeFam; ++f) {
        const int32_t spouse = tree.family(f).indSt;
        if (spouse > 1 && spouse <= tree.nTreeInd)
            roles[size_t(spouse)] = TreeBoxRole::Spouse;
    }
    return roles;
}

bool hasDescendants(const RecordStore& records, int32_t individual)
{
    const Individual& person = records.individual(individual);
    for (int k = 1; k <= person.spouseFamilyCount; ++k) {
        if (records.family(records.spouseFamilyOf(person, k)).childCount > 0)
            return true;
    }
    return false;
}

TreeDrawing treeDrawing(const TreeTables& tree, const RecordStore& records,
                        const Settings& settings, int32_t selected)
{
    TreeDrawing drawing;
    drawing.fontSize = settings.FontSize;
    drawing.backColour = settings.BackColour;
    const int32_t count = tree.nTreeInd;
    if (count < 1)
        return drawing;
    const std::vector<TreeBoxRole> roles = treeBoxRoles(tree);
    const bool spousesShown = !settings.ViewNoSpouse;

    // The shown line: the top person, then the line child of each family
    // whose head is on it.
    std::vector<bool> onLine(size_t(count) + 1, false);
    std::vector<bool> familyOnLine(size_t(tree.nTreeFam) + 1, false);
    onLine[1] = true;
    for (int32_t f = 1; f <= tree.nTreeFam; ++f) {
        const TreeFamily& family = tree.family(f);
        if (family.head < 1 || family.head > count || !onLine[size_t(family.head)])
            continue;
        familyOnLine[size_t(f)] = true;
        const int64_t child = int64_t(family.indSt) + family.childShown;
        if (family.childShown >= 1 && family.childShown <= family.nChildren && child <= count)
            onLine[size_t(child)] = true;
    }

    for (int32_t slot = 1; slot <= count; ++slot) {
        const TreeBoxRole role = roles[size_t(slot)];
        if (role == TreeBoxRole::Spouse && !spousesShown)
            continue;
        const TreePerson& person = tree.person(slot);
        TreeBox box;
        box.slot = slot;
        box.empty = person.indIdx == 0;
        box.frame = box.empty && role == TreeBoxRole::Spouse ? missingSpouseFrame(person)
                                                              : frameOf(person);
        // The label's measured line, in the middle of its frame.
        box.text = QRectF(box.frame.center().x() - person.width / 2.0, person.y, person.width,
                          person.height);
        box.label = person.label;
        box.role = role;
        box.mainLine = settings.ViewMainLine && onLine[size_t(slot)];
        box.selected = slot == selected;
        if (settings.ViewDescendentMark && !box.empty && hasDescendants(records, person.indIdx))
            box.mark = markOf(box.frame, role);
        drawing.boxes.push_back(std::move(box));
    }

    LineMaker lines;
    for (int32_t f = 1; f <= tree.nTreeFam; ++f) {
        const TreeFamily& family = tree.family(f);
        if (family.head < 1 || family.head > count || family.indSt < 1 || family.indSt > count)
            continue;
        const bool main = settings.ViewMainLine && familyOnLine[size_t(f)];
        const TreePerson& head = tree.person(family.head);
        const TreePerson& spouse = tree.person(family.indSt);
        const QPointF headBottom(crisp(centreOf(head)), bottomOf(head));
        QPointF start = headBottom;
        if (spousesShown && spouse.indIdx == 0) {
            // The line passes the "?" beside it and joins it at its middle.
            const QRectF missing = missingSpouseFrame(spouse);
            const double middle = crisp(missing.center().y());
            const QPointF onLine(headBottom.x(), middle);
            lines.add(headBottom, onLine, main);
            lines.add(onLine, QPointF(missing.left(), middle), false);
            start = onLine;
        } else if (spousesShown) {
            const double x = crisp(centreOf(spouse));
            const double spouseTop = spouse.y - framePadding;
            if (spouseTop > headBottom.y())
                lines.add(headBottom, QPointF(x, spouseTop), main);
            start = QPointF(x, bottomOf(spouse));
        }

        const int32_t last = std::min(family.nChildren, count - family.indSt);
        if (last < 1)
            continue;
        const TreePerson& first = tree.person(family.indSt + 1);
        const double childTop = first.y - framePadding;
        // A single child stands under its parents: one straight line (the
        // centres may differ by a unit of rounding).
        if (last == 1 && std::abs(crisp(centreOf(first)) - start.x()) <= 1.5) {
            lines.add(start, QPointF(start.x(), childTop), main);
            continue;
        }
        // Down to a bar half way to the children's row, the bar over every
        // child (and under the parents, when the row leans away from
        // them), and down to each child.
        const double barY = crisp((start.y() + childTop) / 2);
        const QPointF onBar(start.x(), barY);
        double leftEnd = start.x();
        double rightEnd = start.x();
        for (int32_t k = 1; k <= last; ++k) {
            const TreePerson& child = tree.person(family.indSt + k);
            const double x = crisp(centreOf(child));
            leftEnd = std::min(leftEnd, x);
            rightEnd = std::max(rightEnd, x);
            const bool lineChild = main && k == family.childShown;
            lines.add(QPointF(x, barY), QPointF(x, child.y - framePadding), lineChild);
            if (lineChild)
                lines.add(onBar, QPointF(x, barY), true);
        }
        lines.add(start, onBar, main);
        lines.add(QPointF(leftEnd, barY), QPointF(rightEnd, barY), false);
    }
    drawing.lines = lines.take();
    drawing.bounds = treeDrawingBounds(drawing);
    return drawing;
}

int32_t TreeDrawing::slotAt(QPointF point) const
{
    // Later boxes are painted over earlier ones: the last one hit wins.
    for (auto it = boxes.rbegin(); it != boxes.rend(); ++it) {
        if (it->frame.contains(point))
            return it->slot;
    }
    return 0;
}

const TreeBox* TreeDrawing::box(int32_t slot) const
{
    for (const TreeBox& b : boxes) {
        if (b.slot == slot)
            return &b;
    }
    return nullptr;
}

}  // namespace tav
