#pragma once

#include <QByteArray>
#include <QString>

namespace tav {

// Where a file was written, or why it was not.
struct WrittenFile {
    QString path;     // absolute
    QString failure;  // "Cannot save PATH: reason."; empty once written

    bool ok() const { return failure.isEmpty(); }
};

// Writes the bytes to the file all at once (see writeFileAtomically): a
// reader sees the old file or the whole new one, and a failure leaves the
// old file as it was.
WrittenFile writeWholeFile(const QString& path, const QByteArray& bytes);

}  // namespace tav
