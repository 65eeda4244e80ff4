// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Outcome.h"

#include <QString>
#include <QVariant>
#include <cstdint>
#include <memory>

namespace tav {

class RegistryBackend;

// The registry access the settings use: read one value, write one value,
// map a root-key name to a handle. On Windows it is the real registry; on
// other systems a registry-export text file stands in for it. A root name
// that is the path of an existing file means an INI file instead.
//
// Type codes (compared without regard to case): "S" text, "B" a 16-bit
// boolean in 2 bytes, "D" a 32-bit number written from a 16-bit value.
// Statuses: 0 done, 99 an invalid root, else the registry's error code
// (2 not found, 234 more data than the buffer holds).
class RegistryStore {
public:
    static constexpr int32_t statusInvalidRoot = 99;
    static constexpr int32_t statusNotFound = 2;
    static constexpr int32_t statusMoreData = 234;
    static constexpr int64_t iniFileRoot = 1;

    // `registryFile` is the text file that stands in for the registry where
    // there is none; by default defaultRegistryFile().
    explicit RegistryStore(const QString& registryFile = defaultRegistryFile());
    ~RegistryStore();

    // $XDG_CONFIG_HOME/Wendrake/Tav.reg (~/.config when that is unset, empty
    // or relative), fixed at the first call: the program calls it before it
    // changes folder.
    static QString defaultRegistryFile();
    // The settings file for a value of XDG_CONFIG_HOME and a home folder.
    static QString registryFileFor(const QString& configHome, const QString& home);

    // Notes on the lines of the registry file that could not be read (each
    // names the file and the line); empty when it was good or absent. The
    // other lines' values count; the defaults fill the rest.
    QStringList loadProblems() const;
    // Failed when the last write failed (or, after a batch, a write of the
    // batch), naming the file and the reason. A write to an INI file counts
    // too, though its status is 0 whatever happened, as described.
    Outcome writeOutcome() const;

    // HKEY values for "HKCU", "HKLM", "HKU", "HKDD", "HKCC", "HKCR" (any
    // case), 1 for the path of an existing file, 0 for anything else.
    static int64_t rootKeyFromName(const QString& name);

    int32_t regRead(const QString& root, const QString& keyPath, const QString& valueName,
                    const QString& typeCode, const QVariant& defaultValue, QVariant& result);
    int32_t regWrite(const QString& root, const QString& keyPath, const QString& valueName,
                     const QString& typeCode, const QVariant& value);

    // While a batch is open, writes to the registry file are collected and
    // the file is replaced once, when the batch closes.
    class Batch {
    public:
        explicit Batch(RegistryStore& store);
        ~Batch();
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;

    private:
        RegistryStore& store_;
    };

private:
    std::unique_ptr<RegistryBackend> backend_;
    Outcome iniWritten_;
};

}  // namespace tav
