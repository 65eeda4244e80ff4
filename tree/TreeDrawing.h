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

// The drawing of the view under the tree options of the settings, with
// `selected` highlighted (0 for none).
TreeDrawing treeDrawing(const TreeTables& tree, const RecordStore& records,
                        const Settings& settings, int32_t selected);

// True when the individual has at least one child in a family of its own:
// exactly when it has descendants to count.
bool hasDescendants(const RecordStore& records, int32_t individual);

}  // namespace tav
