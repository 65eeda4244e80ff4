// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/WriteFaults.h"

#include "tests/MountNamespace.h"
#include "tests/TestSupport.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cerrno>
#include <cstring>
#include <linux/capability.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tav::test {

namespace {

constexpr qint64 smallDiskBytes = 256 * 1024;

bool writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

QString mountSmallDisk(const QString& folder)
{
    if (const QString problem = enterPrivateMountNamespace(); !problem.isEmpty())
        return problem;
    const QByteArray options = "size=" + QByteArray::number(smallDiskBytes) + ",mode=0755";
    if (::mount("tmpfs", QFile::encodeName(folder).constData(), "tmpfs", MS_NOSUID | MS_NODEV,
                options.constData()) != 0)
        return QStringLiteral("cannot mount a small file system: %1")
            .arg(QString::fromLocal8Bit(std::strerror(errno)));
    return QString();
}

// Root ignores permissions; without these capabilities it obeys them like
// any owner of the folder.
void dropPermissionOverrides()
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[2]{};
    if (::syscall(SYS_capget, &header, data) != 0)
        return;
    for (int cap : {CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH, CAP_FOWNER})
        data[cap / 32].effective &= ~(1u << (cap % 32));
    ::syscall(SYS_capset, &header, data);
}

// Fills the file system of `folder` until not one more byte fits.
void fillDisk(const QString& folder)
{
    QFile filler(QDir(folder).filePath(QStringLiteral("filler")));
    if (!filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return;
    const QByteArray block(4096, 'x');
    while (filler.write(block) > 0) {
    }
    while (filler.write("x", 1) > 0) {
    }
}

// Applies the fault to the target in `folder`; "" when it is in place.
QString applyFault(WriteFault fault, const QString& folder, const QString& target)
{
    switch (fault) {
    case WriteFault::DiskFull: fillDisk(folder); return QString();
    case WriteFault::FileSizeLimit: {
        const rlimit limit{64, RLIM_INFINITY};
        return ::setrlimit(RLIMIT_FSIZE, &limit) == 0 ? QString()
                                                      : QStringLiteral("cannot set ulimit -f");
    }
    case WriteFault::ReadOnlyDisk:
        return ::mount(nullptr, QFile::encodeName(folder).constData(), nullptr,
                       MS_REMOUNT | MS_RDONLY, nullptr) == 0
                   ? QString()
                   : QStringLiteral("cannot mount read-only: %1")
                         .arg(QString::fromLocal8Bit(std::strerror(errno)));
    case WriteFault::ReadOnlyFolder:
        dropPermissionOverrides();
        QFile::setPermissions(folder, QFileDevice::ReadOwner | QFileDevice::ExeOwner |
                                          QFileDevice::ReadGroup | QFileDevice::ExeGroup);
        // access() would answer for root as root; only a real attempt tells.
        if (QFile probe(QDir(folder).filePath(QStringLiteral("probe")));
            probe.open(QIODevice::WriteOnly)) {
            probe.remove();
            return QStringLiteral("the folder stays writable for this user");
        }
        return QString();
    case WriteFault::TargetIsFolder:
        return QFileInfo(target).isDir() ? QString() : QStringLiteral("no folder in place");
    case WriteFault::ReadOnlyFile:
        dropPermissionOverrides();
        QFile::setPermissions(target, QFileDevice::ReadOwner);
        if (QFile probe(target); probe.open(QIODevice::Append))
            return QStringLiteral("the file stays writable for this user");
        return QString();
    }
    return QString();
}

void liftFault(WriteFault fault, const QString& folder, const QString& target)
{
    switch (fault) {
    case WriteFault::DiskFull:
        QFile::remove(QDir(folder).filePath(QStringLiteral("filler")));
        break;
    case WriteFault::FileSizeLimit: {
        const rlimit limit{RLIM_INFINITY, RLIM_INFINITY};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        break;
    }
    case WriteFault::ReadOnlyDisk:
        ::mount(nullptr, QFile::encodeName(folder).constData(), nullptr, MS_REMOUNT, nullptr);
        break;
    case WriteFault::ReadOnlyFolder:
        QFile::setPermissions(folder, QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                          QFileDevice::ExeOwner);
        break;
    case WriteFault::TargetIsFolder: break;
    case WriteFault::ReadOnlyFile:
        QFile::setPermissions(target, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
        break;
    }
}

WriteFaultOutcome unavailable(const QString& why)
{
    WriteFaultOutcome outcome;
    outcome.unavailable = why;
    return outcome;
}

// The child's part: sets everything up, runs the write and describes the result.
WriteFaultOutcome runInChild(WriteFault fault, const QString& folder, const QString& fileName,
                             const QByteArray& previous, const PrepareWrite& prepare)
{
    const bool smallDisk = fault == WriteFault::DiskFull || fault == WriteFault::ReadOnlyDisk;
    if (const QString why = smallDisk ? mountSmallDisk(folder) : QString(); !why.isEmpty())
        return unavailable(why);
    const QString target = QDir(folder).filePath(fileName);
    if (fault == WriteFault::TargetIsFolder) {
        QDir().mkpath(target);
        writeBytes(QDir(target).filePath(QStringLiteral("inside")), previous);
    } else if (!writeBytes(target, previous)) {
        return unavailable(QStringLiteral("cannot write the previous file"));
    }
    const PreparedWrite write = prepare(target);
    WriteFaultOutcome outcome;
    outcome.unavailable = applyFault(fault, folder, target);
    if (!outcome.unavailable.isEmpty())
        return outcome;
    outcome.ran = true;
    outcome.message = write();
    liftFault(fault, folder, target);
    outcome.targetIsFolder = QFileInfo(target).isDir();
    outcome.after = outcome.targetIsFolder
                        ? fileBytes(QDir(target).filePath(QStringLiteral("inside")))
                        : fileBytes(target);
    outcome.folder = QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    outcome.folder.removeAll(QStringLiteral("filler"));
    if (fault != WriteFault::TargetIsFolder) {
        outcome.retried = write();
        outcome.afterRetry = fileBytes(target);
    }
    return outcome;
}

QByteArray serialized(const WriteFaultOutcome& o)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << o.ran << o.unavailable << o.message << o.targetIsFolder << o.after << o.folder
        << o.retried << o.afterRetry;
    return bytes;
}

WriteFaultOutcome deserialized(const QByteArray& bytes)
{
    WriteFaultOutcome o;
    QDataStream in(bytes);
    in >> o.ran >> o.unavailable >> o.message >> o.targetIsFolder >> o.after >> o.folder >>
        o.retried >> o.afterRetry;
    return o;
}

}  // namespace

