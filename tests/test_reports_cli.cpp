// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/CliTest.h"

using namespace tav;

// tav-cli report on the real files. The figures were counted in the files
// themselves with grep and awk, as the comments say.
class ReportCliTest : public CliTest {
protected:
    CliResult report(const QString& file, const char* kind) const
    {
        return runTavCli({QStringLiteral("report"), file, QLatin1String(kind)});
    }
};

TEST_F(ReportCliTest, StatisticsOfKennedy)
{
    TAV_REQUIRE_SHARED_FILE(path, "kennedy.ged");
    const CliResult printed = report(path, "Basic");
    EXPECT_EQ(printed.status, 0);
    // "1 SEX M" and "1 SEX F" under INDI records; "0 @Sn@ SOUR" and "0 @F" lines.
    EXPECT_EQ(printed.out.mid(0, 8),
              QStringList({"File: " + path, "Individuals: 208", "Males: 115", "Females: 93",
                           "Sex unknown: 0", "Families: 75", "Sources: 78", "Notes: 0"}));
    EXPECT_FALSE(printed.out.join(QString()).contains(u'\r')) << "CR LF prints as a newline";
}

TEST_F(ReportCliTest, SurnamesOfRoyal92)
{
    TAV_REQUIRE_SHARED_FILE(path, "royal92.ged");
    const QStringList out = report(path, "GivenNames").out;
    // Surnames between the slashes of INDI names, lower-cased and sorted -u:
    // 421; 1867 names with nothing between them ("Albert//"); 70 /Hanover/.
    EXPECT_EQ(out.value(2), QStringLiteral("Surnames: 421 distinct"));
    EXPECT_EQ(out.value(3), QStringLiteral("1867\t(no surname)"));
    EXPECT_EQ(out.value(4), QStringLiteral("70\tHanover"));
}

TEST_F(ReportCliTest, IntegrityOfRealFiles)
{
    TAV_REQUIRE_SHARED_FILE(royal, "royal92.ged");
    TAV_REQUIRE_SHARED_FILE(bourbon, "bourbon.ged");
    TAV_REQUIRE_SHARED_FILE(shakespeare, "shakespeare.ged");
    // @I220@: BIRT 1819, DEAT 27 MAR 1819; @I2948@: BIRT 1941, DEAT 1906.
    const QStringList royalLines = report(royal, "GedcomIntegrity").out;
    const qsizetype at = royalLines.indexOf(QStringLiteral("Death before birth: 2"));
    ASSERT_GE(at, 0);
    EXPECT_EQ(royalLines.mid(at + 1, 2),
              QStringList({"  HANOVER, Charlotte Augusta Louisa (220) @I220@: born 1819, died 27 "
                           "MAR 1819",
                           "  BRAND, Henry (2948) @I2948@: born 1941, died 1906"}));
    // @I32@ has FAMC @F16@ and then FAMC @F15@; @F16@ lists it as CHIL.
    EXPECT_TRUE(report(bourbon, "GedcomIntegrity")
                    .out.contains("  ? & DE PROVENCE, Marguerite (16) @F16@: CHIL CAPET, Philippe "
                                  "III (32) @I32@, but that person's last FAMC names @F15@"));
    // Its eight dates with ABT, BEF or AFT are GEDCOM dates: no problem. Of
    // Royal92's dates, those without a year and a range written as a dual
    // year are no GEDCOM dates.
    EXPECT_EQ(report(shakespeare, "GedcomIntegrity").out.mid(1),
              QStringList({"", "No problems found."}));
    EXPECT_TRUE(royalLines.contains("Dates that are not GEDCOM dates: 4"));
    EXPECT_TRUE(
        royalLines.contains("  STUART, Catherine Laura (716) @I716@: birth date \"10 JAN\""));
    EXPECT_TRUE(
        royalLines.contains("  , William_II Rufus (1384) @I1384@: birth date \"1056/1060\""));
}

TEST_F(ReportCliTest, AnUnknownKindIsAUsageError)
{
    const QString path = writeFile(tav::test::gedcomText({"0 @I1@ INDI"}), "one.ged");
    const CliResult printed = report(path, "Integrity");
    EXPECT_EQ(printed.status, 2);
    EXPECT_TRUE(printed.out.isEmpty());
    EXPECT_TRUE(printed.err.first().contains(QStringLiteral("\"Integrity\" is not a report")));
    EXPECT_EQ(report(path, "GedcomIntegrity").out.last(), QStringLiteral("No problems found."));
}
