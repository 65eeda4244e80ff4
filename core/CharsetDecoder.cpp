// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/CharsetDecoder.h"

#include "core/CodePageTables.h"
#include "core/LineSplitter.h"

#include <QStringDecoder>
#include <cstring>

namespace tav {

namespace {

bool isAscii(const char* bytes, qsizetype length)
{
    for (qsizetype i = 0; i < length; ++i) {
        if (static_cast<unsigned char>(bytes[i]) >= 0x80)
            return false;
    }
    return true;
}

QString decodeWithTable(const char* bytes, qsizetype length, const char16_t* high)
{
    QString text(length, Qt::Uninitialized);
    QChar* out = text.data();
    for (qsizetype i = 0; i < length; ++i) {
        const auto b = static_cast<unsigned char>(bytes[i]);
        out[i] = QChar(b < 0x80 ? char16_t(b) : high[b - 0x80]);
    }
    return text;
}

qsizetype tableInto(const char* bytes, qsizetype length, const char16_t* high, char16_t* out)
{
    for (qsizetype i = 0; i < length; ++i) {
        const auto b = static_cast<unsigned char>(bytes[i]);
        out[i] = b < 0x80 ? char16_t(b) : high[b - 0x80];
    }
    return length;
}

qsizetype utf8Into(const char* bytes, qsizetype length, char16_t* out)
{
    // Each value on its own, a byte order mark inside it kept, as
    // QString::fromUtf8 reads it.
    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless |
                                                       QStringConverter::Flag::ConvertInitialBom);
    QChar* const start = reinterpret_cast<QChar*>(out);
    return decoder.appendToBuffer(start, QByteArrayView(bytes, length)) - start;
}

char16_t anselChar(unsigned char b)
{
    if (b < 0x80)
        return b;
    if (b < 0xA0)
        return 0xFFFD;
    return codepages::ansel[b - 0xA0];
}

// ANSEL writes a combining mark before its letter; Unicode after it. Marks are
// held back until their letter arrives, then the result is composed.
QString decodeAnsel(const char* bytes, qsizetype length)
{
    QString text;
    text.reserve(length);
    QString pendingMarks;
    bool composed = false;
    for (qsizetype i = 0; i < length; ++i) {
        const auto b = static_cast<unsigned char>(bytes[i]);
        const char16_t c = anselChar(b);
        if (codepages::isAnselCombining(b) && c != 0xFFFD) {
            pendingMarks.append(QChar(c));
            composed = true;
            continue;
        }
        text.append(QChar(c));
        if (!pendingMarks.isEmpty()) {
            text.append(pendingMarks);
            pendingMarks.clear();
        }
    }
    text.append(pendingMarks);  // marks with no letter after them stay as they are
    return composed ? text.normalized(QString::NormalizationForm_C) : text;
}

}  // namespace

bool isValidUtf8(const char* bytes, qsizetype length)
{
    const auto* p = reinterpret_cast<const unsigned char*>(bytes);
    qsizetype i = 0;
    while (i < length) {
        const unsigned char c = p[i];
        if (c < 0x80) {
            ++i;
            continue;
        }
        int extra;
        char32_t cp;
        if (c >= 0xC2 && c <= 0xDF) {
            extra = 1;
            cp = c & 0x1F;
        } else if (c >= 0xE0 && c <= 0xEF) {
            extra = 2;
            cp = c & 0x0F;
        } else if (c >= 0xF0 && c <= 0xF4) {
            extra = 3;
            cp = c & 0x07;
        } else {
            return false;
        }
        if (i + extra >= length)
            return false;
        for (int k = 1; k <= extra; ++k) {
            if ((p[i + k] & 0xC0) != 0x80)
                return false;
            cp = (cp << 6) | (p[i + k] & 0x3F);
        }
        if ((extra == 2 && cp < 0x800) || (extra == 3 && (cp < 0x10000 || cp > 0x10FFFF)) ||
            (cp >= 0xD800 && cp <= 0xDFFF))
            return false;
        i += extra + 1;
    }
    return true;
}

CharsetDecoder::Charset CharsetDecoder::charsetFromName(QByteArrayView name)
{
    const QByteArray upper = name.trimmed().toByteArray().toUpper();
    if (upper == "UTF-8" || upper == "UTF8")
        return Charset::Utf8;
    if (upper == "ANSEL")
        return Charset::Ansel;
    if (upper == "ANSI" || upper == "WINDOWS" || upper == "IBM WINDOWS" || upper == "CP1252" ||
        upper == "ASCII")
        return Charset::Windows1252;
    if (upper == "IBMPC" || upper == "IBM DOS" || upper == "CP437")
        return Charset::CodePage437;
    if (upper == "CP850")
        return Charset::CodePage850;
    return Charset::Automatic;
}

