// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/OffscreenGui.h"
#include "draw/PagedPicture.h"
#include "draw/PictureExport.h"
#include "tests/TestSupport.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QTemporaryDir>

#include <cmath>

using namespace tav;

namespace {

// A row of labelled boxes, as wide as asked, starting left of the origin.
Picture labelledBoxes(int boxes)
{
    return Picture{QRectF(-50, 0, 120.0 * boxes, 40), [boxes](QPainter& painter, const QRectF&) {
                       for (int k = 0; k < boxes; ++k) {
                           const QRectF box(-50 + 120.0 * k, 0, 100, 40);
                           painter.drawRect(box);
                           painter.drawText(box, Qt::AlignCenter,
                                            QStringLiteral("Box %1 <&>").arg(k + 1));
                       }
                   }};
}

int pdfPages(const QByteArray& pdf) { return int(pdf.count("/Type /Page\n")); }

// The pages painted onto an A4 PDF, and the pages the PDF holds.
std::pair<int, int> printed(const Picture& picture, PageScale scale,
                            QPageLayout::Orientation orientation = QPageLayout::Portrait)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter pdf(&buffer);
    pdf.setResolution(300);
    pdf.setPageSize(QPageSize(QPageSize::A4));
    pdf.setPageOrientation(orientation);
    const int pages = paintOnPages(pdf, picture, scale);
    buffer.close();
    return {pages, pdfPages(bytes)};
}

}  // namespace

TEST(PictureExportTest, EachFormatHoldsTheWholePictureAndIsChosenByTheFileName)
{
    ensureOffscreenGui();
    const Picture picture = labelledBoxes(3);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("tree.png"));
    EXPECT_EQ(exportPicture(picture, path).message(), QString());
    // The picture is 360 by 40 units with 24 around: 408 by 88, doubled.
    EXPECT_EQ(pngSize(picture), QSize(816, 176));
    const QImage png(path);
    EXPECT_EQ(png.size(), QSize(816, 176));
    EXPECT_NE(png.pixel(2 * 24, 2 * 24 + 20), QColor(Qt::white).rgb())
        << "the first box's left edge";
    EXPECT_EQ(png.pixel(5, 5), QColor(Qt::white).rgb()) << "the margin";

    EXPECT_EQ(test::svgTexts(*pictureBytes(picture, PictureFormat::Svg)),
              QStringList({"Box 1 <&>", "Box 2 <&>", "Box 3 <&>"}))
        << "labels as text";

    const QByteArray pdf = *pictureBytes(picture, PictureFormat::Pdf);
    EXPECT_TRUE(pdf.startsWith("%PDF-"));
    EXPECT_EQ(pdfPages(pdf), 1);

    EXPECT_EQ(pictureFormatFor(QStringLiteral("tree.PNG")), PictureFormat::Png);
    EXPECT_EQ(pictureFormatFor(QStringLiteral("/a/b.svg")), PictureFormat::Svg);
    EXPECT_EQ(pictureFormatFor(QStringLiteral("b.Pdf")), PictureFormat::Pdf);
    EXPECT_FALSE(pictureFormatFor(QStringLiteral("b.jpg")).has_value());
    EXPECT_TRUE(exportPicture(picture, dir.filePath(QStringLiteral("tree.gif")))
                    .message()
                    .contains(QStringLiteral(".png, .svg or .pdf")));
}

TEST(PictureExportTest, PagesHoldTheTreeWholeOrAtFullSizeInReadingOrder)
{
    // An area of 250 by 120 on pages of 100 by 100 overlapping by 20:
    // columns start at 0, 80, 160; rows at 0, 80.
    const std::vector<QRectF> tiles = pageTiles(QSizeF(250, 120), QSizeF(100, 100), 20);
    ASSERT_EQ(tiles.size(), 6u);
    const QPointF corners[] = {{0, 0}, {80, 0}, {160, 0}, {0, 80}, {80, 80}, {160, 80}};
    for (size_t k = 0; k < 6; ++k) {
        EXPECT_EQ(tiles[k].topLeft(), corners[k]) << k;
        EXPECT_EQ(tiles[k].size(), QSizeF(100, 100));
    }
    EXPECT_EQ(pageTiles(QSizeF(100, 100), QSizeF(100, 100), 20).size(), 1u);

    ensureOffscreenGui();
    // 40 boxes: 4800 units wide, far wider than an A4 page of 96 to the inch.
    const Picture wide = labelledBoxes(40);
    EXPECT_EQ(printed(wide, PageScale::FitOnePage), std::pair(1, 1));
    const auto [portrait, portraitPages] = printed(wide, PageScale::FullSize);
    EXPECT_EQ(portraitPages, portrait);
    EXPECT_GT(portrait, 5);
    const auto [landscape, landscapePages] =
        printed(wide, PageScale::FullSize, QPageLayout::Landscape);
    EXPECT_EQ(landscapePages, landscape);
    EXPECT_LT(landscape, portrait) << "a landscape page holds more of a wide tree";
}

