// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/TestSupport.h"

namespace tav::test {

// Four generations above Rose, worked out by hand. Rose (1) is the child of
// Tom (2) and Ann (3); Tom's father is Ned (4), his mother unknown; Ann's
// mother is Eva (5), her father unknown; Ned is the son of Abe (6) and Ida
// (7), and Abe of Old (8). Eva's family as a child names no parent.
//
//   number: 1 Rose, 2 Tom, 3 Ann, 4 Ned, 7 Eva, 8 Abe, 9 Ida, 16 Old; the
//   places 5, 6, 10 to 15 and 17 to 31 stay empty.
//
// Today is 21 Nov 2026: Rose (1990) and Ann (1952) may be living and get no
// years, and Tom and Ann's marriage (1985) no date or place.
inline QByteArray fourGenerations()
{
    return gedcomText({
        // clang-format off
        "0 HEAD",
        "0 @I1@ INDI", "1 NAME Rose /Ash/", "1 SEX F", "1 BIRT", "2 DATE 1990", "1 FAMC @F1@",
        "0 @I2@ INDI", "1 NAME Tom William /Ash/", "1 SEX M", "1 BIRT", "2 DATE 1950", "1 DEAT",
            "2 DATE 2010", "1 FAMC @F2@", "1 FAMS @F1@",
        "0 @I3@ INDI", "1 NAME Ann /Birch/", "1 SEX F", "1 BIRT", "2 DATE 1952", "1 FAMC @F3@",
            "1 FAMS @F1@",
        "0 @I4@ INDI", "1 NAME Ned /Ash/", "1 SEX M", "1 BIRT", "2 DATE 1920", "1 DEAT",
            "2 DATE 1990", "1 FAMC @F4@", "1 FAMS @F2@",
        "0 @I5@ INDI", "1 NAME Eva /Cole/", "1 SEX F", "1 BIRT", "2 DATE 1925", "1 DEAT",
            "2 DATE 2000", "1 FAMC @F6@", "1 FAMS @F3@",
        "0 @I6@ INDI", "1 NAME Abe /Ash/", "1 SEX M", "1 BIRT", "2 DATE 1890", "1 DEAT",
            "2 DATE 1960", "1 FAMC @F5@", "1 FAMS @F4@",
        "0 @I7@ INDI", "1 NAME Ida /Dunn/", "1 SEX F", "1 BIRT", "2 DATE 1895", "1 DEAT",
            "2 DATE 1970", "1 FAMS @F4@",
        "0 @I8@ INDI", "1 NAME Old /Ash/", "1 SEX M", "1 BIRT", "2 DATE 1860", "1 DEAT",
            "2 DATE 1930", "1 FAMS @F5@",
        "0 @F1@ FAM", "1 HUSB @I2@", "1 WIFE @I3@", "1 MARR", "2 DATE 1985", "2 PLAC York",
            "1 CHIL @I1@",
        "0 @F2@ FAM", "1 HUSB @I4@", "1 MARR", "2 DATE 1948", "1 CHIL @I2@",
        "0 @F3@ FAM", "1 WIFE @I5@", "1 CHIL @I3@",
        "0 @F4@ FAM", "1 HUSB @I6@", "1 WIFE @I7@", "1 MARR", "2 DATE 12 JUN 1915",
            "2 PLAC Leeds,Yorkshire,England", "1 CHIL @I4@",
        "0 @F5@ FAM", "1 HUSB @I8@", "1 CHIL @I6@",
        "0 @F6@ FAM", "1 CHIL @I5@",
        "0 TRLR",
        // clang-format on
    });
}

// Cousins who married: Gus (1) and Gina (2) have Carl (3) and Dora (4);
// Carl and Cara (5) have Emil (6), Dirk (7) and Dora have Fay (8); Emil and
// Fay have Kid (9). Gus is the son of Old (10).
//
//   Kid's chart: 1 Kid, 2 Emil, 3 Fay, 4 Carl, 5 Cara, 6 Dirk, 7 Dora,
//   8 Gus, 9 Gina, 14 Gus again (= 8), 15 Gina again (= 9), 16 Old; nothing
//   above 14 and 15 (Old is not repeated at 28).
inline QByteArray cousinsWhoMarried()
{
    return gedcomText({
        // clang-format off
        "0 HEAD",
        "0 @I1@ INDI", "1 NAME Gus /Hart/", "1 BIRT", "2 DATE 1800", "1 DEAT", "2 DATE 1870",
            "1 FAMC @F5@", "1 FAMS @F1@",
        "0 @I2@ INDI", "1 NAME Gina /Lee/", "1 FAMS @F1@",
        "0 @I3@ INDI", "1 NAME Carl /Hart/", "1 FAMC @F1@", "1 FAMS @F2@",
        "0 @I4@ INDI", "1 NAME Dora /Hart/", "1 FAMC @F1@", "1 FAMS @F3@",
        "0 @I5@ INDI", "1 NAME Cara /Moss/", "1 FAMS @F2@",
        "0 @I6@ INDI", "1 NAME Emil /Hart/", "1 FAMC @F2@", "1 FAMS @F4@",
        "0 @I7@ INDI", "1 NAME Dirk /Vos/", "1 FAMS @F3@",
        "0 @I8@ INDI", "1 NAME Fay /Vos/", "1 FAMC @F3@", "1 FAMS @F4@",
        "0 @I9@ INDI", "1 NAME Kid /Hart/", "1 FAMC @F4@",
        "0 @I10@ INDI", "1 NAME Old /Hart/", "1 FAMS @F5@",
        "0 @F1@ FAM", "1 HUSB @I1@", "1 WIFE @I2@", "1 MARR", "2 DATE 1825", "1 CHIL @I3@",
            "1 CHIL @I4@",
        "0 @F2@ FAM", "1 HUSB @I3@", "1 WIFE @I5@", "1 CHIL @I6@",
        "0 @F3@ FAM", "1 HUSB @I7@", "1 WIFE @I4@", "1 CHIL @I8@",
        "0 @F4@ FAM", "1 HUSB @I6@", "1 WIFE @I8@", "1 CHIL @I9@",
        "0 @F5@ FAM", "1 HUSB @I10@", "1 CHIL @I1@",
        "0 TRLR",
        // clang-format on
    });
}

}  // namespace tav::test
