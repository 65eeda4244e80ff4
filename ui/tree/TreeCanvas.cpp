// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tree/TreeCanvas.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <cmath>

namespace tav {

TreeCanvas::TreeCanvas(const TreeWindowLogic& logic, QWidget* parent)
    : DrawingCanvas(parent), logic_(logic)
{}

const TreeDrawing* TreeCanvas::drawing() const
{
    return logic_.triangleShown() ? nullptr : &logic_.drawing();
}

QColor TreeCanvas::background() const
{
    return treeBackground(logic_.option(TreeOption::BackColour));
}

QPoint TreeCanvas::homePosition() const
{
    const TreeBox* top = logic_.drawing().box(1);
    const double centre = top ? top->frame.center().x() : 0;
    return QPoint(scrollPlace(centre * zoom() - viewport()->width() / 2.0),
                  verticalScrollBar()->minimum());
}

QPointF TreeCanvas::keptInMiddle() const
{
    const TreeBox* top = logic_.drawing().box(1);
    return QPointF(top ? top->frame.center().x() : logic_.drawing().bounds.center().x(), qQNaN());
}

QRectF TreeCanvas::contentRect() const
{
    if (logic_.triangleShown())
        return QRectF(QPointF(0, 0), triangle_.size);
    return DrawingCanvas::contentRect();
}

void TreeCanvas::layOutContent()
{
    if (logic_.triangleShown())
        triangle_ = layoutTriangle(logic_.triangle(), logic_.triangleLabel(), viewport()->width(),
                                   logic_.fontSize(), logic_.option(TreeOption::BackColour));
}

void TreeCanvas::paintEvent(QPaintEvent* event)
{
    if (!logic_.triangleShown()) {
        DrawingCanvas::paintEvent(event);
        return;
    }
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), background());
    painter.translate(-origin());
    paintTriangle(painter, triangle_);
}

void TreeCanvas::mousePressEvent(QMouseEvent* event)
{
    if (logic_.triangleShown() && event->button() == Qt::LeftButton &&
        triangle_.apex.contains(event->position() + origin())) {
        emit apexClicked();
        return;
    }
    DrawingCanvas::mousePressEvent(event);
}

}  // namespace tav
