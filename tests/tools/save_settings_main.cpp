// SPDX-License-Identifier: GPL-3.0-or-later
// tav-test-save-settings FILE TAG TIMES: a viewer that closes, TIMES over:
// reads the settings file FILE, sets the settings that TAG (a number)
// stands for and saves them, as the viewer does at exit.
#include "settings/RegistryStore.h"
#include "settings/Settings.h"
#include "settings/SettingsPersistence.h"

#include <QString>
#include <cstdio>
#include <cstdlib>

int main(int argc, char* argv[])
{
    if (argc != 4) {
        std::fprintf(stderr, "usage: tav-test-save-settings FILE TAG TIMES\n");
        return 2;
    }
    const QString file = QString::fromLocal8Bit(argv[1]);
    const int tag = std::atoi(argv[2]);
    for (int n = std::atoi(argv[3]); n > 0; --n) {
        tav::RegistryStore store(file);
        tav::Settings settings;
        tav::loadSettings(settings, store, QStringLiteral("ALL"));
        for (int i = 1; i <= tav::Settings::maxRecentFiles; ++i)
            settings.recentFiles[size_t(i)] =
                QStringLiteral("/home/viewer%1/family%2.ged").arg(tag).arg(i);
        settings.recentCount = tav::Settings::maxRecentFiles;
        settings.autoLoadFile = settings.recentFiles[1];
        settings.SurnameStyle = 1 + tag % 6;
        settings.ViewDates = tag % 2 == 0;
        settings.FontSize = 1 + tag % 4;
        settings.mainWindow = {tag, tag, 600 + tag, 400 + tag, false};
        if (const tav::Outcome saved = tav::saveSettings(settings, store); !saved) {
            std::fprintf(stderr, "%s\n", qPrintable(saved.message()));
            return 1;
        }
    }
    return 0;
}
