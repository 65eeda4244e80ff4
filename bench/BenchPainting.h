// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

namespace tav {
struct TreeDrawing;
}

namespace tav::bench {

// An image the size of a drawing window's canvas.
QImage windowCanvas();

// The whole drawing painted onto the image, scaled to fit it, as a picture
// or a printed page shows it.
void paintScaledToFit(const TreeDrawing& drawing, QImage& image);

}  // namespace tav::bench
