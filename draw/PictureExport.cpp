// SPDX-License-Identifier: GPL-3.0-or-later
#include "draw/PictureExport.h"

#include "core/AtomicFile.h"
#include "core/FileNames.h"
#include "core/Units.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <algorithm>
#include <climits>
#include <cmath>

namespace tav {

namespace {

// The picture with its margin, in whole units.
QRect framed(const Picture& picture)
{
    const QRect inner = picture.bounds.toAlignedRect();
    return inner.adjusted(-pictureMargin, -pictureMargin, pictureMargin, pictureMargin);
}

// Paints the picture so that its frame's top left lands at the origin.
void paintFramed(QPainter& painter, const Picture& picture)
{
    painter.translate(-framed(picture).topLeft());
    picture.paint(painter, QRectF());
}

// What `write` puts into a buffer; whatever writes into it is finished
// (and flushed) inside `write`.
template <typename Write>
QByteArray bufferBytes(Write&& write)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    write(buffer);
    return bytes;
}

QString largestPngText()
{
    return QStringLiteral("at most %1 pixels a side and %2 megapixels")
        .arg(largestPngSide)
        .arg(largestPngPixels / (1024 * 1024));
}

Result<QByteArray> pngBytes(const Picture& picture)
{
    const double scale = pngScaleFor(picture);
    if (scale <= 0) {
        const QSize full = pngSize(picture);
        return Outcome::failed(QStringLiteral("the picture would be %1 x %2 pixels (%3)")
                                   .arg(full.width())
                                   .arg(full.height())
                                   .arg(largestPngText()));
    }
    // Opaque: the picture paints its own background.
    QImage image(pngSize(picture, scale), QImage::Format_RGB32);
    if (image.isNull())
        return Outcome::failed(
            QStringLiteral("there is not enough memory for a picture of %1 x %2 pixels")
                .arg(image.width())
                .arg(image.height()));
    image.fill(Qt::white);
    const int dotsPerMetre = int(std::lround(scale * pixelsPerInch / 0.0254));
    image.setDotsPerMeterX(dotsPerMetre);
    image.setDotsPerMeterY(dotsPerMetre);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setRenderHint(QPainter::TextAntialiasing);
        painter.scale(scale, scale);
        paintFramed(painter, picture);
    }
    // A light compression: a large tree is many megapixels, and the file's
    // few percent more are worth the seconds saved.
    bool saved = false;
    QByteArray bytes =
        bufferBytes([&](QBuffer& buffer) { saved = image.save(&buffer, "PNG", 80); });
    if (!saved || bytes.isEmpty())
        return Outcome::failed(QStringLiteral("the PNG picture could not be made"));
    return bytes;
}

QByteArray svgBytes(const Picture& picture)
{
    const QRect frame = framed(picture);
    return bufferBytes([&](QBuffer& buffer) {
        QSvgGenerator svg;
        svg.setOutputDevice(&buffer);
        svg.setResolution(pixelsPerInch);
        svg.setSize(frame.size());
        svg.setViewBox(QRect(QPoint(0, 0), frame.size()));
        svg.setTitle(QStringLiteral("Family tree"));
        svg.setDescription(QStringLiteral("Drawn by Tav"));
        QPainter painter(&svg);
        paintFramed(painter, picture);
    });
}

QByteArray pdfBytes(const Picture& picture)
{
    const QRect frame = framed(picture);
    return bufferBytes([&](QBuffer& buffer) {
        QPdfWriter pdf(&buffer);
        pdf.setCreator(QStringLiteral("Tav"));
        pdf.setTitle(QStringLiteral("Family tree"));
        pdf.setResolution(pixelsPerInch);
        // One page the size of the picture: units are pixels of 96 to the
        // inch, points are 72 to the inch.
        const QSizeF points(frame.width() * 72.0 / pixelsPerInch,
                            frame.height() * 72.0 / pixelsPerInch);
        pdf.setPageSize(QPageSize(points, QPageSize::Point, QString(), QPageSize::ExactMatch));
        pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
        // The painter ends before the writer, which finishes the file.
        QPainter painter(&pdf);
        paintFramed(painter, picture);
    });
}

}  // namespace

std::optional<PictureFormat> pictureFormatFor(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QLatin1String("png"))
        return PictureFormat::Png;
    if (suffix == QLatin1String("svg"))
        return PictureFormat::Svg;
    if (suffix == QLatin1String("pdf"))
        return PictureFormat::Pdf;
    return std::nullopt;
}

QSize pngSize(const Picture& picture, double scale)
{
    // Whole pixels; at a scale below the usual the last part pixel falls in
    // the margin.
    const QSize frame = framed(picture).size();
    const auto pixels = [scale](int units) {
        return int(std::clamp(std::floor(units * scale + 1e-6), 1.0, double(INT_MAX)));
    };
    return QSize(pixels(frame.width()), pixels(frame.height()));
}

double pngScaleFor(const Picture& picture)
{
    const QSize frame = framed(picture).size();
    const double width = std::max(1, frame.width()), height = std::max(1, frame.height());
    const double scale =
        std::min({double(pngScale), largestPngSide / width, largestPngSide / height,
                  std::sqrt(double(largestPngPixels) / (width * height))});
    return scale >= smallestPngScale ? scale : 0;
}

Result<QByteArray> pictureBytes(const Picture& picture, PictureFormat format)
{
    switch (format) {
    case PictureFormat::Png: return pngBytes(picture);
    case PictureFormat::Svg: return svgBytes(picture);
    case PictureFormat::Pdf: return pdfBytes(picture);
    }
    return QByteArray();
}

Outcome exportPicture(const Picture& picture, const QString& path)
{
    const QString shown = QDir::toNativeSeparators(shownFileName(path));
    const std::optional<PictureFormat> format = pictureFormatFor(path);
    if (!format)
        return Outcome::failed(QStringLiteral("Cannot save %1: the name must end in .png, .svg "
                                              "or .pdf.")
                                   .arg(shown));
    // Nothing is written when the picture cannot be made: the old file stays.
    const Result<QByteArray> bytes = pictureBytes(picture, *format);
    if (!bytes)
        return Outcome::failed(QStringLiteral("Cannot save %1: %2.").arg(shown, bytes.message()));
    return writeFileAtomically(path, *bytes);
}

QString pictureNote(const Picture& picture, const QString& path)
{
    const double scale = pngScaleFor(picture);
    if (pictureFormatFor(path) != PictureFormat::Png || scale <= 0 || scale >= pngScale)
        return QString();
    const QSize size = pngSize(picture, scale);
    return QStringLiteral("%1 is drawn at %2% of its usual size, %3 x %4 pixels: a picture is %5. "
                          "SVG and PDF hold the tree at full size.")
        .arg(QDir::toNativeSeparators(shownFileName(path)))
        .arg(int(scale / pngScale * 100))
        .arg(size.width())
        .arg(size.height())
        .arg(largestPngText());
}

}  // namespace tav
