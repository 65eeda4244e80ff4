// SPDX-License-Identifier: GPL-3.0-or-later
// Files that other programs change while Tav reads or writes them.
#include "app/GedcomLoading.h"
#include "bench/GedcomGenerator.h"
#include "settings/RegistryStore.h"
#include "tests/TestSupport.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>

using namespace tav;

class FilesUnderfootTest : public test::SessionTest {};

// Another program shortens and rewrites a large file in place while tav-cli
// reads it: each run loads what it read or says why it could not, and none
// crashes (a memory-mapped file that shrinks would end it with SIGBUS).
TEST_F(FilesUnderfootTest, AFileRewrittenWhileItIsReadGivesALoadOrAMessageEveryTime)
{
    GeneratorOptions options;
    options.individuals = 40000;
    const QString path = writeFile(generateGedcom(options), "changing.ged");
    QProcess rewriter;
    rewriter.start(QStringLiteral(TAV_TEST_REWRITE_FILE), {path});
    ASSERT_TRUE(rewriter.waitForReadyRead(30000)) << "the rewriting program did not start";

    const QRegularExpression caption(
        QStringLiteral("^%1 \\((\\d+) individuals, (\\d+) families\\)$")
            .arg(QRegularExpression::escape(path)));
    int whole = 0, partial = 0, refused = 0;
    for (int run = 0; run < 200; ++run) {
        QProcess cli;
        cli.start(QStringLiteral(TAV_CLI_PROGRAM), {QStringLiteral("info"), path});
        ASSERT_TRUE(cli.waitForFinished(120000)) << "run " << run << " did not end";
        ASSERT_EQ(cli.exitStatus(), QProcess::NormalExit) << "run " << run << " crashed";
        const QStringList out = QString::fromUtf8(cli.readAllStandardOutput()).split('\n');
        const QString err = QString::fromUtf8(cli.readAllStandardError());
        if (cli.exitCode() == 0) {
            const QRegularExpressionMatch match = caption.match(out.value(0));
            ASSERT_TRUE(match.hasMatch()) << "run " << run << ": " << out.value(0).toStdString();
            (match.captured(1).toInt() == 40000 ? whole : partial)++;
        } else {
            ASSERT_EQ(cli.exitCode(), 1) << "run " << run << ": " << err.toStdString();
            EXPECT_TRUE(err.startsWith(QStringLiteral("Cannot open %1: ").arg(path)))
                << err.toStdString();
            ++refused;
        }
    }
    rewriter.closeWriteChannel();
    EXPECT_TRUE(rewriter.waitForFinished(30000));
    EXPECT_GT(partial, 0) << "the file was never read while it changed";
    RecordProperty("whole", whole);
    RecordProperty("partial", partial);
    RecordProperty("refused", refused);
}

// Two viewers close at the same moment, each saving its settings: at every
// moment the file is one viewer's whole file, never a mix, and it parses.
TEST_F(FilesUnderfootTest, TwoViewersSavingAtOnceLeaveOneWholeSettingsFile)
{
    const auto save = [](const QString& file, int tag, int times) {
        auto viewer = std::make_unique<QProcess>();
        viewer->start(QStringLiteral(TAV_TEST_SAVE_SETTINGS),
                      {file, QString::number(tag), QString::number(times)});
        return viewer;
    };
    // What each viewer writes when it is alone.
    QByteArray alone[2];
    for (int tag : {0, 1}) {
        const QString file = dir.filePath(QStringLiteral("alone%1.reg").arg(tag));
        const auto viewer = save(file, tag + 1, 1);
        ASSERT_TRUE(viewer->waitForFinished(30000) && viewer->exitCode() == 0);
        alone[tag] = test::fileBytes(file);
        ASSERT_FALSE(alone[tag].isEmpty());
    }
    ASSERT_NE(alone[0], alone[1]);

    const QString file = dir.filePath(QStringLiteral("Tav.reg"));
    int wins[2] = {0, 0}, looks = 0;
    for (int round = 0; round < 100; ++round) {
        const auto first = save(file, 1, 3);
        const auto second = save(file, 2, 3);
        while (first->state() != QProcess::NotRunning || second->state() != QProcess::NotRunning) {
            first->waitForFinished(1);
            second->waitForFinished(1);
            // Looked at while both write: a whole file of one of them, or
            // (in the first round) no file yet.
            const QByteArray now = test::fileBytes(file);
            ++looks;
            ASSERT_TRUE(now == alone[0] || now == alone[1] || (round == 0 && now.isEmpty()))
                << "round " << round << " shows a mixed file:\n"
                << now.toStdString();
        }
        ASSERT_EQ(first->exitCode(), 0) << first->readAllStandardError().toStdString();
        ASSERT_EQ(second->exitCode(), 0) << second->readAllStandardError().toStdString();
        const QByteArray after = test::fileBytes(file);
        ASSERT_TRUE(after == alone[0] || after == alone[1]) << "round " << round;
        ++wins[after == alone[0] ? 0 : 1];
        ASSERT_TRUE(RegistryStore(file).loadProblems().isEmpty());
    }
    RecordProperty("first viewer's file", wins[0]);
    RecordProperty("second viewer's file", wins[1]);
    RecordProperty("looks while saving", looks);
}

// A file beyond what can be read is refused before it is read (the file
// here is sparse: it takes no room on disk).
TEST_F(FilesUnderfootTest, AFileTooLargeToReadIsRefusedWithItsSize)
{
    ASSERT_TRUE(load(test::gedcomText({"0 @I1@ INDI", "1 NAME Kept /Here/"}), "small.ged"));
    const QString path = dir.filePath(QStringLiteral("huge.ged"));
    QFile huge(path);
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly) && huge.resize(largestGedcomFile + 1));
    huge.close();
    EXPECT_EQ(loadGedcom(session, path).message(),
              QStringLiteral("Cannot open %1: the file is too large to read (2048 MB; at most "
                             "2047 MB)")
                  .arg(path));
    EXPECT_EQ(session.records.individualCount(), 1) << "the file shown before stays";
    EXPECT_EQ(session.records.individual(1).name, QStringLiteral("Kept /Here/"));
}