const std::vector<WriteFault>& allWriteFaults()
{
    static const std::vector<WriteFault> faults = {
        WriteFault::DiskFull,       WriteFault::FileSizeLimit,  WriteFault::ReadOnlyDisk,
        WriteFault::ReadOnlyFolder, WriteFault::TargetIsFolder, WriteFault::ReadOnlyFile};
    return faults;
}

const char* writeFaultName(WriteFault fault)
{
    switch (fault) {
    case WriteFault::DiskFull: return "DiskFull";
    case WriteFault::FileSizeLimit: return "FileSizeLimit";
    case WriteFault::ReadOnlyDisk: return "ReadOnlyDisk";
    case WriteFault::ReadOnlyFolder: return "ReadOnlyFolder";
    case WriteFault::TargetIsFolder: return "TargetIsFolder";
    case WriteFault::ReadOnlyFile: return "ReadOnlyFile";
    }
    return "?";
}

WriteFaultOutcome underWriteFault(WriteFault fault, const QString& fileName,
                                  const QByteArray& previous, const PrepareWrite& prepare)
{
    QTemporaryDir dir;
    const QString folder = dir.filePath(QStringLiteral("disk"));
    QDir().mkpath(folder);
    int channel[2];
    if (!dir.isValid() || ::pipe(channel) != 0)
        return unavailable(QStringLiteral("no temporary folder or pipe"));
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(channel[0]);
        const QByteArray report =
            serialized(runInChild(fault, folder, fileName, previous, prepare));
        QFile out;
        const bool sent = out.open(channel[1], QIODevice::WriteOnly) &&
                          out.write(report) == report.size() && out.flush();
        ::_exit(sent ? 0 : 1);
    }
    ::close(channel[1]);
    // The whole report, up to the end that the child's exit makes.
    QFile in;
    const QByteArray report =
        in.open(channel[0], QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    ::close(channel[0]);
    if (child < 0)
        return unavailable(QStringLiteral("cannot start a child process"));
    int status = 0;
    ::waitpid(child, &status, 0);
    // The child may have left the folder without write permission.
    QFile::setPermissions(folder,
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        // The write under test ended the process: a failure, not a skip.
        WriteFaultOutcome crashed;
        crashed.ran = true;
        crashed.message = QStringLiteral("the write ended its process (status %1)").arg(status);
        return crashed;
    }
    return deserialized(report);
}

}  // namespace tav::test
