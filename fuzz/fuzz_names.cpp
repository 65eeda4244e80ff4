// SPDX-License-Identifier: GPL-3.0-or-later
// Fuzz target: a GEDCOM name shown with every flag set, in the style the
// input chooses (styles and positions outside the settings' range too).
#include "calc/Names.h"
#include "fuzz/FuzzSupport.h"

using namespace tav;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::FuzzInput input(data, size);
    NameStyle style;
    style.surnameStyle = int32_t(input.byte() % 8);  // 1 to 6, and 0 and 7 beyond them
    style.surnamePosn = int32_t(input.byte() % 3);
    const QString name = input.textUpTo('\0');
    // No name may fault: the grids and lists show every name of a file.
    for (int flags = 0; flags < 64; ++flags)
        formatName(name, flags, style);
    ordinalWord(int32_t(name.size()) - 5, QStringLiteral("ST"));
    ordinalWord(int32_t(name.size()), QStringLiteral("ONCE"));
    return 0;
}
