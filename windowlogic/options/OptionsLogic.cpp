// SPDX-License-Identifier: GPL-3.0-or-later
#include "windowlogic/options/OptionsLogic.h"

#include "app/Session.h"
#include "settings/SettingsPersistence.h"

#include <QFileInfo>

namespace tav {

OptionsLogic::OptionsLogic(Session& session, RegistryStore& store)
    : session_(session), store_(store)
{
    const Settings& s = session_.settings;
    autoLoadPath_ = s.autoLoadFile;
    autoLoadText = shortenedPath(autoLoadPath_);
    surnameStyleIndex = s.SurnameStyle - 1;
    surnameFirstNamesFirst = s.SurnamePosn == 1;
    viewDates = s.ViewDates;
    viewSurnames = s.ViewSurnames;
    viewDescendentMark = s.ViewDescendentMark;
    viewMainLine = s.ViewMainLine;
    viewNoSpouse = s.ViewNoSpouse;
    backColour = s.BackColour;
    fontSizeIndex = 4 - s.FontSize;
}

QString OptionsLogic::shortenedPath(const QString& path)
{
    return path.size() < 41 ? path : QStringLiteral("...") + path.right(37);
}

void OptionsLogic::autoLoadFileChosen(const QString& path)
{
    if (path.isEmpty())
        return;
    autoLoadPath_ = path;
    autoLoadText = shortenedPath(path);
}

void OptionsLogic::autoLoadTextEdited(const QString& text)
{
    if (text == autoLoadText)
        return;
    autoLoadText = text;
    if (!text.trimmed().isEmpty())
        autoLoadPath_ = text.trimmed();
}

bool OptionsLogic::accept()
{
    if (autoLoadText.trimmed().isEmpty()) {
        autoLoadPath_.clear();
    } else if (!QFileInfo(autoLoadPath_).isFile()) {
        session_.messages().warning(QStringLiteral("Cannot find autoload file!"));
        return false;
    }
    Settings& s = session_.settings;
    s.autoLoadFile = autoLoadPath_;
    s.SurnameStyle = surnameStyleIndex + 1;
    s.SurnamePosn = surnameFirstNamesFirst ? 1 : 2;
    s.ViewDates = viewDates;
    s.ViewSurnames = viewSurnames;
    s.ViewDescendentMark = viewDescendentMark;
    s.ViewMainLine = viewMainLine;
    s.ViewNoSpouse = viewNoSpouse;
    s.BackColour = backColour;
    s.FontSize = 4 - fontSizeIndex;
    // The options apply even when they cannot be kept: the user hears why,
    // and they are saved again when Tav closes.
    if (const Outcome saved = saveSettings(s, store_); !saved)
        session_.messages().warning(saved.message() + session_.lineSeparator +
                                    session_.lineSeparator +
                                    QStringLiteral("The new options apply until Tav closes, "
                                                   "when they are saved again."));
    return true;
}

}  // namespace tav
