// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/OffscreenGui.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

#include <memory>

namespace tav {

void ensureOffscreenGui()
{
    if (QCoreApplication::instance())
        return;
    static int argc = 1;
    static char name[] = "tav-cli";
    static char* argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Without a session (a script, a container) the window system would
    // warn that it has no runtime folder; give it a private one quietly.
#ifdef Q_OS_UNIX
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) {
        const QString runtime =
            QDir::temp().filePath(QStringLiteral("tav-runtime-%1").arg(getuid()));
        if (QDir().mkpath(runtime)) {
            QFile::setPermissions(runtime, QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                               QFileDevice::ExeOwner);
            qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime));
        }
    }
#endif
    static std::unique_ptr<QGuiApplication> application =
        std::make_unique<QGuiApplication>(argc, argv);
}

}  // namespace tav
