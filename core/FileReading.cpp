// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/FileReading.h"

#include "core/FileNames.h"
#include "core/LargePages.h"

#include <algorithm>
#include <memory>
#include <new>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>
#else
#include <QFile>
#include <QFileInfo>
#endif

namespace tav {

QString tooLargeText(qint64 size, qint64 largest)
{
    constexpr qint64 megabyte = 1024 * 1024;
    return QStringLiteral("the file is too large to read (%1 MB; at most %2 MB)")
        .arg((size + megabyte - 1) / megabyte)
        .arg(largest / megabyte);
}

namespace {

QString notAFileText(FileKind kind)
{
    return QStringLiteral("it is %1, not a file").arg(fileKindText(kind));
}

QString notEnoughMemoryText() { return QStringLiteral("there is not enough memory to read it"); }

}  // namespace

Result<QByteArray> readWholeFile(FileLines& lines)
{
    try {
        QByteArray bytes;
        if (!lines.readWhole(bytes))
            return Outcome::failed(lines.failure());
        return bytes;
    } catch (const std::bad_alloc&) {
        return Outcome::failed(notEnoughMemoryText());
    }
}

#ifdef Q_OS_UNIX

namespace {

QString systemReason(int error) { return QString::fromLocal8Bit(std::strerror(error)); }

// Closes the descriptor when it goes.
struct Descriptor {
    int fd;
    ~Descriptor()
    {
        if (fd >= 0)
            ::close(fd);
    }
};

Result<QByteArray> readRegular(int fd, qint64 size, qint64 largest)
{
    if (size > largest)
        return Outcome::failed(tooLargeText(size, largest));
    QByteArray bytes(qsizetype(size), Qt::Uninitialized);
    prepareForWriting(bytes.data(), size_t(size));
    qint64 done = 0;
    while (done < size) {
        const ssize_t got = ::read(fd, bytes.data() + done, size_t(size - done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return Outcome::failed(systemReason(errno));
        if (got == 0)
            break;
        done += got;
    }
    bytes.truncate(qsizetype(done));
    return bytes;
}

// A pipe, a terminal or a device, which tells no length: read in pieces to
// its end or past `largest`. A named pipe is read without blocking, so one
// that no program writes to ends the wait after a moment instead of never.
Result<QByteArray> readStream(int fd, bool pipe, qint64 largest)
{
    constexpr qsizetype piece = 1 << 20;
    QByteArray bytes;
    qsizetype used = 0;
    bool writerSeen = false;
    for (;;) {
        int ready = 1;
        if (pipe) {
            pollfd wait{fd, POLLIN, 0};
            ready = ::poll(&wait, 1, writerSeen ? -1 : pipeWriterWaitMs);
            if (ready < 0 && errno == EINTR)
                continue;
            if (ready < 0)
                return Outcome::failed(systemReason(errno));
        }
        if (bytes.size() < used + piece) {
            // Grown by doubling, but never past the limit and a piece.
            const qsizetype room = std::min<qint64>(std::max(bytes.size() * 2, used + piece),
                                                    largest + piece);
            bytes.resize(room);
        }
        const ssize_t got = ::read(fd, bytes.data() + used, size_t(piece));
        if (got > 0) {
            writerSeen = true;
            used += got;
            if (used > largest)
                return Outcome::failed(tooLargeText(used, largest));
            continue;
        }
        if (got == 0) {
            // The end, unless nothing was ever written and the wait ran out:
            // then no program has the pipe open to write.
            if (pipe && !writerSeen && ready == 0)
                return Outcome::failed(QStringLiteral("nothing writes to this named pipe"));
            break;
        }
        if (errno == EAGAIN || errno == EWOULDBLOCK) {
            writerSeen = true;  // a writer is there, with nothing to say yet
            continue;
        }
        if (errno != EINTR)
            return Outcome::failed(systemReason(errno));
    }
    bytes.truncate(used);
    bytes.squeeze();
    return bytes;
}

// A file opened for reading, with what it is; a failure as readWholeFile
// words it.
struct OpenedFile {
    std::shared_ptr<Descriptor> file;
    struct stat info {};
};

// `kind` is what fileKindOf tells of the path, looked at before it is
// opened so that a named pipe is refused without waiting on it.
Result<OpenedFile> openChecked(const QString& path, OddFiles oddFiles, FileKind kind)
{
    if (kind == FileKind::Folder)
        return Outcome::failed(QStringLiteral("Is a directory"));
    if (kind != FileKind::Regular && kind != FileKind::Missing && oddFiles == OddFiles::Refused)
        return Outcome::failed(notAFileText(kind));
    OpenedFile opened{std::shared_ptr<Descriptor>(new Descriptor{::open(
        fileNameToBytes(path).constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK)})};
    if (opened.file->fd < 0)
        return Outcome::failed(systemReason(errno));
    if (::fstat(opened.file->fd, &opened.info) != 0)
        return Outcome::failed(systemReason(errno));
    if (S_ISDIR(opened.info.st_mode))
        return Outcome::failed(QStringLiteral("Is a directory"));
    if (!S_ISREG(opened.info.st_mode) && oddFiles == OddFiles::Refused)
        return Outcome::failed(notAFileText(S_ISFIFO(opened.info.st_mode) ? FileKind::Pipe
                                                                           : FileKind::Device));
    return opened;
}

}  // namespace

Result<QByteArray> readWholeFile(const QString& path, qint64 largest, OddFiles oddFiles)
{
    const Result<OpenedFile> opened = openChecked(path, oddFiles, fileKindOf(path));
    if (!opened)
        return Outcome::failed(opened.message());
    const int fd = opened.value().file->fd;
    const struct stat& info = opened.value().info;
    try {
        if (S_ISREG(info.st_mode))
            return readRegular(fd, qint64(info.st_size), largest);
        const bool pipe = S_ISFIFO(info.st_mode);
        if (!pipe)
            ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
        return readStream(fd, pipe, largest);
    } catch (const std::bad_alloc&) {
        return Outcome::failed(notEnoughMemoryText());
    }
}

Result<std::unique_ptr<FileLines>> openFileLines(const QString& path, qint64 largest,
                                                 OddFiles oddFiles, qsizetype longest)
{
    // Anything but a regular file is left unopened for readWholeFile: a
    // named pipe opened twice could lose its writer in between.
    const FileKind kind = fileKindOf(path);
    if (kind != FileKind::Regular)
        return std::unique_ptr<FileLines>();
    Result<OpenedFile> opened = openChecked(path, oddFiles, kind);
    if (!opened)
        return Outcome::failed(opened.message());
    if (!S_ISREG(opened.value().info.st_mode))
        return std::unique_ptr<FileLines>();  // replaced since: read it as it is now
    const qint64 size = qint64(opened.value().info.st_size);
    if (size > largest)
        return Outcome::failed(tooLargeText(size, largest));
    // At most the length the file had when opened, as readWholeFile reads.
    auto readSome = [file = opened.value().file, left = size](char* into, qint64 most,
                                                              QString& failure) mutable -> qint64 {
        for (;;) {
            const ssize_t got = ::read(file->fd, into, size_t(std::min(most, left)));
            if (got < 0 && errno == EINTR)
                continue;
            if (got < 0)
                failure = systemReason(errno);
            if (got > 0)
                left -= got;
            return got;
        }
    };
    try {
        // A quarter of a megabyte a read: the calls cost nothing beside the
        // parsing, and the pages read into stay few and warm.
        return std::make_unique<FileLines>(std::move(readSome), size, longest,
                                           qsizetype(256) << 10);
    } catch (const std::bad_alloc&) {
        return Outcome::failed(notEnoughMemoryText());
    }
}

#else

Result<QByteArray> readWholeFile(const QString& path, qint64 largest, OddFiles oddFiles)
{
    const FileKind kind = fileKindOf(path);
    if (kind == FileKind::Folder)
        return Outcome::failed(QStringLiteral("Is a directory"));
    if (kind == FileKind::Other && oddFiles == OddFiles::Refused)
        return Outcome::failed(notAFileText(kind));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return Outcome::failed(file.errorString());
    QByteArray bytes;
    try {
        const qint64 size = file.size();
        if (size > largest)
            return Outcome::failed(tooLargeText(size, largest));
        bytes.resize(qsizetype(size));
        qint64 done = 0;
        while (done < size) {
            const qint64 got = file.read(bytes.data() + done, size - done);
            if (got <= 0)
                break;
            done += got;
        }
        bytes.truncate(qsizetype(done));
    } catch (const std::bad_alloc&) {
        return Outcome::failed(notEnoughMemoryText());
    }
    if (file.error() != QFileDevice::NoError)
        return Outcome::failed(file.errorString());
    return bytes;
}

Result<std::unique_ptr<FileLines>> openFileLines(const QString&, qint64, OddFiles, qsizetype)
{
    // Read whole here: the pieces are a saving of POSIX systems' fresh pages.
    return std::unique_ptr<FileLines>();
}

#endif

}  // namespace tav
