// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/IniFile.h"

#include "core/AtomicFile.h"

#include <QFile>
#include <QStringList>

#include <algorithm>

namespace tav {

namespace {

QStringList readLines(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QString text = QString::fromUtf8(file.readAll());
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    QStringList lines = text.split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

bool isSection(const QString& line, const QString& section)
{
    const QString t = line.trimmed();
    return t.startsWith(QLatin1Char('[')) && t.endsWith(QLatin1Char(']')) &&
           t.mid(1, t.size() - 2).trimmed().compare(section, Qt::CaseInsensitive) == 0;
}

bool isAnySection(const QString& line) { return line.trimmed().startsWith(QLatin1Char('[')); }

// The key of a "key=value" line, or "" for other lines.
QString keyOf(const QString& line)
{
    const qsizetype eq = line.indexOf(QLatin1Char('='));
    return eq > 0 ? line.left(eq).trimmed() : QString();
}

}  // namespace

QString IniFile::readString(const QString& section, const QString& key,
                            const QString& fallback) const
{
    bool inSection = false;
    for (const QString& line : readLines(path_)) {
        if (isAnySection(line)) {
            inSection = isSection(line, section);
            continue;
        }
        if (inSection && keyOf(line).compare(key, Qt::CaseInsensitive) == 0) {
            // A value in matching double or single quotes loses them.
            QString value = line.mid(line.indexOf(QLatin1Char('=')) + 1).trimmed();
            if (value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
                value.back() == value.front())
                value = value.mid(1, value.size() - 2);
            return value.left(254);
        }
    }
    // The default comes back without its trailing blanks.
    qsizetype end = fallback.size();
    while (end > 0 && fallback[end - 1] == u' ')
        --end;
    return fallback.left(std::min<qsizetype>(end, 254));
}

Outcome IniFile::writeString(const QString& section, const QString& key, const QString& value) const
{
    QStringList lines = readLines(path_);
    const QString entry = key + QLatin1Char('=') + value;
    qsizetype sectionLine = -1, insertAt = -1;
    for (qsizetype n = 0; n < lines.size(); ++n) {
        if (isAnySection(lines[n])) {
            if (sectionLine >= 0)
                break;
            if (isSection(lines[n], section))
                sectionLine = insertAt = n;
            continue;
        }
        if (sectionLine < 0)
            continue;
        if (keyOf(lines[n]).compare(key, Qt::CaseInsensitive) == 0) {
            lines[n] = entry;
            insertAt = -2;
            break;
        }
        if (!lines[n].trimmed().isEmpty())
            insertAt = n;
    }
    if (sectionLine < 0)
        lines << QStringLiteral("[%1]").arg(section) << entry;
    else if (insertAt >= 0)
        lines.insert(insertAt + 1, entry);

    return writeFileAtomically(
        path_, (lines.join(QLatin1String("\r\n")) + QLatin1String("\r\n")).toUtf8());
}

}  // namespace tav
