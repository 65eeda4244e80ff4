// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/AtomicFile.h"

#include "core/FileNames.h"

#include <QDir>
#include <QFileInfo>

#ifdef Q_OS_WIN
#include <QSaveFile>
#else
#include <QRandomGenerator>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tav {

namespace {

Outcome failed(const QString& path, const QString& reason)
{
    return Outcome::failed(QStringLiteral("Cannot save %1: %2.")
                               .arg(QDir::toNativeSeparators(shownFileName(path)), reason));
}

}  // namespace

#ifdef Q_OS_WIN

Outcome writeFileAtomically(const QString& path, const QByteArray& bytes)
{
    if (QFileInfo(path).isDir())
        return failed(path, QStringLiteral("a folder of that name is in the way"));
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        return failed(path, file.errorString());
    return {};
}

#else

namespace {

// The file a write replaces: the target of a symbolic link (a settings
// file linked into a folder of dotfiles stays a link), else the path itself.
// The name's bytes are the system's own, which need not be UTF-8.
QByteArray writtenPath(const QString& path)
{
    const QByteArray name = fileNameToBytes(path);
    struct stat link {};
    if (::lstat(name.constData(), &link) != 0 || !S_ISLNK(link.st_mode))
        return name;
    if (char* target = ::realpath(name.constData(), nullptr)) {
        const QByteArray resolved(target);
        std::free(target);
        return resolved;
    }
    // A link to a file not there yet: the file it names, beside the link.
    QByteArray target(PATH_MAX, '\0');
    const ssize_t length = ::readlink(name.constData(), target.data(), size_t(target.size()));
    if (length <= 0)
        return name;
    target.truncate(length);
    if (target.startsWith('/'))
        return target;
    const qsizetype slash = name.lastIndexOf('/');
    return slash < 0 ? target : name.left(slash + 1) + target;
}

// A write past the file size limit (ulimit -f) must fail with EFBIG like
// any other failed write, not end the program: SIGXFSZ is ignored unless
// the program chose otherwise.
void ignoreFileSizeSignal()
{
    static const bool ignored = [] {
        struct sigaction current {};
        if (sigaction(SIGXFSZ, nullptr, &current) == 0 && current.sa_handler == SIG_DFL)
            std::signal(SIGXFSZ, SIG_IGN);
        return true;
    }();
    Q_UNUSED(ignored);
}

QString reasonFor(int error)
{
    switch (error) {
    case ENOSPC:
    case EDQUOT: return QStringLiteral("the disk is full");
    case EFBIG: return QStringLiteral("the file would pass the file size limit");
    case EROFS: return QStringLiteral("the disk is read-only");
    case EACCES:
    case EPERM: return QStringLiteral("there is no permission to write in its folder");
    case EISDIR: return QStringLiteral("a folder of that name is in the way");
    case ENOENT:
    case ENOTDIR: return QStringLiteral("its folder does not exist");
    default: return QString::fromLocal8Bit(std::strerror(error));
    }
}

// Writes all of `bytes`, going on after interrupted or partial writes.
bool writeAll(int fd, const QByteArray& bytes)
{
    const char* data = bytes.constData();
    qsizetype left = bytes.size();
    while (left > 0) {
        const ssize_t written = ::write(fd, data, size_t(left));
        if (written < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        data += written;
        left -= written;
    }
    return true;
}

// The folder of a file's name ("." for a bare name).
QByteArray folderOf(const QByteArray& name)
{
    const qsizetype slash = name.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : slash == 0 ? QByteArray("/") : name.left(slash);
}

// A new file beside the target, named so no other writer (another copy of
// the program saving at the same moment) picks the same one.
int createTemporary(const QByteArray& target, QByteArray& name)
{
    const qsizetype slash = target.lastIndexOf('/');
    const QByteArray base = target.mid(slash + 1);
    for (int attempt = 0; attempt < 100; ++attempt) {
        name = (slash < 0 ? QByteArray() : target.left(slash + 1)) + '.' + base + '.' +
               QByteArray::number(QRandomGenerator::system()->generate(), 16).rightJustified(8, '0') +
               ".tmp";
        const int fd = ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0 || errno != EEXIST)
            return fd;
    }
    errno = EEXIST;
    return -1;
}

}  // namespace

Outcome writeFileAtomically(const QString& path, const QByteArray& bytes)
{
    ignoreFileSizeSignal();
    const QByteArray targetName = writtenPath(path);
    struct stat existing {};
    const bool exists = ::stat(targetName.constData(), &existing) == 0;
    if (exists && S_ISDIR(existing.st_mode))
        return failed(path, reasonFor(EISDIR));
    // A file the user made read-only stays as it is, as an editor would leave it.
    if (exists && ::faccessat(AT_FDCWD, targetName.constData(), W_OK, AT_EACCESS) != 0 &&
        errno == EACCES)
        return failed(path, QStringLiteral("the file is read-only"));

    QByteArray temporary;
    const int fd = createTemporary(targetName, temporary);
    if (fd < 0)
        return failed(path, reasonFor(errno));
    // The new file keeps the old one's permissions (a private settings file
    // stays private).
    if (exists)
        ::fchmod(fd, existing.st_mode & 07777);
    // fsync reports what a file system only finds out when it stores the
    // bytes (a full disk on some of them).
    const bool written = writeAll(fd, bytes) && ::fsync(fd) == 0;
    const int writeError = errno;
    if (::close(fd) != 0 && written) {
        const int closeError = errno;
        ::unlink(temporary.constData());
        return failed(path, reasonFor(closeError));
    }
    if (!written) {
        ::unlink(temporary.constData());
        return failed(path, reasonFor(writeError));
    }
    if (::rename(temporary.constData(), targetName.constData()) != 0) {
        const int renameError = errno;
        ::unlink(temporary.constData());
        return failed(path, reasonFor(renameError));
    }
    // The rename itself is on disk once the folder is.
    const int folder = ::open(folderOf(targetName).constData(), O_RDONLY | O_CLOEXEC);
    if (folder >= 0) {
        ::fsync(folder);
        ::close(folder);
    }
    return {};
}

#endif

}  // namespace tav
