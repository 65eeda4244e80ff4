#include "cli/OffscreenGui.h"
#include "draw/PagedPicture.h"
#include "draw/PictureExport.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

using namespace tav;

namespace {

// A row of labelled boxes, as wide as asked, starting left of the origin.
Picture labelledBoxes(int boxes)
{
    return Picture{QRectF(-50, 0, 120.0 * boxes, 40), [boxes](QPainter& painter) {
                       for (int k = 0; k < boxes; ++k) {
                           const QRectF box(-50 + 120.0 * k, 0, 100, 40);
                           painter.drawRect(box);
                           painter.drawText(box, Qt::AlignCenter,
                                            QStringLiteral("Box %1 <&>").arg(k + 1));
                       }
                   }};
}

// The texts of every <text> element of an SVG, or a failure.
QStringList svgTexts(const QByteArray& svg, QString* problem)
{
    QXmlStreamReader xml(svg);
    QStringList texts;
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == u"text")
            texts << xml.readElementText(QXmlStreamReader::IncludeChildElements).trimmed();
    }
    if (xml.hasError())
        *problem = xml.errorString();
    return texts;
}

int pdfPages(const QByteArray& pdf) { return int(pdf.count("/Type /Page\n")); }

}  // namespace

TEST(PictureExportTest, EachFormatHoldsTheWholePicture)
{
    ensureOffscreenGui();
    const Picture picture = labelledBoxes(3);
    // The picture is 360 by 40 units with 24 around: 408 by 88, doubled.
    EXPECT_EQ(pngSize(picture), QSize(816, 176));
    QImage png;
    ASSERT_TRUE(png.loadFromData(pictureBytes(picture, PictureFormat::Png), "PNG"));
    EXPECT_EQ(png.size(), QSize(816, 176));
    EXPECT_NE(png.pixel(2 * 24, 2 * 24 + 20), QColor(Qt::white).rgb())
        << "the first box's left edge";
    EXPECT_EQ(png.pixel(5, 5), QColor(Qt::white).rgb()) << "the margin";

    QString problem;
    const QStringList texts = svgTexts(pictureBytes(picture, PictureFormat::Svg), &problem);
    EXPECT_TRUE(problem.isEmpty()) << problem.toStdString();
    EXPECT_EQ(texts, QStringList({"Box 1 <&>", "Box 2 <&>", "Box 3 <&>"})) << "labels as text";

    const QByteArray pdf = pictureBytes(picture, PictureFormat::Pdf);
    EXPECT_TRUE(pdf.startsWith("%PDF-"));
    EXPECT_EQ(pdfPages(pdf), 1);
}

TEST(PictureExportTest, FilesAreNamedByTheirFormatAndAFailedWriteKeepsTheOldFile)
{
    ensureOffscreenGui();
    EXPECT_EQ(pictureFormatFor(QStringLiteral("tree.PNG")), PictureFormat::Png);
    EXPECT_EQ(pictureFormatFor(QStringLiteral("/a/b.svg")), PictureFormat::Svg);
    EXPECT_EQ(pictureFormatFor(QStringLiteral("b.Pdf")), PictureFormat::Pdf);
    EXPECT_FALSE(pictureFormatFor(QStringLiteral("b.jpg")).has_value());

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("tree.png"));
    EXPECT_EQ(exportPicture(labelledBoxes(1), path).message(), QString());
    QImage written(path);
    EXPECT_EQ(written.size(), pngSize(labelledBoxes(1)));
    EXPECT_TRUE(exportPicture(labelledBoxes(1), dir.filePath(QStringLiteral("tree.gif")))
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
    const auto print = [](const Picture& picture, PageScale scale, QPageLayout::Orientation o) {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter pdf(&buffer);
        pdf.setResolution(300);
        pdf.setPageSize(QPageSize(QPageSize::A4));
        pdf.setPageOrientation(o);
        const int pages = paintOnPages(pdf, picture, scale);
        buffer.close();
        return std::pair{pages, pdfPages(bytes)};
    };
    // 40 boxes: 4800 units wide, far wider than an A4 page of 96 to the inch.
    const Picture wide = labelledBoxes(40);
    EXPECT_EQ(print(wide, PageScale::FitOnePage, QPageLayout::Portrait), std::pair(1, 1));
    const auto [portrait, portraitPages] = print(wide, PageScale::FullSize, QPageLayout::Portrait);
    EXPECT_EQ(portraitPages, portrait);
    EXPECT_GT(portrait, 5);
    const auto [landscape, landscapePages] =
        print(wide, PageScale::FullSize, QPageLayout::Landscape);
    EXPECT_EQ(landscapePages, landscape);
    EXPECT_LT(landscape, portrait) << "a landscape page holds more of a wide tree";
}
