// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/DrawingCanvas.h"

#include "draw/TreePainter.h"

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

// The scroll range of one axis: the content's extent, or one position
// when it fits, keeping `middle` (pixels; NaN: the start) in the page's
// middle while all of it stays in sight.
void setAxis(QScrollBar* bar, double start, double end, int page, double middle)
{
    if (end - start <= page) {
        const int fixed = std::isnan(middle)
                              ? DrawingCanvas::scrollPlace(std::floor(start))
                              : std::clamp(DrawingCanvas::scrollPlace(middle - page / 2.0),
                                           DrawingCanvas::scrollPlace(std::ceil(end)) - page,
                                           DrawingCanvas::scrollPlace(std::floor(start)));
        bar->setRange(fixed, fixed);
    } else {
        bar->setRange(DrawingCanvas::scrollPlace(std::floor(start)),
                      DrawingCanvas::scrollPlace(std::ceil(end)) - page);
    }
    bar->setPageStep(page);
}

}  // namespace

int DrawingCanvas::scrollPlace(double value)
{
    constexpr double furthest = 1 << 30;
    return int(std::clamp(std::round(value), -furthest, furthest));
}

DrawingCanvas::DrawingCanvas(QWidget* parent) : QAbstractScrollArea(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    viewport()->setMouseTracking(false);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    horizontalScrollBar()->setSingleStep(20);
    verticalScrollBar()->setSingleStep(20);
}

int32_t DrawingCanvas::slotAt(QPointF treePoint) const
{
    const TreeDrawing* shown = drawing();
    return shown ? shown->slotAt(treePoint) : 0;
}

QRectF DrawingCanvas::contentRect() const
{
    const TreeDrawing* shown = drawing();
    if (!shown)
        return QRectF();
    return QRectF(shown->bounds.topLeft() * zoom_, shown->bounds.size() * zoom_);
}

void DrawingCanvas::updateRanges()
{
    layOutContent();
    const QRectF content = contentRect();
    const QSize page = viewport()->size();
    if (fitted_) {
        // A fitted drawing stands in the middle both ways.
        const QPointF middle = content.center();
        setAxis(horizontalScrollBar(), content.left(), content.right(), page.width(), middle.x());
        setAxis(verticalScrollBar(), content.top(), content.bottom(), page.height(), middle.y());
        return;
    }
    // Anything else (the triangle) stands in the middle, from the top.
    const QPointF middle =
        drawing() ? keptInMiddle() * zoom_ : QPointF(content.center().x(), qQNaN());
    setAxis(horizontalScrollBar(), content.left(), content.right(), page.width(), middle.x());
    setAxis(verticalScrollBar(), content.top(), content.bottom(), page.height(), middle.y());
}

QPointF DrawingCanvas::origin() const
{
    return QPointF(horizontalScrollBar()->value(), verticalScrollBar()->value());
}

QPointF DrawingCanvas::treePoint(QPointF viewportPoint) const
{
    return (viewportPoint + origin()) / zoom_;
}

QPointF DrawingCanvas::viewportPoint(QPointF treePoint) const
{
    return treePoint * zoom_ - origin();
}

void DrawingCanvas::viewChanged()
{
    const TreeDrawing* shown = drawing();
    if (fitted_ && (!shown || shown->bounds != fittedBounds_))
        fitted_ = false;
    if (fitted_) {
        applyFit();
        return;
    }
    updateRanges();
    if (followHome_)
        showHome();
    viewport()->update();
}

void DrawingCanvas::setZoom(double zoom, QPointF anchor)
{
    zoom = std::clamp(zoom, minZoom, maxZoom);
    if (anchor.x() < 0)
        anchor = QPointF(viewport()->width() / 2.0, viewport()->height() / 2.0);
    const QPointF fixed = treePoint(anchor);
    zoom_ = zoom;
    followHome_ = false;
    fitted_ = false;
    updateRanges();
    const QPointF now = fixed * zoom_ - anchor;
    horizontalScrollBar()->setValue(scrollPlace((now.x())));
    verticalScrollBar()->setValue(scrollPlace((now.y())));
    viewport()->update();
    emit zoomChanged();
}

void DrawingCanvas::zoomIn() { setZoom(zoom_ * zoomStep); }

void DrawingCanvas::zoomOut() { setZoom(zoom_ / zoomStep); }

void DrawingCanvas::fit()
{
    const TreeDrawing* shown = drawing();
    if (!shown || shown->bounds.isEmpty())
        return;
    followHome_ = false;
    fitted_ = true;
    fittedBounds_ = shown->bounds;
    applyFit();
}

