// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ViewKinds.h"

#include "core/RecordStore.h"

#include <iterator>

namespace tav {

namespace {

// In the order of the enumeration.
const char* const viewKindCodes[] = {"",        "IND",     "FAM",     "SOU",     "NOT",
                                     "ALLINDS", "ALLFAMS", "ALLSOUR", "ALLNOTS", "ALLOCCU",
                                     "ALLBIRT", "ALLDEAT", "ALLMARR"};
static_assert(std::size(viewKindCodes) == size_t(ViewKind::AllMarriages) + 1);

const char* const browserMoveKeys[] = {"Back", "Forward", "Previous", "Next"};

}  // namespace

QString viewKindCode(ViewKind kind) { return QString::fromLatin1(viewKindCodes[size_t(kind)]); }

ViewKind viewKindFromCode(QStringView code)
{
    for (size_t k = 1; k < std::size(viewKindCodes); ++k) {
        if (code == QLatin1String(viewKindCodes[k]))
            return ViewKind(k);
    }
    return ViewKind::None;
}

int32_t recordCount(const RecordStore& records, ViewKind kind)
{
    switch (kind) {
    case ViewKind::Individual: return records.individualCount();
    case ViewKind::Family: return records.familyCount();
    case ViewKind::Source: return records.sourceCount();
    case ViewKind::Note: return records.noteCount();
    default: return 0;
    }
}

QString recordNoun(ViewKind kind)
{
    switch (kind) {
    case ViewKind::Family: return QStringLiteral("family");
    case ViewKind::Source: return QStringLiteral("source");
    case ViewKind::Note: return QStringLiteral("note");
    default: return QStringLiteral("individual");
    }
}

bool namesRecord(const RecordStore& records, ViewKind kind, int64_t slot)
{
    return slot >= 1 && slot <= recordCount(records, kind);
}

QString noSuchRecordText(ViewKind kind, const QString& number)
{
    return QStringLiteral("There is no %1 %2 in this file.").arg(recordNoun(kind), number);
}

QString browserMoveKey(BrowserMove move)
{
    return QString::fromLatin1(browserMoveKeys[size_t(move)]);
}

}  // namespace tav
