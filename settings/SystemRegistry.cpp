// SPDX-License-Identifier: GPL-3.0-or-later
// The Windows registry behind the settings store (built on Windows only).
#include "settings/RegistryBackend.h"

#include <windows.h>

namespace tav {

namespace {

HKEY rootHandle(int64_t root)
{
    return reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(static_cast<LONG>(root)));
}

class SystemRegistry : public RegistryBackend {
public:
    int32_t openKey(int64_t root, const QString& path) override
    {
        HKEY key = nullptr;
        const LONG status = RegOpenKeyExA(rootHandle(root), path.toLocal8Bit().constData(), 0,
                                          KEY_QUERY_VALUE, &key);
        if (status == ERROR_SUCCESS)
            RegCloseKey(key);
        return status;
    }

    int32_t queryValue(int64_t root, const QString& path, const QString& name, uint32_t& type,
                       QByteArray& data) override
    {
        HKEY key = nullptr;
        LONG status = RegOpenKeyExA(rootHandle(root), path.toLocal8Bit().constData(), 0,
                                    KEY_QUERY_VALUE, &key);
        if (status != ERROR_SUCCESS)
            return status;
        const QByteArray valueName = name.toLocal8Bit();
        DWORD valueType = 0, size = 0;
        status = RegQueryValueExA(key, valueName.constData(), nullptr, &valueType, nullptr, &size);
        if (status == ERROR_SUCCESS) {
            data.resize(qsizetype(size));
            status = RegQueryValueExA(key, valueName.constData(), nullptr, &valueType,
                                      reinterpret_cast<BYTE*>(data.data()), &size);
            data.resize(qsizetype(size));
            type = valueType;
        }
        RegCloseKey(key);
        return status;
    }

    int32_t createKey(int64_t root, const QString& path) override
    {
        HKEY key = nullptr;
        const LONG status = RegCreateKeyExA(
            rootHandle(root), path.toLocal8Bit().constData(), 0, nullptr, REG_OPTION_NON_VOLATILE,
            KEY_SET_VALUE | KEY_CREATE_SUB_KEY, nullptr, &key, nullptr);
        if (status == ERROR_SUCCESS)
            RegCloseKey(key);
        return status;
    }

    int32_t setValue(int64_t root, const QString& path, const QString& name, uint32_t type,
                     const QByteArray& data) override
    {
        HKEY key = nullptr;
        LONG status = RegCreateKeyExA(rootHandle(root), path.toLocal8Bit().constData(), 0, nullptr,
                                      REG_OPTION_NON_VOLATILE, KEY_SET_VALUE | KEY_CREATE_SUB_KEY,
                                      nullptr, &key, nullptr);
        if (status != ERROR_SUCCESS)
            return status;
        status =
            RegSetValueExA(key, name.toLocal8Bit().constData(), 0, type,
                           reinterpret_cast<const BYTE*>(data.constData()), DWORD(data.size()));
        RegCloseKey(key);
        return status;
    }
};

}  // namespace

std::unique_ptr<RegistryBackend> makeSystemRegistry() { return std::make_unique<SystemRegistry>(); }

}  // namespace tav
