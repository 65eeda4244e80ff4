// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Fault.h"

namespace tav {

RuntimeFault::RuntimeFault(Number number) : number_(number) { what_ = messageText().toUtf8(); }

QString RuntimeFault::description() const
{
    switch (number_) {
    case InvalidCall: return QStringLiteral("Invalid procedure call or argument");
    case Overflow: return QStringLiteral("Overflow");
    case SubscriptOutOfRange: return QStringLiteral("Subscript out of range");
    case TypeMismatch: return QStringLiteral("Type mismatch");
    case FileNotFound: return QStringLiteral("File not found");
    case InputPastEndOfFile: return QStringLiteral("Input past end of file");
    }
    return QStringLiteral("Application-defined or object-defined error");
}

QString RuntimeFault::messageText() const
{
    return QStringLiteral("Error no: ") + QLatin1Char(' ') + QString::number(int(number_)) +
           QLatin1Char(' ') + description();
}

const char* RuntimeFault::what() const noexcept { return what_.constData(); }

void raiseFault(RuntimeFault::Number number) { throw RuntimeFault(number); }

}  // namespace tav
