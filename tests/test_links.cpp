// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GedcomLoading.h"
#include "bench/GedcomGenerator.h"
#include "calc/DescendantCounting.h"
#include "tests/TestSupport.h"
#include "windowlogic/browser/RecordGrids.h"

using namespace tav;
using tav::test::gedcomText;

namespace {

// Adam and Eve, their son Cain, his son Enoch (who has no mother in the
// file); the records in the order `order` gives them.
QByteArray firstFamily(const std::vector<int>& order)
{
    const std::vector<std::vector<const char*>> records = {
        {"0 @I1@ INDI", "1 NAME Adam /A/", "1 SEX M", "1 FAMS @F1@"},
        {"0 @I5@ INDI", "1 NAME Eve /B/", "1 SEX F", "1 FAMS @F1@"},
        {"0 @I9@ INDI", "1 NAME Cain /A/", "1 SEX M", "1 FAMC @F1@", "1 FAMS @F2@"},
        {"0 @I12@ INDI", "1 NAME Enoch /A/", "1 SEX M", "1 FAMC @F2@"},
        {"0 @F1@ FAM", "1 HUSB @I1@", "1 WIFE @I5@", "1 CHIL @I9@"},
        {"0 @F2@ FAM", "1 HUSB @I9@", "1 CHIL @I12@"}};
    QByteArray text;
    for (int r : order) {
        for (const char* line : records[size_t(r)])
            text += QByteArray(line) + "\n";
    }
    return text;
}

}  // namespace

class LinksTest : public tav::test::SessionTest {
protected:
    // The relationship both ways and the descendant totals of both, of two
    // people given by their cross-references.
    QStringList answers(const QString& xrefA, const QString& xrefB)
    {
        const RecordStore& r = session.records;
        DescendantCache& c = session.descendantCache;
        const int32_t a = r.indIndexFromId(xrefA), b = r.indIndexFromId(xrefB);
        const auto totals = [&](int32_t slot) {
            return QStringLiteral("%1 %2 %3")
                .arg(countDescendants(r, c, slot))
                .arg(countDescendantSpouses(r, c, slot))
                .arg(countGenerations(r, c, slot));
        };
        return {relate(a, b), relate(b, a), totals(a), totals(b)};
    }
};

TEST_F(LinksTest, RecordsOutOfOrderLinkAsInAscendingOrder)
{
    ASSERT_TRUE(load(firstFamily({0, 1, 2, 3, 4, 5})));
    const QStringList ascending = answers("I12", "I1");

    // Individuals 9, 12, 5, 1, then family 2 before family 1.
    ASSERT_TRUE(load(firstFamily({2, 3, 1, 0, 5, 4})));
    EXPECT_TRUE(messages.entries.empty());
    const RecordStore& r = session.records;
    EXPECT_EQ(spouseFamily(3, 1), 2) << "Eve's family F1 lies in slot 2";
    EXPECT_EQ(childFamily(1), 2);
    EXPECT_EQ(fam(2).husband.slot, 4);
    EXPECT_EQ(fam(2).wife.slot, 3);
    EXPECT_EQ(child(2, 1), 1);
    EXPECT_EQ(child(1, 1), 2);
    EXPECT_EQ(r.husbandOf(fam(1)), 1);
    EXPECT_EQ(answers("I12", "I1"), ascending);
    EXPECT_EQ(answers("I1", "I5"), (QStringList{"Adam /A/ is the husband of Eve /B/\n\n"
                                                "Eve /B/ is the wife of Adam /A/\n\n"
                                                "(Blood relations only)",
                                                relate(3, 4), "2 2 2", "2 2 2"}));
}

TEST_F(LinksTest, ALinkToRecordZeroCountsAndAnUnwrittenLinkIsNone)
{
    // Zed @I0@ and Wyn @I1@ with their son Kit in family @F0@; Lone has no
    // parents; family @F1@ has a wife and no husband.
    ASSERT_TRUE(load(gedcomText({"0 @I0@ INDI", "1 NAME Zed /Zero/",   "1 SEX M",     "1 FAMS @F0@",
                                 "0 @I1@ INDI", "1 NAME Wyn /Zero/",   "1 SEX F",     "1 FAMS @F0@",
                                 "0 @I2@ INDI", "1 NAME Kit /Zero/",   "1 SEX M",     "1 FAMC @F0@",
                                 "0 @I3@ INDI", "1 NAME Lone /Other/", "1 SEX F",     "1 FAMS @F1@",
                                 "0 @F0@ FAM",  "1 HUSB @I0@",         "1 WIFE @I1@", "1 CHIL @I2@",
                                 "0 @F1@ FAM",  "1 WIFE @I3@"})));
    session.settings.SurnamePosn = 2;
    const Grid kit = individualGrid(session, 3);
    ASSERT_EQ(kit.rows.size(), 10u);
    EXPECT_EQ(kit.rows[8][0], QStringLiteral("Famc"));
    EXPECT_EQ(kit.rows[8][1], QStringLiteral(" 1"));
    EXPECT_EQ(relate(3, 1), QStringLiteral("Kit /Zero/ is son of Zed /Zero/\n\n"
                                           "Zed /Zero/ is father of Kit /Zero/)\n\n"
                                           "(Blood relations only)"));
    EXPECT_EQ(countDescendants(session.records, session.descendantCache, 1), 1);

    EXPECT_FALSE(individualGrid(session, 4).rows[8][0].startsWith(QStringLiteral("Famc")));
    EXPECT_EQ(relate(4, 3), QStringLiteral("No relationship found\n\n(Blood relations only)"))
        << "Lone has no parents: nobody's sister";

    const Grid lone = familyGrid(session, 2);
    EXPECT_EQ(lone.rows[2], (std::array<QString, 3>{"Husband", "?", "0"}))
        << "no HUSB line, though @I0@ exists";
    EXPECT_EQ(lone.rows[3], (std::array<QString, 3>{"Wife", "OTHER, Lone", "4"}));
    EXPECT_EQ(fam(2).husband.slot, 0);
    EXPECT_EQ(relate(4, 1), QStringLiteral("No relationship found\n\n(Blood relations only)"));
}

TEST_F(LinksTest, ShuffledAndOrderedGeneratedFilesAgree)
{
    GeneratorOptions options;
    options.individuals = 3000;
    options.seed = 11;
    const auto sample = [this] {
        std::vector<QStringList> all;
        for (int32_t id = 1; id <= 3000; id += 97)
            all.push_back(
                answers(QStringLiteral("I%1").arg(id), QStringLiteral("I%1").arg(3000 - id)));
        return all;
    };
    ASSERT_TRUE(load(generateGedcom(options), "ordered.ged"));
    const std::vector<QStringList> ordered = sample();
    options.shuffled = true;
    ASSERT_TRUE(load(generateGedcom(options), "shuffled.ged"));
    EXPECT_NE(session.records.individual(1).id, 1) << "the records are out of order";
    EXPECT_EQ(session.records.individualCount(), 3000);
    EXPECT_EQ(sample(), ordered);
}
