// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tree/TreeCanvas.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace tav {

namespace {

constexpr double zoomStep = 1.25;

// A place for a scroll bar, whose values are ints: the far parts of a view
// larger than they reach stop at their ends instead of overflowing.
int scrollPlace(double value)
{
    constexpr double furthest = 1 << 30;
    return int(std::clamp(value, -furthest, furthest));
}

}  // namespace

TreeCanvas::TreeCanvas(const TreeWindowLogic& logic, QWidget* parent)
    : QAbstractScrollArea(parent), logic_(logic)
{
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    viewport()->setMouseTracking(false);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    horizontalScrollBar()->setSingleStep(20);
    verticalScrollBar()->setSingleStep(20);
}

QRectF TreeCanvas::contentRect() const
{
    if (logic_.triangleShown())
        return QRectF(QPointF(0, 0), triangle_.size);
    const QRectF& bounds = logic_.drawing().bounds;
    return QRectF(bounds.topLeft() * zoom_, bounds.size() * zoom_);
}

void TreeCanvas::updateRanges()
{
    if (logic_.triangleShown())
        triangle_ = layoutTriangle(logic_.triangle(), logic_.triangleLabel(), viewport()->width(),
                                   logic_.fontSize(), logic_.option(TreeOption::BackColour));
    const QRectF content = contentRect();
    const QSize page = viewport()->size();
    // A tree narrower than the window keeps its top person in the middle
    // as far as it can while showing all of it; a shorter one stands at the top.
    QScrollBar* h = horizontalScrollBar();
    if (content.width() <= page.width()) {
        const TreeBox* top = logic_.triangleShown() ? nullptr : logic_.drawing().box(1);
        const double centre = top ? top->frame.center().x() * zoom_ : content.center().x();
        const int fixed = std::clamp(scrollPlace(std::round(centre - page.width() / 2.0)),
                                     scrollPlace(std::ceil(content.right())) - page.width(),
                                     scrollPlace(std::floor(content.left())));
        h->setRange(fixed, fixed);
    } else {
        h->setRange(scrollPlace(std::floor(content.left())),
                    scrollPlace(std::ceil(content.right())) - page.width());
    }
    h->setPageStep(page.width());
    QScrollBar* v = verticalScrollBar();
    const int top = scrollPlace(std::floor(content.top()));
    v->setRange(top, std::max(top, scrollPlace(std::ceil(content.bottom())) - page.height()));
    v->setPageStep(page.height());
}

QPointF TreeCanvas::origin() const
{
    return QPointF(horizontalScrollBar()->value(), verticalScrollBar()->value());
}

QPointF TreeCanvas::treePoint(QPointF viewportPoint) const
{
    return (viewportPoint + origin()) / zoom_;
}

QPointF TreeCanvas::viewportPoint(QPointF treePoint) const { return treePoint * zoom_ - origin(); }

void TreeCanvas::viewChanged()
{
    updateRanges();
    if (followTop_)
        showTopAtTop();
    viewport()->update();
}

void TreeCanvas::setZoom(double zoom, QPointF anchor)
{
    zoom = std::clamp(zoom, minZoom, maxZoom);
    if (anchor.x() < 0)
        anchor = QPointF(viewport()->width() / 2.0, viewport()->height() / 2.0);
    const QPointF fixed = treePoint(anchor);
    zoom_ = zoom;
    followTop_ = false;
    updateRanges();
    const QPointF now = fixed * zoom_ - anchor;
    horizontalScrollBar()->setValue(scrollPlace(std::round(now.x())));
    verticalScrollBar()->setValue(scrollPlace(std::round(now.y())));
    viewport()->update();
    emit zoomChanged();
}

void TreeCanvas::zoomIn() { setZoom(zoom_ * zoomStep); }

void TreeCanvas::zoomOut() { setZoom(zoom_ / zoomStep); }

void TreeCanvas::fit()
{
    const QRectF& bounds = logic_.drawing().bounds;
    if (bounds.isEmpty())
        return;
    const double zoom = std::min(
        {viewport()->width() / bounds.width(), viewport()->height() / bounds.height(), 2.0});
    zoom_ = std::clamp(zoom, minZoom, maxZoom);
    followTop_ = false;
    updateRanges();
    horizontalScrollBar()->setValue(horizontalScrollBar()->minimum());
    verticalScrollBar()->setValue(verticalScrollBar()->minimum());
    viewport()->update();
    emit zoomChanged();
}

