// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Outcome.h"

#include <QByteArray>
#include <QString>

namespace tav {

// Writes the bytes to the file all at once (see writeFileAtomically): a
// reader sees the old file or the whole new one, and a failure leaves the
// old file as it was. Gives the absolute path of the file written.
Result<QString> writeWholeFile(const QString& path, const QByteArray& bytes);

}  // namespace tav
