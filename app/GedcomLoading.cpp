#include "app/GedcomLoading.h"

#include "app/Session.h"
#include "core/CharsetDecoder.h"
#include "core/GedcomReader.h"

#include <QFile>
#include <QFileInfo>

#include <QStringList>
#include <new>

namespace tav {

namespace {

// Reads the whole file into memory; a failure gives the reason alone. The
// file is read, never mapped: another program may shorten or rewrite it
// meanwhile, and a mapped file that shrinks kills the reader (SIGBUS). At
// most the length the file had when it was opened is read, so a file that
// grows meanwhile cannot keep the read going; one that shrinks gives what
// it still held.
Result<QByteArray> readFileBytes(const QString& path)
{
    if (QFileInfo(path).isDir())
        return Outcome::failed(QStringLiteral("Is a directory"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return Outcome::failed(file.errorString());
    const auto tooLarge = [](qint64 size) {
        // The size rounded up and the limit down, so the two always differ.
        constexpr qint64 megabyte = 1024 * 1024;
        return Outcome::failed(
            QStringLiteral("the file is too large to read (%1 MB; at most %2 MB)")
                .arg((size + megabyte - 1) / megabyte)
                .arg(largestGedcomFile / megabyte));
    };
    QByteArray bytes;
    try {
        if (file.isSequential()) {
            // A pipe or device tells no length: read it in pieces up to the limit.
            while (!file.atEnd()) {
                const QByteArray piece = file.read(1 << 20);
                if (piece.isEmpty())
                    break;
                if (bytes.size() + piece.size() > largestGedcomFile)
                    return tooLarge(bytes.size() + piece.size());
                bytes += piece;
            }
        } else {
            const qint64 size = file.size();
            if (size > largestGedcomFile)
                return tooLarge(size);
            bytes.resize(qsizetype(size));
            qint64 done = 0;
            while (done < size) {
                const qint64 got = file.read(bytes.data() + done, size - done);
                if (got <= 0)
                    break;
                done += got;
            }
            bytes.truncate(qsizetype(done));
        }
    } catch (const std::bad_alloc&) {
        return Outcome::failed(QStringLiteral("there is not enough memory to read it"));
    }
    if (file.error() != QFileDevice::NoError)
        return Outcome::failed(file.errorString());
    return bytes;
}

}  // namespace

QString loadedCaption(const RecordStore& records)
{
    return QStringLiteral("%1 (%2 individuals, %3 families)")
        .arg(records.fileName)
        .arg(records.individualCount())
        .arg(records.familyCount());
}

Outcome loadGedcom(Session& session, const QString& path, const LoadProgress& progress)
{
    Result<QByteArray> bytes = readFileBytes(path);
    if (!bytes)
        return Outcome::failed(QStringLiteral("Cannot open %1: %2").arg(path, bytes.message()));
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
