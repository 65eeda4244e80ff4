// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GedcomLoading.h"

#include "app/Session.h"
#include "core/CharsetDecoder.h"
#include "core/FileNames.h"
#include "core/GedcomReader.h"

#include <QStringList>

namespace tav {

QString loadedCaption(const RecordStore& records)
{
    return QStringLiteral("%1 (%2 individuals, %3 families)")
        .arg(shownFileName(records.fileName))
        .arg(records.individualCount())
        .arg(records.familyCount());
}

Outcome loadGedcom(Session& session, const QString& path, const LoadProgress& progress,
                   OddFiles oddFiles)
{
    Result<QByteArray> bytes = readWholeFile(path, largestGedcomFile, oddFiles);
    if (!bytes)
        return Outcome::failed(
            QStringLiteral("Cannot open %1: %2").arg(shownFileName(path), bytes.message()));
    loadGedcomBytes(session, path, bytes.value(), progress);
    return {};
}

void loadGedcomBytes(Session& session, const QString& path, QByteArray& bytes,
                     const LoadProgress& progress)
{
    const qint64 fileLength = bytes.size();
    const qint64 maximum = fileLength + 200;
    if (progress.started)
        progress.started(maximum);

    session.records.fileName = path;
    session.descendantCache.clear();
    session.nameTallies.clear();
    session.nameSearch.clear();
    const QByteArrayView text = prepareFileBytes(bytes);
    const qint64 textLength = text.size();

    // The load's messages are told together once it ends.
    QStringList messages;
    GedcomReader reader(
        session.records, [&messages](const QString& message) { messages << message; },
        [&](qint64 position) {
            if (progress.advanced && textLength > 0)
                progress.advanced(position * fileLength / textLength);
        });
    reader.read(text);

    session.curInd = 1;
    if (progress.finished)
        progress.finished();
    session.messages().loadMessages(messages);
}

}  // namespace tav
