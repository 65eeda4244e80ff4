// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tav {

class RegistryStore;
class Session;

// The options dialog without its window: copies of the settings in the
// form the controls show them, written back (and saved) only by OK.
class OptionsLogic {
public:
    OptionsLogic(Session& session, RegistryStore& store);

    // A path is shown whole up to 40 characters, else as "..." and its last 37.
    static QString shortenedPath(const QString& path);

    // The file chooser's answer; "" when cancelled.
    void autoLoadFileChosen(const QString& path);
    // The box as the user left it: cleared, or a path typed in place of the
    // one shown.
    void autoLoadTextEdited(const QString& text);
    // What the auto-load box shows.
    QString autoLoadText;

    // OK: false (after "Cannot find autoload file!") when the dialog must stay open.
    bool accept();

    int surnameStyleIndex;        // SurnameStyle - 1
    bool surnameFirstNamesFirst;  // SurnamePosn 1
    bool viewDates, viewSurnames, viewDescendentMark, viewMainLine, viewNoSpouse, backColour;
    int fontSizeIndex;  // 4 - FontSize

    const QString& autoLoadPath() const { return autoLoadPath_; }

private:
    Session& session_;
    RegistryStore& store_;
    QString autoLoadPath_;
};

}  // namespace tav
