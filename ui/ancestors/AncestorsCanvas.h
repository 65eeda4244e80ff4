// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/DrawingCanvas.h"
#include "windowlogic/ancestors/AncestorsWindowLogic.h"

namespace tav {

// The ancestors chart's drawing surface: the chart opens with the root at
// the left, in the middle of the window's height; a click on the tag of a
// repeated ancestor counts as one on the box where their forebears go on.
class AncestorsCanvas : public DrawingCanvas {
    Q_OBJECT
public:
    AncestorsCanvas(const AncestorsWindowLogic& logic, QWidget* parent = nullptr);

protected:
    const TreeDrawing* drawing() const override { return &logic_.drawing(); }
    int32_t selectedSlot() const override { return logic_.selected(); }
    QString toolTipFor(int32_t slot) const override { return logic_.toolTip(slot); }
    QColor background() const override;
    int32_t slotAt(QPointF treePoint) const override { return logic_.numberAt(treePoint); }
    QPoint homePosition() const override;
    QPointF keptInMiddle() const override;

private:
    double rootMiddle() const;

    const AncestorsWindowLogic& logic_;
};

}  // namespace tav
