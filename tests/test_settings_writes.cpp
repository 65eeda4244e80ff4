// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/RegistryStore.h"
#include "settings/Settings.h"
#include "settings/SettingsPersistence.h"
#include "tests/TestSupport.h"
#include "tests/WriteFaults.h"
#include "windowlogic/main/MainWindowLogic.h"
#include "windowlogic/options/OptionsLogic.h"

#include <QDir>
#include <QFile>

using namespace tav;
using tav::test::WriteFault;

namespace {

Settings settingsWithFile(const QString& file, int32_t style)
{
    Settings s;
    s.recentFiles[1] = file;
    s.recentCount = 1;
    s.SurnameStyle = style;
    s.ViewDates = style % 2 != 0;
    return s;
}

QByteArray savedText(const Settings& s)
{
    QTemporaryDir dir;
    RegistryStore store(dir.filePath(QStringLiteral("Tav.reg")));
    EXPECT_EQ(saveSettings(s, store).message(), QString());
    return test::fileBytes(dir.filePath(QStringLiteral("Tav.reg")));
}

}  // namespace

class SettingsWriteFaultTest : public ::testing::TestWithParam<WriteFault> {};

// The settings saved at exit or on Options OK meet a disk that will not take
// them: the file the user had stays, and the message names it and the reason.
TEST_P(SettingsWriteFaultTest, AFailedSaveKeepsTheSettingsFileByteForByte)
{
    const QByteArray previous = savedText(settingsWithFile(QStringLiteral("/a/old.ged"), 3));
    const Settings next = settingsWithFile(QStringLiteral("/b/new.ged"), 4);
    const test::WriteFaultOutcome outcome = test::underWriteFault(
        GetParam(), QStringLiteral("Tav.reg"), previous, [&next](const QString& target) {
            // Read at start, as the program does; saved later under the fault.
            auto store = std::make_shared<RegistryStore>(target);
            return [store, &next] { return saveSettings(next, *store).message(); };
        });
    if (!outcome.ran)
        GTEST_SKIP() << outcome.unavailable.toStdString();
    EXPECT_TRUE(outcome.message.startsWith(QStringLiteral("Cannot save /")));
    EXPECT_TRUE(outcome.message.contains(QStringLiteral("/disk/Tav.reg: ")))
        << outcome.message.toStdString();
    EXPECT_EQ(outcome.after, previous);
    EXPECT_EQ(outcome.folder, QStringList(QStringLiteral("Tav.reg")));
    if (GetParam() == WriteFault::TargetIsFolder) {
        // A folder where the file should be cannot be read at start either.
        EXPECT_TRUE(outcome.message.contains(QStringLiteral("could not be read when Tav started")))
            << outcome.message.toStdString();
    } else {
        EXPECT_EQ(outcome.retried, QString());
        EXPECT_EQ(outcome.afterRetry, savedText(next)) << "the next save writes the settings";
    }
}

INSTANTIATE_TEST_SUITE_P(Faults, SettingsWriteFaultTest,
                         ::testing::ValuesIn(test::allWriteFaults()), test::writeFaultTestName);

// A folder that takes the file's place while the viewer runs: exit and
// Options OK tell the user, and the viewer goes on.
class SettingsSaveMessageTest : public test::SessionTest {
protected:
    SettingsSaveMessageTest()
    {
        writeFile(savedText(session.settings), "Tav.reg");
        // Read at start, as the viewer does.
        store = std::make_unique<RegistryStore>(regPath);
    }

    void putFolderInPlace()
    {
        QFile::remove(regPath);
        QDir().mkpath(regPath);
    }

    QString regPath = dir.filePath(QStringLiteral("Tav.reg"));
    std::unique_ptr<RegistryStore> store;
    QString expected =
        QStringLiteral("Cannot save %1: a folder of that name is in the way.\r\n\r\n").arg(regPath);
};

TEST_F(SettingsSaveMessageTest, ExitTellsWhyTheSettingsWereNotSavedAndStillClosesTheWindows)
{
    MainWindowLogic logic(session, *store, dir.path());
    bool othersClosed = false;
    QObject::connect(&session, &Session::otherWindowsCloseRequested,
                     [&othersClosed] { othersClosed = true; });
    putFolderInPlace();
    logic.shutDown();
    ASSERT_EQ(messages.entries.size(), 1u);
    EXPECT_EQ(messages.entries[0].text,
              expected + QStringLiteral("The settings of this session are lost; the file keeps "
                                        "the settings it had."));
    EXPECT_EQ(messages.entries[0].kind, MessageKind::Warning);
    EXPECT_TRUE(othersClosed);
}

TEST_F(SettingsSaveMessageTest, OptionsOkAppliesTheOptionsAndTellsWhyTheyWereNotSaved)
{
    OptionsLogic options(session, *store);
    options.surnameStyleIndex = 4;
    putFolderInPlace();
    EXPECT_TRUE(options.accept()) << "the dialog closes";
    EXPECT_EQ(session.settings.SurnameStyle, 5);
    EXPECT_EQ(messages.texts(),
              QStringList(expected + QStringLiteral("The new options apply until Tav closes, "
                                                    "when they are saved again.")));
}
