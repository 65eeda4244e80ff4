// SPDX-License-Identifier: GPL-3.0-or-later
// Paths that are no ordinary file: named pipes, devices, pipes on standard
// input, and names whose bytes are not UTF-8.
#include "core/Fault.h"
#include "core/FileNames.h"
#include "core/FileReading.h"
#include "settings/RegistryStore.h"
#include "settings/SettingsPersistence.h"
#include "tests/CliTest.h"
#include "tests/TreeTestSupport.h"
#include "tree/TreeLayout.h"
#include "tree/TreeModel.h"
#include "tree/TreeViewFile.h"
#include "windowlogic/main/HelpTopics.h"
#include "windowlogic/main/MainWindowLogic.h"

#include <QDir>
#include <QProcess>

#include <algorithm>
#include <chrono>
#include <fcntl.h>
#include <future>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace tav;
using tav::test::gedcomText;

namespace {

const QByteArray twoPeople = gedcomText({"0 HEAD", "0 @I1@ INDI", "1 NAME Ann /Bo/", "0 @I2@ INDI",
                                         "1 NAME Cy /Bo/", "0 @F1@ FAM", "1 HUSB @I2@", "0 TRLR"});

// Runs `work` on a thread of its own. When it has not ended after a few
// seconds the test fails, and the named pipe it waits on is opened for
// writing and closed again, so that it ends and the test run goes on.
template <typename Work>
void expectEndsWithoutWaiting(const QString& pipe, Work work)
{
    std::promise<void> done;
    std::future<void> ended = done.get_future();
    std::thread thread([&] {
        work();
        done.set_value();
    });
    if (ended.wait_for(std::chrono::seconds(5)) != std::future_status::ready) {
        ADD_FAILURE() << "it waits on the named pipe " << pipe.toStdString();
        const int fd = ::open(fileNameToBytes(pipe).constData(), O_WRONLY | O_NONBLOCK);
        if (fd >= 0)
            ::close(fd);
    }
    thread.join();
}

}  // namespace

class OddFilesTest : public CliTest {
protected:
    OddFilesTest() : store(settingsFile()) {}

    QString makePipe(const char* name) const
    {
        const QString path = dir.filePath(QString::fromLatin1(name));
        EXPECT_EQ(::mkfifo(fileNameToBytes(path).constData(), 0600), 0);
        return path;
    }

    RegistryStore store;
    TreeModel model{session.records, session.descendantCache, session.settings, session.tree,
                    [this] { return session.today(); }};
};

// A named pipe with no program writing to it, where a GEDCOM file, a view
// file or help.txt is expected: the viewer refuses it at once with what it
// is, and tav-cli gives up after a moment with why.
TEST_F(OddFilesTest, ANamedPipeKeepsNeitherProgramWaiting)
{
    const QString pipe = makePipe("family.ged");
    MainWindowLogic main(session, store, dir.path());
    expectEndsWithoutWaiting(pipe, [&] { main.openFile(pipe); });
    EXPECT_EQ(
        messages.texts(),
        QStringList{QStringLiteral("Cannot open %1: it is a named pipe, not a file").arg(pipe)});

    ASSERT_TRUE(load(twoPeople));
    const QString view = makePipe("temp.gds");
    messages.clear();
    expectEndsWithoutWaiting(
        view, [&] { EXPECT_FALSE(session.guarded([&] { treeReadFromFile(model, view); })); });
    EXPECT_EQ(messages.texts(), QStringList{QStringLiteral("Error no:  53 File not found")});

    makePipe("help.txt");
    ASSERT_TRUE(QDir::setCurrent(dir.path()));
    expectEndsWithoutWaiting(dir.filePath("help.txt"), [&] {
        EXPECT_EQ(readHelpFile(QString()).message(),
                  QStringLiteral("Cannot open help.txt: it is a named pipe, not a file"));
    });

    CliResult cli{};
    expectEndsWithoutWaiting(pipe, [&] { cli = runTavCli({QStringLiteral("info"), pipe}); });
    EXPECT_EQ(cli.status, 1);
    EXPECT_EQ(
        cli.err,
        QStringList{QStringLiteral("Cannot open %1: nothing writes to this named pipe").arg(pipe)});
}

