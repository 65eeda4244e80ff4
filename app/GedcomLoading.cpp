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

namespace {

// A load of `fileLength` bytes around the reading itself: the session made
// ready, the progress driven, the messages told together once it ends.
// `readFile` reads with the reader it is given, reporting positions in
// `textLength` bytes (the file's, or its converted text's).
template <typename ReadFile>
void runLoad(Session& session, const QString& path, qint64 fileLength, qint64 textLength,
             const LoadProgress& progress, ReadFile readFile)
{
    const qint64 maximum = fileLength + 200;
    if (progress.started)
        progress.started(maximum);

    session.records.fileName = path;
    session.descendantCache.clear();
    session.nameTallies.clear();
    session.nameSearch.clear();

    QStringList messages;
    GedcomReader reader(
        session.records, [&messages](const QString& message) { messages << message; },
        [&](qint64 position) {
            if (progress.advanced && textLength > 0)
                progress.advanced(position * fileLength / textLength);
        });
    readFile(reader);

    session.curInd = 1;
    if (progress.finished)
        progress.finished();
    session.messages().loadMessages(messages);
}

}  // namespace

Outcome loadGedcom(Session& session, const QString& path, const LoadProgress& progress,
                   OddFiles oddFiles)
{
    // A regular file is read in pieces as it is parsed; anything else, a
    // UTF-16 file and a header longer than a piece are read whole.
    const auto cannotOpen = [&path](const QString& reason) {
        return Outcome::failed(
            QStringLiteral("Cannot open %1: %2").arg(shownFileName(path), reason));
    };
    Result<std::unique_ptr<FileLines>> lines =
        openFileLines(path, largestGedcomFile, oddFiles, GedcomReader::longestLine);
    if (!lines)
        return cannotOpen(lines.message());
    if (std::unique_ptr<FileLines> pieces = std::move(lines.value())) {
        if (GedcomReader::readableInPieces(*pieces)) {
            const qint64 length = pieces->fileBytes();
            runLoad(session, path, length, length, progress,
                    [&](GedcomReader& reader) { reader.read(*pieces, length); });
            return {};
        }
        // Read on whole from the file already open.
        Result<QByteArray> bytes = readWholeFile(*pieces);
        if (!bytes)
            return cannotOpen(bytes.message());
        pieces.reset();
        loadGedcomBytes(session, path, bytes.value(), progress);
        return {};
    }
    Result<QByteArray> bytes = readWholeFile(path, largestGedcomFile, oddFiles);
    if (!bytes)
        return cannotOpen(bytes.message());
    loadGedcomBytes(session, path, bytes.value(), progress);
    return {};
}

void loadGedcomBytes(Session& session, const QString& path, QByteArray& bytes,
                     const LoadProgress& progress)
{
    const qint64 fileLength = bytes.size();
    const QByteArrayView text = prepareFileBytes(bytes);
    runLoad(session, path, fileLength, text.size(), progress,
            [text](GedcomReader& reader) { reader.read(text); });
}

}  // namespace tav
