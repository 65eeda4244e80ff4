// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/BenchPainting.h"

#include "draw/TreePainter.h"

#include <QPainter>
#include <algorithm>

namespace tav::bench {

QImage windowCanvas() { return QImage(960, 650, QImage::Format_ARGB32_Premultiplied); }

void paintScaledToFit(const TreeDrawing& drawing, QImage& image)
{
    QPainter painter(&image);
    painter.fillRect(image.rect(), treeBackground(false));
    const double scale = std::min(image.width() / drawing.bounds.width(),
                                  image.height() / drawing.bounds.height());
    painter.scale(scale, scale);
    painter.translate(-drawing.bounds.topLeft());
    paintTree(painter, drawing);
}

}  // namespace tav::bench
