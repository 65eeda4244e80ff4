// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "draw/Picture.h"

#include <QRectF>
#include <QSizeF>
#include <vector>

class QPagedPaintDevice;

namespace tav {

// How a picture goes onto paper: scaled down to fit one page, or at its full
// size across as many pages as it needs.
enum class PageScale { FitOnePage, FullSize };

// Neighbouring pages at full size share this much of the picture, in tree
// units, so that the sheets can be laid edge to edge and trimmed.
constexpr qreal pageOverlap = 24;

// The parts of an area of the given size that full-size pages of the given
// size hold, in reading order (rows from the top, each from the left), as
// rectangles relative to the area's top left; neighbours overlap by
// `overlap`.
std::vector<QRectF> pageTiles(QSizeF area, QSizeF page, qreal overlap);

// The most pages a picture is printed on at full size; a picture that
// needs more (a view of boxes a million units apart) is printed on one
// page, scaled to fit, with a line that says so.
constexpr qint64 mostFullSizePages = 1000;

// How many pages pageTiles gives, worked out without making them.
qint64 pageCount(QSizeF area, QSizeF page, qreal overlap);

// Paints the picture (with a margin) on a printer or PDF writer within its
// page layout's printable area, at the chosen scale. At full size each
// page carries small marks where the next page takes over and its place
// ("2 / 6"). Returns the number of pages.
int paintOnPages(QPagedPaintDevice& device, const Picture& picture, PageScale scale);

}  // namespace tav
