#include "cli/OffscreenGui.h"

#include <QGuiApplication>

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
    static std::unique_ptr<QGuiApplication> application =
        std::make_unique<QGuiApplication>(argc, argv);
}

}  // namespace tav
