// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tree/DescendantTriangle.h"
#include "tree/TreeDrawing.h"
#include "tree/TreeModel.h"

#include <QString>
#include <functional>
#include <memory>

namespace tav {

class Session;
class TextMeasure;
struct Settings;

// The commands of the tree window, on the selected person or on the view.
enum class TreeCommand {
    ShowDescendantsMost,
    ShowDescendantsEldest,
    NextSpouse,
    SetTop,
    ShowParents,
    CountDescendants,
    FindRelationship,
    ShowInBrowser,
    Ancestors,
    GoBack,
    SaveView,
    OpenView,
    TriangleView,
    HtmlReport,
};

// The six tree options of the settings, in the order the options dialog
// shows them.
enum class TreeOption { Dates, Surnames, DescendantMark, MainLine, NoSpouse, BackColour };
constexpr TreeOption treeOptions[] = {TreeOption::Dates,          TreeOption::Surnames,
                                      TreeOption::DescendantMark, TreeOption::MainLine,
                                      TreeOption::NoSpouse,       TreeOption::BackColour};

// The keyboard's moves of the selection.
enum class TreeMove { Left, Right, Up, Down };

// What a menu item of a command, an option or a font size says.
QString treeCommandText(TreeCommand command);
QString treeOptionText(TreeOption option);
QString treeFontSizeText(int fontSize);

// The setting an option stands for.
bool& treeOptionIn(Settings& settings, TreeOption option);

// Makes the text measurement of a FontSize (1 to 4): the window measures
// with the real font, tests with a stub.
using TreeMeasureMaker = std::function<std::unique_ptr<TextMeasure>(int fontSize)>;

// The family tree window without its widgets: the view and its drawing,
// the selection and the keys that move it, every command with its enabled
// state, the view files, the font size and the tree options, the status
// and tooltip texts and the triangle view.
//
// A command that changes the view keeps the view before it for "GoBack";
// a command that meets a fault (a walk past the tree's capacity) shows the
// message and leaves the view, its "GoBack" copy and the flag as they were.
class TreeWindowLogic {
public:
    // A new window: nothing is kept for "GoBack".
    TreeWindowLogic(Session& session, TreeMeasureMaker makeMeasure);
    ~TreeWindowLogic();

    // The window became active. When the session asks for a new tree
    // (treeBuilt clear) it is built from the current individual with the
    // most-descendants walk: true then.
    bool activate();

    const TreeModel& model() const { return model_; }
    const TreeDrawing& drawing() const { return drawing_; }
    // The whole view as pictures and pages show it: no person selected.
    TreeDrawing outputDrawing() const;
    const TextMeasure& measure() const { return *measure_; }

    // "Family tree - " and the top person's name.
    QString caption() const;
    // The selected person's name and number.
    QString statusText() const;
    // Full name, years, number and descendants of the person in a slot.
    QString toolTip(int32_t slot) const;

    int32_t selected() const { return model_.selInd; }
    // Selects a box of the drawing; anything else is ignored.
    void select(int32_t slot);
    // Left and Right: the neighbouring box of the row; Up: the head of the
    // family; Down: the child carrying the line. False when there is none.
    bool move(TreeMove move);

    bool enabled(TreeCommand command) const;
    // "Find relationship" while its first person is picked; "Triangle view"
    // while the triangle is shown.
    bool checked(TreeCommand command) const;
    QString text(TreeCommand command) const;
    void run(TreeCommand command);

    int fontSize() const;
    void setFontSize(int fontSize);
    bool option(TreeOption option) const;
    void setOption(TreeOption option, bool on);
    // The options dialog changed the settings: labels, sizes and colours
    // follow them.
    void settingsChanged();

    bool triangleShown() const { return triangleShown_; }
    const DescendantTriangle& triangle() const { return triangle_; }
    // The apex's text: the person's name and years.
    QString triangleLabel() const;

    // "Save view as..." and "Open view...": a view in a file the user
    // chose, read and written as "temp.gds" is (the same checks and
    // messages); the folder is remembered in the settings for the next time.
    void saveViewAs(const QString& path);
    void openViewFrom(const QString& path);
    // Where those dialogs open: the folder used last, else the working one.
    QString viewFolder() const;
    // The name "Save view as..." offers: the top person's, "SMITH, John tree.gds".
    QString suggestedViewName() const;

    // A note about the last command for the status bar ("View saved in
    // ..."), given once; "" when there is none.
    QString takeNotice();
    // The HTML report just written, for the desktop's browser; "" when none.
    QString takeReportToOpen();

private:
    // Where a descendant stands: child `child` of family slot `family`
    // (both 0 for the top person).
    struct LinePlace {
        int32_t family = 0;
        int32_t child = 0;
    };
    // The label settings and font size the view was made with.
    struct LabelSettings {
        int32_t surnameStyle, surnamePosn, fontSize;
        bool dates, surnames;
        bool operator==(const LabelSettings&) const = default;
    };

    int32_t individualAt(int32_t slot) const;
    bool isDescendantSlot(int32_t slot) const;
    LinePlace linePlace(int32_t slot) const;
    // The family slot the person heads in the view; 0 when none.
    int32_t familyHeadedBy(int32_t slot) const;
    int32_t nextSpouseNumber(int32_t slot) const;

    // Runs a change of the view as one command: "GoBack" keeps the view
    // before it, layout follows, and a fault changes nothing. `change`
    // returns the slot to select.
    void changeView(const std::function<int32_t()>& change);
    // A walk from a descendant: the family that holds it shows it as its
    // line child first.
    void walkFrom(int32_t slot, bool mostDescendants, int32_t spouseNo);
    void goBack();
    // Writes "tav.htm" for the top person in the working folder.
    void writeHtmlReport();
    void saveView();
    void openView();
    // Writes or reads the view of a file; false after a message.
    bool writeView(const QString& path);
    void readView(const QString& path);
    void countDescendantsOfSelected();
    void findRelationship();
    void toggleTriangle();

    void layout();
    // Labels and layout of the view and its "GoBack" copy, after the label
    // settings or the font size changed.
    void refreshLabels();
    void relabel(TreeTables& tables) const;
    LabelSettings labelSettings() const;
    void redraw();

    Session& session_;
    TreeMeasureMaker makeMeasure_;
    std::unique_ptr<TextMeasure> measure_;
    TreeModel model_;
    TreeDrawing drawing_;
    LabelSettings madeWith_;
    bool relationshipPicked_ = false;
    int32_t relationshipFirst_ = 0;
    bool triangleShown_ = false;
    DescendantTriangle triangle_;
    QString notice_;
    QString reportToOpen_;
};

}  // namespace tav
