#include "reports/ReportFile.h"

#include "core/AtomicFile.h"

#include <QDir>
#include <QFileInfo>

namespace tav {

WrittenFile writeWholeFile(const QString& path, const QByteArray& bytes)
{
    const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    return WrittenFile{absolute, writeFileAtomically(absolute, bytes)};
}

}  // namespace tav
