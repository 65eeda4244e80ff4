// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "draw/TreePainter.h"
#include "windowlogic/tree/TreeWindowLogic.h"

#include <QAbstractScrollArea>

namespace tav {

// The tree window's drawing surface: paints the logic's drawing (or its
// triangle view) at a zoom, scrolls both ways, pans when the background is
// dragged, zooms with Ctrl+wheel about the pointer, and reports clicks,
// right clicks and arrow keys to its window.
class TreeCanvas : public QAbstractScrollArea {
    Q_OBJECT
public:
    static constexpr double minZoom = 0.1;
    static constexpr double maxZoom = 8.0;

    TreeCanvas(const TreeWindowLogic& logic, QWidget* parent = nullptr);

    double zoom() const { return zoom_; }
    // Zooms about a point of the viewport (its centre by default).
    void setZoom(double zoom, QPointF anchor = QPointF(-1, -1));
    void zoomIn();
    void zoomOut();
    // The whole tree in the window (never larger than twice its size).
    void fit();
    // The top person centred at the top of the window.
    void showTopAtTop();
    // Brings the selected box into sight when it is out of it.
    void ensureSelectedVisible();
    // The logic's drawing changed: new scroll ranges, then a repaint.
    void viewChanged();

    // Between viewport pixels and tree units.
    QPointF treePoint(QPointF viewportPoint) const;
    QPointF viewportPoint(QPointF treePoint) const;

signals:
    void boxClicked(int32_t slot);
    void contextMenuWanted(int32_t slot, QPoint globalPosition);
    void apexClicked();
    void moveWanted(TreeMove move);
    void zoomChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    // The content's extent in viewport pixels at the zoom.
    QRectF contentRect() const;
    void updateRanges();
    QPointF origin() const;

    const TreeWindowLogic& logic_;
    double zoom_ = 1.0;
    bool dragging_ = false;
    QPoint dragFrom_;
    // Re-centre the top person when the window is resized, until the user
    // moves the view.
    bool followTop_ = false;
    TrianglePicture triangle_;
};

}  // namespace tav
