// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/monkey/Confinement.h"

#include "tests/MountNamespace.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/mount.h>
#include <unistd.h>

namespace tav {

namespace {

QString failed(const char* what)
{
    return QStringLiteral("%1: %2").arg(QLatin1String(what),
                                        QString::fromLocal8Bit(std::strerror(errno)));
}

}  // namespace

QString confineWritesToPrivateTmp()
{
    if (QString problem = test::enterPrivateMountNamespace(); !problem.isEmpty())
        return problem;
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
