// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/OffscreenGui.h"
#include "draw/PictureExport.h"
#include "draw/TreePainter.h"
#include "tests/TestSupport.h"
#include "tests/TreeTestSupport.h"
#include "tests/WriteFaults.h"
#include "windowlogic/tree/TreeWindowLogic.h"

#include <QDir>
#include <QFileInfo>

using namespace tav;
using tav::test::WriteFault;

namespace {

// What the tree window writes: a saved view, the HTML report and a picture.
enum class Output { SavedView, HtmlReport, Picture };

using OutputFault = std::tuple<Output, WriteFault>;

// The file each output writes, and its name in the test's name.
const char* const outputFiles[] = {"temp.gds", "tav.htm", "tree.png"};
const char* const outputNames[] = {"SavedView", "HtmlReport", "Picture"};

QString outputFileName(Output output) { return QString::fromLatin1(outputFiles[int(output)]); }

// Ann and Bob with three children, one of whom has a son.
const QByteArray family =
    tav::test::familyFile({"Ann /Hale/:F", "Bob /Moss/:M", "Cy", "Di", "Ed", "Flo /Kent/:F", "Gus"},
                          {{2, 1, {3, 4, 5}}, {3, 6, {7}}});

std::string outputFaultName(const ::testing::TestParamInfo<OutputFault>& info)
{
    const auto [output, fault] = info.param;
    return std::string(outputNames[int(output)]) + test::writeFaultName(fault);
}

}  // namespace

class OutputWriteFaultTest : public test::SessionTest,
                             public ::testing::WithParamInterface<OutputFault> {};

// The window writes into the working folder, which the fault has made
// unwritable: the file the user had stays byte for byte, the message names
// it and the reason, and the same command works once the fault is gone.
TEST_P(OutputWriteFaultTest, AFailedWriteKeepsTheUsersFileAndSaysWhy)
{
    const auto [output, fault] = GetParam();
    ensureOffscreenGui();
    ASSERT_TRUE(load(family));
    session.curInd = 2;
    const QByteArray previous = "the file the user had, " + QByteArray(4000, 'x') + '\n';
    QByteArray written;

    const test::WriteFaultOutcome outcome =
        test::underWriteFault(fault, outputFileName(output), previous, [&](const QString& target) {
            auto tree = std::make_shared<TreeWindowLogic>(
                session, [](int) { return std::make_unique<test::StubMeasure>(); });
            tree->activate();
            return [this, tree, target, output] {
                QDir::setCurrent(QFileInfo(target).absolutePath());
                messages.clear();
                switch (output) {
                case Output::SavedView: tree->run(TreeCommand::SaveView); break;
                case Output::HtmlReport: tree->run(TreeCommand::HtmlReport); break;
                case Output::Picture:
                    return exportPicture(treePicture(tree->outputDrawing()), target).message();
                }
                EXPECT_LE(messages.entries.size(), 1u);
                return messages.texts().value(0);
            };
        });
    if (!outcome.ran)
        GTEST_SKIP() << outcome.unavailable.toStdString();

    EXPECT_TRUE(outcome.message.startsWith(QStringLiteral("Cannot save /")))
        << outcome.message.toStdString();
    EXPECT_TRUE(outcome.message.contains(QStringLiteral("/disk/") + outputFileName(output) +
                                         QStringLiteral(": ")))
        << outcome.message.toStdString();
    EXPECT_EQ(outcome.after, previous) << "the previous file stays byte for byte";
    EXPECT_EQ(outcome.folder, QStringList(outputFileName(output)))
        << "no temporary file is left behind";
    if (fault != WriteFault::TargetIsFolder) {
        EXPECT_EQ(outcome.retried, QString()) << "the same command works once the fault is gone";
        EXPECT_NE(outcome.afterRetry, previous);
        EXPECT_FALSE(outcome.afterRetry.isEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(Outputs, OutputWriteFaultTest,
                         ::testing::Combine(::testing::Values(Output::SavedView, Output::HtmlReport,
                                                              Output::Picture),
                                            ::testing::ValuesIn(test::allWriteFaults())),
                         outputFaultName);
