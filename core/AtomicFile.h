// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Outcome.h"

#include <QByteArray>
#include <QString>

namespace tav {

// Writes whole files so that a failed write never costs the user the file
// they had: the bytes go to a new file in the same folder, which replaces
// the target by a rename only once every byte is on disk. Disk full, the
// file size limit (ulimit -f), a read-only folder or a folder in the
// target's place leave the old file as it was, byte for byte.
//
// Fails with a message for the user that names the file and the reason:
// "Cannot save FILE: the disk is full."
Outcome writeFileAtomically(const QString& path, const QByteArray& bytes);

}  // namespace tav
