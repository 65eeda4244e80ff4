// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/TestSupport.h"
#include "tests/TreeTestSupport.h"
#include "tree/TreeDrawing.h"
#include "tree/TreeLayout.h"
#include "tree/TreeModel.h"
#include "tree/TreeViewFile.h"

#include <QFile>

#include <cmath>

using namespace tav;

namespace {

// Hana's first marriage, to Ivo, is childless; with Kai "Big" Bo she has
// Lea and Mia, and Lea has Ola with Ned Dunn.
const QByteArray hanaFile = tav::test::familyFile(
    {"Hana /Lee/:F", "Ivo /Ek/:M", "Kai \"Big\" /Bo/:M", "Lea:F", "Mia", "Ned /Dunn/:M", "Ola"},
    {{2, 1, {}}, {3, 1, {4, 5}}, {6, 4, {7}}});

// A view file with one number changed: item `item` of the numbers of line
// `line` (counted from 1), those after the label on a person's line.
QByteArray withNumber(const QByteArray& file, int line, int item, const char* number)
{
    QList<QByteArray> lines = file.split('\n');
    QByteArray& text = lines[line - 1];
    const qsizetype label = text.lastIndexOf("\",");
    const qsizetype start = label < 0 ? 0 : label + 2;
    QList<QByteArray> numbers = text.mid(start).chopped(1).split(',');
    numbers[item] = number;
    text = text.left(start) + numbers.join(',') + '\r';
    return lines.join('\n');
}

}  // namespace

class TreeViewFileTest : public tav::test::TreeModelFixture {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(load(hanaFile));
        gedcomPath = dir.filePath(QStringLiteral("test.ged"));
        viewPath = dir.filePath(QStringLiteral("temp.gds"));
    }

    // A new view from an individual with the best-spouse walk, laid out.
    void build(int32_t individual)
    {
        top(individual);
        model.prepareDescendents3(1, 0, 0);
        layoutManager(model, measure, generationGap(session.settings.FontSize));
    }

    Outcome save() { return treeSaveToFile(model, viewPath); }
    // Reads the view file and shows it, as the window does with a view of
    // the loaded file.
    void read() { showSavedView(model, treeReadFromFile(model, viewPath)); }

    // Every field of the shown slots, and the counts.
    static void expectSameView(const TreeTables& a, const TreeTables& b)
    {
        ASSERT_EQ(a.nTreeInd, b.nTreeInd);
        ASSERT_EQ(a.nTreeFam, b.nTreeFam);
        for (int32_t k = 1; k <= a.nTreeInd; ++k)
            EXPECT_EQ(a.person(k), b.person(k)) << "person " << k;
        for (int32_t k = 1; k <= a.nTreeFam; ++k)
            EXPECT_EQ(a.family(k), b.family(k)) << "family " << k;
    }

    QString gedcomPath;
    QString viewPath;
};

TEST_F(TreeViewFileTest, TheFileHoldsTheViewInItsOwnOrders)
{
    // Worked out by hand: Hana, her second husband Kai and their daughters,
    // in family 2 (her second). Geometry as a layout might leave it.
    model.nTreeInd = 4;
    model.nTreeFam = 1;
    model.person(1) = {1, QStringLiteral("LEE, Hana"), 1, 0, -45, 30, 90, 16};
    model.person(2) = {3, QStringLiteral("BO, Kai \"."), 0, 0, -50, 52, 100, 16};
    model.person(3) = {4, QStringLiteral("Lea"), 1, 1, -49, 110, 30, 16};
    model.person(4) = {5, QStringLiteral("Mia"), 1, 2, 1, 110, 30, 16};
    model.family(1) = {2, 1, 2, -37, 46, 80, 80, 2, 1, 2};
    ASSERT_TRUE(save());
    const QByteArray expected = "\"TREEVIEW\"\r\n\"" + gedcomPath.toUtf8() +
                                "\"\r\n"
                                "4,1\r\n"
                                "1,\"LEE, Hana\",0,1,-45,90,30,16\r\n"
                                "3,\"BO, Kai \".\",0,0,-50,100,52,16\r\n"
                                "4,\"Lea\",1,1,-49,30,110,16\r\n"
                                "5,\"Mia\",2,1,1,30,110,16\r\n"
                                "2,1,2,1,-37,80,46,1\r\n"
                                "\"ENDTREEVIEW\"\r\n";
    EXPECT_EQ(test::fileBytes(viewPath), expected);

    // Read back, the family's child count, gap and spouse number are made
    // again from the file and the font; everything else is as written.
    const TreeTables written = model;
    build(7);
    read();
    expectSameView(model, written);
}

TEST_F(TreeViewFileTest, SavedViewsOpenAgainWhole)
{
    // The top person alone (Ola has no family), saved over a view of three
    // generations: only the second view is kept.
    build(1);
    ASSERT_TRUE(save());
    build(7);
    ASSERT_EQ(model.nTreeInd, 1);
    const TreeTables topOnly = model;
    ASSERT_TRUE(save());
    build(1);
    read();
    expectSameView(model, topOnly);

    // Text before the start marker is skipped.
    writeFile("notes, kept by hand\r\n\"TREEVIEWS\",12\r\n" + test::fileBytes(viewPath),
              "temp.gds");
    build(4);
    read();
    expectSameView(model, topOnly);
}

