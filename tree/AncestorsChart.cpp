// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/AncestorsChart.h"

#include "calc/Ahnentafel.h"
#include "calc/Names.h"
#include "core/RecordStore.h"
#include "core/TextNumbers.h"
#include "settings/Settings.h"
#include "tree/TextMeasure.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <vector>

namespace tav {

namespace {

// Room between a box and its reference tag, and on each side of a tag.
constexpr double referenceGap = 4;

// Where a label of that size is written for its box's frame to begin at
// `left`, `top`.
QRectF textAt(double left, double top, double width, double height)
{
    const QRectF frame = treeBoxFrame(QRectF(0, 0, width, height));
    return QRectF(left - frame.left(), top - frame.top(), width, height);
}

// A father known by his surname alone would get a box without a name: the
// chart names him as it names the mothers.
TreeLabelRole labelRoleOf(const RecordStore& records, int32_t individual, int32_t number,
                          const Settings& settings)
{
    const TreeLabelRole role = ancestorLabelRole(number);
    if (role != TreeLabelRole::Child || settings.ViewSurnames)
        return role;
    const QString given =
        formatName(records.individual(individual).name, NameFirstGiven | NameSecondInitial,
                   NameStyle{settings.SurnameStyle, settings.SurnamePosn});
    return given.trimmed().isEmpty() ? TreeLabelRole::TopOrSpouse : role;
}

int32_t fatherPlace(int32_t number) { return 2 * number; }
int32_t motherPlace(int32_t number) { return 2 * number + 1; }

// The rows a part of the chart takes in each column, from its own person's
// column rightwards, in the part's own vertical units.
struct Contour {
    struct Rows {
        double top;
        double bottom;
    };
    std::vector<Rows> columns;

    void shift(double by)
    {
        for (Rows& rows : columns) {
            rows.top += by;
            rows.bottom += by;
        }
    }
};

// Packs the places of a chart into their columns as tightly as the rule
// allows: a person's father's part above the mother's part, as close as
// no column lets them overlap, and the person centred between the two.
// Each part is laid out on its own and then moved whole; the moves add
// up from the root outwards.
class ColumnPacker {
public:
    ColumnPacker(const Ahnentafel& chart, double boxHeight, double rowGap)
        : chart_(chart), height_(boxHeight), gap_(rowGap), groupGap_(2 * rowGap),
          local_(size_t(chart.lastNumber()) + 1, 0), moved_(size_t(chart.lastNumber()) + 1, 0)
    {}

    // The top of every place's box, the highest box at 0.
    std::vector<double> tops()
    {
        std::vector<double> top(local_.size(), 0);
        if (chart_.individualAt(1) == 0)
            return top;
        place(1);
        double highest = std::numeric_limits<double>::max();
        std::vector<double> moved(local_.size(), 0);
        for (const int32_t number : chart_.places()) {
            moved[size_t(number)] =
                (number > 1 ? moved[size_t(number / 2)] : 0) + moved_[size_t(number)];
            top[size_t(number)] = local_[size_t(number)] + moved[size_t(number)];
            highest = std::min(highest, top[size_t(number)]);
        }
        // Whole units, so that labels and frames sit on the pixel grid.
        for (const int32_t number : chart_.places())
            top[size_t(number)] = std::round(top[size_t(number)] - highest);
        return top;
    }

private:
    Contour box() const { return Contour{{{0, height_}}}; }

    Contour place(int32_t number)
    {
        const bool goesOn = chart_.continuesAt(number);
        const bool father = goesOn && chart_.individualAt(fatherPlace(number)) != 0;
        const bool mother = goesOn && chart_.individualAt(motherPlace(number)) != 0;
        if (!father && !mother) {
            Contour own = box();
            // A person met again keeps the room of a parent's box for the tag.
            if (chart_.firstNumberOf(number) != 0)
                own.columns.push_back({0, height_});
            return own;
        }
        // An unknown parent keeps the room of one box beside the known one.
        const Contour upper = father ? place(fatherPlace(number)) : box();
        Contour lower = mother ? place(motherPlace(number)) : box();
        double by = std::numeric_limits<double>::lowest();
        const size_t shared = std::min(upper.columns.size(), lower.columns.size());
        // A couple stands close together; further right, the father's side
        // and the mother's side keep apart a little more, so that each
        // couple reads as one.
        for (size_t c = 0; c < shared; ++c)
            by = std::max(by, upper.columns[c].bottom + (c == 0 ? gap_ : groupGap_) -
                                  lower.columns[c].top);
        lower.shift(by);
        if (mother)
            moved_[size_t(motherPlace(number))] = by;

        const double top = (upper.columns[0].top + lower.columns[0].top) / 2;
        local_[size_t(number)] = top;
        Contour both{{{top, top + height_}}};
        const size_t columns = std::max(upper.columns.size(), lower.columns.size());
        for (size_t c = 0; c < columns; ++c) {
            const bool inUpper = c < upper.columns.size();
            const bool inLower = c < lower.columns.size();
            both.columns.push_back({inUpper ? upper.columns[c].top : lower.columns[c].top,
                                    inLower ? lower.columns[c].bottom : upper.columns[c].bottom});
        }
        return both;
    }

