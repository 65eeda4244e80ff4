// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/OffscreenGui.h"
#include "draw/PictureExport.h"
#include "draw/TreeFont.h"
#include "draw/TreePainter.h"
#include "tests/CliTest.h"
#include "tests/TreeTestSupport.h"
#include "tree/TreeDrawing.h"
#include "tree/TreeLayout.h"
#include "tree/TreeModel.h"

#include <QImage>

using namespace tav;
using tav::test::FileFamily;

namespace {

// Ann and Bob with five children; their eldest, Cy, with Dee and two
// grandchildren.
QByteArray twoGenerations()
{
    return tav::test::familyFile({"Ann /Ash/:F", "Bob /Birch/:M", "Cy /Birch/:M", "Di /Birch/:F",
                                  "Ed /Birch/:M", "Flo /Birch/:F", "Gus /Birch/:M", "Dee /Dale/:F",
                                  "Hal /Birch/:M", "Ivy /Birch/:F"},
                                 {FileFamily{2, 1, {3, 4, 5, 6, 7}}, FileFamily{3, 8, {9, 10}}});
}

}  // namespace

class TreeExportTest : public CliTest {
protected:
    // The picture of the loaded file's tree from individual 1 (most
    // descendants, font size 4), as the window and tav-cli export draw it.
    Picture treePictureFromTop()
    {
        ensureOffscreenGui();
        Settings settings;
        settings.FontSize = 4;
        TreeModel model(session.records, session.descendantCache, settings, session.tree,
                        [] { return QDate(2026, 11, 21); });
        const FontMeasure measure(4);
        model.clearArrays(1, 1);
        model.prepareTopPerson(1, measure);
        model.prepareDescendents3(1, 0, 0);
        layoutManager(model, measure, generationGap(4));
        return treePicture(treeDrawing(model, session.records, settings, 0));
    }
};

TEST_F(TreeExportTest, TavCliExportsTheTreeAsTheWindowPaintsIt)
{
    const QString path = writeFile(twoGenerations(), "family.ged");
    const QString svg = dir.filePath(QStringLiteral("tree.svg"));
    CliResult r = runTavCli({QStringLiteral("export"), path, QStringLiteral("1"), svg});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, QStringList{svg});
    // The most-descendants walk from Ann: Bob, her five children, then Cy's
    // family with Dee and their two.
    QStringList texts = test::svgTexts(test::fileBytes(svg));
    texts.sort();
    EXPECT_EQ(texts, QStringList({"ASH, Ann", "BIRCH, Bob", "Cy", "DALE, Dee", "Di", "Ed", "Flo",
                                  "Gus", "Hal", "Ivy"}))
        << "every label, as text";

    // The PNG is the size of the picture drawn of the same tree (font size 4).
    const QString png = dir.filePath(QStringLiteral("tree.PNG"));
    r = runTavCli({QStringLiteral("export"), path, QStringLiteral("1"), png,
                   QStringLiteral("--font-size"), QStringLiteral("4")});
    ASSERT_EQ(r.status, 0);
    ASSERT_TRUE(load(twoGenerations()));
    const Picture picture = treePictureFromTop();
    EXPECT_EQ(QImage(png).size(), pngSize(picture));

    const QString pdf = dir.filePath(QStringLiteral("tree.pdf"));
    r = runTavCli({QStringLiteral("export"), path, QStringLiteral("1"), pdf,
                   QStringLiteral("--walk"), QStringLiteral("eldest")});
    ASSERT_EQ(r.status, 0);
    const QByteArray bytes = test::fileBytes(pdf);
    EXPECT_TRUE(bytes.startsWith("%PDF-"));
    EXPECT_EQ(bytes.count("/Type /Page\n"), 1);

    EXPECT_EQ(runTavCli({QStringLiteral("export"), path, QStringLiteral("1"),
                         dir.filePath(QStringLiteral("tree.jpg"))})
                  .status,
              2)
        << "a kind of picture it cannot write";
    EXPECT_EQ(runTavCli({QStringLiteral("export"), path, QStringLiteral("11"), png}).err,
              QStringList{QStringLiteral("There is no individual 11 in this file.")});
}

// A row too wide for any PNG is refused with exit status 1 (the file kept
// and the message are the export's own). A PNG of a long name's shortened
// label is drawn in the long values' test.
TEST_F(TreeExportTest, ARowTooWideForAPngIsRefusedWithExitStatusOne)
{
    const QString png = dir.filePath(QStringLiteral("tree.png"));
    std::vector<QByteArray> people = {"Ann /Ash/:F", "Bob /Birch/:M"};
    FileFamily family{2, 1, {}};
    for (int k = 1; k <= 60; ++k) {
        people.push_back(QByteArray(600, char('a' + k % 26)) + " /Birch/:M");
        family.children.push_back(k + 2);
    }
    const QString wide = writeFile(tav::test::familyFile(people, {family}), "wide.ged");
    const CliResult r = runTavCli({QStringLiteral("export"), wide, QStringLiteral("1"), png});
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(r.out.isEmpty());
    ASSERT_EQ(r.err.size(), 1);
    EXPECT_TRUE(
        r.err[0].startsWith(QStringLiteral("Cannot save %1: the picture would be ").arg(png)))
        << r.err[0].toStdString();
}
