#include "settings/RegistryStore.h"
#include "settings/Settings.h"
#include "settings/SettingsPersistence.h"

#include "tests/QtPrinters.h"
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace tav;

namespace {

const QString general = QStringLiteral("Software\\Wendrake\\Tav\\General");
const QString tree = QStringLiteral("Software\\Wendrake\\Tav\\Tree");

}  // namespace

class SettingsTest : public ::testing::Test {
protected:
    QString regPath() const { return dir.filePath(QStringLiteral("Wendrake/Tav.reg")); }

    void writeRegFile(const QByteArray& body)
    {
        QDir().mkpath(dir.filePath(QStringLiteral("Wendrake")));
        QFile file(regPath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("Windows Registry Editor Version 5.00\r\n\r\n" + body);
    }

    Settings loaded(const QString& section = QStringLiteral("ALL"))
    {
        RegistryStore store(regPath());
        Settings s;
        loadSettings(s, store, section);
        return s;
    }

    QByteArray fileText() const
    {
        QFile file(regPath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir dir;
};

TEST_F(SettingsTest, FirstRunGivesTheDefaults)
{
    const Settings s = loaded();
    EXPECT_EQ(s.recentCount, 0);
    EXPECT_TRUE(s.autoLoadFile.isEmpty());
    EXPECT_EQ(s.SurnameStyle, 2);
    EXPECT_EQ(s.SurnamePosn, 2);
    EXPECT_FALSE(s.ViewDates || s.ViewSurnames || s.ViewDescendentMark || s.ViewMainLine ||
                 s.ViewNoSpouse || s.BackColour);
    EXPECT_EQ(s.FontSize, 2);
    EXPECT_TRUE(RegistryStore(regPath()).loadProblem().isEmpty());
}

TEST_F(SettingsTest, RecentListStopsAtItsFirstGapAndHoldsTen)
{
    writeRegFile("[HKEY_CURRENT_USER\\Software\\Wendrake\\Tav\\General]\r\n"
                 "\" 1fPrev\"=\"C:\\\\a\\\\one.ged\"\r\n\" 2fPrev\"=\"/home/b/two.ged\"\r\n\" "
                 "4fPrev\"=\"four.ged\"\r\n");
    Settings s = loaded();
    EXPECT_EQ(s.recentCount, 2);
    EXPECT_EQ(s.recentFiles[1], QStringLiteral("C:\\a\\one.ged"));
    EXPECT_EQ(s.recentFiles[2], QStringLiteral("/home/b/two.ged"));
    EXPECT_TRUE(s.recentFiles[4].isEmpty());
    RegistryStore store(regPath());
    saveSettings(s, store);
    EXPECT_TRUE(fileText().contains("\" 4fPrev\"=\"\"")) << "the stray entry is overwritten";

    for (int i = 1; i <= 10; ++i)
        s.recentFiles[size_t(i)] = QStringLiteral("file%1.ged").arg(i);
    saveSettings(s, store);
    const Settings ten = loaded(QStringLiteral("General"));
    EXPECT_EQ(ten.recentCount, 10);
    EXPECT_EQ(ten.recentFiles[10], QStringLiteral("file10.ged"));
    EXPECT_EQ(recentFileValueName(10), QStringLiteral(" 10fPrev"));
}

TEST_F(SettingsTest, EveryValueRoundTripsInTheRegistrySyntax)
{
    Settings s;
    s.recentFiles[1] = QStringLiteral(u"C:\\Família \"x\"\\a.ged");
    s.recentCount = 1;
    s.autoLoadFile = QStringLiteral("/data/auto.ged");
    s.SurnameStyle = 5;
    s.SurnamePosn = 1;
    s.dirLast = QStringLiteral("/data");
    s.ViewDates = s.ViewDescendentMark = s.BackColour = true;
    s.FontSize = 4;
    RegistryStore store(regPath());
    saveSettings(s, store);

    const QByteArray text = fileText();
    EXPECT_TRUE(text.startsWith("Windows Registry Editor Version 5.00\n"));
    EXPECT_TRUE(text.contains("[HKEY_CURRENT_USER\\Software\\Wendrake\\Tav\\General]"));
    EXPECT_TRUE(text.contains(
        QStringLiteral(u"\" 1fPrev\"=\"C:\\\\Família \\\"x\\\"\\\\a.ged\"").toUtf8()));
    EXPECT_TRUE(text.contains("\"SurnameStyle\"=dword:00000005"));
    EXPECT_TRUE(text.contains("\"ViewDates\"=hex:ff,ff"));
    EXPECT_TRUE(text.contains("\"ViewSurnames\"=hex:00,00"));

    const Settings back = loaded();
    EXPECT_EQ(back.recentCount, 1);
    EXPECT_EQ(back.recentFiles[1], s.recentFiles[1]);
    EXPECT_EQ(back.autoLoadFile, s.autoLoadFile);
    EXPECT_EQ(back.SurnameStyle, 5);
    EXPECT_EQ(back.SurnamePosn, 1);
    EXPECT_EQ(back.dirLast, s.dirLast);
    EXPECT_TRUE(back.ViewDates && back.ViewDescendentMark && back.BackColour);
    EXPECT_FALSE(back.ViewSurnames || back.ViewMainLine || back.ViewNoSpouse);
    EXPECT_EQ(back.FontSize, 4);
    EXPECT_EQ(loaded(QStringLiteral("Tree")).SurnameStyle, 2)
        << "one section loads only its own rows";
    EXPECT_EQ(loaded(QStringLiteral("other")).FontSize, 2);
}

TEST_F(SettingsTest, ValuesAreReadAsRawBytesWhateverTheirStoredType)
{
    writeRegFile("[HKEY_CURRENT_USER\\Software\\Wendrake\\Tav\\Tree]\r\n"
                 "\"ViewDates\"=hex:ff,ff\r\n\"ViewSurnames\"=hex:01,00\r\n\"ViewMainLine\"=dword:"
                 "ffffffff\r\n"
                 "\"FontSize\"=hex:03\r\n\"BackColour\"=\"\"\r\n");
    RegistryStore store(regPath());
    QVariant v;
    EXPECT_EQ(store.regRead("HKCU", tree, "ViewDates", "B", false, v), 0);
    EXPECT_TRUE(v.toBool());
    EXPECT_EQ(store.regRead("hkcu", tree, "ViewSurnames", "b", false, v), 0);
    EXPECT_TRUE(v.toBool());
    EXPECT_EQ(store.regRead("HKCU", tree, "ViewMainLine", "B", false, v),
              RegistryStore::statusMoreData);
    EXPECT_FALSE(v.toBool()) << "four bytes do not fit the two-byte buffer";
    EXPECT_EQ(store.regRead("HKCU", tree, "FontSize", "D", 2, v), 0);
    EXPECT_EQ(v.toInt(), 3);
    EXPECT_EQ(store.regRead("HKCU", tree, "BackColour", "B", true, v), 0);
    EXPECT_FALSE(v.toBool()) << "the empty text is one zero byte";
    EXPECT_EQ(store.regRead("HKCU", tree, "Missing", "S", "dflt", v),
              RegistryStore::statusNotFound);
    EXPECT_EQ(v.toString(), QStringLiteral("dflt"));
    EXPECT_EQ(store.regRead("HKCU", "Software\\None", "X", "S", "dflt", v),
              RegistryStore::statusNotFound);
    EXPECT_EQ(store.regRead("HKCU", tree, "FontSize", "Q", 7, v), 0);
    EXPECT_EQ(v.toInt(), 7) << "an unknown type code keeps the default";
    EXPECT_EQ(store.regRead("NOWHERE", tree, "FontSize", "D", 7, v),
              RegistryStore::statusInvalidRoot);
}

TEST_F(SettingsTest, NumbersAreWrittenThrough16BitsAndOtherRootsHaveTheirOwnKeys)
{
    RegistryStore store(regPath());
    QVariant v;
    EXPECT_EQ(store.regWrite("HKCU", general, "N", "D", -1), 0);
    EXPECT_EQ(store.regRead("HKCU", general, "N", "D", 0, v), 0);
    EXPECT_EQ(v.toInt(), -1);
    EXPECT_EQ(store.regWrite("HKCU", general, "Big", "D", 70000), 0);
    EXPECT_EQ(store.regRead("HKCU", general, "Big", "D", 5, v), RegistryStore::statusNotFound)
        << "the overflow fault ends the write before anything is stored";
    EXPECT_EQ(store.regWrite("HKLM", general, "N", "S", "machine"), 0);
    EXPECT_EQ(store.regRead("HKCU", general, "N", "D", 0, v), 0);
    EXPECT_EQ(v.toInt(), -1);
    EXPECT_EQ(store.regWrite("bad root", general, "N", "S", "x"), RegistryStore::statusInvalidRoot);
    // The system's own handles, whatever the case of the name.
    const std::pair<const char*, int64_t> roots[] = {{"HKCU", 0x80000001}, {"hklm", 0x80000002},
                                                     {"HKU", 0x80000003},  {"HKDD", 0x80000006},
                                                     {"HkCc", 0x80000005}, {"HKCR", 0x80000000}};
    for (const auto& [name, handle] : roots)
        EXPECT_EQ(RegistryStore::rootKeyFromName(QString::fromLatin1(name)), handle) << name;
    EXPECT_EQ(RegistryStore::rootKeyFromName(QStringLiteral("HKEY_CURRENT_USER")), 0);
    EXPECT_TRUE(fileText().contains("[HKEY_LOCAL_MACHINE\\Software\\Wendrake\\Tav\\General]"));
}

TEST_F(SettingsTest, AFileRootIsAnIniFile)
{
    const QString ini = dir.filePath(QStringLiteral("tav.ini"));
    EXPECT_EQ(RegistryStore::rootKeyFromName(ini), 0) << "not a file yet";
    QFile file(ini);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Other]\r\nName=x\r\n[General]\r\nAutoLoadFile = \"/old.ged\"\r\n");
    file.close();
    EXPECT_EQ(RegistryStore::rootKeyFromName(ini), RegistryStore::iniFileRoot);
    EXPECT_EQ(RegistryStore::rootKeyFromName(dir.path()), 0) << "a folder is not a file";

    RegistryStore store(regPath());
    QVariant v;
    EXPECT_EQ(store.regRead(ini, "general", "autoloadfile", "S", "", v), 0);
    EXPECT_EQ(v.toString(), QStringLiteral("/old.ged"));
    EXPECT_EQ(store.regWrite(ini, "General", "AutoLoadFile", "S", "/new.ged"), 0);
    EXPECT_EQ(store.regWrite(ini, "General", "SurnameStyle", "S", "3"), 0);
    EXPECT_EQ(store.regWrite(ini, "Tree", "FontSize", "D", 4), 0)
        << "only text is written to an INI file";
    EXPECT_EQ(store.regRead(ini, "General", "AutoLoadFile", "S", "", v), 0);
    EXPECT_EQ(v.toString(), QStringLiteral("/new.ged"));
    EXPECT_EQ(store.regRead(ini, "General", "SurnameStyle", "D", 9, v), 0);
    EXPECT_EQ(v.toInt(), 9) << "numbers read from an INI file keep the default";
    EXPECT_EQ(store.regRead(ini, "Other", "Name", "S", "", v), 0);
    EXPECT_EQ(v.toString(), QStringLiteral("x"));
    EXPECT_EQ(store.regRead(ini, "Tree", "FontSize", "S", "none", v), 0);
    EXPECT_EQ(v.toString(), QStringLiteral("none"));
}

TEST_F(SettingsTest, ADamagedFileGivesDefaultsAndTheNextSaveMendsIt)
{
    for (const QByteArray& damaged :
         {QByteArray("\x00\x01garbage\xff", 11), QByteArray("[unclosed\r\n"),
          QByteArray("[K]\r\n\"SurnameStyle\"=dword:zz\r\n"),
          QByteArray("\"orphan\"=\"value\"\r\n")}) {
        writeRegFile(damaged);
        if (damaged.startsWith('\0')) {
            QFile raw(regPath());
            ASSERT_TRUE(raw.open(QIODevice::WriteOnly));
            raw.write(damaged);
        }
        RegistryStore store(regPath());
        EXPECT_FALSE(store.loadProblem().isEmpty()) << damaged.toStdString();
        Settings s;
        loadSettings(s, store, QStringLiteral("ALL"));
        EXPECT_EQ(s.SurnameStyle, 2);
        s.SurnameStyle = 6;
        saveSettings(s, store);
        EXPECT_TRUE(RegistryStore(regPath()).loadProblem().isEmpty());
        EXPECT_EQ(loaded().SurnameStyle, 6);
    }
}
