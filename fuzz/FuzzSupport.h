// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/Messages.h"

#include <QDate>
#include <QString>
#include <cstddef>
#include <cstdint>

namespace tav::fuzz {

// Message boxes answered at once: Yes to every question, nothing kept, so
// long runs do not grow.
class QuietMessages : public Messages {
protected:
    void showMessage(const QString&, const QString&, MessageKind) override {}
    bool askYesNo(const QString&, const QString&) override { return true; }
};

// The day every run takes as today, so a finding replays the same.
inline QDate fuzzToday() { return QDate(2026, 11, 21); }

// The input taken apart: a few leading bytes as choices, the rest as text.
class FuzzInput {
public:
    FuzzInput(const uint8_t* data, size_t size) : data_(data), size_(size) {}

    // The next byte, 0 once the input is used up.
    uint8_t byte() { return at_ < size_ ? data_[at_++] : 0; }
    // The rest of the input up to the next `separator` byte (not included),
    // as UTF-8 text.
    QString textUpTo(char separator)
    {
        size_t end = at_;
        while (end < size_ && data_[end] != uint8_t(separator))
            ++end;
        const QString text =
            QString::fromUtf8(reinterpret_cast<const char*>(data_ + at_), qsizetype(end - at_));
        at_ = end < size_ ? end + 1 : end;
        return text;
    }

private:
    const uint8_t* data_;
    size_t size_;
    size_t at_ = 0;
};

}  // namespace tav::fuzz
