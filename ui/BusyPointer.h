// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCursor>
#include <QGuiApplication>
#include <Qt>

namespace tav {

// Shows the busy pointer (or another) while it lives; the pointer comes
// back however the work ends, a fault included.
class BusyPointer {
public:
    explicit BusyPointer(Qt::CursorShape shape = Qt::WaitCursor)
    {
        QGuiApplication::setOverrideCursor(QCursor(shape));
    }
    ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

}  // namespace tav