QString CharsetDecoder::decode(const char* bytes, qsizetype length) const
{
    if (length <= 0)
        return QString();
    if (charset_ == Charset::Utf8)
        return QString::fromUtf8(bytes, length);
    if (isAscii(bytes, length))
        return QString::fromLatin1(bytes, length);
    switch (charset_) {
    case Charset::Utf8: break;
    case Charset::Ansel: return decodeAnsel(bytes, length);
    case Charset::Windows1252: return decodeWithTable(bytes, length, codepages::windows1252);
    case Charset::CodePage437: return decodeWithTable(bytes, length, codepages::ibm437);
    case Charset::CodePage850: return decodeWithTable(bytes, length, codepages::ibm850);
    case Charset::Automatic:
        if (isValidUtf8(bytes, length))
            return QString::fromUtf8(bytes, length);
        return decodeWithTable(bytes, length, codepages::windows1252);
    }
    return QString::fromUtf8(bytes, length);
}

qsizetype CharsetDecoder::decodeInto(const char* bytes, qsizetype length, char16_t* out) const
{
    if (length <= 0)
        return 0;
    if (isAscii(bytes, length)) {
        for (qsizetype i = 0; i < length; ++i)
            out[i] = char16_t(static_cast<unsigned char>(bytes[i]));
        return length;
    }
    switch (charset_) {
    case Charset::Utf8: return utf8Into(bytes, length, out);
    case Charset::Ansel: return -1;
    case Charset::Windows1252: return tableInto(bytes, length, codepages::windows1252, out);
    case Charset::CodePage437: return tableInto(bytes, length, codepages::ibm437, out);
    case Charset::CodePage850: return tableInto(bytes, length, codepages::ibm850, out);
    case Charset::Automatic:
        if (isValidUtf8(bytes, length))
            return utf8Into(bytes, length, out);
        return tableInto(bytes, length, codepages::windows1252, out);
    }
    return utf8Into(bytes, length, out);
}

namespace {

// The UTF-16 a file's first bytes show (either byte order, with or without
// a byte order mark), with the length of its mark; nothing for any other.
std::optional<std::pair<QStringConverter::Encoding, qsizetype>> utf16Of(QByteArrayView start)
{
    const auto at = [&start](qsizetype i) {
        return i < start.size() ? static_cast<unsigned char>(start.at(i)) : 0x100;
    };
    if (at(0) == 0xFF && at(1) == 0xFE)
        return std::pair(QStringConverter::Utf16LE, qsizetype(2));
    if (at(0) == 0xFE && at(1) == 0xFF)
        return std::pair(QStringConverter::Utf16BE, qsizetype(2));
    if (at(0) != 0 && at(0) < 0x80 && at(1) == 0)
        return std::pair(QStringConverter::Utf16LE, qsizetype(0));  // "0\0 \0H\0..." unmarked
    if (at(0) == 0 && at(1) != 0 && at(1) < 0x80)
        return std::pair(QStringConverter::Utf16BE, qsizetype(0));
    return std::nullopt;
}

}  // namespace

qsizetype utf8MarkLength(QByteArrayView start)
{
    return start.startsWith("\xEF\xBB\xBF") ? 3 : 0;
}

bool isUtf16File(QByteArrayView start) { return utf16Of(start).has_value(); }

QByteArrayView prepareFileBytes(QByteArray& raw)
{
    if (const qsizetype mark = utf8MarkLength(raw))
        return QByteArrayView(raw).sliced(mark);
    const auto utf16 = utf16Of(raw);
    if (!utf16)
        return QByteArrayView(raw);
    QStringDecoder decoder(utf16->first, QStringConverter::Flag::Stateless);
    const QString text = decoder.decode(QByteArrayView(raw).sliced(utf16->second));
    raw = text.toUtf8();
    return QByteArrayView(raw);
}

std::optional<QByteArray> headerCharsetName(QByteArrayView bytes, bool whole)
{
    if (!whole) {
        // Only whole lines: the last may go on past the bytes given.
        qsizetype end = bytes.size();
        while (end > 0 && bytes.at(end - 1) != '\n' && bytes.at(end - 1) != '\r')
            --end;
        bytes = bytes.first(end);
    }
    LineSplitter lines(bytes.data(), bytes.size());
    const char* line;
    qsizetype length;
    int level0Lines = 0;
    while (lines.next(line, length)) {
        if (length >= 2 && line[0] == '0' && line[1] == ' ') {
            if (++level0Lines > 1)
                return QByteArray();
        } else if (length >= 7 && std::memcmp(line, "1 CHAR ", 7) == 0) {
            return QByteArray(line + 7, length - 7).trimmed();
        }
    }
    if (whole)
        return QByteArray();
    return std::nullopt;
}

}  // namespace tav