    const Ahnentafel& chart_;
    double height_;
    double gap_;                 // between a father and a mother
    double groupGap_;            // between the parents of different people
    std::vector<double> local_;  // a box's top within the part of its child
    std::vector<double> moved_;  // how far a mother's part moved within her child's
};

}  // namespace

TreeBoxRole ancestorBoxRole(int32_t number)
{
    if (number == 1)
        return TreeBoxRole::Top;
    return number % 2 == 0 ? TreeBoxRole::Child : TreeBoxRole::Spouse;
}

TreeLabelRole ancestorLabelRole(int32_t number)
{
    return ancestorBoxRole(number) == TreeBoxRole::Child ? TreeLabelRole::Child
                                                         : TreeLabelRole::TopOrSpouse;
}

bool onFathersLine(int32_t number) { return number >= 1 && std::has_single_bit(uint32_t(number)); }

TreeDrawing ancestorsDrawing(const Ahnentafel& chart, const RecordStore& records,
                             const Settings& settings, const TextMeasure& measure, QDate today)
{
    TreeDrawing drawing;
    drawing.fontSize = settings.FontSize;
    drawing.backColour = settings.BackColour;
    const std::vector<int32_t>& places = chart.places();
    if (places.empty())
        return drawing;
    const int columns = chart.generations();
    const double lineHeight = toLong(measure.lineHeight());

    // Labels and references first: they set the columns' widths.
    std::vector<TreeBox> boxes;
    boxes.reserve(places.size());
    std::vector<double> labelWidth(size_t(columns) + 1, 0);
    std::vector<double> referenceWidth(size_t(columns) + 1, 0);  // the widest tag's frame
    std::vector<double> referenceTextWidth;                      // by box
    referenceTextWidth.reserve(places.size());
    for (const int32_t number : places) {
        TreeBox box;
        box.slot = number;
        box.role = ancestorBoxRole(number);
        box.label = treeLabel(records, chart.individualAt(number),
                              labelRoleOf(records, chart.individualAt(number), number, settings),
                              settings, today);
        box.mainLine = settings.ViewMainLine && onFathersLine(number);
        const size_t column = size_t(Ahnentafel::generationOf(number));
        labelWidth[column] =
            std::max(labelWidth[column], double(toLong(measure.textWidth(box.label))));
        double referenceText = 0;
        if (const int32_t first = chart.firstNumberOf(number); first != 0) {
            box.reference = QStringLiteral("= %1").arg(first);
            referenceText = toLong(measure.textWidth(box.reference));
            referenceWidth[column] =
                std::max(referenceWidth[column],
                         treeBoxFrame(QRectF(0, 0, referenceText, lineHeight)).width());
        }
        referenceTextWidth.push_back(referenceText);
        boxes.push_back(std::move(box));
    }

    // Columns: each as wide as its widest box, then a gap wide enough for
    // the forks and for any reference tag.
    const double forkGap = generationGap(settings.FontSize) / 2;
    std::vector<double> columnLeft(size_t(columns) + 1, 0);
    std::vector<double> columnGap(size_t(columns) + 1, forkGap);
    double left = 0;
    for (size_t c = 1; c <= size_t(columns); ++c) {
        columnLeft[c] = left;
        if (referenceWidth[c] > 0)
            columnGap[c] = std::max(forkGap, referenceWidth[c] + 2 * referenceGap);
        left += treeBoxFrame(QRectF(0, 0, labelWidth[c], lineHeight)).width() + columnGap[c];
    }

    const double boxHeight = treeBoxFrame(QRectF(0, 0, 0, lineHeight)).height();
    const double rowGap = std::max(4.0, std::round(lineHeight / 2));
    const std::vector<double> tops = ColumnPacker(chart, boxHeight, rowGap).tops();
    for (size_t i = 0; i < boxes.size(); ++i) {
        TreeBox& box = boxes[i];
        const size_t column = size_t(Ahnentafel::generationOf(box.slot));
        box.text =
            textAt(columnLeft[column], tops[size_t(box.slot)], labelWidth[column], lineHeight);
        box.frame = treeBoxFrame(box.text);
        if (!box.reference.isEmpty())
            box.referenceFrame =
                treeBoxFrame(textAt(box.frame.right() + referenceGap, box.frame.top(),
                                    referenceTextWidth[i], lineHeight));
    }

    // The forks: from a person's box to a bar half way across the gap,
    // along it to each known parent, and on to the parent's box.
    std::vector<const TreeBox*> byNumber(size_t(chart.lastNumber()) + 1, nullptr);
    for (const TreeBox& box : boxes)
        byNumber[size_t(box.slot)] = &box;
    TreeLineMaker lines;
    for (const TreeBox& box : boxes) {
        const int32_t number = box.slot;
        if (!chart.continuesAt(number))
            continue;
        const size_t column = size_t(Ahnentafel::generationOf(number));
        const double barX = crispLine(box.frame.right() + columnGap[column] / 2);
        const double y = crispLine(box.frame.center().y());
        const bool fathersLine = settings.ViewMainLine && onFathersLine(number);
        bool joined = false, joinedAny = false;
        for (const int32_t parent : {fatherPlace(number), motherPlace(number)}) {
            const TreeBox* parentBox = byNumber[size_t(parent)];
            if (!parentBox)
                continue;
            joinedAny = true;
            const bool main = fathersLine && parent == fatherPlace(number);
            const double parentY = crispLine(parentBox->frame.center().y());
            lines.add(QPointF(barX, y), QPointF(barX, parentY), main);
            lines.add(QPointF(barX, parentY), QPointF(parentBox->frame.left(), parentY), main);
            joined = joined || main;
        }
        if (joinedAny)
            lines.add(QPointF(box.frame.right(), y), QPointF(barX, y), joined);
    }
    drawing.boxes = std::move(boxes);
    drawing.lines = lines.take();
    drawing.bounds = treeDrawingBounds(drawing);
    return drawing;
}

void selectAncestorBox(TreeDrawing& drawing, int32_t number)
{
    for (TreeBox& box : drawing.boxes)
        box.selected = box.slot == number;
}

}  // namespace tav
