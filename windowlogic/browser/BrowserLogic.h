// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/TableText.h"
#include "windowlogic/browser/RecordGrids.h"

#include <QString>

namespace tav {

class Session;

// The record browser without its window: what the grid shows, the history
// of what it showed, the toolbar's commands and the clicks on its rows.
//
// Each position shown is a nine-character token: "*", the kind and the slot
// as five digits ("*IND00012"), or "*", the list kind and a blank
// ("*ALLINDS "). Earlier positions are kept, concatenated, in the back
// history; positions left by Back in the forward history. A position comes
// back with the whole slot of its token.
//
// A command that meets a fault (a slot beyond its table's capacity) shows
// the message and changes nothing: the grid, the caption and both
// histories stay as they were.
class BrowserLogic {
public:
    explicit BrowserLogic(Session& session);

    // The window becomes active: it loads the grid the session asks for when
    // the request is new (the session's listLoaded is clear).
    void activate();
    // Loads the grid for the session's view kind and current slot; false
    // after a fault (which was shown).
    bool gridLoad();

    void moveBackForward(BrowserMove move);
    // Switches between all individuals and all families.
    void listAll();
    // "FamTree": the family tree of the individual shown, or of the shown
    // family's husband.
    void famTree();
    // "Ancestors": the ancestors chart of the individual shown, or of the
    // shown family's husband (its wife when it names none).
    void ancestors();
    bool ancestorsEnabled() const { return shownPerson() != 0; }
    // Makes the shown grid again (names follow new settings); the history
    // stays as it is.
    void reloadShown();
    // Follows the link of a grid row (row 0 is the heading row).
    void rowClicked(int32_t row);

    const Grid& grid() const { return grid_; }
    // The grid's two shown columns, the heading row first: what Copy all
    // takes and "Save as CSV..." writes.
    TextTable table() const;
    int32_t rowCount() const { return grid_.rowCount(); }
    QString cell(int32_t row, int column) const;
    QString caption() const { return grid_.caption; }
    // Loads that fit the window's height to the grid, counted.
    int fitRequests() const { return fitRequests_; }

    bool backEnabled() const { return backEnabled_; }
    bool forwardEnabled() const { return forwardEnabled_; }
    bool nextPreviousEnabled() const { return nextPreviousEnabled_; }
    bool famTreeEnabled() const { return famTreeEnabled_; }

    const QString& positionToken() const { return positionToken_; }
    const QString& backHistory() const { return backHistory_; }
    const QString& forwardHistory() const { return forwardHistory_; }

private:
    // The individual shown, or the husband (else the wife) of the family
    // shown; 0 for a list or a family without either.
    int32_t shownPerson() const;
    // Shows a record or list: the grid is made first, so a fault leaves
    // everything as it was; then the history moves on.
    void load(ViewKind kind, int32_t slot);
    void commit(Grid grid, ViewKind kind, int32_t slot);
    void setArrows();
    void back();
    void forward();
    void step(int delta);
    void stepThroughResults(int delta);
    void followNote(const QString& note);

    Session& session_;
    Grid grid_;
    ViewKind shownKind_ = ViewKind::None;
    int32_t shownSlot_ = 0;
    QString positionToken_;
    QString backHistory_;
    QString forwardHistory_;
    bool backEnabled_ = false;
    bool forwardEnabled_ = false;
    bool nextPreviousEnabled_ = false;
    bool famTreeEnabled_ = false;
    int fitRequests_ = 0;
};

// The nine-character token of a position.
QString positionTokenFor(ViewKind kind, int32_t slot);

}  // namespace tav
