// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QStringList>

namespace tav::test {

// What an HTML checker would object to in a page of the HTML reports; none
// for a valid page.
QStringList htmlProblems(const QByteArray& page);

// The headings, paragraphs and notes of a page's main part, one line each, as
// a reader sees them: indented by 4 for every list of children they stand in,
// marriage lines and paragraph notes by 2 more.
QStringList mainLines(const QByteArray& page);

}  // namespace tav::test
