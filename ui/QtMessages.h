// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/Messages.h"

namespace tav {

// Message boxes as real dialogs, over the window that is active.
class QtMessages : public Messages {
protected:
    void showMessage(const QString& text, const QString& title, MessageKind kind) override;
    bool askYesNo(const QString& text, const QString& title) override;
};

}  // namespace tav
