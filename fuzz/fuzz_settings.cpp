// SPDX-License-Identifier: GPL-3.0-or-later
// Fuzz target: a settings file as another program or an old version may
// have left it. It is read as the viewer reads it at start, saved as at
// exit, and read again: what was saved must read back the same.
#include "settings/IniFile.h"
#include "settings/RegFile.h"
#include "settings/RegistryStore.h"
#include "settings/Settings.h"
#include "settings/SettingsPersistence.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>

using namespace tav;

namespace {

// Settings files are written for real; in memory where the system has a
// file system there.
const QTemporaryDir& folder()
{
    static const QTemporaryDir dir(QDir(QStringLiteral("/dev/shm")).exists()
                                       ? QStringLiteral("/dev/shm/tav-fuzz-XXXXXX")
                                       : QDir::tempPath() + QStringLiteral("/tav-fuzz-XXXXXX"));
    return dir;
}

bool operator==(const Settings& a, const Settings& b)
{
    return a.recentFiles == b.recentFiles && a.recentCount == b.recentCount &&
           a.autoLoadFile == b.autoLoadFile && a.SurnameStyle == b.SurnameStyle &&
           a.SurnamePosn == b.SurnamePosn && a.dirLast == b.dirLast && a.ViewDates == b.ViewDates &&
           a.ViewSurnames == b.ViewSurnames && a.ViewDescendentMark == b.ViewDescendentMark &&
           a.ViewMainLine == b.ViewMainLine && a.ViewNoSpouse == b.ViewNoSpouse &&
           a.BackColour == b.BackColour && a.FontSize == b.FontSize &&
           a.mainWindow.left == b.mainWindow.left && a.mainWindow.top == b.mainWindow.top &&
           a.mainWindow.width == b.mainWindow.width && a.mainWindow.height == b.mainWindow.height &&
           a.mainWindow.maximized == b.mainWindow.maximized;
}

void fail(const char* what)
{
    std::fprintf(stderr, "fuzz-settings: %s\n", what);
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));

    // The registry text: what is written for the keys read must read back
    // without a problem, to the same text.
    RegFile parsed(QString{});
    parsed.parse(bytes);
    const QByteArray written = parsed.text();
    RegFile reread(QString{});
    if (!reread.parse(written).isEmpty())
        fail("the written registry text does not read back");
    if (reread.text() != written)
        fail("the written registry text reads back different");

    // The whole round: read at start, saved at exit, read at the next start.
    const QString path = folder().filePath(QStringLiteral("Tav.reg"));
    QFile::remove(path);
    QFile::remove(path + QStringLiteral(".damaged"));
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            fail("cannot write the settings file");
    }
    Settings first;
    {
        RegistryStore store(path);
        loadSettings(first, store, QStringLiteral("ALL"));
        if (!saveSettings(first, store))
            fail("the settings cannot be saved");
    }
    RegistryStore again(path);
    if (!again.loadProblems().isEmpty())
        fail("the saved settings file has lines that cannot be read");
    Settings second;
    loadSettings(second, again, QStringLiteral("ALL"));
    if (!(first == second))
        fail("the saved settings read back different");

    // The same bytes as an INI file.
    const IniFile ini(path);
    ini.readString(QStringLiteral("General"), QStringLiteral("SurnameStyle"), QStringLiteral("2"));
    if (!ini.writeString(QStringLiteral("Tree"), QStringLiteral("FontSize"), QStringLiteral("3")))
        fail("the INI file cannot be written");
    ini.readString(QStringLiteral("Tree"), QStringLiteral("FontSize"), QString());
    return 0;
}