void DrawingCanvas::applyFit()
{
    // The room the window has without scroll bars; a pixel spare each way so
    // that rounding never brings a scroll bar back.
    const QRectF& bounds = drawing()->bounds;
    const QSize room = maximumViewportSize();
    const double zoom =
        std::min({(room.width() - 2) / bounds.width(), (room.height() - 2) / bounds.height(), 2.0});
    zoom_ = std::clamp(zoom, minZoom, maxZoom);
    updateRanges();
    viewport()->update();
    emit zoomChanged();
}

void DrawingCanvas::showHome()
{
    followHome_ = true;
    fitted_ = false;
    updateRanges();
    const QPoint home = homePosition();
    horizontalScrollBar()->setValue(home.x());
    verticalScrollBar()->setValue(home.y());
    viewport()->update();
}

void DrawingCanvas::ensureSelectedVisible()
{
    const TreeDrawing* shown = drawing();
    const TreeBox* box = shown ? shown->box(selectedSlot()) : nullptr;
    if (!box)
        return;
    const QRectF seen(viewportPoint(box->frame.topLeft()), box->frame.size() * zoom_);
    const QRectF page = QRectF(viewport()->rect()).adjusted(16, 16, -16, -16);
    if (page.contains(seen))
        return;
    // Out of sight: the box comes to the middle of the window.
    followHome_ = false;
    fitted_ = false;
    const QPointF centre = box->frame.center() * zoom_;
    horizontalScrollBar()->setValue(scrollPlace((centre.x() - viewport()->width() / 2.0)));
    verticalScrollBar()->setValue(scrollPlace((centre.y() - viewport()->height() / 2.0)));
    viewport()->update();
}

void DrawingCanvas::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), background());
    const TreeDrawing* shown = drawing();
    if (!shown)
        return;
    painter.translate(-origin());
    painter.scale(zoom_, zoom_);
    const QRectF visible(treePoint(QPointF(0, 0)), QSizeF(viewport()->size()) / zoom_);
    paintTree(painter, *shown, visible);
}

void DrawingCanvas::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    viewChanged();
}

void DrawingCanvas::mousePressEvent(QMouseEvent* event)
{
    if (drawing() && (event->button() == Qt::LeftButton || event->button() == Qt::RightButton)) {
        const int32_t slot = slotAt(treePoint(event->position()));
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

void DrawingCanvas::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (drawing() && event->button() == Qt::LeftButton) {
        if (const int32_t slot = slotAt(treePoint(event->position())); slot != 0) {
            emit boxDoubleClicked(slot);
            return;
        }
    }
    mousePressEvent(event);
}

void DrawingCanvas::mouseMoveEvent(QMouseEvent* event)
{
    if (!dragging_)
        return;
    const QPoint now = event->position().toPoint();
    const QPoint delta = now - dragFrom_;
    dragFrom_ = now;
    followHome_ = false;
    fitted_ = false;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - delta.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - delta.y());
}

void DrawingCanvas::mouseReleaseEvent(QMouseEvent*)
{
    if (!dragging_)
        return;
    dragging_ = false;
    viewport()->unsetCursor();
}

void DrawingCanvas::wheelEvent(QWheelEvent* event)
{
    followHome_ = false;
    fitted_ = false;
    if (event->modifiers() & Qt::ControlModifier) {
        const double steps = event->angleDelta().y() / 120.0;
        if (steps != 0 && drawing())
            setZoom(zoom_ * std::pow(1.15, steps), event->position());
        event->accept();
        return;
    }
    QAbstractScrollArea::wheelEvent(event);
}

void DrawingCanvas::keyPressEvent(QKeyEvent* event)
{
    if (drawing() && event->modifiers() == Qt::NoModifier) {
        switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down: emit arrowPressed(Qt::Key(event->key())); return;
        default: break;
        }
    }
    followHome_ = false;
    fitted_ = false;
    QAbstractScrollArea::keyPressEvent(event);
}

bool DrawingCanvas::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        auto* help = static_cast<QHelpEvent*>(event);
        const int32_t slot = drawing() ? slotAt(treePoint(help->pos())) : 0;
        const TreeBox* box = slot != 0 ? drawing()->box(slot) : nullptr;
        if (!box) {
            QToolTip::hideText();
            event->ignore();
            return true;
        }
        // The tooltip stays while the pointer is on the box, or on the tag
        // that stands for it.
        const QPointF at = treePoint(help->pos());
        QRectF hit = box->frame;
        for (const TreeBox& other : drawing()->boxes) {
            if (other.referenceFrame.contains(at))
                hit = other.referenceFrame;
        }
        const QRect area(viewportPoint(hit.topLeft()).toPoint(), (hit.size() * zoom_).toSize());
        QToolTip::showText(help->globalPos(), toolTipFor(slot), viewport(), area);
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void DrawingCanvas::scrollContentsBy(int, int) { viewport()->update(); }

}  // namespace tav
