// Files that other programs change while Tav reads or writes them.
#include "app/GedcomLoading.h"
#include "bench/GedcomGenerator.h"
#include "tests/TestSupport.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>

using namespace tav;

namespace {

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

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

// A file beyond what can be read is refused before it is read (the file
// here is sparse: it takes no room on disk).
TEST_F(FilesUnderfootTest, AFileTooLargeToReadIsRefusedWithItsSize)
{
    ASSERT_TRUE(load(test::gedcomText({"0 @I1@ INDI", "1 NAME Kept /Here/"}), "small.ged"));
    const QString path = dir.filePath(QStringLiteral("huge.ged"));
    QFile huge(path);
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly) && huge.resize(largestGedcomFile + 1));
    huge.close();
    QString failure;
    EXPECT_FALSE(loadGedcom(session, path, &failure));
    EXPECT_EQ(failure,
              QStringLiteral("Cannot open %1: the file is too large to read (2048 MB; at most "
                             "2047 MB)")
                  .arg(path));
    EXPECT_EQ(session.records.individualCount(), 1) << "the file shown before stays";
    EXPECT_EQ(session.records.individual(1).name, QStringLiteral("Kept /Here/"));
}
