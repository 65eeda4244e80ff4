// SPDX-License-Identifier: GPL-3.0-or-later
#include "draw/TreeFont.h"

#include "core/Units.h"

#include <QFontMetricsF>

namespace tav {

namespace {

// Dots per metre of a 96-dpi device, rounded as QImage keeps it.
constexpr int dotsPerMetre = int(pixelsPerInch / 0.0254 + 0.5);

}  // namespace

QFont treeFont(int fontSize)
{
    QFont font(QStringLiteral("Arial"));
    font.setPointSizeF(treeFontPoints(fontSize));
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::PreferOutline);
    return font;
}

FontMeasure::FontMeasure(int fontSize)
    : font_(treeFont(fontSize)), device_(1, 1, QImage::Format_ARGB32_Premultiplied)
{
    device_.setDotsPerMeterX(dotsPerMetre);
    device_.setDotsPerMeterY(dotsPerMetre);
}

double FontMeasure::textWidth(const QString& text) const
{
    return QFontMetricsF(font_, &device_).horizontalAdvance(text);
}

double FontMeasure::lineHeight() const
{
    // The height of one line of the sample text: the font's ascent and descent.
    return QFontMetricsF(font_, &device_)
        .size(Qt::TextSingleLine, QStringLiteral("Brenlow"))
        .height();
}

}  // namespace tav
