#pragma once

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

// Reads the GEDCOM file `path` into the session: the store is rebuilt and
// the current individual becomes 1. Load messages go to the session's
// message boxes. When the file cannot be read nothing changes, and the
// result is false with `failure` set to "Cannot open FILE: reason".
bool loadGedcom(Session& session, const QString& path, QString* failure = nullptr,
                const LoadProgress& progress = {});

// The main window's caption after a load: "FILE (N individuals, M families)".
QString loadedCaption(const RecordStore& records);

}  // namespace tav
