// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/Ahnentafel.h"
#include "tree/TreeDrawing.h"
#include "windowlogic/tree/TreeWindowLogic.h"

#include <QString>
#include <functional>
#include <memory>
#include <vector>

namespace tav {

class Session;
class TextMeasure;

// The commands of the ancestors chart, on the selected person or the chart.
enum class AncestorsCommand {
    SetRoot,        // the selected person becomes the root (Enter, double click)
    Back,           // the root before the last change
    Descendants,    // the tree window with the selected person at its top
    ShowInBrowser,  // the record browser on the selected person
    HtmlReport,     // "tav-ancestors.htm" of the chart, opened in the browser
};

// The tree options that apply to the chart (its main line is the father's
// line from the root; every ancestor has descendants, and leaving out the
// mothers would leave half the chart out).
constexpr TreeOption ancestorsOptions[] = {TreeOption::Dates, TreeOption::Surnames,
                                           TreeOption::MainLine, TreeOption::BackColour};

// The keyboard's moves: Left to the child, Up to the father, Down to the
// mother, Right to the father (the mother when no father is known).
enum class AncestorsMove { Child, Father, Mother, Parent };

QString ancestorsCommandText(AncestorsCommand command);

// How the person at a place descends to the root: "father's mother" for
// number 5; "" for the root.
QString ancestorRelation(int32_t number);

// Makes the text measurement of a FontSize (1 to 4).
using AncestorsMeasureMaker = std::function<std::unique_ptr<TextMeasure>(int fontSize)>;

// The ancestors chart window without its widgets: the chart of a root
// person over a number of generations, its drawing, the selection and its
// keys, the roots gone through (for Back), the commands with their enabled
// states, the labels' options, and the status and tooltip texts. It shares
// the tree window's settings (fonts, dates, surnames, colours).
class AncestorsWindowLogic {
public:
    AncestorsWindowLogic(Session& session, AncestorsMeasureMaker makeMeasure);
    ~AncestorsWindowLogic();

    // Asked to show the chart of the session's current individual: it
    // becomes the root (the root before it is kept for Back).
    void activate();

    const Ahnentafel& chart() const { return chart_; }
    const TreeDrawing& drawing() const { return drawing_; }
    // The whole chart as pictures and pages show it: no person selected.
    TreeDrawing outputDrawing() const;

    // "Ancestors - " and the root's name.
    QString caption() const;
    // The selected person's name, slot and place.
    QString statusText() const;
    // Full name, years, slot and number of the person at a place.
    QString toolTip(int32_t number) const;
    // The place shown at a point of the drawing: a box, or the tag of a
    // repeated ancestor, which stands for the first place; 0 for none.
    int32_t numberAt(QPointF point) const;

    int32_t selected() const { return selected_; }
    // Selects a place of the drawing; anything else is ignored.
    void select(int32_t number);
    // False when there is no one to move to.
    bool move(AncestorsMove move);

    // The generations shown (the setting's, before there is a chart).
    int generations() const;
    void setGenerations(int generations);

    bool enabled(AncestorsCommand command) const;
    void run(AncestorsCommand command);

    int fontSize() const;
    void setFontSize(int fontSize);
    bool option(TreeOption option) const;
    void setOption(TreeOption option, bool on);
    // The settings changed (here, in the tree window or the options
    // dialog): labels, sizes and colours follow them.
    void settingsChanged();

    // A note about the last command for the status bar, given once.
    QString takeNotice();
    // The HTML report just written, for the desktop's browser; "" when none.
    QString takeReportToOpen();

private:
    struct Place {
        int32_t root;
        int32_t selected;
    };
    // The label settings and font size the drawing was made with.
    struct LookSettings {
        int32_t surnameStyle, surnamePosn, fontSize;
        bool dates, surnames, mainLine, backColour;
        bool operator==(const LookSettings&) const = default;
    };

    int32_t selectedIndividual() const { return chart_.individualAt(selected_); }
    void showRoot(int32_t root, int32_t selected);
    void writeHtmlReport();
    void rebuild();
    LookSettings lookSettings() const;

    Session& session_;
    AncestorsMeasureMaker makeMeasure_;
    std::unique_ptr<TextMeasure> measure_;
    LookSettings madeWith_;
    Ahnentafel chart_;
    TreeDrawing drawing_;
    int32_t selected_ = 0;
    std::vector<Place> history_;  // the roots before this one, the last last
    QString notice_;
    QString reportToOpen_;
};

}  // namespace tav
