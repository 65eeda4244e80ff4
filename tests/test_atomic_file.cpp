// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/AtomicFile.h"

#include "tests/QtPrinters.h"
#include "tests/TestSupport.h"
#include "tests/WriteFaults.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <map>

using namespace tav;
using tav::test::WriteFault;

namespace {

QByteArray pattern(char c, int size) { return QByteArray(size, c) + "\n"; }

}  // namespace

TEST(AtomicFileTest, WritesAndReplacesFilesKeepingPermissionsAndLinksOrNamesAMissingFolder)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("view.gds"));
    EXPECT_EQ(writeFileAtomically(path, "first").message(), QString());
    EXPECT_EQ(test::fileBytes(path), QByteArray("first"));

    // A private file stays private when it is replaced.
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    EXPECT_EQ(writeFileAtomically(path, QByteArray()).message(), QString());
    EXPECT_EQ(test::fileBytes(path), QByteArray());
    const QFileDevice::Permissions others = QFileDevice::ReadGroup | QFileDevice::WriteGroup |
                                            QFileDevice::ReadOther | QFileDevice::WriteOther;
    EXPECT_EQ(QFileInfo(path).permissions() & (others | QFileDevice::WriteOwner),
              QFileDevice::WriteOwner);

    // A link (a settings file kept among dotfiles) stays a link to the new bytes.
    const QString link = dir.filePath(QStringLiteral("link.gds"));
    ASSERT_TRUE(QFile::link(path, link));
    EXPECT_EQ(writeFileAtomically(link, "through the link").message(), QString());
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(test::fileBytes(path), QByteArray("through the link"));

    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden | QDir::System),
              QStringList({QStringLiteral("link.gds"), QStringLiteral("view.gds")}))
        << "no temporary file is left behind";

    const QString missing = dir.filePath(QStringLiteral("no/such/folder/tav.htm"));
    EXPECT_EQ(writeFileAtomically(missing, "x").message(),
              QStringLiteral("Cannot save %1: its folder does not exist.").arg(missing));
}

class AtomicFileFaultTest : public ::testing::TestWithParam<WriteFault> {};

TEST_P(AtomicFileFaultTest, AFailedWriteKeepsThePreviousFileAndSaysWhy)
{
    const QByteArray previous = pattern('o', 3000), next = pattern('n', 90000);
    const test::WriteFaultOutcome outcome = test::underWriteFault(
        GetParam(), QStringLiteral("tav.htm"), previous, [&next](const QString& target) {
            return [target, &next] { return writeFileAtomically(target, next).message(); };
        });
    if (!outcome.ran)
        GTEST_SKIP() << outcome.unavailable.toStdString();

    const std::map<WriteFault, const char*> reasons = {
        {WriteFault::DiskFull, "the disk is full"},
        {WriteFault::FileSizeLimit, "the file would pass the file size limit"},
        {WriteFault::ReadOnlyDisk, "the disk is read-only"},
        {WriteFault::ReadOnlyFolder, "there is no permission to write in its folder"},
        {WriteFault::TargetIsFolder, "a folder of that name is in the way"},
        {WriteFault::ReadOnlyFile, "the file is read-only"}};
    EXPECT_TRUE(outcome.message.startsWith(QStringLiteral("Cannot save /")));
    EXPECT_TRUE(
        outcome.message.endsWith(QStringLiteral("/disk/tav.htm: %1.").arg(reasons.at(GetParam()))))
        << outcome.message.toStdString();
    EXPECT_EQ(outcome.after, previous) << "the previous file stays byte for byte";
    EXPECT_EQ(outcome.targetIsFolder, GetParam() == WriteFault::TargetIsFolder);
    EXPECT_EQ(outcome.folder, QStringList(QStringLiteral("tav.htm")))
        << "no temporary file is left behind";
    if (GetParam() != WriteFault::TargetIsFolder) {
        EXPECT_EQ(outcome.retried, QString()) << "the same write works once the fault is gone";
        EXPECT_EQ(outcome.afterRetry, next);
    }
}

INSTANTIATE_TEST_SUITE_P(Faults, AtomicFileFaultTest, ::testing::ValuesIn(test::allWriteFaults()),
                         test::writeFaultTestName);
