// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/SettingsPersistence.h"

#include "core/TextNumbers.h"
#include "settings/RegistryStore.h"
#include "settings/Settings.h"

#include <algorithm>

namespace tav {

namespace {

const QString root = QStringLiteral("HKCU");
const QString generalKey = QStringLiteral("Software\\Wendrake\\Tav\\General");
const QString treeKey = QStringLiteral("Software\\Wendrake\\Tav\\Tree");
// The main window's place and what other windows remember, under a key of
// its own beside the described ones.
const QString windowKey = QStringLiteral("Software\\Wendrake\\Tav\\Window");

QString readText(RegistryStore& store, const QString& key, const QString& name,
                 const QString& fallback)
{
    QVariant value;
    store.regRead(root, key, name, QStringLiteral("S"), fallback, value);
    return value.toString();
}

int32_t readNumber(RegistryStore& store, const QString& key, const QString& name, int32_t fallback)
{
    QVariant value;
    store.regRead(root, key, name, QStringLiteral("D"), fallback, value);
    return value.toInt();
}

bool readFlag(RegistryStore& store, const QString& key, const QString& name, bool fallback)
{
    QVariant value;
    store.regRead(root, key, name, QStringLiteral("B"), fallback, value);
    return value.toBool();
}

// The window place's numbers in their stored order.
template <typename PlaceType, typename Visit>
void forEachPlaceNumber(PlaceType& place, Visit visit)
{
    visit(QStringLiteral("MainLeft"), place.left);
    visit(QStringLiteral("MainTop"), place.top);
    visit(QStringLiteral("MainWidth"), place.width);
    visit(QStringLiteral("MainHeight"), place.height);
}

// The tree options in their stored order.
template <typename SettingsType, typename Visit>
void forEachTreeFlag(SettingsType& s, Visit visit)
{
    visit(QStringLiteral("ViewDates"), s.ViewDates);
    visit(QStringLiteral("ViewSurnames"), s.ViewSurnames);
    visit(QStringLiteral("ViewDescendentMark"), s.ViewDescendentMark);
    visit(QStringLiteral("ViewMainLine"), s.ViewMainLine);
    visit(QStringLiteral("ViewNoSpouse"), s.ViewNoSpouse);
    visit(QStringLiteral("BackColour"), s.BackColour);
}

}  // namespace

QString recentFileValueName(int i) { return signedText(i) + QStringLiteral("fPrev"); }

void loadSettings(Settings& settings, RegistryStore& store, const QString& section)
{
    const bool all = section == QLatin1String("ALL");
    if (all || section == QLatin1String("General")) {
        int i = 0;
        do {
            ++i;
            settings.recentFiles[size_t(i)] =
                readText(store, generalKey, recentFileValueName(i), QString());
        } while (!settings.recentFiles[size_t(i)].trimmed().isEmpty() &&
                 i < Settings::maxRecentFiles);
        settings.recentCount = settings.recentFiles[size_t(i)].isEmpty() ? i - 1 : i;
        settings.autoLoadFile =
            readText(store, generalKey, QStringLiteral("AutoLoadFile"), QString());
        settings.SurnameStyle = readNumber(store, generalKey, QStringLiteral("SurnameStyle"), 2);
        settings.SurnamePosn = readNumber(store, generalKey, QStringLiteral("SurnamePosn"), 2);
        settings.dirLast = readText(store, generalKey, QStringLiteral("dirLast"), QString());
    }
    if (all || section == QLatin1String("Tree")) {
        forEachTreeFlag(settings, [&](const QString& name, bool& flag) {
            flag = readFlag(store, treeKey, name, false);
        });
        settings.FontSize = readNumber(store, treeKey, QStringLiteral("FontSize"), 2);
    }
    if (all || section == QLatin1String("Window")) {
        Settings::WindowPlace& place = settings.mainWindow;
        forEachPlaceNumber(place, [&](const QString& name, int32_t& number) {
            number = readNumber(store, windowKey, name, 0);
        });
        place.maximized = readFlag(store, windowKey, QStringLiteral("MainMaximized"), false);
        settings.viewFolder = readText(store, windowKey, QStringLiteral("ViewFolder"), QString());
        settings.ancestorGenerations = std::clamp(
            readNumber(store, windowKey, QStringLiteral("AncestorGenerations"), 5), 2, 10);
    }
}

namespace {

// Every value, written as one batch: the file is replaced once, at the end.
void writeAllSettings(const Settings& settings, RegistryStore& store)
{
    const RegistryStore::Batch batch(store);
    const QString text = QStringLiteral("S"), number = QStringLiteral("D");
    for (int i = 1; i <= Settings::maxRecentFiles; ++i)
        store.regWrite(root, generalKey, recentFileValueName(i), text,
                       settings.recentFiles[size_t(i)]);
    store.regWrite(root, generalKey, QStringLiteral("AutoLoadFile"), text, settings.autoLoadFile);
    store.regWrite(root, generalKey, QStringLiteral("SurnameStyle"), number, settings.SurnameStyle);
    store.regWrite(root, generalKey, QStringLiteral("SurnamePosn"), number, settings.SurnamePosn);
    store.regWrite(root, generalKey, QStringLiteral("dirLast"), text, settings.dirLast);
    forEachTreeFlag(settings, [&](const QString& name, const bool& flag) {
        store.regWrite(root, treeKey, name, QStringLiteral("B"), flag);
    });
    store.regWrite(root, treeKey, QStringLiteral("FontSize"), number, settings.FontSize);
    forEachPlaceNumber(settings.mainWindow, [&](const QString& name, const int32_t& value) {
        store.regWrite(root, windowKey, name, number, value);
    });
    store.regWrite(root, windowKey, QStringLiteral("MainMaximized"), QStringLiteral("B"),
                   settings.mainWindow.maximized);
    store.regWrite(root, windowKey, QStringLiteral("ViewFolder"), text, settings.viewFolder);
    store.regWrite(root, windowKey, QStringLiteral("AncestorGenerations"), number,
                   settings.ancestorGenerations);
}

}  // namespace

Outcome saveSettings(const Settings& settings, RegistryStore& store)
{
    writeAllSettings(settings, store);
    return store.writeOutcome();
}

}  // namespace tav
