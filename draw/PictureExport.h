// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Outcome.h"
#include "draw/Picture.h"

#include <QByteArray>
#include <QSize>
#include <QString>
#include <optional>

namespace tav {

enum class PictureFormat { Png, Svg, Pdf };

// The format a file name asks for by its extension (any case), or none.
std::optional<PictureFormat> pictureFormatFor(const QString& path);

// Blank space around the whole picture, in tree units.
constexpr int pictureMargin = 24;
// A PNG is drawn at twice the screen's scale.
constexpr int pngScale = 2;

// The largest PNG made: at most this many pixels a side and in all, so
// that drawing one takes at most 512 MB whatever the tree.
constexpr int largestPngSide = 16384;
constexpr qint64 largestPngPixels = 128 * 1024 * 1024;
// A PNG larger than that at pngScale is drawn smaller, down to this scale
// (an eighth of pngScale: a screen's 12-pixel text at 3 pixels, the shape
// of the tree); one that would need a smaller scale is refused. SVG and
// PDF are vectors and hold any tree at full size.
constexpr double smallestPngScale = 0.25;

// The pixel size of the PNG of a picture at a scale.
QSize pngSize(const Picture& picture, double scale = pngScale);
// The scale a PNG of the picture is drawn at: pngScale, or the largest
// that keeps it within the largest PNG; 0 when even smallestPngScale would
// not.
double pngScaleFor(const Picture& picture);

// The picture as the bytes of a file of that format: PNG at pngScaleFor,
// SVG as vectors with every text as text, PDF as vectors on one page the
// picture's size; always the whole picture with its margin. Fails with the
// reason alone ("the picture would be W x H pixels (at most ...)") when the
// PNG is too large or cannot be made.
Result<QByteArray> pictureBytes(const Picture& picture, PictureFormat format);

// Writes the picture to `path` in the format its extension names, all at
// once (the old file stays until the new one is whole); a failure names the
// file and the reason.
Outcome exportPicture(const Picture& picture, const QString& path);

// What the user should know about a picture written to `path`: that a PNG
// is drawn smaller than usual, and how large; "" when there is nothing.
QString pictureNote(const Picture& picture, const QString& path);

}  // namespace tav
