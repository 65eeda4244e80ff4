// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace tav {

class RecordStore;

// The "Gedcom header infomation" box: version, date and character set of the
// file's header, each with its word for a missing value.
QStringList headerInformationLines(const RecordStore& records);
QString headerInformationTitle();

}  // namespace tav
