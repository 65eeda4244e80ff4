// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/RegistryStore.h"

#include "core/Fault.h"
#include "core/FileNames.h"
#include "core/TextNumbers.h"
#include "settings/IniFile.h"
#include "settings/RegistryBackend.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace tav {

namespace {

constexpr uint32_t typeString = 1, typeBinary = 3, typeDword = 4;

// Little-endian number from the first `width` bytes, missing bytes zero.
int64_t littleEndian(const QByteArray& data, int width)
{
    uint64_t value = 0;
    for (int i = width - 1; i >= 0; --i)
        value = (value << 8) | (i < data.size() ? uchar(data[i]) : 0u);
    return int64_t(value);
}

QByteArray littleEndianBytes(int64_t value, int width)
{
    QByteArray bytes(width, '\0');
    for (int i = 0; i < width; ++i)
        bytes[i] = char((value >> (8 * i)) & 0xFF);
    return bytes;
}

}  // namespace

RegistryStore::RegistryStore(const QString& registryFile)
{
#ifdef Q_OS_WIN
    Q_UNUSED(registryFile);
    backend_ = makeSystemRegistry();
#else
    backend_ = makeFileRegistry(registryFile);
#endif
}

RegistryStore::~RegistryStore() = default;

QString RegistryStore::defaultRegistryFile()
{
    // Folder names are the system's bytes, which need not be UTF-8.
    const auto folder = [](const char* variable) {
        return fileNameFromBytes(qgetenv(variable));
    };
    static const QString path = registryFileFor(
        folder("XDG_CONFIG_HOME"), qEnvironmentVariableIsEmpty("HOME") ? QDir::homePath()
                                                                        : folder("HOME"));
    return path;
}

QString RegistryStore::registryFileFor(const QString& configHome, const QString& home)
{
    // The XDG rules: an empty or relative value is ignored.
    const QString config = configHome.isEmpty() || QDir::isRelativePath(configHome)
                               ? home + QStringLiteral("/.config")
                               : configHome;
    return QDir::cleanPath(config + QStringLiteral("/Wendrake/Tav.reg"));
}

QStringList RegistryStore::loadProblems() const { return backend_->loadProblems(); }

Outcome RegistryStore::writeOutcome() const
{
    return iniWritten_ ? backend_->writeOutcome() : iniWritten_;
}

int64_t RegistryStore::rootKeyFromName(const QString& name)
{
    const QString upper = name.toUpper();
    if (upper == QLatin1String("HKCU"))
        return 0x80000001;
    if (upper == QLatin1String("HKLM"))
        return 0x80000002;
    if (upper == QLatin1String("HKU"))
        return 0x80000003;
    if (upper == QLatin1String("HKDD"))
        return 0x80000006;
    if (upper == QLatin1String("HKCC"))
        return 0x80000005;
    if (upper == QLatin1String("HKCR"))
        return 0x80000000;
    return !name.isEmpty() && QFileInfo(name).isFile() ? iniFileRoot : 0;
}

int32_t RegistryStore::regRead(const QString& root, const QString& keyPath,
                               const QString& valueName, const QString& typeCode,
                               const QVariant& defaultValue, QVariant& result)
{
    result = defaultValue;
    const int64_t rootKey = rootKeyFromName(root);
    if (rootKey == 0)
        return statusInvalidRoot;
    const QString code = typeCode.toUpper();
    if (rootKey == iniFileRoot) {
        // Only text is read from an INI file; other codes keep the default.
        if (code == QLatin1String("S"))
            result = IniFile(root).readString(keyPath, valueName, defaultValue.toString());
        return 0;
    }
    if (const int32_t status = backend_->openKey(rootKey, keyPath))
        return status;
    if (code != QLatin1String("S") && code != QLatin1String("B") && code != QLatin1String("D"))
        return 0;
    uint32_t type = 0;
    QByteArray data;
    if (const int32_t status = backend_->queryValue(rootKey, keyPath, valueName, type, data))
        return status;
    // The value is read as raw bytes into the buffer the type code expects,
    // whatever type it was stored with.
    if (code == QLatin1String("S")) {
        // Text is UTF-8; a file name of other bytes keeps them.
        if (!data.isEmpty())
            result = fileNameFromBytes(data.left(data.size() - 1));
    } else if (code == QLatin1String("B")) {
        if (data.size() > 2)
            return statusMoreData;
        result = int16_t(littleEndian(data, 2)) != 0;
    } else {
        if (data.size() > 32)  // the buffer size the read announces
            return statusMoreData;
        result = int32_t(littleEndian(data, 4));
    }
    return 0;
}

int32_t RegistryStore::regWrite(const QString& root, const QString& keyPath,
                                const QString& valueName, const QString& typeCode,
                                const QVariant& value)
{
    const int64_t rootKey = rootKeyFromName(root);
    if (rootKey == 0)
        return statusInvalidRoot;
    const QString code = typeCode.toUpper();
    if (rootKey == iniFileRoot) {
        if (code == QLatin1String("S"))
            iniWritten_ = IniFile(root).writeString(keyPath, valueName, value.toString());
        return 0;
    }
    int32_t status = backend_->createKey(rootKey, keyPath);
    if (status)
        return status;
    try {
        if (code == QLatin1String("S"))
            status = backend_->setValue(rootKey, keyPath, valueName, typeString,
                                        fileNameToBytes(value.toString()) + '\0');
        else if (code == QLatin1String("B"))
            status = backend_->setValue(rootKey, keyPath, valueName, typeBinary,
                                        littleEndianBytes(value.toBool() ? -1 : 0, 2));
        else if (code == QLatin1String("D"))
            status = backend_->setValue(rootKey, keyPath, valueName, typeDword,
                                        littleEndianBytes(toInteger(value.toDouble()), 4));
    } catch (const RuntimeFault&) {
        // A fault ends the call with the status it had reached; nothing is written.
    }
    return status;
}

RegistryStore::Batch::Batch(RegistryStore& store) : store_(store) { store_.backend_->beginBatch(); }

RegistryStore::Batch::~Batch() { store_.backend_->endBatch(); }

}  // namespace tav
