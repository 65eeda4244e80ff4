#include "reports/ReportFile.h"

#include "core/AtomicFile.h"

#include <QDir>
#include <QFileInfo>

namespace tav {

Result<QString> writeWholeFile(const QString& path, const QByteArray& bytes)
{
    const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    if (Outcome written = writeFileAtomically(absolute, bytes); !written)
        return written;
    return absolute;
}

}  // namespace tav
