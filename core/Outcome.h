// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QtGlobal>
#include <optional>
#include <utility>

namespace tav {

// How an operation that can fail tells its caller: done, or failed with a
// message for the user that names what failed and why ("Cannot save FILE:
// the disk is full."). It cannot be dropped unread: a failure nobody
// shows is work the user believes saved.
class [[nodiscard]] Outcome {
public:
    // Done.
    Outcome() = default;
    static Outcome failed(QString message) { return Outcome(std::move(message)); }

    bool ok() const { return !failed_; }
    explicit operator bool() const { return ok(); }
    // The message for the user; "" when done.
    const QString& message() const { return message_; }

private:
    explicit Outcome(QString message) : message_(std::move(message)), failed_(true) {}

    QString message_;
    bool failed_ = false;
};

// The same for an operation that makes something: the value when done,
// else the failure's message. A failed Outcome converts to a failed Result.
template <typename T>
class [[nodiscard]] Result {
public:
    Result(T value) : value_(std::move(value)) {}
    Result(Outcome failure) : failure_(std::move(failure)) { Q_ASSERT(!failure_.ok()); }

    bool ok() const { return value_.has_value(); }
    explicit operator bool() const { return ok(); }
    const T& value() const { return *value_; }
    T& value() { return *value_; }
    const T& operator*() const { return *value_; }
    const T* operator->() const { return &*value_; }
    const QString& message() const { return failure_.message(); }

private:
    std::optional<T> value_;
    Outcome failure_;
};

}  // namespace tav
