// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRectF>
#include <functional>

class QPainter;

namespace tav {

// A drawing in tree units (device-independent pixels, 96 to the inch): the
// part of the plane it covers, and how to paint it at the painter's
// current transform, all of it or (a page of a print) what meets `visible`
// (tree units; empty for all). The tree window, the exported pictures and
// the printed pages all paint the same picture.
struct Picture {
    QRectF bounds;
    std::function<void(QPainter&, const QRectF& visible)> paint;
};

}  // namespace tav
