// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/RegistryStore.h"
#include "settings/Settings.h"
#include "settings/SettingsPersistence.h"

#include "tests/QtPrinters.h"
#include "tests/TestSupport.h"
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

#include <gtest/gtest.h>

using namespace tav;

namespace {

const QString general = QStringLiteral("Software\\Wendrake\\Tav\\General");
const QString tree = QStringLiteral("Software\\Wendrake\\Tav\\Tree");

// A read's status and the value it leaves, as "status value": "2 dflt" is
// not found with the default kept (234 more data, 99 an invalid root).
QString readValue(RegistryStore& store, const QString& root, const QString& key,
                  const QString& name, const QString& type, const QVariant& defaultValue)
{
    QVariant v;
    const int32_t status = store.regRead(root, key, name, type, defaultValue, v);
    return QString::number(status) + u' ' + v.toString();
}

}  // namespace

class SettingsTest : public test::SessionTest {
protected:
    QString regPath() const { return dir.filePath(QStringLiteral("Wendrake/Tav.reg")); }

    void writeRegFile(const QByteArray& body)
    {
        writeRegBytes("Windows Registry Editor Version 5.00\r\n\r\n" + body);
    }
    // The settings file's bytes, whatever they are.
    void writeRegBytes(const QByteArray& bytes) { writeFile(bytes, "Wendrake/Tav.reg"); }

    Settings loaded(const QString& section = QStringLiteral("ALL"))
    {
        RegistryStore store(regPath());
        Settings s;
        loadSettings(s, store, section);
        return s;
    }

    QByteArray fileText() const { return test::fileBytes(regPath()); }
};

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
    EXPECT_TRUE(saveSettings(s, store));
    EXPECT_TRUE(fileText().contains("\" 4fPrev\"=\"\"")) << "the stray entry is overwritten";

    for (int i = 1; i <= 10; ++i)
        s.recentFiles[size_t(i)] = QStringLiteral("file%1.ged").arg(i);
    EXPECT_TRUE(saveSettings(s, store));
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
    // A path may hold control characters; the file must stay text.
    s.dirLast = QStringLiteral("/data/\x0f\x1b[1m\tx");
    s.ViewDates = s.ViewDescendentMark = s.BackColour = true;
    s.FontSize = 4;
    RegistryStore store(regPath());
    EXPECT_TRUE(saveSettings(s, store));

    const QByteArray text = fileText();
    EXPECT_TRUE(text.startsWith("Windows Registry Editor Version 5.00\n"));
    EXPECT_TRUE(text.contains("[HKEY_CURRENT_USER\\Software\\Wendrake\\Tav\\General]"));
    EXPECT_TRUE(text.contains(
        QStringLiteral(u"\" 1fPrev\"=\"C:\\\\Família \\\"x\\\"\\\\a.ged\"").toUtf8()));
    EXPECT_TRUE(text.contains("\"SurnameStyle\"=dword:00000005"));
    EXPECT_TRUE(text.contains("\"ViewDates\"=hex:ff,ff"));
    EXPECT_TRUE(text.contains("\"ViewSurnames\"=hex:00,00"));
    EXPECT_TRUE(text.contains("\"dirLast\"=hex(1):2f,64,61,74,61,2f,0f,1b,5b,31,6d,09,78,00"));
    EXPECT_TRUE(RegistryStore(regPath()).loadProblems().isEmpty());

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
    EXPECT_EQ(readValue(store, "HKCU", tree, "ViewDates", "B", false), "0 true");
    EXPECT_EQ(readValue(store, "hkcu", tree, "ViewSurnames", "b", false), "0 true");
    EXPECT_EQ(readValue(store, "HKCU", tree, "ViewMainLine", "B", false), "234 false")
        << "four bytes do not fit the two-byte buffer";
    EXPECT_EQ(readValue(store, "HKCU", tree, "FontSize", "D", 2), "0 3");
    EXPECT_EQ(readValue(store, "HKCU", tree, "BackColour", "B", true), "0 false")
        << "the empty text is one zero byte";
    EXPECT_EQ(readValue(store, "HKCU", tree, "Missing", "S", "dflt"), "2 dflt");
    EXPECT_EQ(readValue(store, "HKCU", "Software\\None", "X", "S", "dflt"), "2 dflt");
    EXPECT_EQ(readValue(store, "HKCU", tree, "FontSize", "Q", 7), "0 7")
        << "an unknown type code keeps the default";
    EXPECT_EQ(readValue(store, "NOWHERE", tree, "FontSize", "D", 7), "99 7");
}

