// SPDX-License-Identifier: GPL-3.0-or-later
#include "windowlogic/main/RecentFiles.h"

#include "settings/Settings.h"

namespace tav {

void splitPath(const QString& path, QString& name, QString& folder)
{
    const qsizetype separator =
        qMax(path.lastIndexOf(QLatin1Char('\\')), path.lastIndexOf(QLatin1Char('/')));
    if (separator >= 0) {
        name = path.mid(separator + 1);
        folder = path.left(separator + 1);
        return;
    }
    const qsizetype colon = path.indexOf(QLatin1Char(':'));
    if (colon >= 0) {
        name = path.mid(colon + 1);
        folder = path.left(colon + 1) + QLatin1Char('\\');
        return;
    }
    name = path;
    folder.clear();
}

QString fileNamePart(const QString& path)
{
    QString name, folder;
    splitPath(path, name, folder);
    return name;
}

bool addRecentFile(Settings& settings, const QString& path)
{
    auto& list = settings.recentFiles;
    QString carried = path;
    bool found = false;
    for (int i = 1; i <= settings.recentCount + 1; ++i) {
        QString taken = list[size_t(i)];
        list[size_t(i)] = carried;
        carried = taken;
        if (taken.compare(list[1], Qt::CaseInsensitive) == 0) {
            found = true;  // the older copy of the same path is dropped here
            break;
        }
    }
    if (!found && settings.recentCount < Settings::maxRecentFiles) {
        ++settings.recentCount;
        return true;
    }
    return false;
}

}  // namespace tav
