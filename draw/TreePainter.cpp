// SPDX-License-Identifier: GPL-3.0-or-later
#include "draw/TreePainter.h"

#include "draw/TreeFont.h"
#include "tree/TextMeasure.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace tav {

namespace {

// Calm colours that print well: descendants in blue, spouses in a warm
// sand, the shown line in a deeper blue, the selection in amber.
struct Palette {
    QColor text{0x1f, 0x29, 0x33};
    QColor emptyText{0x7b, 0x87, 0x94};
    QColor line{0x86, 0x92, 0x9e};
    QColor mainLine{0x2e, 0x5a, 0x87};
    QColor descendantFill{0xe6, 0xef, 0xf8};
    QColor descendantFrame{0x5d, 0x7f, 0xa3};
    QColor spouseFill{0xff, 0xf7, 0xec};
    QColor spouseFrame{0xa9, 0x87, 0x63};
    QColor mainFill{0xcc, 0xdd, 0xef};
    QColor selectedFill{0xff, 0xe6, 0x9e};
    QColor selectedFrame{0xb7, 0x79, 0x1f};
    QColor mark{0xb5, 0x5d, 0x1d};
    QColor band{0xd9, 0xe6, 0xf3};
    QColor bandAlternate{0xc9, 0xdb, 0xee};
};

const Palette palette;

constexpr double thinPen = 1.0;
constexpr double strongPen = 2.0;

void paintBox(QPainter& painter, const TreeBox& box)
{
    const bool spouse = box.role == TreeBoxRole::Spouse;
    QColor fill = spouse ? palette.spouseFill : palette.descendantFill;
    QColor frame = spouse ? palette.spouseFrame : palette.descendantFrame;
    double width = thinPen;
    if (box.mainLine) {
        fill = palette.mainFill;
        frame = palette.mainLine;
        width = strongPen;
    }
    if (box.selected) {
        fill = palette.selectedFill;
        frame = palette.selectedFrame;
        width = strongPen;
    }
    QPen pen(frame, width);
    pen.setJoinStyle(Qt::MiterJoin);
    if (box.empty && !box.selected)
        pen.setStyle(Qt::DashLine);
    painter.setPen(pen);
    painter.setBrush(box.empty && !box.selected ? Qt::NoBrush : QBrush(fill));
    // A thin stroke lies inside the frame, where the lines end; a strong one
    // reaches a unit outside it, so the label keeps its room either way.
    const double inset = width == thinPen ? thinPen / 2 : 0;
    painter.drawRect(box.frame.adjusted(inset, inset, -inset, -inset));

    painter.setPen(box.empty ? palette.emptyText : palette.text);
    painter.drawText(box.text,
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip,
                     box.label);

    if (!box.mark.isEmpty()) {
        // A small triangle pointing down: there are people below.
        const QRectF& m = box.mark;
        const QPointF corners[3] = {m.topLeft(), m.topRight(), QPointF(m.center().x(), m.bottom())};
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette.mark);
        painter.drawPolygon(corners, 3);
    }
}

// "= n" beside an ancestor met again, in the mark's colour: a small tag
// that points the reader to the place where the forebears go on.
void paintReference(QPainter& painter, const TreeBox& box)
{
    QPen pen(palette.mark, thinPen);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    painter.setBrush(treeBackground(false));
    const double inset = thinPen / 2;
    painter.drawRoundedRect(box.referenceFrame.adjusted(inset, inset, -inset, -inset), 3, 3);
    painter.drawText(box.referenceFrame, Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip,
                     box.reference);
}

QFontMetricsF metricsOf(int fontSize) { return QFontMetricsF(treePaintFont(fontSize)); }

}  // namespace

QFont treePaintFont(int fontSize)
{
    QFont font = treeFont(fontSize);
    // Points at 96 units to the inch; every size of the four is whole.
    font.setPixelSize(int(std::lround(treeFontPoints(fontSize) * 96.0 / 72.0)));
    return font;
}

QColor treeBackground(bool backColour)
{
    return backColour ? QColor(0xf3, 0xea, 0xd5) : QColor(Qt::white);
}

void paintTree(QPainter& painter, const TreeDrawing& drawing, const QRectF& visible)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    const auto shows = [&visible](const QRectF& rect) {
        return visible.isEmpty() || visible.intersects(rect.adjusted(-2, -2, 2, 2));
    };

    QPen plain(palette.line, thinPen);
    plain.setCapStyle(Qt::FlatCap);
    QPen main(palette.mainLine, strongPen);
    main.setCapStyle(Qt::FlatCap);
    for (const TreeLine& line : drawing.lines) {
        if (!shows(QRectF(line.line.p1(), line.line.p2()).normalized()))
            continue;
        painter.setPen(line.mainLine ? main : plain);
        painter.drawLine(line.line);
    }

    painter.setFont(treePaintFont(drawing.fontSize));
    for (const TreeBox& box : drawing.boxes) {
        if (shows(box.frame) || (!box.mark.isEmpty() && shows(box.mark)))
            paintBox(painter, box);
        if (!box.reference.isEmpty() && shows(box.referenceFrame))
            paintReference(painter, box);
    }
    painter.restore();
}

Picture treePicture(const TreeDrawing& drawing)
{
    return Picture{drawing.bounds, [drawing](QPainter& painter, const QRectF& visible) {
                       // The background reaches past the bounds, under any margin.
                       const double reach =
                           std::max(drawing.bounds.width(), drawing.bounds.height());
                       const QRectF all = drawing.bounds.adjusted(-reach, -reach, reach, reach);
                       painter.fillRect(visible.isEmpty() ? all : all.intersected(visible),
                                        treeBackground(drawing.backColour));
                       // A page paints only its own boxes: a print of a
                       // thousand pages costs the boxes once, not a
                       // thousand times.
                       paintTree(painter, drawing, visible);
                   }};
}

