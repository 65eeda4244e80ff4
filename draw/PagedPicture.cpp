// SPDX-License-Identifier: GPL-3.0-or-later
#include "draw/PagedPicture.h"

#include "core/Units.h"
#include "draw/PictureExport.h"

#include <QPagedPaintDevice>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tav {

namespace {

qreal stepOf(qreal page, qreal overlap) { return std::max<qreal>(1, page - overlap); }

// Where the pages of one direction start: every `step` units until the
// area's end is inside the last page.
std::vector<qreal> starts(qreal area, qreal page, qreal overlap)
{
    std::vector<qreal> at{0};
    const qreal step = stepOf(page, overlap);
    while (at.back() + page < area)
        at.push_back(at.back() + step);
    return at;
}

// The number of those starts.
double startCount(qreal area, qreal page, qreal overlap)
{
    return area <= page ? 1 : 1 + std::ceil((area - page) / stepOf(page, overlap));
}

// Short strokes at the edges of a page where the neighbouring page's part
// begins, in the page's own units.
void paintOverlapMarks(QPainter& painter, const QRectF& tile, const QSizeF& area)
{
    painter.save();
    painter.setPen(QPen(QColor(150, 150, 150), 0.75));
    const qreal tick = 10;
    if (tile.right() < area.width()) {  // a page follows to the right
        const qreal x = tile.width() - pageOverlap;
        painter.drawLine(QPointF(x, 0), QPointF(x, tick));
        painter.drawLine(QPointF(x, tile.height() - tick), QPointF(x, tile.height()));
    }
    if (tile.bottom() < area.height()) {  // a page follows below
        const qreal y = tile.height() - pageOverlap;
        painter.drawLine(QPointF(0, y), QPointF(tick, y));
        painter.drawLine(QPointF(tile.width() - tick, y), QPointF(tile.width(), y));
    }
    painter.restore();
}

}  // namespace

qint64 pageCount(QSizeF area, QSizeF page, qreal overlap)
{
    const double count = startCount(area.width(), page.width(), overlap) *
                         startCount(area.height(), page.height(), overlap);
    return count < 1e15 ? qint64(count) : qint64(1e15);
}

std::vector<QRectF> pageTiles(QSizeF area, QSizeF page, qreal overlap)
{
    std::vector<QRectF> tiles;
    for (qreal y : starts(area.height(), page.height(), overlap)) {
        for (qreal x : starts(area.width(), page.width(), overlap))
            tiles.emplace_back(QPointF(x, y), page);
    }
    return tiles;
}

int paintOnPages(QPagedPaintDevice& device, const Picture& picture, PageScale scale)
{
    const QRectF frame =
        picture.bounds.adjusted(-pictureMargin, -pictureMargin, pictureMargin, pictureMargin);
    // The device's units per tree unit, and its printable area in tree units.
    const qreal unitScale = qreal(device.logicalDpiX()) / pixelsPerInch;
    const QRectF printable = device.pageLayout().paintRectPixels(device.logicalDpiX());
    const QSizeF page(printable.width() / unitScale, printable.height() / unitScale);
    QPainter painter(&device);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.scale(unitScale, unitScale);

    const qint64 fullSizePages = pageCount(frame.size(), page, pageOverlap);
    if (scale == PageScale::FitOnePage || fullSizePages > mostFullSizePages) {
        const qreal fit =
            std::min({qreal(1), page.width() / frame.width(), page.height() / frame.height()});
        painter.save();
        // Centred across the page, from its top.
        painter.translate((page.width() - frame.width() * fit) / 2, 0);
        painter.scale(fit, fit);
        painter.translate(-frame.topLeft());
        picture.paint(painter, QRectF());
        painter.restore();
        if (scale == PageScale::FullSize) {
            painter.setPen(QColor(120, 120, 120));
            painter.drawText(QRectF(0, page.height() - 14, page.width(), 14),
                             Qt::AlignLeft | Qt::AlignBottom,
                             QStringLiteral("At full size this picture would take %1 pages (at "
                                            "most %2); it is scaled to fit this page.")
                                 .arg(fullSizePages)
                                 .arg(mostFullSizePages));
        }
        return 1;
    }

    const std::vector<QRectF> tiles = pageTiles(frame.size(), page, pageOverlap);
    for (size_t n = 0; n < tiles.size(); ++n) {
        if (n > 0)
            device.newPage();
        const QRectF& tile = tiles[n];
        painter.save();
        painter.setClipRect(QRectF(QPointF(0, 0), page));
        painter.translate(-tile.topLeft() - frame.topLeft());
        picture.paint(painter, tile.translated(frame.topLeft()));
        painter.restore();
        paintOverlapMarks(painter, tile, frame.size());
        painter.save();
        QFont small = painter.font();
        small.setPointSizeF(6);
        painter.setFont(small);
        painter.setPen(QColor(120, 120, 120));
        painter.drawText(QRectF(0, page.height() - 12, page.width() - 2, 12),
                         Qt::AlignRight | Qt::AlignBottom,
                         QStringLiteral("%1 / %2").arg(n + 1).arg(tiles.size()));
        painter.restore();
    }
    return int(tiles.size());
}

}  // namespace tav
