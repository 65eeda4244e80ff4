// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/OffscreenGui.h"
#include "draw/PictureExport.h"
#include "draw/TreeFont.h"
#include "draw/TreePainter.h"
#include "tests/TestSupport.h"
#include "tests/TreeTestSupport.h"
#include "windowlogic/tree/TreeWindowLogic.h"

#include <QImage>
#include <QPainter>

using namespace tav;

namespace {

// Hal /Morgenstern-Whitby/ and Winifred /Ashcombe/ have four children; the
// first has no given name, so under the children's style its label is empty.
const QByteArray longNames = tav::test::familyFile(
    {"Hal Quentin /Morgenstern-Whitby/:M", "Winifred Joy /Ashcombe/:F", "/Whitby/",
     "Maximilian /Whitby/", "Wendeline /Whitby/", "Quincy /Whitby/"},
    {{1, 2, {3, 4, 5, 6}}});

}  // namespace

class TreePainterTest : public tav::test::SessionTest {
protected:
    void SetUp() override
    {
        ensureOffscreenGui();
        ASSERT_TRUE(load(longNames));
        session.curInd = 1;
        logic = std::make_unique<TreeWindowLogic>(
            session, [](int fontSize) { return std::make_unique<FontMeasure>(fontSize); });
        logic->activate();
    }

    // The drawing painted at a scale onto a white image the size of its bounds.
    static QImage painted(const TreeDrawing& drawing, double scale)
    {
        QImage image((drawing.bounds.size() * scale).toSize(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.scale(scale, scale);
        painter.translate(-drawing.bounds.topLeft());
        paintTree(painter, drawing);
        return image;
    }

    std::unique_ptr<TreeWindowLogic> logic;
};

TEST_F(TreePainterTest, EveryLabelStaysInsideItsBoxAtEveryFontSizeAndScale)
{
    for (int fontSize = 1; fontSize <= 4; ++fontSize) {
        logic->setFontSize(fontSize);
        TreeDrawing drawing = logic->drawing();
        drawing.lines.clear();  // only boxes: every inked pixel must be in one
        ASSERT_EQ(drawing.boxes.size(), 6u);
        EXPECT_GE(drawing.boxes[2].frame.width(), 8) << "the empty label's box still shows";
        for (const double scale : {1.0, 2.0, 3.5}) {
            const QImage image = painted(drawing, scale);
            int outside = 0, inked = 0;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    if (image.pixel(x, y) == qRgb(255, 255, 255))
                        continue;
                    ++inked;
                    const QPointF at = QPointF(x + 0.5, y + 0.5) / scale + drawing.bounds.topLeft();
                    bool inBox = false;
                    for (const TreeBox& box : drawing.boxes)
                        inBox = inBox || box.frame.adjusted(-1, -1, 1, 1).contains(at);
                    outside += inBox ? 0 : 1;
                }
            }
            EXPECT_GT(inked, 0);
            EXPECT_EQ(outside, 0) << "font size " << fontSize << " at " << scale;
        }
    }
}

TEST_F(TreePainterTest, ThePictureKeepsTheColoursOfTheBoxes)
{
    session.settings.BackColour = true;
    logic->settingsChanged();
    const TreeDrawing& drawing = logic->drawing();
    const Picture picture = treePicture(drawing);
    // At twice the size: the parchment around, Hal selected, Winifred in the
    // spouses' colour, the children in the descendants'.
    const QImage png = QImage::fromData(*pictureBytes(picture, PictureFormat::Png));
    ASSERT_EQ(png.size(), pngSize(picture));
    const QPointF origin = picture.bounds.topLeft() - QPointF(pictureMargin, pictureMargin);
    const auto colourIn = [&](int32_t slot) {
        const QRectF frame = drawing.box(slot)->frame;
        return png.pixelColor(
            ((QPointF(frame.left() + 1.5, frame.center().y()) - origin) * 2).toPoint());
    };
    EXPECT_EQ(png.pixelColor(1, 1), treeBackground(true));
    const QColor selected = colourIn(1), spouse = colourIn(2), child = colourIn(4);
    EXPECT_NE(selected, spouse);
    EXPECT_NE(spouse, child);
    EXPECT_NE(child, treeBackground(true));
    EXPECT_EQ(colourIn(5), child);
}
