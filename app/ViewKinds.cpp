#include "app/ViewKinds.h"

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

QString browserMoveKey(BrowserMove move)
{
    return QString::fromLatin1(browserMoveKeys[size_t(move)]);
}

}  // namespace tav
