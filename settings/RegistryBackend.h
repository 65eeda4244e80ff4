// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Outcome.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <memory>

namespace tav {

// Where registry keys and values really live: the system registry, or a
// text file standing in for it. Results are registry error codes, 0 for done.
class RegistryBackend {
public:
    virtual ~RegistryBackend() = default;

    virtual int32_t openKey(int64_t root, const QString& path) = 0;
    virtual int32_t queryValue(int64_t root, const QString& path, const QString& name,
                               uint32_t& type, QByteArray& data) = 0;
    virtual int32_t createKey(int64_t root, const QString& path) = 0;
    virtual int32_t setValue(int64_t root, const QString& path, const QString& name, uint32_t type,
                             const QByteArray& data) = 0;

    virtual void beginBatch() {}
    virtual void endBatch() {}
    // Notes on what could not be read when the registry was opened: each
    // names the file and the line, which was skipped.
    virtual QStringList loadProblems() const { return {}; }
    // Failed when a write since the batch began failed, naming the file and
    // the reason.
    virtual Outcome writeOutcome() const { return {}; }
};

std::unique_ptr<RegistryBackend> makeFileRegistry(const QString& path);
#ifdef Q_OS_WIN
std::unique_ptr<RegistryBackend> makeSystemRegistry();
#endif

}  // namespace tav
