#include "app/GedcomLoading.h"

#include "app/Session.h"
#include "core/CharsetDecoder.h"
#include "core/GedcomReader.h"

#include <QFile>
#include <QFileInfo>

namespace tav {

namespace {

// The file's bytes: mapped into memory where the system allows it (no copy,
// no large allocation), else read whole.
class FileBytes {
public:
    bool open(const QString& path, QString& reason)
    {
        if (QFileInfo(path).isDir()) {
            reason = QStringLiteral("Is a directory");
            return false;
        }
        file_.setFileName(path);
        if (!file_.open(QIODevice::ReadOnly)) {
            reason = file_.errorString();
            return false;
        }
        const qint64 size = file_.size();
        if (size > 0) {
            if (uchar* mapped = file_.map(0, size)) {
                bytes_ =
                    QByteArray::fromRawData(reinterpret_cast<const char*>(mapped), qsizetype(size));
                return true;
            }
        }
        bytes_ = file_.readAll();
        if (file_.error() != QFileDevice::NoError) {
            reason = file_.errorString();
            return false;
        }
        return true;
    }

    QByteArray& bytes() { return bytes_; }

private:
    QFile file_;  // keeps the mapping alive
    QByteArray bytes_;
};

}  // namespace

QString loadedCaption(const RecordStore& records)
{
    return QStringLiteral("%1 (%2 individuals, %3 families)")
        .arg(records.fileName)
        .arg(records.individualCount())
        .arg(records.familyCount());
}

bool loadGedcom(Session& session, const QString& path, QString* failure,
                const LoadProgress& progress)
{
    FileBytes file;
    QString reason;
    if (!file.open(path, reason)) {
        if (failure)
            *failure = QStringLiteral("Cannot open %1: %2").arg(path, reason);
        return false;
    }

    QByteArray& raw = file.bytes();
    const qint64 fileLength = raw.size();
    const qint64 maximum = fileLength + 200;
    if (progress.started)
        progress.started(maximum);

    session.records.fileName = path;
    const QByteArrayView text = prepareFileBytes(raw);
    const qint64 textLength = text.size();

    GedcomReader reader(
        session.records,
        [&session](const QString& message) {
            // The reader's fault reports are errors; its capacity notes warnings.
            session.messages().message(message, QString(),
                                       message.startsWith(QLatin1String("Error no:"))
                                           ? MessageKind::Error
                                           : MessageKind::Warning);
        },
        [&](qint64 position) {
            if (progress.advanced && textLength > 0)
                progress.advanced(position * fileLength / textLength);
        });
    reader.read(text);

    session.curInd = 1;
    if (progress.finished)
        progress.finished();
    return true;
}

}  // namespace tav
