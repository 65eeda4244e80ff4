#include "tests/monkey/Confinement.h"

#include <QByteArray>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace tav {

namespace {

QString failed(const char* what)
{
    return QStringLiteral("%1: %2").arg(QLatin1String(what),
                                        QString::fromLocal8Bit(std::strerror(errno)));
}

bool writeProcFile(const char* path, const QByteArray& text)
{
    const int fd = ::open(path, O_WRONLY);
    if (fd < 0)
        return false;
    const bool ok = ::write(fd, text.constData(), size_t(text.size())) == text.size();
    ::close(fd);
    return ok;
}

}  // namespace

QString confineWritesToPrivateTmp()
{
    // A mount namespace of its own: as root directly, else in a user
    // namespace where this user is root.
    const uid_t uid = ::geteuid();
    const gid_t gid = ::getegid();
    if (::unshare(CLONE_NEWNS) != 0) {
        if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
            return failed("no mount namespace (needs root or user namespaces)");
        writeProcFile("/proc/self/setgroups", "deny");
        if (!writeProcFile("/proc/self/uid_map", "0 " + QByteArray::number(uid) + " 1") ||
            !writeProcFile("/proc/self/gid_map", "0 " + QByteArray::number(gid) + " 1"))
            return failed("cannot map the user in a user namespace");
    }
    if (::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        return failed("cannot make the mounts private");
    mount_attr readOnly{};
    readOnly.attr_set = MOUNT_ATTR_RDONLY;
    if (::mount_setattr(AT_FDCWD, "/", AT_RECURSIVE, &readOnly, sizeof readOnly) != 0)
        return failed("cannot make the file systems read-only");
    if (::mount("tmpfs", "/tmp", "tmpfs", MS_NOSUID | MS_NODEV, "size=512m,mode=1777") != 0)
        return failed("cannot mount a private /tmp");
    // Proof, without writing: the root folder refuses writes.
    if (::access("/", W_OK) == 0 || errno != EROFS)
        return QStringLiteral("the root folder is still writable");
    return QString();
}

}  // namespace tav
