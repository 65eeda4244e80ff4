// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QStringList>

namespace tav::test {

// What an HTML checker would object to in a page of the HTML reports; none
// for a valid page.
QStringList htmlProblems(const QByteArray& page);

}  // namespace tav::test
