// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tav {

// The tree's text measurement, in tree units (device-independent pixels,
// 96 to the inch) of the current tree font. The tree's layout sees only
// this, so it runs without a display; the drawing library measures with the
// real font, tests with a stub.
class TextMeasure {
public:
    virtual ~TextMeasure() = default;

    // Width of a text, unrounded.
    virtual double textWidth(const QString& text) const = 0;
    // The line height: the height of the sample text "Brenlow", unrounded.
    virtual double lineHeight() const = 0;
};

// The tree font's size for a FontSize setting (1 to 4: 6, 8.25, 9.75 and 12
// points; anything else counts as 2), and the generation gap that goes with
// it (60, 80, 100, 125 units).
double treeFontPoints(int fontSize);
int generationGap(int fontSize);

}  // namespace tav
