// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "draw/TreePainter.h"
#include "ui/DrawingCanvas.h"
#include "windowlogic/tree/TreeWindowLogic.h"

namespace tav {

// The tree window's drawing surface: the logic's drawing, or its triangle
// view, which a click on the apex leaves.
class TreeCanvas : public DrawingCanvas {
    Q_OBJECT
public:
    TreeCanvas(const TreeWindowLogic& logic, QWidget* parent = nullptr);

    // The top person centred at the top of the window.
    void showTopAtTop() { showHome(); }

signals:
    void apexClicked();

protected:
    const TreeDrawing* drawing() const override;
    int32_t selectedSlot() const override { return logic_.selected(); }
    QString toolTipFor(int32_t slot) const override { return logic_.toolTip(slot); }
    QColor background() const override;
    QPoint homePosition() const override;
    QPointF keptInMiddle() const override;
    QRectF contentRect() const override;
    void layOutContent() override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    const TreeWindowLogic& logic_;
    TrianglePicture triangle_;
};

}  // namespace tav
