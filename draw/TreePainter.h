// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "draw/Picture.h"
#include "tree/DescendantTriangle.h"
#include "tree/TreeDrawing.h"

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>
#include <vector>

class QPainter;

namespace tav {

// The tree font as the painter uses it: the measured font at its size in
// tree units (pixels at 96 to the inch), so that it scales with the
// painter's transform on any device exactly as the boxes do.
QFont treePaintFont(int fontSize);

// The background of the tree: white, or parchment with BackColour.
QColor treeBackground(bool backColour);

// Paints a view (see treeDrawing) onto any painter: a widget, an image, an
// SVG or PDF generator, a printer. The painter's transform maps tree units
// to the device; text is drawn as text, so it stays crisp at every scale.
// Only what meets `visible` (tree units) is painted, all when it is empty.
// The background is the caller's: fill drawing.bounds with treeBackground.
void paintTree(QPainter& painter, const TreeDrawing& drawing, const QRectF& visible = QRectF());

// The view as a picture to export or print: its bounds, and the
// background with the tree on it.
Picture treePicture(const TreeDrawing& drawing);

// The triangle view laid out for a width, in the same units.
struct TrianglePicture {
    struct Band {
        QRectF rect;
        QString count;
        QRectF countRect;  // inside the band, or beside it when it is narrow
        QString generation;
        QRectF generationRect;
    };

    QRectF apex;  // a click here goes back to the tree
    QStringList apexLines;
    std::vector<Band> bands;
    QString note;
    QRectF noteRect;
    QSizeF size;
    int fontSize = 2;
    bool backColour = false;
};

// The apex with the person's label and the three counting numbers; below,
// one band per generation, as wide as its number of people allows, the
// widest band filling the width.
TrianglePicture layoutTriangle(const DescendantTriangle& triangle, const QString& label,
                               double width, int fontSize, bool backColour);
void paintTriangle(QPainter& painter, const TrianglePicture& picture);

}  // namespace tav
