// SPDX-License-Identifier: GPL-3.0-or-later
#include "windowlogic/main/WorkingFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>

namespace tav {

bool canCreateFilesIn(const QString& folder)
{
    if (folder.isEmpty() || !QFileInfo(folder).isDir())
        return false;
    QTemporaryFile probe(QDir(folder).filePath(QStringLiteral(".tav-probe-XXXXXX")));
    return probe.open();  // removed again when `probe` goes
}

QString userDataFolder()
{
    QString dataHome = qEnvironmentVariable("XDG_DATA_HOME");
    if (dataHome.isEmpty() || QDir::isRelativePath(dataHome))
        dataHome = QDir::homePath() + QStringLiteral("/.local/share");
    return QDir::cleanPath(dataHome + QStringLiteral("/Tav"));
}

QString workingFolder(const QString& programFolder)
{
    if (canCreateFilesIn(programFolder))
        return programFolder;
    const QString data = userDataFolder();
    if (QDir().mkpath(data))
        return data;
    return programFolder;
}

}  // namespace tav
