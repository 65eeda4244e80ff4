#include "draw/PictureExport.h"

#include "core/AtomicFile.h"
#include "core/Units.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

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
    picture.paint(painter);
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

QByteArray pngBytes(const Picture& picture)
{
    // Opaque: the picture paints its own background.
    QImage image(pngSize(picture), QImage::Format_RGB32);
    image.fill(Qt::white);
    const int dotsPerMetre = int(std::lround(pngScale * pixelsPerInch / 0.0254));
    image.setDotsPerMeterX(dotsPerMetre);
    image.setDotsPerMeterY(dotsPerMetre);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setRenderHint(QPainter::TextAntialiasing);
        painter.scale(pngScale, pngScale);
        paintFramed(painter, picture);
    }
    // A light compression: a large tree is many megapixels, and the file's
    // few percent more are worth the seconds saved.
    return bufferBytes([&image](QBuffer& buffer) { image.save(&buffer, "PNG", 80); });
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

QSize pngSize(const Picture& picture) { return framed(picture).size() * pngScale; }

QByteArray pictureBytes(const Picture& picture, PictureFormat format)
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
    const std::optional<PictureFormat> format = pictureFormatFor(path);
    if (!format)
        return Outcome::failed(QStringLiteral("Cannot save %1: the name must end in .png, .svg "
                                              "or .pdf.")
                                   .arg(QDir::toNativeSeparators(path)));
    return writeFileAtomically(path, pictureBytes(picture, *format));
}

}  // namespace tav
