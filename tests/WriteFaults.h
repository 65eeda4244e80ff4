// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tav::test {

// The ways a write of a whole file fails on a real machine.
enum class WriteFault {
    DiskFull,        // a small file system with no room left (ENOSPC)
    FileSizeLimit,   // ulimit -f below the file's size (EFBIG)
    ReadOnlyDisk,    // the file system mounted read-only (EROFS)
    ReadOnlyFolder,  // the folder without write permission (EACCES)
    TargetIsFolder,  // a folder stands where the file goes (EISDIR)
    ReadOnlyFile,    // the file itself made read-only by its owner
};
const std::vector<WriteFault>& allWriteFaults();
// The fault's name, as a test's name ("DiskFull").
const char* writeFaultName(WriteFault fault);
inline std::string writeFaultTestName(const ::testing::TestParamInfo<WriteFault>& info)
{
    return writeFaultName(info.param);
}

// What a write under a fault left behind.
struct WriteFaultOutcome {
    bool ran = false;     // false when this machine cannot make the fault
    QString unavailable;  // why not
    QString message;      // what the write returned (the message for the user)
    bool targetIsFolder = false;
    QByteArray after;       // the target's bytes afterwards
    QStringList folder;     // every name in the target's folder afterwards
    QString retried;        // what the same write returned once the fault was gone
    QByteArray afterRetry;  // the target's bytes after that
};

// The write under test. `prepare` runs before the fault, with the target
// holding its previous bytes (as a program reads its file at start); the
// write it returns runs under the fault and returns "" or the message it
// gives the user. The write is run once more after the fault is lifted.
using PreparedWrite = std::function<QString()>;
using PrepareWrite = std::function<PreparedWrite(const QString& target)>;

// Runs the write in a child process of its own, where the fault cannot
// reach the rest of the machine: the folder is a small private file
// system (a tmpfs in a mount namespace), and the file size limit and
// permissions are the child's alone. `previous` is what the target holds
// before (for TargetIsFolder: a folder holding a file with those bytes).
WriteFaultOutcome underWriteFault(WriteFault fault, const QString& fileName,
                                  const QByteArray& previous, const PrepareWrite& prepare);

}  // namespace tav::test
