#include "reports/ReportFile.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace tav {

WrittenFile writeFileAtomically(const QString& path, const QByteArray& bytes)
{
    WrittenFile written{QDir::cleanPath(QFileInfo(path).absoluteFilePath()), QString()};
    QSaveFile file(written.path);
    // A folder of that name would otherwise be reported as a failed rename.
    const bool isFolder = QFileInfo(written.path).isDir();
    if (isFolder || !file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() ||
        !file.commit()) {
        const QString reason = isFolder ? QStringLiteral("it is a folder") : file.errorString();
        written.failure = QStringLiteral("Cannot write %1: %2")
                              .arg(QDir::toNativeSeparators(written.path), reason);
    }
    return written;
}

}  // namespace tav