TEST_F(SettingsTest, NumbersAreWrittenThrough16BitsAndOtherRootsHaveTheirOwnKeys)
{
    RegistryStore store(regPath());
    EXPECT_EQ(store.regWrite("HKCU", general, "N", "D", -1), 0);
    EXPECT_EQ(readValue(store, "HKCU", general, "N", "D", 0), "0 -1");
    EXPECT_EQ(store.regWrite("HKCU", general, "Big", "D", 70000), 0);
    EXPECT_EQ(readValue(store, "HKCU", general, "Big", "D", 5), "2 5")
        << "the overflow fault ends the write before anything is stored";
    EXPECT_EQ(store.regWrite("HKLM", general, "N", "S", "machine"), 0);
    EXPECT_EQ(readValue(store, "HKCU", general, "N", "D", 0), "0 -1");
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
    file.write("[Other]\r\nName=x\r\nQuoted='single'\r\nHalf=\"open\r\n[General]\r\n"
               "AutoLoadFile = \"/old.ged\"\r\n");
    file.close();
    EXPECT_EQ(RegistryStore::rootKeyFromName(ini), RegistryStore::iniFileRoot);
    EXPECT_EQ(RegistryStore::rootKeyFromName(dir.path()), 0) << "a folder is not a file";

    RegistryStore store(regPath());
    EXPECT_EQ(readValue(store, ini, "general", "autoloadfile", "S", ""), "0 /old.ged");
    EXPECT_EQ(store.regWrite(ini, "General", "AutoLoadFile", "S", "/new.ged"), 0);
    EXPECT_EQ(store.regWrite(ini, "General", "SurnameStyle", "S", "3"), 0);
    EXPECT_EQ(store.regWrite(ini, "Tree", "FontSize", "D", 4), 0)
        << "only text is written to an INI file";
    EXPECT_EQ(readValue(store, ini, "General", "AutoLoadFile", "S", ""), "0 /new.ged");
    EXPECT_EQ(readValue(store, ini, "General", "SurnameStyle", "D", 9), "0 9")
        << "numbers read from an INI file keep the default";
    EXPECT_EQ(readValue(store, ini, "Other", "Name", "S", ""), "0 x");
    EXPECT_EQ(readValue(store, ini, "Tree", "FontSize", "S", "none  "), "0 none")
        << "the default loses its trailing blanks";
    EXPECT_EQ(readValue(store, ini, "Other", "Quoted", "S", ""), "0 single");
    EXPECT_EQ(readValue(store, ini, "Other", "Half", "S", ""), "0 \"open")
        << "quotes that do not match stay";
}

TEST_F(SettingsTest, ReadingForgivesWhatRegistryExportsHold)
{
    const char16_t exported[] = u"Windows Registry Editor Version 5.00\r\n\r\n"
                                u"[HKEY_CURRENT_USER\\Software\\Wendrake\\Tav\\General]\r\n"
                                u"\"SurnameStyle\" = DWORD:00000005\r\n"
                                u"\"SurnamePosn\"=dword:1\r\n"
                                u"\"dirLast\"=-\r\n"
                                u"\"AutoLoadFile\"=\"C:\\\\family\\\\smith.ged\"\r\n"
                                u"[-HKEY_CURRENT_USER\\Software\\Old]\r\n"
                                u"[HKEY_CURRENT_USER\\Software\\Wendrake\\Tav\\Tree]\r\n"
                                u"\"ViewDates\"=HEX:ff,ff\r\n"
                                u"\"FontSize\"=hex(4):03,00,\\\r\n  00,00\r\n";
    // regedit's own export: UTF-16, little-endian, with its byte order mark.
    QByteArray utf16("\xFF\xFE");
    utf16.append(reinterpret_cast<const char*>(exported), sizeof(exported) - 2);
    const QByteArray utf8 = QString::fromUtf16(exported).toUtf8();
    for (const QByteArray& bytes : {utf16, utf8, QByteArray(utf8).replace("\r\n", "\r"),
                                    QByteArray(utf8).replace("\r\n", "\n")}) {
        writeRegBytes(bytes);
        EXPECT_TRUE(RegistryStore(regPath()).loadProblems().isEmpty());
        const Settings s = loaded();
        EXPECT_EQ(s.SurnameStyle, 5);
        EXPECT_EQ(s.SurnamePosn, 1);
        EXPECT_EQ(s.autoLoadFile, QStringLiteral("C:\\family\\smith.ged"));
        EXPECT_TRUE(s.dirLast.isEmpty()) << "a deleted value reads as absent";
        EXPECT_TRUE(s.ViewDates);
        EXPECT_EQ(s.FontSize, 3);
    }
}