TrianglePicture layoutTriangle(const DescendantTriangle& triangle, const QString& label,
                               double width, int fontSize, bool backColour)
{
    TrianglePicture picture;
    picture.fontSize = fontSize;
    picture.backColour = backColour;
    const QFontMetricsF metrics = metricsOf(fontSize);
    const double line = std::ceil(metrics.height());
    const double margin = 16;

    picture.apexLines << label;
    if (triangle.counted) {
        picture.apexLines << QStringLiteral("Descendants: %1").arg(triangle.descendants)
                          << QStringLiteral("Spouses: %1").arg(triangle.spouses)
                          << QStringLiteral("Generations: %1").arg(triangle.generations);
    }
    double apexWidth = 0;
    for (const QString& text : std::as_const(picture.apexLines))
        apexWidth = std::max(apexWidth, metrics.horizontalAdvance(text));
    apexWidth = std::ceil(apexWidth) + 24;
    const double apexHeight = line * double(picture.apexLines.size()) + 12;

    // The generation's name on the left, its number in or beside the band;
    // the apex stands over the middle of the bands.
    const double nameWidth =
        std::ceil(metrics.horizontalAdvance(QStringLiteral("Generation 100"))) + 12;
    const double countWidth = std::ceil(metrics.horizontalAdvance(QStringLiteral("000000"))) + 12;
    const double left = margin + nameWidth;
    width = std::max(width, left + apexWidth + countWidth + margin);
    const double area = std::max(apexWidth, width - left - margin - countWidth);
    picture.apex = QRectF(std::round(left + (area - apexWidth) / 2), margin, apexWidth, apexHeight);
    const double bandHeight = line + 6;
    const double widest = std::max(1, triangle.widest());
    double y = picture.apex.bottom() + margin;
    for (size_t g = 0; g < triangle.perGeneration.size(); ++g) {
        TrianglePicture::Band band;
        const int32_t count = triangle.perGeneration[g];
        const double bandWidth = std::max(2.0, std::round(area * double(count) / widest));
        band.rect = QRectF(std::round(left + (area - bandWidth) / 2), y, bandWidth, bandHeight);
        band.count = QString::number(count);
        const double textWidth = std::ceil(metrics.horizontalAdvance(band.count)) + 8;
        band.countRect = textWidth <= bandWidth
                             ? band.rect
                             : QRectF(band.rect.right() + 4, y, textWidth, bandHeight);
        band.generation = QStringLiteral("Generation %1").arg(g + 1);
        band.generationRect = QRectF(margin, y, nameWidth - 12, bandHeight);
        picture.bands.push_back(band);
        y += bandHeight + 3;
    }

    if (triangle.perGeneration.empty())
        picture.note = QStringLiteral("No descendants.");
    else if (triangle.deeperThanShown)
        picture.note = QStringLiteral("A line goes on below generation %1; only the first %1 "
                                      "generations are shown.")
                           .arg(DescendantTriangle::maxGenerations);
    if (!picture.note.isEmpty()) {
        y += 8;
        picture.noteRect = QRectF(margin, y, width - 2 * margin, line);
        y += line;
    }
    picture.size = QSizeF(width, y + margin);
    return picture;
}

void paintTriangle(QPainter& painter, const TrianglePicture& picture)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setFont(treePaintFont(picture.fontSize));
    const QFontMetricsF metrics(painter.font());

    // The apex, joined to the first band by a short line.
    painter.setPen(QPen(palette.mainLine, strongPen));
    painter.setBrush(palette.mainFill);
    painter.drawRect(picture.apex.adjusted(1, 1, -1, -1));
    if (!picture.bands.empty()) {
        const double x = std::floor(picture.apex.center().x()) + 0.5;
        painter.setPen(QPen(palette.line, thinPen));
        painter.drawLine(QPointF(x, picture.apex.bottom()),
                         QPointF(x, picture.bands.front().rect.top()));
    }
    painter.setPen(palette.text);
    const double line = std::ceil(metrics.height());
    for (qsizetype i = 0; i < picture.apexLines.size(); ++i) {
        const QRectF row(picture.apex.left(), picture.apex.top() + 6 + line * double(i),
                         picture.apex.width(), line);
        painter.drawText(row, Qt::AlignHCenter | Qt::AlignVCenter, picture.apexLines[i]);
    }

    for (size_t g = 0; g < picture.bands.size(); ++g) {
        const TrianglePicture::Band& band = picture.bands[g];
        painter.setPen(QPen(palette.descendantFrame, thinPen));
        painter.setBrush(g % 2 == 0 ? palette.band : palette.bandAlternate);
        painter.drawRect(band.rect.adjusted(0.5, 0.5, -0.5, -0.5));
        painter.setPen(palette.text);
        painter.drawText(band.countRect, Qt::AlignCenter, band.count);
        painter.setPen(palette.emptyText);
        painter.drawText(band.generationRect, Qt::AlignRight | Qt::AlignVCenter, band.generation);
    }
    if (!picture.note.isEmpty()) {
        painter.setPen(palette.mark);
        painter.drawText(picture.noteRect, Qt::AlignHCenter | Qt::AlignVCenter, picture.note);
    }
    painter.restore();
}

}  // namespace tav
