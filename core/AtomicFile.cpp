#include "core/AtomicFile.h"

#include <QDir>
#include <QFileInfo>

#ifdef Q_OS_WIN
#include <QSaveFile>
#else
#include <QRandomGenerator>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tav {

namespace {

Outcome failed(const QString& path, const QString& reason)
{
    return Outcome::failed(
        QStringLiteral("Cannot save %1: %2.").arg(QDir::toNativeSeparators(path), reason));
}

// The file a write replaces: the target of a symbolic link (a settings
// file linked into a folder of dotfiles stays a link), else the path itself.
QString writtenPath(const QString& path)
{
    const QFileInfo info(path);
    if (info.isSymLink()) {
        const QString target = info.canonicalFilePath();
        return target.isEmpty() ? info.symLinkTarget() : target;
    }
    return path;
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

// A new file beside the target, named so no other writer (another copy of
// the program saving at the same moment) picks the same one.
int createTemporary(const QString& target, QByteArray& name)
{
    const QFileInfo info(target);
    for (int attempt = 0; attempt < 100; ++attempt) {
        name = QFile::encodeName(
            QStringLiteral("%1/.%2.%3.tmp")
                .arg(info.absolutePath(), info.fileName())
                .arg(QRandomGenerator::system()->generate(), 8, 16, QLatin1Char('0')));
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
    const QString target = writtenPath(path);
    const QByteArray targetName = QFile::encodeName(target);
    struct stat existing {};
    const bool exists = ::stat(targetName.constData(), &existing) == 0;
    if (exists && S_ISDIR(existing.st_mode))
        return failed(path, reasonFor(EISDIR));
    // A file the user made read-only stays as it is, as an editor would leave it.
    if (exists && ::faccessat(AT_FDCWD, targetName.constData(), W_OK, AT_EACCESS) != 0 &&
        errno == EACCES)
        return failed(path, QStringLiteral("the file is read-only"));

    QByteArray temporary;
    const int fd = createTemporary(target, temporary);
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
    const int folder =
        ::open(QFile::encodeName(QFileInfo(target).absolutePath()).constData(), O_RDONLY);
    if (folder >= 0) {
        ::fsync(folder);
        ::close(folder);
    }
    return {};
}

#endif

}  // namespace tav
