// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ancestors/AncestorsCanvas.h"

#include "draw/TreePainter.h"

#include <QScrollBar>
#include <cmath>

namespace tav {

AncestorsCanvas::AncestorsCanvas(const AncestorsWindowLogic& logic, QWidget* parent)
    : DrawingCanvas(parent), logic_(logic)
{}

QColor AncestorsCanvas::background() const
{
    return treeBackground(logic_.option(TreeOption::BackColour));
}

double AncestorsCanvas::rootMiddle() const
{
    const TreeBox* root = logic_.drawing().box(1);
    return root ? root->frame.center().y() : logic_.drawing().bounds.center().y();
}

QPoint AncestorsCanvas::homePosition() const
{
    return QPoint(horizontalScrollBar()->minimum(),
                  scrollPlace(rootMiddle() * zoom() - viewport()->height() / 2.0));
}

QPointF AncestorsCanvas::keptInMiddle() const { return QPointF(qQNaN(), rootMiddle()); }

}  // namespace tav
