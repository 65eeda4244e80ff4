// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/FileNames.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tav {

namespace {

constexpr char16_t keptByteBase = 0xDC00;

bool isKeptByte(QChar c) { return c.unicode() >= 0xDC80 && c.unicode() <= 0xDCFF; }

}  // namespace

#ifdef Q_OS_UNIX

QString fileNameFromBytes(QByteArrayView bytes)
{
    if (bytes.isValidUtf8())
        return QString::fromUtf8(bytes);
    QString text;
    text.reserve(bytes.size());
    const auto* p = reinterpret_cast<const uchar*>(bytes.data());
    const qsizetype n = bytes.size();
    for (qsizetype i = 0; i < n;) {
        const uchar lead = p[i];
        if (lead < 0x80) {
            text += QChar(lead);
            ++i;
            continue;
        }
        int length = 0;
        char32_t code = 0, lowest = 0;
        if ((lead & 0xE0) == 0xC0) {
            length = 2, code = lead & 0x1F, lowest = 0x80;
        } else if ((lead & 0xF0) == 0xE0) {
            length = 3, code = lead & 0x0F, lowest = 0x800;
        } else if ((lead & 0xF8) == 0xF0) {
            length = 4, code = lead & 0x07, lowest = 0x10000;
        }
        bool valid = length > 0 && i + length <= n;
        for (int k = 1; valid && k < length; ++k) {
            valid = (p[i + k] & 0xC0) == 0x80;
            code = (code << 6) | (p[i + k] & 0x3F);
        }
        valid = valid && code >= lowest && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
        if (!valid) {
            text += QChar(char16_t(keptByteBase + lead));
            ++i;
            continue;
        }
        if (QChar::requiresSurrogates(code)) {
            text += QChar(QChar::highSurrogate(code));
            text += QChar(QChar::lowSurrogate(code));
        } else {
            text += QChar(char16_t(code));
        }
        i += length;
    }
    return text;
}

QByteArray fileNameToBytes(QStringView name)
{
    QByteArray bytes;
    qsizetype from = 0;
    for (qsizetype i = 0; i < name.size(); ++i) {
        if (name[i].isHighSurrogate() && i + 1 < name.size() && name[i + 1].isLowSurrogate()) {
            ++i;
        } else if (isKeptByte(name[i])) {
            bytes += name.mid(from, i - from).toUtf8();
            bytes += char(name[i].unicode() - keptByteBase);
            from = i + 1;
        }
    }
    return from == 0 ? name.toUtf8() : bytes + name.mid(from).toUtf8();
}

FileKind fileKindOf(const QString& path, qint64* size)
{
    struct stat info {};
    if (path.isEmpty() || ::stat(fileNameToBytes(path).constData(), &info) != 0)
        return FileKind::Missing;
    if (size)
        *size = qint64(info.st_size);
    if (S_ISREG(info.st_mode))
        return FileKind::Regular;
    if (S_ISDIR(info.st_mode))
        return FileKind::Folder;
    if (S_ISFIFO(info.st_mode))
        return FileKind::Pipe;
    if (S_ISCHR(info.st_mode) || S_ISBLK(info.st_mode))
        return FileKind::Device;
    if (S_ISSOCK(info.st_mode))
        return FileKind::Socket;
    return FileKind::Other;
}

bool changeFolder(const QString& folder)
{
    return !folder.isEmpty() && ::chdir(fileNameToBytes(folder).constData()) == 0;
}

QString currentFolderName()
{
    QByteArray folder(4096, '\0');
    while (::getcwd(folder.data(), size_t(folder.size())) == nullptr) {
        if (errno != ERANGE || folder.size() > (1 << 20))
            return QDir::currentPath();
        folder.resize(folder.size() * 2);
    }
    return fileNameFromBytes(folder.constData());
}

#else

QString fileNameFromBytes(QByteArrayView bytes) { return QFile::decodeName(bytes.toByteArray()); }

QByteArray fileNameToBytes(QStringView name) { return QFile::encodeName(name.toString()); }

FileKind fileKindOf(const QString& path, qint64* size)
{
    const QFileInfo info(path);
    if (path.isEmpty() || !info.exists())
        return FileKind::Missing;
    if (size)
        *size = info.size();
    if (info.isDir())
        return FileKind::Folder;
    return info.isFile() ? FileKind::Regular : FileKind::Other;
}

bool changeFolder(const QString& folder) { return QDir::setCurrent(folder); }

QString currentFolderName() { return QDir::currentPath(); }

#endif

QString absoluteFileName(const QString& path)
{
    return QDir::cleanPath(QDir::isAbsolutePath(path) ? path
                                                      : currentFolderName() + u'/' + path);
}

QString shownFileName(QString name)
{
    for (qsizetype i = 0; i < name.size(); ++i) {
        if (name[i].isHighSurrogate() && i + 1 < name.size() && name[i + 1].isLowSurrogate())
            ++i;
        else if (isKeptByte(name[i]))
            name[i] = QChar::ReplacementCharacter;
    }
    return name;
}

QString fileKindText(FileKind kind)
{
    switch (kind) {
    case FileKind::Folder: return QStringLiteral("a folder");
    case FileKind::Pipe: return QStringLiteral("a named pipe");
    case FileKind::Device: return QStringLiteral("a device");
    case FileKind::Socket: return QStringLiteral("a socket");
    case FileKind::Other: return QStringLiteral("not a regular file");
    case FileKind::Missing:
    case FileKind::Regular: break;
    }
    return QString();
}

}  // namespace tav