TEST_F(SettingsTest, ABadLineCostsOnlyItselfAndTheDamagedFileIsKeptOnce)
{
    const QByteArray damaged = "Windows Registry Editor Version 5.00\r\n\r\n"
                               "[HKEY_CURRENT_USER\\Software\\Wendrake\\Tav\\General]\r\n"
                               "\"SurnameStyle\"=dword:zz\r\n"
                               "\"SurnamePosn\"=dword:00000001\r\n"
                               "[HKEY_CURRENT_USER\\Software\\Wendrake\\Tav\\Tree\r\n"
                               "\"FontSize\"=dword:00000004\r\n"
                               "garbage \xff\r\n"
                               "[HKEY_CURRENT_USER\\Software\\Wendrake\\Tav\\Tree]\r\n"
                               "\"ViewMainLine\"=hex:01,00\r\n";
    writeRegBytes(damaged);
    RegistryStore store(regPath());
    const auto skipped = [&](const char* lineAndWhy) {
        return QStringLiteral("the settings file %1, line %2: the line is skipped")
            .arg(regPath(), QLatin1String(lineAndWhy));
    };
    EXPECT_EQ(store.loadProblems(),
              QStringList({skipped("4: a value that cannot be read"),
                           skipped("6: a key that is not closed"),
                           skipped("7: a value outside a key"), skipped("8: no value name")}));
    Settings s;
    loadSettings(s, store, QStringLiteral("ALL"));
    EXPECT_EQ(s.SurnameStyle, 2) << "the bad line's value takes its default";
    EXPECT_EQ(s.SurnamePosn, 1) << "the next line still counts";
    EXPECT_EQ(s.FontSize, 2) << "a value under an unclosed key has no key";
    EXPECT_TRUE(s.ViewMainLine);

    const QString kept = regPath() + QStringLiteral(".damaged");
    EXPECT_FALSE(QFile::exists(kept)) << "nothing is written before the first save";
    s.SurnameStyle = 6;
    EXPECT_TRUE(saveSettings(s, store));
    EXPECT_EQ(test::fileBytes(kept), damaged) << "byte for byte";
    EXPECT_TRUE(RegistryStore(regPath()).loadProblems().isEmpty()) << "the file is mended";
    EXPECT_EQ(loaded().SurnameStyle, 6);
    EXPECT_EQ(loaded().SurnamePosn, 1);

    // Written once: later saves and a later damaged file leave the copy alone.
    writeRegBytes("not a registry file");
    RegistryStore second(regPath());
    EXPECT_EQ(second.loadProblems().size(), 1);
    EXPECT_TRUE(saveSettings(s, second));
    EXPECT_TRUE(saveSettings(s, second));
    EXPECT_EQ(test::fileBytes(kept), damaged);
    EXPECT_EQ(test::fileBytes(kept + QStringLiteral(".1")), QByteArray("not a registry file"));
    EXPECT_FALSE(QFile::exists(kept + QStringLiteral(".2")));
}

TEST_F(SettingsTest, AnEmptyOrRelativeConfigHomeIsIgnored)
{
    EXPECT_EQ(RegistryStore::registryFileFor(QString(), QStringLiteral("/home/ann")),
              QStringLiteral("/home/ann/.config/Wendrake/Tav.reg"));
    EXPECT_EQ(RegistryStore::registryFileFor(QStringLiteral("cfg"), QStringLiteral("/home/ann")),
              QStringLiteral("/home/ann/.config/Wendrake/Tav.reg"));
    EXPECT_EQ(
        RegistryStore::registryFileFor(QStringLiteral("/data/cfg/"), QStringLiteral("/home/ann")),
        QStringLiteral("/data/cfg/Wendrake/Tav.reg"));
    EXPECT_TRUE(QDir::isAbsolutePath(RegistryStore::defaultRegistryFile()));
}

