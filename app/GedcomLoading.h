// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileReading.h"
#include "core/Outcome.h"

#include <QString>
#include <functional>

namespace tav {

class RecordStore;
class Session;

// Drives a progress bar through a load: its range is 0 to the file's length
// + 200, and it moves on every 80th level-0 line.
struct LoadProgress {
    std::function<void(qint64 maximum)> started;
    std::function<void(qint64 value)> advanced;
    std::function<void()> finished;
};

// The longest GEDCOM file read: its length must fit the progress bar's range,
// and a file past 2 GB holds far more than the record tables can take.
constexpr qint64 largestGedcomFile = 0x7FFFFFFF - 200;

// Reads the GEDCOM file `path` into the session: the store is rebuilt and
// the current individual becomes 1. Load messages go to the session's
// message boxes. When the file cannot be read (missing, a folder, larger
// than largestGedcomFile, more than memory holds, a pipe or a device unless
// `oddFiles` reads them) nothing changes, and it fails with "Cannot open
// FILE: reason".
Outcome loadGedcom(Session& session, const QString& path, const LoadProgress& progress = {},
                   OddFiles oddFiles = OddFiles::Refused);

// The load itself, from the bytes of a file named `path` (which may be
// changed in place: a UTF-16 file is converted).
void loadGedcomBytes(Session& session, const QString& path, QByteArray& bytes,
                     const LoadProgress& progress = {});

// The main window's caption after a load: "FILE (N individuals, M families)".
QString loadedCaption(const RecordStore& records);

}  // namespace tav
