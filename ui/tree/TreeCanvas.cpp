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
    QScrollBar* v = verticalScrollBar();
    if (fitted_ && content.width() <= page.width() && content.height() <= page.height()) {
        // A fitted tree stands in the middle both ways.
        const QPointF corner = content.center() - QPointF(page.width(), page.height()) / 2.0;
        h->setRange(int(std::lround(corner.x())), int(std::lround(corner.x())));
        v->setRange(int(std::lround(corner.y())), int(std::lround(corner.y())));
        h->setPageStep(page.width());
        v->setPageStep(page.height());
        return;
    }
    if (content.width() <= page.width()) {
        const TreeBox* top = logic_.triangleShown() ? nullptr : logic_.drawing().box(1);
        const double centre = top ? top->frame.center().x() * zoom_ : content.center().x();
        const int fixed = std::clamp(int(std::lround(centre - page.width() / 2.0)),
                                     int(std::ceil(content.right())) - page.width(),
                                     int(std::floor(content.left())));
        h->setRange(fixed, fixed);
    } else {
        h->setRange(int(std::floor(content.left())),
                    int(std::ceil(content.right())) - page.width());
    }
    h->setPageStep(page.width());
    const int top = int(std::floor(content.top()));
    v->setRange(top, std::max(top, int(std::ceil(content.bottom())) - page.height()));
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
    if (fitted_ && (logic_.triangleShown() || logic_.drawing().bounds != fittedBounds_))
        fitted_ = false;
    if (fitted_) {
        applyFit();
        return;
    }
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
    fitted_ = false;
    updateRanges();
    const QPointF now = fixed * zoom_ - anchor;
    horizontalScrollBar()->setValue(int(std::lround(now.x())));
    verticalScrollBar()->setValue(int(std::lround(now.y())));
    viewport()->update();
    emit zoomChanged();
}

void TreeCanvas::zoomIn() { setZoom(zoom_ * zoomStep); }

void TreeCanvas::zoomOut() { setZoom(zoom_ / zoomStep); }

void TreeCanvas::fit()
{
    const QRectF& bounds = logic_.drawing().bounds;
    if (bounds.isEmpty() || logic_.triangleShown())
        return;
    followTop_ = false;
    fitted_ = true;
    fittedBounds_ = bounds;
    applyFit();
}

void TreeCanvas::applyFit()
{
    // The room the window has without scroll bars; a pixel spare each way so
    // that rounding never brings a scroll bar back.
    const QRectF& bounds = logic_.drawing().bounds;
    const QSize room = maximumViewportSize();
    const double zoom = std::min({(room.width() - 2) / bounds.width(),
                                  (room.height() - 2) / bounds.height(), 2.0});
    zoom_ = std::clamp(zoom, minZoom, maxZoom);
    updateRanges();
    viewport()->update();
    emit zoomChanged();
}

void TreeCanvas::showTopAtTop()
{
    followTop_ = true;
    fitted_ = false;
    updateRanges();
    const TreeBox* top = logic_.drawing().box(1);
    const double centre = top ? top->frame.center().x() : 0;
    horizontalScrollBar()->setValue(int(std::lround(centre * zoom_ - viewport()->width() / 2.0)));
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
    fitted_ = false;
    const QPointF centre = box->frame.center() * zoom_;
    horizontalScrollBar()->setValue(int(std::lround(centre.x() - viewport()->width() / 2.0)));
    verticalScrollBar()->setValue(int(std::lround(centre.y() - viewport()->height() / 2.0)));
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
    fitted_ = false;
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
    fitted_ = false;
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
    fitted_ = false;
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
