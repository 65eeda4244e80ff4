// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tree/TextMeasure.h"

#include <QFont>
#include <QImage>

namespace tav {

// The tree font: the family "Arial" (on Linux its metric twin Liberation
// Sans, through fontconfig) at the size of a FontSize setting, without
// hinting, so that boxes measure the same on every machine and at every
// zoom.
QFont treeFont(int fontSize);

// Measures text in the tree font at 96 units to the inch, whatever the
// screen: the units in which the tree is laid out and drawn. Needs a
// QGuiApplication (the offscreen platform will do).
class FontMeasure : public TextMeasure {
public:
    explicit FontMeasure(int fontSize);

    const QFont& font() const { return font_; }
    double textWidth(const QString& text) const override;
    double lineHeight() const override;

private:
    QFont font_;
    QImage device_;  // a 96-dpi device the font is measured on
};

}  // namespace tav
