// SPDX-License-Identifier: GPL-3.0-or-later
#include "windowlogic/main/HeaderInformation.h"

#include "core/RecordStore.h"

namespace tav {

QStringList headerInformationLines(const RecordStore& records)
{
    const auto orElse = [](const QString& value, const char* missing) {
        return value.isEmpty() ? QString::fromLatin1(missing) : value;
    };
    return {QStringLiteral("Version: ") + orElse(records.gedcomVersion, "not available"),
            QStringLiteral("Date: ") + orElse(records.headerDate, "Unknown"),
            QStringLiteral("Char set: ") + orElse(records.characterSet, "Unknown")};
}

QString headerInformationTitle() { return QStringLiteral("Gedcom header infomation"); }

}  // namespace tav