// A file in the settings' place that is no settings file (larger than 1 MB,
// or binary): one note, the defaults, and at the first save the file goes
// aside whole as Tav.reg.damaged before the new one is written.
TEST_F(SettingsTest, ALargeOrBinaryFileIsSetAsideWholeWithOneNote)
{
    QByteArray large = "Windows Registry Editor Version 5.00\r\n\r\n"
                       "[HKEY_CURRENT_USER\\Software\\Wendrake\\Tav\\General]\r\n"
                       "\"SurnameStyle\"=dword:00000005\r\n";
    while (large.size() <= 2 * 1024 * 1024)
        large += "\"filler\"=\"" + QByteArray(200, 'x') + "\"\r\n";
    QByteArray binary(4096, '\0');
    for (int i = 0; i < binary.size(); ++i)
        binary[i] = char((i * 7919) % 251);

    const struct {
        QByteArray bytes;
        const char* why;
    } cases[] = {{large, "is larger than 1 MB"}, {binary, "is not text"}};
    for (const auto& file : cases) {
        QDir(dir.path()).removeRecursively();
        writeRegBytes(file.bytes);
        RegistryStore store(regPath());
        EXPECT_EQ(store.loadProblems(),
                  QStringList{QStringLiteral("the settings file %1 %2; the defaults are used, and "
                                             "it is kept as %1.damaged when the settings are saved")
                                  .arg(regPath(), QLatin1String(file.why))});
        Settings s;
        loadSettings(s, store, QStringLiteral("ALL"));
        EXPECT_EQ(s.SurnameStyle, 2) << file.why << ": nothing of it is read";
        EXPECT_EQ(fileText(), file.bytes) << "nothing is written before the first save";

        s.SurnamePosn = 3;
        EXPECT_TRUE(saveSettings(s, store)) << file.why;
        EXPECT_EQ(test::fileBytes(regPath() + QStringLiteral(".damaged")), file.bytes) << file.why;
        EXPECT_TRUE(RegistryStore(regPath()).loadProblems().isEmpty());
        EXPECT_EQ(loaded().SurnamePosn, 3);
    }
}

// Lines the writer would not write back (a comment, a deleted value, a value
// given twice) cost nothing at start, but the file's bytes are kept before
// the first save; many bad lines are told twenty at a time.
TEST_F(SettingsTest, LinesASaveDropsAreKeptAndManyBadLinesAreSummed)
{
    const QByteArray commented = "Windows Registry Editor Version 5.00\r\n\r\n"
                                 "; my note: style 5 is for the club\r\n"
                                 "[HKEY_CURRENT_USER\\Software\\Wendrake\\Tav\\General]\r\n"
                                 "\"SurnameStyle\"=dword:00000005\r\n";
    writeRegBytes(commented);
    {
        RegistryStore store(regPath());
        EXPECT_TRUE(store.loadProblems().isEmpty());
        Settings s;
        loadSettings(s, store, QStringLiteral("ALL"));
        EXPECT_EQ(s.SurnameStyle, 5);
        EXPECT_TRUE(saveSettings(s, store));
    }
    EXPECT_FALSE(fileText().contains("my note"));
    EXPECT_EQ(test::fileBytes(regPath() + QStringLiteral(".damaged")), commented);

    QByteArray bad;
    for (int i = 0; i < 25; ++i)
        bad += "\"v" + QByteArray::number(i) + "\"=dword:zz\r\n";
    writeRegFile("[HKEY_CURRENT_USER\\Software\\Wendrake\\Tav\\General]\r\n" + bad);
    const QStringList problems = RegistryStore(regPath()).loadProblems();
    ASSERT_EQ(problems.size(), 21);
    EXPECT_EQ(problems.last(), QStringLiteral("the settings file %1: 5 more lines that cannot be "
                                              "read are skipped")
                                   .arg(regPath()));
}

// Reading grows with the number of values, not with its square: ten times
// the values take about ten times as long (measured against each other in
// one run, so a slow machine slows both).
TEST_F(SettingsTest, ManyValuesInOneKeyAreReadInLinearTime)
{
    const auto secondsToRead = [this](int values) {
        QByteArray body = "[HKEY_CURRENT_USER\\Software\\Wendrake\\Tav\\General]\r\n";
        for (int i = 0; i < values; ++i)
            body += "\"Value" + QByteArray::number(i) + "\"=\"text\"\r\n";
        writeRegFile(body);
        double best = 1e9;
        for (int run = 0; run < 3; ++run) {
            QElapsedTimer timer;
            timer.start();
            RegistryStore store(regPath());
            QVariant value;
            store.regRead(QStringLiteral("HKCU"), general,
                          QStringLiteral("Value%1").arg(values - 1), QStringLiteral("S"), {},
                          value);
            best = std::min(best, double(timer.nsecsElapsed()) / 1e9);
            EXPECT_EQ(value.toString(), QStringLiteral("text"));
        }
        return best;
    };
    const double few = secondsToRead(2000);
    const double many = secondsToRead(20000);
    RecordProperty("2000 values (ms)", QString::number(few * 1000, 'f', 2).toStdString());
    RecordProperty("20000 values (ms)", QString::number(many * 1000, 'f', 2).toStdString());
    EXPECT_LT(many / few, 30.0) << "2000 values: " << few << " s, 20000: " << many << " s";
}