void TreeCanvas::showTopAtTop()
{
    followTop_ = true;
    updateRanges();
    const TreeBox* top = logic_.drawing().box(1);
    const double centre = top ? top->frame.center().x() : 0;
    horizontalScrollBar()->setValue(
        scrollPlace(std::round(centre * zoom_ - viewport()->width() / 2.0)));
    verticalScrollBar()->setValue(verticalScrollBar()->minimum());
    viewport()->update();
}

void TreeCanvas::ensureSelectedVisible()
{
    const TreeBox* box = logic_.drawing().box(logic_.selected());
    if (!box || logic_.triangleShown())
        return;
    const QRectF shown(viewportPoint(box->frame.topLeft()), box->frame.size() * zoom_);
    const QRectF page = QRectF(viewport()->rect()).adjusted(16, 16, -16, -16);
    if (page.contains(shown))
        return;
    // Out of sight: the box comes to the middle of the window.
    followTop_ = false;
    const QPointF centre = box->frame.center() * zoom_;
    horizontalScrollBar()->setValue(
        scrollPlace(std::round(centre.x() - viewport()->width() / 2.0)));
    verticalScrollBar()->setValue(scrollPlace(std::round(centre.y() - viewport()->height() / 2.0)));
    viewport()->update();
}

void TreeCanvas::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), treeBackground(logic_.option(TreeOption::BackColour)));
    painter.translate(-origin());
    if (logic_.triangleShown()) {
        paintTriangle(painter, triangle_);
        return;
    }
    painter.scale(zoom_, zoom_);
    const QRectF visible(treePoint(QPointF(0, 0)), QSizeF(viewport()->size()) / zoom_);
    paintTree(painter, logic_.drawing(), visible);
}

void TreeCanvas::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    viewChanged();
}

void TreeCanvas::mousePressEvent(QMouseEvent* event)
{
    const QPointF at = event->position();
    if (logic_.triangleShown()) {
        if (event->button() == Qt::LeftButton && triangle_.apex.contains(at + origin())) {
            emit apexClicked();
            return;
        }
    } else if (event->button() == Qt::LeftButton || event->button() == Qt::RightButton) {
        const int32_t slot = logic_.drawing().slotAt(treePoint(at));
        if (slot != 0) {
            emit boxClicked(slot);
            if (event->button() == Qt::RightButton)
                emit contextMenuWanted(slot, event->globalPosition().toPoint());
            return;
        }
    }
    if (event->button() == Qt::LeftButton) {
        dragging_ = true;
        dragFrom_ = event->position().toPoint();
        viewport()->setCursor(Qt::ClosedHandCursor);
    }
}

void TreeCanvas::mouseMoveEvent(QMouseEvent* event)
{
    if (!dragging_)
        return;
    const QPoint now = event->position().toPoint();
    const QPoint delta = now - dragFrom_;
    dragFrom_ = now;
    followTop_ = false;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - delta.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - delta.y());
}

void TreeCanvas::mouseReleaseEvent(QMouseEvent*)
{
    if (!dragging_)
        return;
    dragging_ = false;
    viewport()->unsetCursor();
}

void TreeCanvas::wheelEvent(QWheelEvent* event)
{
    followTop_ = false;
    if (event->modifiers() & Qt::ControlModifier) {
        const double steps = event->angleDelta().y() / 120.0;
        if (steps != 0 && !logic_.triangleShown())
            setZoom(zoom_ * std::pow(1.15, steps), event->position());
        event->accept();
        return;
    }
    QAbstractScrollArea::wheelEvent(event);
}

void TreeCanvas::keyPressEvent(QKeyEvent* event)
{
    if (!logic_.triangleShown() && event->modifiers() == Qt::NoModifier) {
        switch (event->key()) {
        case Qt::Key_Left: emit moveWanted(TreeMove::Left); return;
        case Qt::Key_Right: emit moveWanted(TreeMove::Right); return;
        case Qt::Key_Up: emit moveWanted(TreeMove::Up); return;
        case Qt::Key_Down: emit moveWanted(TreeMove::Down); return;
        default: break;
        }
    }
    followTop_ = false;
    QAbstractScrollArea::keyPressEvent(event);
}

bool TreeCanvas::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        auto* help = static_cast<QHelpEvent*>(event);
        const int32_t slot =
            logic_.triangleShown() ? 0 : logic_.drawing().slotAt(treePoint(help->pos()));
        if (slot == 0) {
            QToolTip::hideText();
            event->ignore();
            return true;
        }
        const QRectF frame = logic_.drawing().box(slot)->frame;
        const QRect area(viewportPoint(frame.topLeft()).toPoint(), (frame.size() * zoom_).toSize());
        QToolTip::showText(help->globalPos(), logic_.toolTip(slot), viewport(), area);
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void TreeCanvas::scrollContentsBy(int, int) { viewport()->update(); }

}  // namespace tav