// A PNG past 16384 pixels a side or 128 megapixels is drawn smaller, down
// to an eighth of its usual scale, and says so; beyond that it is refused
// by name and size, and the file there before stays as it was. SVG and PDF
// hold it whole.
TEST(PictureExportTest, APngTooLargeIsDrawnSmallerOrRefusedAndTheOldFileStays)
{
    ensureOffscreenGui();
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("tree.png"));

    // 100 boxes: 12048 units with the margin, 24096 pixels at twice the scale.
    const Picture wide = labelledBoxes(100);
    EXPECT_DOUBLE_EQ(pngScaleFor(wide), 16384.0 / 12048);
    EXPECT_EQ(exportPicture(wide, path).message(), QString());
    const QImage drawn(path);
    EXPECT_EQ(drawn.size(), QSize(16384, 119));
    EXPECT_EQ(pictureNote(wide, path),
              QStringLiteral("%1 is drawn at 67% of its usual size, 16384 x 119 pixels: a picture "
                             "is at most 16384 pixels a side and 128 megapixels. SVG and PDF hold "
                             "the tree at full size.")
                  .arg(path));
    EXPECT_EQ(pictureNote(labelledBoxes(3), path), QString()) << "a usual picture";

    // Square: the pixel count, not a side, decides.
    const Picture square{QRectF(0, 0, 9952, 9952), [](QPainter&, const QRectF&) {}};
    EXPECT_NEAR(pngScaleFor(square), std::sqrt(128.0 * 1024 * 1024) / 10000, 1e-9);
    const QSize squarePixels = pngSize(square, pngScaleFor(square));
    EXPECT_LE(qint64(squarePixels.width()) * squarePixels.height(), largestPngPixels);

    // 600 boxes would need less than an eighth of the scale.
    const QByteArray before = test::fileBytes(path);
    const Picture tooWide = labelledBoxes(600);
    EXPECT_EQ(pngScaleFor(tooWide), 0);
    EXPECT_EQ(exportPicture(tooWide, path).message(),
              QStringLiteral("Cannot save %1: the picture would be 144096 x 176 pixels (at most "
                             "16384 pixels a side and 128 megapixels).")
                  .arg(path));
    EXPECT_EQ(test::fileBytes(path), before) << "the old picture stays, byte for byte";
    EXPECT_FALSE(pictureBytes(tooWide, PictureFormat::Png));
    ASSERT_TRUE(pictureBytes(tooWide, PictureFormat::Svg));
    EXPECT_EQ(test::svgTexts(*pictureBytes(tooWide, PictureFormat::Svg)).size(), 600);
    EXPECT_EQ(pdfPages(*pictureBytes(tooWide, PictureFormat::Pdf)), 1);
}

// A picture that would take more than a thousand pages at full size is
// printed on one page, scaled to fit.
TEST(PictureExportTest, APictureOfTooManyPagesIsPrintedOnOne)
{
    for (const QSizeF area : {QSizeF(250, 120), QSizeF(1000, 100), QSizeF(100, 100)})
        EXPECT_EQ(pageCount(area, QSizeF(100, 100), 20),
                  qint64(pageTiles(area, QSizeF(100, 100), 20).size()));
    EXPECT_GT(pageCount(QSizeF(2e9, 2e9), QSizeF(700, 1000), 24), 1e12);

    ensureOffscreenGui();
    const Picture huge{QRectF(-1e9, 0, 2e9, 1e5), [](QPainter& painter, const QRectF&) {
                           painter.drawLine(QPointF(-1e9, 0), QPointF(1e9, 1e5));
                       }};
    EXPECT_EQ(printed(huge, PageScale::FullSize), std::pair(1, 1));
}
