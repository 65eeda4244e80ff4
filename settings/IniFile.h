// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Outcome.h"

#include <QString>

namespace tav {

// The private-profile (INI) file access the settings store offers for a root
// that names a file: [section] lines and key=value lines, both matched
// without regard to case. Writes replace the file atomically.
class IniFile {
public:
    explicit IniFile(QString path) : path_(std::move(path)) {}

    // The value (at most 254 characters), or `fallback` when the key is absent.
    QString readString(const QString& section, const QString& key, const QString& fallback) const;
    Outcome writeString(const QString& section, const QString& key, const QString& value) const;

private:
    QString path_;
};

}  // namespace tav
