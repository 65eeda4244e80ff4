// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/CliTest.h"
#include "tests/TreeTestSupport.h"

#include <QDir>

namespace {

// The printed lines of the persons (1 to n) or of the families (the lines
// after them), with only the items that do not depend on the font: a
// person's indIdx, label, childNo and descendant; a family's famIdx, head,
// indSt and first childShown.
QStringList structure(const QStringList& out, bool families)
{
    const QStringList counts = out.value(2).split(',');
    const int persons = counts.value(0).toInt();
    const int first = families ? 3 + persons : 3;
    const int n = families ? counts.value(1).toInt() : persons;
    QStringList lines;
    for (int k = first; k < first + n; ++k)
        lines << out.value(k).section(',', 0, families ? 3 : -5);
    return lines;
}

// Item k of a printed line, counted from its end (-1 the last), so that a
// label's commas do not count: a person's x, width, y, height are -4 to -1.
int item(const QStringList& out, int line, int k)
{
    return out.value(line).section(',', k, k).toInt();
}

}  // namespace

// Checked by hand against shakespeare.ged. Richard Shakespeare (slot 15)
// and his unnamed wife (31) have Henry (16), whose marriage is childless,
// and John (3). John and Mary Arden (2) have eight children, William (1)
// first; William and Anne Hathaway (4) have Susanna (5), Hamnet (6) and
// Judith (7). Susanna and John Hall (20) have Elizabeth (21), whose two
// marriages, to Thomas Nash (22) and John Barnard, are childless; Judith
// and Thomas Quiney (24) have three sons (25 to 27), none with children.
TEST_F(CliTest, TreePrintsTheViewOfEachWalk)
{
    TAV_REQUIRE_SHARED_FILE(path, "shakespeare.ged");
    const QStringList richardToJudith = {R"(15,"SHAKESPEARE, Richard",0,1)",
                                         R"(31,"UNKNOWN,",0,0)",
                                         R"(16,"Henry",1,1)",
                                         R"(3,"John",2,1)",
                                         R"(2,"ARDEN, Mary",0,0)",
                                         R"(1,"William",1,1)",
                                         R"(8,"Joan",2,1)",
                                         R"(9,"Margaret",3,1)",
                                         R"(10,"Gilbert",4,1)",
                                         R"(11,"Joan",5,1)",
                                         R"(12,"Anne",6,1)",
                                         R"(13,"Richard",7,1)",
                                         R"(14,"Edmund",8,1)",
                                         R"(4,"HATHAWAY, Anne",0,0)",
                                         R"(5,"Susanna",1,1)",
                                         R"(6,"Hamnet",2,1)",
                                         R"(7,"Judith",3,1)"};

    // Most descendants: John (15) over Henry (0), William (7) over his
    // siblings, Judith (3) over Susanna (1); Judith's sons have none, so
    // the line ends at the first of them, without a spouse.
    CliResult r = runTavCli({"tree", path, "15"});
    ASSERT_EQ(r.status, 0) << r.err.join('\n').toStdString();
    EXPECT_EQ(r.out.mid(0, 3),
              QStringList({R"("TREEVIEW")", '"' + QDir::cleanPath(path) + '"', "21,4"}));
    EXPECT_EQ(structure(r.out, false),
              richardToJudith +
                  QStringList({R"(24,"QUINEY, Thomas",0,0)", R"(25,"Shakespeare",1,1)",
                               R"(26,"Richard",2,1)", R"(27,"Thomas",3,1)"}));
    EXPECT_EQ(structure(r.out, true), QStringList({"3,1,2,2", "1,4,5,1", "2,6,14,3", "9,17,18,1"}));
    EXPECT_EQ(r.out.last(), QStringLiteral(R"("ENDTREEVIEW")"));
    EXPECT_EQ(r.out.size(), 3 + 21 + 4 + 1);
    // The boxes are laid out: the first row of children one generation gap
    // (80) below the top, whatever the font.
    EXPECT_EQ(item(r.out, 5, -2), 110);
    EXPECT_EQ(runTavCli({"tree", path, "15", "--walk", "first"}).out, r.out)
        << "here everyone's first marriage is the best one";

    // The eldest line: Henry's marriage is childless, so John carries it;
    // then the first child each time, down to Elizabeth's first, childless
    // marriage, shown with its spouse.
    r = runTavCli({"tree", path, "15", "--walk", "eldest"});
    EXPECT_EQ(r.out.value(2), QStringLiteral("20,5"));
    EXPECT_EQ(structure(r.out, false),
              richardToJudith + QStringList({R"(20,"HALL, John",0,0)", R"(21,"Elizabeth",1,1)",
                                             R"(22,"NASH, Thomas",0,0)"}));
    EXPECT_EQ(structure(r.out, true),
              QStringList({"3,1,2,2", "1,4,5,1", "2,6,14,1", "6,15,18,1", "7,19,20,0"}));

    // Elizabeth's marriages are both childless: the best-spouse walk has no
    // family to start with; the first-spouse walk enters the first and
    // names a line child it does not have; the eldest walk shows it alone.
    EXPECT_EQ(runTavCli({"tree", path, "21"}).out.value(2), QStringLiteral("1,0"));
    r = runTavCli({"tree", path, "21", "--walk", "first"});
    EXPECT_EQ(structure(r.out, false),
              QStringList({R"(21,"SHAKESPEARE, Elizabeth",0,1)", R"(22,"NASH, Thomas",0,0)"}));
    EXPECT_EQ(structure(r.out, true), QStringList{"7,1,2,1"});
    r = runTavCli({"tree", path, "21", "--walk", "eldest"});
    EXPECT_EQ(structure(r.out, true), QStringList{"7,1,2,0"});

    // Larger fonts: generation gaps of 125.
    r = runTavCli({"tree", path, "15", "--font-size", "4"});
    EXPECT_EQ(item(r.out, 5, -2), 30 + 125);
}

TEST_F(CliTest, TreeRefusesWhatItCannotShow)
{
    TAV_REQUIRE_SHARED_FILE(path, "shakespeare.ged");
    CliResult r = runTavCli({"tree", path, "32"});
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(r.err, QStringList{"There is no individual 32 in this file."});
    EXPECT_TRUE(r.out.isEmpty());
    EXPECT_EQ(runTavCli({"tree", path, "0"}).err,
              QStringList{"There is no individual 0 in this file."});
    EXPECT_EQ(runTavCli({"tree", path, "1", "--walk", "widest"}).status, 2);
    EXPECT_EQ(runTavCli({"tree", path, "1", "--font-size", "5"}).status, 2);
    EXPECT_EQ(runTavCli({"tree", path, "1", "--walk"}).status, 2);

    // A line of 201 generations passes the tree's 200 families.
    const QString chain = writeFile(tav::test::lineFile(202), "chain.ged");
    r = runTavCli({"tree", chain, "1", "--walk", "eldest"});
    EXPECT_EQ(r.status, 3);
    EXPECT_EQ(r.err, QStringList{"Error no:  9 Subscript out of range"});
    EXPECT_TRUE(r.out.isEmpty());
}
