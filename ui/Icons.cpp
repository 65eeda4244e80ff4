// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Icons.h"

#include <QString>

// The resources live in a static library, so they are registered by hand.
static void registerResources() { Q_INIT_RESOURCE(tav); }

namespace tav {

QIcon tavIcon(const char* name)
{
    static const bool registered = (registerResources(), true);
    Q_UNUSED(registered);
    return QIcon(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(name)));
}

}  // namespace tav
