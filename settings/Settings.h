// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <array>
#include <cstdint>

namespace tav {

// The user's settings as the program holds them while it runs: read from the
// settings store at start-up, written back at exit and when the options
// dialog is confirmed. Defaults are those of a first run.
struct Settings {
    static constexpr int maxRecentFiles = 10;

    std::array<QString, maxRecentFiles + 2> recentFiles;  // 1..10 used, most recent first
    int32_t recentCount = 0;
    QString autoLoadFile;
    int32_t SurnameStyle = 2;
    int32_t SurnamePosn = 2;
    QString dirLast;

    bool ViewDates = false;
    bool ViewSurnames = false;
    bool ViewDescendentMark = false;
    bool ViewMainLine = false;
    bool ViewNoSpouse = false;
    bool BackColour = false;
    int32_t FontSize = 2;
    // The generations the ancestors chart shows (2 to 10).
    int32_t ancestorGenerations = 5;

    // Where the main window was when the program last ended (in pixels); a
    // width of 0 means unknown.
    struct WindowPlace {
        int32_t left = 0;
        int32_t top = 0;
        int32_t width = 0;
        int32_t height = 0;
        bool maximized = false;
    };
    WindowPlace mainWindow;
    // The folder of the tree view last saved or opened by name ("Save view
    // as...", "Open view..."); "" for none yet.
    QString viewFolder;
};

}  // namespace tav
