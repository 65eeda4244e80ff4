// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/ViewKinds.h"

#include <QString>
#include <array>
#include <cstdint>
#include <vector>

namespace tav {

class Session;

// What the record browser's grid holds: a caption, and rows of three cells
// (item, details, and a hidden third cell that the family grid fills with
// each person's slot). Row 0 holds the column headings. A list of all
// records of a kind holds only its heading row and works its other rows out
// when they are asked for, so that lists of 40000 records show at once.
struct Grid {
    QString caption;
    std::vector<std::array<QString, 3>> rows;
    ViewKind listKind = ViewKind::None;  // the list shown, or None for a single record
    int32_t listCount = 0;
    bool fitWindow = false;  // single records fit the window's height to the grid

    bool isList() const { return listKind != ViewKind::None; }
    int32_t rowCount() const { return isList() ? listCount + 1 : int32_t(rows.size()); }
    QString cell(const Session& session, int32_t row, int column) const;
};

// Grids for one record. A slot beyond its table's capacity raises
// SubscriptOutOfRange, so the caller keeps what it showed.
Grid individualGrid(const Session& session, int32_t slot);
Grid familyGrid(const Session& session, int32_t slot);
Grid sourceGrid(const Session& session, int32_t slot);
Grid noteGrid(const Session& session, int32_t slot);
// The list of every record of a list kind.
Grid listGrid(const Session& session, ViewKind kind);

// The grid of a record kind at a slot, or of a list kind.
Grid gridFor(const Session& session, ViewKind kind, int32_t slot);

// "S12", "N3", "F7", "I12": a record number after its kind letter, as the
// program prints it.
QString numberWithLetter(QChar letter, int64_t number);

}  // namespace tav
