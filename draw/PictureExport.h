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

// The pixel size of the PNG of a picture.
QSize pngSize(const Picture& picture);

// The picture as the bytes of a file of that format: PNG at twice the
// screen's scale, SVG as vectors with every text as text, PDF as vectors on
// one page the picture's size; always the whole picture with its margin.
QByteArray pictureBytes(const Picture& picture, PictureFormat format);

// Writes the picture to `path` in the format its extension names, all at
// once (the old file stays until the new one is whole); a failure names the
// file and the reason.
Outcome exportPicture(const Picture& picture, const QString& path);

}  // namespace tav
