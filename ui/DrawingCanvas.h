// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tree/TreeDrawing.h"

#include <QAbstractScrollArea>
#include <QColor>

namespace tav {

// The drawing surface of the tree window and the ancestors chart: paints a
// drawing at a zoom, scrolls both ways, pans when the background is
// dragged, zooms with Ctrl+wheel about the pointer, shows a box's tooltip,
// and reports clicks, double clicks, right clicks and arrow keys to its
// window. What it draws and where its home is are the window's.
class DrawingCanvas : public QAbstractScrollArea {
    Q_OBJECT
public:
    static constexpr double minZoom = 0.1;
    static constexpr double maxZoom = 8.0;

    explicit DrawingCanvas(QWidget* parent = nullptr);

    double zoom() const { return zoom_; }
    // Zooms about a point of the viewport (its centre by default).
    void setZoom(double zoom, QPointF anchor = QPointF(-1, -1));
    void zoomIn();
    void zoomOut();
    // The whole drawing in the window, centred, without scroll bars (never
    // larger than twice its size); it stays fitted as the window is resized,
    // until the view is zoomed, moved or shows another drawing.
    void fit();
    // The drawing's home in sight (the tree's top person at the top, the
    // chart's root at the left), kept there while the window is resized,
    // until the user moves the view.
    void showHome();
    // Brings the selected box into sight when it is out of it.
    void ensureSelectedVisible();
    // The drawing changed: new scroll ranges, then a repaint.
    void viewChanged();

    // A place for a scroll bar, whose values are ints: the far parts of a
    // view larger than they reach stop at their ends instead of overflowing.
    static int scrollPlace(double value);

    // Between viewport pixels and tree units.
    QPointF treePoint(QPointF viewportPoint) const;
    QPointF viewportPoint(QPointF treePoint) const;

signals:
    void boxClicked(int32_t slot);
    void boxDoubleClicked(int32_t slot);
    void contextMenuWanted(int32_t slot, QPoint globalPosition);
    // Left, Right, Up or Down without a modifier, while a drawing is shown.
    void arrowPressed(Qt::Key key);
    void zoomChanged();

protected:
    // The drawing shown; none while the window shows something else.
    virtual const TreeDrawing* drawing() const = 0;
    virtual int32_t selectedSlot() const = 0;
    virtual QString toolTipFor(int32_t slot) const = 0;
    virtual QColor background() const = 0;
    // The box at a point of the drawing, 0 for none.
    virtual int32_t slotAt(QPointF treePoint) const;
    // Where the view stands at home: the scroll bars' values at the zoom.
    virtual QPoint homePosition() const = 0;
    // A drawing narrower (shorter) than the window keeps this point of it
    // in the window's middle as far as all of it stays in sight; NaN keeps
    // its left (top) edge at the window's.
    virtual QPointF keptInMiddle() const = 0;

    // The content's extent in viewport pixels at the zoom.
    virtual QRectF contentRect() const;
    // Called before the scroll ranges are set, to lay out what is not the
    // drawing at the viewport's size.
    virtual void layOutContent() {}

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

    void updateRanges();
    QPointF origin() const;

private:
    // The zoom at which the whole drawing fits the window without scroll bars.
    void applyFit();

    double zoom_ = 1.0;
    bool dragging_ = false;
    QPoint dragFrom_;
    bool followHome_ = false;
    // Fitted by Fit, and the bounds it fitted.
    bool fitted_ = false;
    QRectF fittedBounds_;
};

}  // namespace tav
