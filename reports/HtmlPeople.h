// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/Names.h"

#include <QDate>
#include <QLatin1StringView>
#include <QString>
#include <cstdint>

namespace tav {

class RecordStore;
struct Family;
struct Individual;

// What the HTML reports share: the page around their content, and people
// and marriages written the same way on every page.

// The page up to and with <body>: the HTML5 doctype, the language, UTF-8,
// the title and the stylesheet (the rules every report uses, then its own).
// The title is escaped here.
QString htmlPageStart(const QString& title, QLatin1StringView ownStyle);
// The footer naming the file and the day, and the end of the page.
QString htmlPageEnd(const RecordStore& records, QDate today);

// A place as a reader writes it, its parts (town, county, country) each
// followed by a comma and a blank: "Chapel Royal, St. James Palace, England"
// for "Chapel Royal,St. James Palace,England".
QString placeText(QStringView place);

// People as the reports write them, under the privacy rule of personYears:
// people who may be living (born less than 100 years ago, no death known)
// get no years, and their marriages no date or place.
class HtmlPeople {
public:
    HtmlPeople(const RecordStore& records, NameStyle style, QDate today);

    // The surname styled and placed, the given part as written; a name that
    // lacks one of the two is the other alone, without a stray comma. Runs
    // of blanks are one, as a page shows them anyway. Not escaped.
    QString name(int32_t slot) const;
    // " <span class="years">(b.1850  d.1910)</span>", or "" when there are
    // no years to show.
    QString years(int32_t slot) const;
    // ", DATE, PLACE" of a family's marriage (escaped), each part only when
    // known; "" when the marriage is private (see marriageShown).
    QString marriageDetails(const Family& family, int32_t husband, int32_t wife) const;

    bool mayBeLiving(const Individual& person) const;

private:
    // A marriage of someone who may be living, or a recent one of someone
    // whose death is not recorded, keeps its date and place private.
    bool marriageShown(const Family& family, int32_t one, int32_t other) const;

    const RecordStore& records_;
    NameStyle style_;
    QDate today_;
};

}  // namespace tav
