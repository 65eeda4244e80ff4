// SPDX-License-Identifier: GPL-3.0-or-later
#include "windowlogic/main/HelpTopics.h"

#include "core/Fault.h"
#include "core/FileReading.h"

#include <QDir>

namespace tav {

const HelpTopic helpTopics[5] = {
    {"QuickStart", "Quick Start"},       {"List", "Listing information"}, {"Find", "Find"},
    {"Tree", "Showing the family tree"}, {"Options", "Setting options"},
};

QString helpTopic(const QString& helpText, const QString& key)
{
    const QString marker = QStringLiteral("***!!!");
    const qsizetype p = helpText.indexOf(marker + key);
    if (p < 0)
        return QString();
    qsizetype q =
        helpText.indexOf(marker, p + 1);  // 0-based; the length stands in when there is none
    const qsizetype start = p + marker.size() + key.size();
    if (q < 0)
        q = helpText.size() - 1;  // so the last topic loses the file's last three characters
    const qsizetype length = q - start - 2;
    if (length < 0)
        raiseFault(RuntimeFault::InvalidCall);
    return helpText.mid(start, length);
}

bool hasHelpTopic(const QString& helpText, const QString& key)
{
    return !key.isEmpty() && helpText.contains(QStringLiteral("***!!!") + key);
}

QStringList helpFilePlaces(const QString& programFolder)
{
    QStringList places = {QStringLiteral("help.txt")};
    if (!programFolder.isEmpty()) {
        const QDir program(programFolder);
        places << program.filePath(QStringLiteral("help.txt"))
               << QDir::cleanPath(program.filePath(QStringLiteral("../share/tav/help.txt")));
    }
    return places;
}

Result<QString> readHelpFile(const QString& programFolder)
{
    // The help of a few hundred lines; a named pipe in its place is not read
    // (it would wait for a writer for ever).
    constexpr qint64 largestHelpFile = 16 * 1024 * 1024;
    QString problem;
    for (const QString& path : helpFilePlaces(programFolder)) {
        const Result<QByteArray> bytes = readWholeFile(path, largestHelpFile, OddFiles::Refused);
        if (bytes)
            return QString::fromUtf8(*bytes);
        if (problem.isEmpty())
            problem = QStringLiteral("Cannot open help.txt: %1").arg(bytes.message());
    }
    return Outcome::failed(problem);
}

}  // namespace tav
