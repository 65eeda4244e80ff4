// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLineF>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <cstdint>
#include <vector>

namespace tav {

class RecordStore;
struct Settings;
struct TreeTables;

// Where a person slot stands in the view, read from the families' links
// rather than from the `descendant` field (which a walk leaves untouched on
// reused spouse slots).
enum class TreeBoxRole { Top, Spouse, Child };

// The role of every person slot from 1 to the view's count (index 0 unused).
std::vector<TreeBoxRole> treeBoxRoles(const TreeTables& tree);

// One box as it is painted, in tree units.
struct TreeBox {
    int32_t slot = 0;
    QRectF frame;  // the label's place, 2 units larger on each side
    QRectF text;   // where the label's line is written
    QString label;
    TreeBoxRole role = TreeBoxRole::Child;
    bool empty = false;     // a family without that spouse: "?"
    bool mainLine = false;  // the top person or a family's line child, with ViewMainLine
    bool selected = false;
    QRectF mark;  // the mark of a person with descendants; empty when none
    // Beside the box of an ancestor met again: "= n", the place where their
    // forebears go on, in a frame of its own; empty when none.
    QString reference;
    QRectF referenceFrame;
};

struct TreeLine {
    QLineF line;
    bool mainLine = false;
};

// Everything the painter needs for one view: boxes, connecting lines and
// the options that change colours, with the bounds of it all. The painter
// only paints this, so the geometry is tested without a display.
struct TreeDrawing {
    std::vector<TreeBox> boxes;
    std::vector<TreeLine> lines;  // plain lines first, then the main line's
    QRectF bounds;                // boxes, marks and lines, with a margin
    int fontSize = 2;
    bool backColour = false;

    // The slot of the box at a point, 0 when there is none.
    int32_t slotAt(QPointF point) const;
    const TreeBox* box(int32_t slot) const;
};

// The frame drawn around a label written in `text`: the label with a box's
// padding on each side, and wide enough to show when the label is empty.
QRectF treeBoxFrame(const QRectF& text);

// Lines one unit wide lie on the middle of a unit, so that they are crisp
// at the natural size.
double crispLine(double v);

// Collects the lines of a drawing: the plain ones first, then those of the
// main line, which are painted over them. A line of no length is left out.
class TreeLineMaker {
public:
    void add(QPointF from, QPointF to, bool mainLine);
    std::vector<TreeLine> take();

private:
    std::vector<TreeLine> plain_;
    std::vector<TreeLine> main_;
};

// What a drawing paints (boxes with their marks and references, and the
// lines), with a margin around it.
QRectF treeDrawingBounds(const TreeDrawing& drawing);

// The drawing of the view under the tree options of the settings, with
// `selected` highlighted (0 for none).
TreeDrawing treeDrawing(const TreeTables& tree, const RecordStore& records,
                        const Settings& settings, int32_t selected);

// True when the individual has at least one child in a family of its own:
// exactly when it has descendants to count.
bool hasDescendants(const RecordStore& records, int32_t individual);

}  // namespace tav
