// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <exception>

namespace tav {

// A run-time fault of the kind the reader's error trap reports and that every
// window turns into an "Error no: " message while keeping what it showed.
class RuntimeFault : public std::exception {
public:
    enum Number {
        InvalidCall = 5,  // "Invalid procedure call or argument"
        Overflow = 6,     // "Overflow"
        SubscriptOutOfRange = 9,
        TypeMismatch = 13,
        FileNotFound = 53,        // "File not found"
        InputPastEndOfFile = 62,  // "Input past end of file"
    };

    explicit RuntimeFault(Number number);

    Number number() const { return number_; }
    QString description() const;
    // "Error no: " + number with a leading blank for the sign + " " + description.
    QString messageText() const;
    const char* what() const noexcept override;

private:
    Number number_;
    QByteArray what_;
};

[[noreturn]] void raiseFault(RuntimeFault::Number number);

}  // namespace tav
