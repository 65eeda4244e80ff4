// SPDX-License-Identifier: GPL-3.0-or-later
// What the fuzz targets of fuzz/ found, each kept as the input that showed
// it, so the fault stays fixed.
#include "calc/Dates.h"
#include "calc/Names.h"
#include "core/Fault.h"
#include "reports/HtmlAncestorsReport.h"
#include "reports/HtmlDescendantsReport.h"
#include "reports/ReportKinds.h"
#include "settings/RegFile.h"
#include "tests/TestSupport.h"

using namespace tav;
using tav::test::gedcomText;

namespace {

RuntimeFault::Number faultOf(const std::function<void()>& run)
{
    try {
        run();
    } catch (const RuntimeFault& fault) {
        return fault.number();
    }
    return RuntimeFault::Number(0);
}

}  // namespace

class FuzzFindingTest : public test::SessionTest {};

// fuzz-dates: a year at the end of the 32-bit range made the age
// subtraction overflow (undefined behaviour). Ages and spans out of range
// are now the Overflow fault of 32-bit arithmetic; every other age stays.
TEST_F(FuzzFindingTest, AgesOfYearsAtTheEndsOfTheRangeOverflowInsteadOfWrapping)
{
    QString label;
    EXPECT_EQ(faultOf([&] { calcAge(u" -2147483648", u"", label, QDate(1889, 12, 31)); }),
              RuntimeFault::Overflow);
    EXPECT_EQ(faultOf([&] { calcAge(u"-2147483648", u"2147483647", label, QDate()); }),
              RuntimeFault::Overflow);
    EXPECT_EQ(faultOf([] { yearsBetween(u"2147483647", u"-2147483648"); }), RuntimeFault::Overflow);
    // The last age that fits is still given.
    EXPECT_EQ(calcAge(u"-2147483647", u"0", label, QDate()), 2147483647);
    EXPECT_EQ(yearsBetween(u"-2147483647", u"0"), 2147483647);
    EXPECT_EQ(calcAge(u"0", u"-2147483648", label, QDate()), -2147483647 - 1);
}

// fuzz-gedcom: a date whose number does not fit in 32 bits ("5555...5
// 1932": blanks inside a number are skipped) made parseDate's Overflow
// escape the text reports, which never fault. Such a date cannot be read:
// the integrity report lists it, the other reports leave it out, and a
// person's years label has no year for it.
TEST_F(FuzzFindingTest, ADateBeyondThirtyTwoBitsIsUnreadableInTheReportsNotAFault)
{
    ASSERT_TRUE(load(gedcomText({"0 @I1@ INDI", "1 NAME Ann /Long/", "1 SEX F", "1 BIRT",
                                 "2 DATE     5555555555555555555555555555   1932", "1 DEAT",
                                 "2 DATE 1990", "0 @I2@ INDI", "1 NAME Ben /Long/", "1 BIRT",
                                 "2 DATE 12 MAR 1850", "1 DEAT", "2 DATE 3 APR 99999999999"})));
    for (ReportKind kind : {ReportKind::Basic, ReportKind::GivenNames, ReportKind::ChildNaming,
                            ReportKind::GedcomIntegrity})
        EXPECT_NO_THROW(reportText(session, kind)) << reportKindText(kind).toStdString();
    const QString integrity = reportText(session, ReportKind::GedcomIntegrity);
    EXPECT_TRUE(integrity.contains(QStringLiteral("Dates that are not GEDCOM dates: 2\r\n"
                                                  "  LONG, Ann (1) @I1@: birth date "
                                                  "\"5555555555555555555555555555   1932\"\r\n"
                                                  "  LONG, Ben (2) @I2@: death date "
                                                  "\"3 APR 99999999999\"")))
        << integrity.toStdString();
    EXPECT_EQ(personYears(session.records, 1, session.today()), QStringLiteral("(d.1990)"));
    EXPECT_EQ(personYears(session.records, 2, session.today()), QStringLiteral("(b.1850)"));
    // The record browser's age reports the Overflow, as 32-bit arithmetic does.
    QString label;
    EXPECT_EQ(faultOf([&] { calcAge(ind(1).birthDate, QString(), label, session.today()); }),
              RuntimeFault::Overflow);
}

// fuzz-gedcom: the same date past 32 bits, on a parent whose marriage the
// HTML pages weigh for privacy, made the Overflow escape both pages (and
// abort the viewer and tav-cli); a year near the bottom of the range made
// the age of that test overflow. Neither year can be read or shown there.
TEST_F(FuzzFindingTest, ADateBeyondThirtyTwoBitsIsNoYearOnTheHtmlPages)
{
    ASSERT_TRUE(load(gedcomText({"0 @I1@ INDI", "1 NAME John /Smith/", "1 FAMC @F1@",
                                 "0 @I2@ INDI", "1 NAME Old /Smith/", "1 BIRT",
                                 "2 DATE 99999999999", "1 FAMS @F1@", "0 @I3@ INDI",
                                 "1 NAME Mary /Jones/", "1 BIRT", "2 DATE -2147483640",
                                 "1 FAMS @F1@", "0 @F1@ FAM", "1 HUSB @I2@", "1 WIFE @I3@",
                                 "1 CHIL @I1@", "1 MARR", "2 DATE 1990"})));
    QByteArray ancestors, descendants;
    EXPECT_NO_THROW(ancestors = htmlAncestorsReport(session.records, session.nameStyle(),
                                                    session.today(), 1, 3));
    EXPECT_NO_THROW(descendants = htmlDescendantsReport(session.records, session.descendantCache,
                                                        session.nameStyle(), session.today(), 2));
    for (const QByteArray& page : {ancestors, descendants}) {
        EXPECT_TRUE(page.contains("SMITH, Old")) << page.toStdString();
        EXPECT_FALSE(page.contains("99999999999")) << page.toStdString();
        EXPECT_TRUE(page.contains("</html>"));
    }
}

// fuzz-settings: a UTF-16 settings file with half of a surrogate pair in a
// key's name was written out with the name changed and the keys in another
// order, so the file Tav wrote read back different. The half pair reads as
// U+FFFD, as invalid UTF-8 does, and what is written reads back the same.
TEST(FuzzFindingSettings, HalfASurrogatePairReadsAsAReplacementCharacter)
{
    const QString text = QStringLiteral("Windows Registry Editor Version 5.00\n\n"
                                        "[HKEY_CURRENT_USER\\Software\\Wendrake\\Tav\\General]\n"
                                        "\"SurnameStyle\"=dword:00000003\n\n"
                                        "[HKEY_CURRENT_USER\\Software\\Wendrake") +
                         QChar(0xD800) +
                         QStringLiteral("Tav\\Window]\n\"MainTop\"=dword:00000032\n");
    QByteArray bytes("\xFF\xFE");
    bytes.append(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);

    RegFile file{QString()};
    EXPECT_TRUE(file.parse(bytes).isEmpty());
    EXPECT_NE(file.value(QStringLiteral("HKEY_CURRENT_USER\\Software\\Wendrake") +
                             QChar(QChar::ReplacementCharacter) + QStringLiteral("Tav\\Window"),
                         QStringLiteral("MainTop")),
              nullptr);
    const QByteArray written = file.text();
    RegFile reread{QString()};
    EXPECT_TRUE(reread.parse(written).isEmpty());
    EXPECT_EQ(reread.text(), written);
}
