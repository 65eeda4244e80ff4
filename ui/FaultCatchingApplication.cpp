// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/FaultCatchingApplication.h"

#include "app/Messages.h"
#include "core/Fault.h"

namespace tav {

bool FaultCatchingApplication::notify(QObject* receiver, QEvent* event)
{
    if (!messages_)
        return QApplication::notify(receiver, event);
    try {
        return QApplication::notify(receiver, event);
    } catch (const RuntimeFault& fault) {
        messages_->fault(fault);
        return false;
    }
}

}  // namespace tav
