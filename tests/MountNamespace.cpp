// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/MountNamespace.h"

#include <QByteArray>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace tav::test {

namespace {

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

QString enterPrivateMountNamespace()
{
    const uid_t uid = ::geteuid();
    const gid_t gid = ::getegid();
    if (::unshare(CLONE_NEWNS) != 0) {
        if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
            return QStringLiteral("no mount namespace (needs root or user namespaces): %1")
                .arg(QString::fromLocal8Bit(std::strerror(errno)));
        writeProcFile("/proc/self/setgroups", "deny");
        if (!writeProcFile("/proc/self/uid_map", "0 " + QByteArray::number(uid) + " 1") ||
            !writeProcFile("/proc/self/gid_map", "0 " + QByteArray::number(gid) + " 1"))
            return QStringLiteral("cannot map the user in a user namespace");
    }
    if (::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        return QStringLiteral("cannot make the mounts private");
    return QString();
}

}  // namespace tav::test