// tav-cli reads what a program writes into a pipe to its end: standard
// input, and a named pipe that a program writes to.
TEST_F(OddFilesTest, TavCliReadsAPipeToItsEnd)
{
    QProcess cli;
    cli.start(QStringLiteral(TAV_CLI_PROGRAM),
              {QStringLiteral("info"), QStringLiteral("/dev/stdin")});
    ASSERT_TRUE(cli.waitForStarted());
    cli.write(twoPeople);
    cli.closeWriteChannel();
    ASSERT_TRUE(cli.waitForFinished(10000));
    EXPECT_EQ(cli.exitCode(), 0) << cli.readAllStandardError().toStdString();
    EXPECT_TRUE(cli.readAllStandardOutput().startsWith("/dev/stdin (2 individuals, 1 families)\n"));

    const QString pipe = makePipe("piped.ged");
    std::thread writer([&] {
        const int fd = ::open(fileNameToBytes(pipe).constData(), O_WRONLY);
        ASSERT_GE(fd, 0);
        // In small pieces, as a slow program writes.
        for (qsizetype at = 0; at < twoPeople.size(); at += 7) {
            const size_t piece = size_t(std::min<qsizetype>(7, twoPeople.size() - at));
            EXPECT_EQ(::write(fd, twoPeople.constData() + at, piece), ssize_t(piece));
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        ::close(fd);
    });
    const CliResult read = runTavCli({QStringLiteral("info"), pipe});
    writer.join();
    EXPECT_EQ(read.status, 0) << read.err.join('\n').toStdString();
    EXPECT_EQ(read.out.value(0), QStringLiteral("%1 (2 individuals, 1 families)").arg(pipe));
}

// A device that never ends is read up to the limit and refused there; the
// viewer does not read devices at all.
TEST_F(OddFilesTest, ADeviceThatNeverEndsIsRefusedPastTheLimit)
{
    constexpr qint64 megabyte = 1024 * 1024;
    EXPECT_EQ(readWholeFile(QStringLiteral("/dev/zero"), megabyte, OddFiles::ReadToEnd).message(),
              QStringLiteral("the file is too large to read (2 MB; at most 1 MB)"));
    EXPECT_EQ(readWholeFile(QStringLiteral("/dev/zero"), megabyte, OddFiles::Refused).message(),
              QStringLiteral("it is a device, not a file"));
}

// A file whose name is not UTF-8 (bytes FF FE in it) opens from the command
// line and from the recent-file list, which keeps its bytes through the
// settings file; windows show the bytes as U+FFFD.
TEST_F(OddFilesTest, AFileNameInAnyBytesOpensAndStaysInTheRecentList)
{
    for (const QByteArray& bytes :
         {QByteArray("plain.ged"), QByteArray("k\xFF\xFE.ged"), QByteArray("\xC3\xA9t\xC3.ged"),
          QByteArray("\xED\xB2\x80\xF0\x9F\x98\x80")}) {
        EXPECT_EQ(fileNameToBytes(fileNameFromBytes(bytes)), bytes) << bytes.toHex().toStdString();
    }
    EXPECT_EQ(fileNameFromBytes("\xC3\xA9t\xC3.ged"), QStringLiteral("\u00E9t\xDCC3.ged"));

    const QByteArray name = fileNameToBytes(dir.path()) + "/k\xFF\xFE.ged";
    {
        const int fd = ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL, 0644);
        ASSERT_GE(fd, 0);
        ASSERT_EQ(::write(fd, twoPeople.constData(), size_t(twoPeople.size())), twoPeople.size());
        ::close(fd);
    }
    const QString path = fileNameFromBytes(name);
    const QString shown = dir.filePath(QStringLiteral("k\uFFFD\uFFFD.ged"));

    {
        MainWindowLogic main(session, store, dir.path());
        main.startUp(path);
        EXPECT_TRUE(messages.texts().isEmpty()) << messages.texts().join('\n').toStdString();
        EXPECT_EQ(main.caption(), shown + QStringLiteral(" (2 individuals, 1 families)"));
        EXPECT_EQ(main.recentItems()[1].caption, QStringLiteral("&0 k\uFFFD\uFFFD.ged"));
        main.shutDown();
    }
    session.settings = Settings{};
    RegistryStore again(settingsFile());
    EXPECT_TRUE(again.loadProblems().isEmpty());
    MainWindowLogic next(session, again, dir.path());
    next.startUp(QString());
    ASSERT_EQ(session.settings.recentFiles[1], path) << "the bytes come back from the settings";
    next.recentFileChosen(1);
    EXPECT_TRUE(messages.texts().isEmpty()) << messages.texts().join('\n').toStdString();
    EXPECT_EQ(next.caption(), shown + QStringLiteral(" (2 individuals, 1 families)"));

    const CliResult info = runTavCli({QStringLiteral("info"), path});
    EXPECT_EQ(info.status, 0) << info.err.join('\n').toStdString();
    EXPECT_EQ(info.out.value(0), shown + QStringLiteral(" (2 individuals, 1 families)"));

    // A view saved with that file names it again when it is read.
    const tav::test::StubMeasure measure;
    model.clearArrays(1, 1);
    model.prepareTopPerson(1, measure);
    model.prepareDescendents3(1, 0, 0);
    layoutManager(model, measure, generationGap(2));
    const QString view = dir.filePath(QStringLiteral("view\xDCFF.gds"));
    ASSERT_TRUE(treeSaveToFile(model, view));
    EXPECT_TRUE(treeReadFromFile(model, view).sameGedcomFile);

    // The folder is emptied here: Qt cannot name these files to remove them.
    for (const QString& file : {path, view})
        ::unlink(fileNameToBytes(file).constData());
}