TEST_F(TreeViewFileTest, ADamagedFileSaysWhyAndChangesNothing)
{
    build(1);
    ASSERT_TRUE(save());
    const QByteArray good = test::fileBytes(viewPath);
    ASSERT_TRUE(good.contains("\r\n6,2\r\n"));
    build(4);
    model.treeSavePrev();
    build(7);
    const TreeTables shown = model;

    const auto replaced = [&](const char* from, const char* to) {
        QByteArray bytes = good;
        return bytes.replace(from, to);
    };
    const char* const endOfFile = "Error no:  62 Input past end of file";
    const char* const mismatch = "Error no:  13 Type mismatch";
    const char* const outOfRange = "Error no:  9 Subscript out of range";
    const struct {
        const char* what;
        QByteArray bytes;
        const char* message;
    } damaged[] = {
        {"no start marker", "\"TREEVIEWS\"\r\n1,0\r\n", endOfFile},
        {"a bad count", replaced("\r\n6,2\r\n", "\r\nsix,2\r\n"), mismatch},
        {"a bad coordinate", replaced(",0,1,", ",0,one,"), mismatch},
        {"an early end", good.left(good.indexOf("\"Mia\"")), endOfFile},
        {"no end marker", good.left(good.indexOf("\"ENDTREEVIEW\"")), endOfFile},
        {"an individual beyond the file", replaced("\r\n4,\"Lea\"", "\r\n8,\"Lea\""), outOfRange},
        {"a family beyond the file", replaced("\r\n2,1,2,", "\r\n4,1,2,"), outOfRange},
        {"more persons than the tree holds", replaced("\r\n6,2\r\n", "\r\n1001,2\r\n"), outOfRange},
        {"a head beyond the view", replaced("\r\n2,1,2,", "\r\n2,7,2,"), outOfRange},
        {"children beyond the view", replaced("\r\n3,3,5,", "\r\n3,3,6,"), outOfRange},
        // Places, sizes and counts that no layout makes (lines 4 to 9 are
        // the persons, 10 and 11 the families).
        {"a place near 2^31", withNumber(good, 5, 2, "2147483000"), outOfRange},
        {"a place at -2^31", withNumber(good, 4, 4, "-2147483648"), outOfRange},
        {"a negative width", withNumber(good, 6, 3, "-5"), outOfRange},
        {"a height of 2^31 - 1", withNumber(good, 7, 5, "2147483647"), outOfRange},
        {"a box reaching past the limit", withNumber(good, 8, 2, "999999999"), outOfRange},
        {"a descendant flag of 5", withNumber(good, 5, 1, "5"), outOfRange},
        {"a line child near 2^31", withNumber(good, 10, 3, "2147483647"), outOfRange},
        {"a second line child below 0", withNumber(good, 11, 7, "-1"), outOfRange},
        {"a row left of -2^31", withNumber(good, 11, 4, "-2147483648"), outOfRange},
        {"a number past 32 bits", withNumber(good, 4, 2, "99999999999"), mismatch},
    };
    for (const auto& file : damaged) {
        writeFile(file.bytes, "temp.gds");
        messages.clear();
        EXPECT_FALSE(session.guarded([&] { read(); })) << file.what;
        EXPECT_EQ(messages.texts(), QStringList{file.message}) << file.what;
        EXPECT_EQ(model.treeInd, shown.treeInd) << file.what;
        EXPECT_EQ(model.treeFam, shown.treeFam) << file.what;
        EXPECT_EQ(model.prevInd, shown.prevInd) << file.what;
        EXPECT_EQ(model.nTreeInd, shown.nTreeInd) << file.what;
    }

    QFile::remove(viewPath);
    messages.clear();
    EXPECT_FALSE(session.guarded([&] { read(); }));
    EXPECT_EQ(messages.texts(), QStringList{"Error no:  53 File not found"});
    EXPECT_EQ(model.treeInd, shown.treeInd);
}

// The furthest places and largest sizes layout can make open and draw:
// every sum the drawing makes of them fits its numbers.
TEST_F(TreeViewFileTest, AViewAtTheEdgeOfWhatLayoutMakesOpensAndDraws)
{
    build(1);
    ASSERT_TRUE(save());
    constexpr int32_t limit = TreeTables::geometryLimit;
    QByteArray edge = withNumber(test::fileBytes(viewPath), 4, 2, "-1000000000");
    edge = withNumber(edge, 4, 5, "1000");
    edge = withNumber(edge, 9, 4, "999999000");
    edge = withNumber(edge, 9, 5, "1000");
    edge = withNumber(edge, 5, 3, "1000000000");
    edge = withNumber(edge, 5, 2, "0");
    writeFile(edge, "temp.gds");
    EXPECT_TRUE(session.guarded([&] { read(); }));
    ASSERT_EQ(model.person(1).x, -limit);
    ASSERT_EQ(model.person(6).y + model.person(6).height, limit);

    const TreeDrawing drawing = treeDrawing(model, session.records, session.settings, 1);
    EXPECT_LE(drawing.bounds.left(), -double(limit));
    EXPECT_GE(drawing.bounds.right(), double(limit));
    EXPECT_GE(drawing.bounds.bottom(), double(limit));
    EXPECT_TRUE(std::isfinite(drawing.bounds.width() + drawing.bounds.height()));
}
