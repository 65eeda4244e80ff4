// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/ReportFile.h"

#include "core/AtomicFile.h"
#include "core/FileNames.h"

namespace tav {

Result<QString> writeWholeFile(const QString& path, const QByteArray& bytes)
{
    const QString absolute = absoluteFileName(path);
    if (Outcome written = writeFileAtomically(absolute, bytes); !written)
        return written;
    return absolute;
}

}  // namespace tav
