// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>
#include <cstdint>

namespace tav {

class RecordStore;
struct Settings;

// Where a person stands in the tree, which decides how much of the name the
// box shows.
enum class TreeLabelRole {
    TopOrSpouse,  // the top person and the spouses: surname, first name, second initial
    Child,        // children: first name and second initial, unless ViewSurnames
};

// The text in a person's box: the name as the role shows it, followed by one
// blank and the person's years when ViewDates is on and there are years to
// show. "?" for an empty place (individual 0).
QString treeLabel(const RecordStore& records, int32_t individual, TreeLabelRole role,
                  const Settings& settings, QDate today);

}  // namespace tav
