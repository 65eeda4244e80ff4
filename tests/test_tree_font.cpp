// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/OffscreenGui.h"
#include "draw/TreeFont.h"

#include <QFontInfo>
#include <gtest/gtest.h>

using namespace tav;

// The tree font is measured without a display, as tav-cli measures it.
TEST(TreeFontTest, MeasuresOffscreenInArialsMetricTwinAtEachSize)
{
    ensureOffscreenGui();
    FontMeasure measure(2);
    EXPECT_EQ(QFontInfo(measure.font()).family(), QStringLiteral("Liberation Sans"))
        << "the same metrics on every machine";
    EXPECT_DOUBLE_EQ(measure.font().pointSizeF(), 8.25);

    double previousWidth = 0, previousHeight = 0;
    for (int fontSize = 1; fontSize <= 4; ++fontSize) {
        const FontMeasure step(fontSize);
        const double width = step.textWidth(QStringLiteral("Brenlow"));
        const double height = step.lineHeight();
        EXPECT_GT(width, previousWidth) << fontSize;
        EXPECT_GT(height, previousHeight) << fontSize;
        // One line of a sans-serif font is about 1.15 of its size, here in
        // pixels of 96 to the inch (4/3 of the points).
        const double pixels = treeFontPoints(fontSize) * 4 / 3;
        EXPECT_NEAR(height, 1.15 * pixels, 0.1 * pixels) << fontSize;
        previousWidth = width;
        previousHeight = height;
    }
    EXPECT_DOUBLE_EQ(FontMeasure(7).textWidth(QStringLiteral("Brenlow")),
                     measure.textWidth(QStringLiteral("Brenlow")))
        << "a size outside 1 to 4 is the 8.25-point font";
    EXPECT_LT(measure.textWidth(QStringLiteral("Brenlow")),
              measure.textWidth(QStringLiteral("Brenlow Brenlow")));
    EXPECT_EQ(generationGap(1), 60);
    EXPECT_EQ(generationGap(4), 125);
    EXPECT_EQ(generationGap(0), 80);
}
