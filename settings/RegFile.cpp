// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/RegFile.h"

#include "core/AtomicFile.h"
#include "core/FileNames.h"
#include "core/FileReading.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace tav {

namespace {

const char header[] = "Windows Registry Editor Version 5.00";

QString quoted(const QString& text)
{
    QString out = QStringLiteral("\"");
    for (QChar c : text) {
        if (c == u'\\' || c == u'"')
            out += QLatin1Char('\\');
        out += c;
    }
    return out + QLatin1Char('"');
}

// Reads a quoted text starting at `at` (on the opening quote); `at` ends
// after the closing quote. False when it is not closed.
bool readQuoted(const QString& line, qsizetype& at, QString& text)
{
    text.clear();
    for (++at; at < line.size(); ++at) {
        const QChar c = line[at];
        if (c == u'"') {
            ++at;
            return true;
        }
        if (c == u'\\' && at + 1 < line.size())
            text += line[++at];
        else
            text += c;
    }
    return false;
}

QByteArray hexList(const QString& text, bool* ok)
{
    QByteArray bytes;
    *ok = true;
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return bytes;
    for (const QString& part : trimmed.split(QLatin1Char(','))) {
        bool partOk = false;
        const uint byte = part.trimmed().toUInt(&partOk, 16);
        if (!partOk || byte > 0xFF) {
            *ok = false;
            return {};
        }
        bytes += char(byte);
    }
    return bytes;
}

QString hexText(const QByteArray& bytes)
{
    QStringList parts;
    for (char b : bytes)
        parts << QStringLiteral("%1").arg(uint(uchar(b)), 2, 16, QLatin1Char('0'));
    return parts.join(QLatin1Char(','));
}

bool startsWithWord(const QString& data, QLatin1String word)
{
    return data.startsWith(word, Qt::CaseInsensitive);
}

// A value's data: "text", dword:0000000a, hex:ff,ff or hex(N):.., type words
// in any case.
bool parseValue(const QString& data, RegFile::Value& value)
{
    if (data.startsWith(QLatin1Char('"'))) {
        qsizetype at = 0;
        QString text;
        if (!readQuoted(data, at, text) || !data.mid(at).trimmed().isEmpty())
            return false;
        value.type = RegFile::String;
        value.data = fileNameToBytes(text) + '\0';
        return true;
    }
    if (startsWithWord(data, QLatin1String("dword:"))) {
        const QString digits = data.mid(6).trimmed();
        bool ok = false;
        const uint number = digits.toUInt(&ok, 16);
        if (!ok || digits.isEmpty() || digits.size() > 8)
            return false;
        value.type = RegFile::Dword;
        value.data = QByteArray(4, '\0');
        for (int i = 0; i < 4; ++i)
            value.data[i] = char((number >> (8 * i)) & 0xFF);
        return true;
    }
    bool ok = false;
    if (startsWithWord(data, QLatin1String("hex:"))) {
        value.type = RegFile::Binary;
        value.data = hexList(data.mid(4), &ok);
        return ok;
    }
    if (startsWithWord(data, QLatin1String("hex("))) {
        const qsizetype close = data.indexOf(QLatin1String("):"));
        if (close < 0)
            return false;
        value.type = data.mid(4, close - 4).toUInt(&ok, 16);
        if (!ok)
            return false;
        value.data = hexList(data.mid(close + 2), &ok);
        return ok;
    }
    return false;
}

// A surrogate without its pair becomes U+FFFD, as invalid UTF-8 does: the
// text then writes as UTF-8 and reads back the same.
QString withoutLoneSurrogates(QString text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            ++i;
        else if (text[i].isSurrogate())
            text[i] = QChar::ReplacementCharacter;
    }
    return text;
}

// The text of a registry file: UTF-16 with its byte order mark as regedit
// exports it, else UTF-8 (a byte order mark skipped), any other bytes kept
// as file names keep them (a recent file whose name is not UTF-8).
QString decodedText(const QByteArray& bytes)
{
    if (bytes.startsWith("\xFF\xFE"))
        return withoutLoneSurrogates(QString::fromUtf16(
            reinterpret_cast<const char16_t*>(bytes.constData() + 2), (bytes.size() - 2) / 2));
    if (bytes.startsWith("\xFE\xFF")) {
        QString text((bytes.size() - 2) / 2, Qt::Uninitialized);
        for (qsizetype i = 0; i < text.size(); ++i)
            text[i] = QChar(char16_t((uchar(bytes[2 + 2 * i]) << 8) | uchar(bytes[3 + 2 * i])));
        return withoutLoneSurrogates(text);
    }
    QString text = fileNameFromBytes(bytes);
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    return text;
}

// Text has no control characters but tabs and line ends: a file with a NUL
// or an escape in it is some other file.
bool isText(const QString& text)
{
    return std::none_of(text.begin(), text.end(), [](QChar c) {
        return c.unicode() < 0x20 && c != u'\t' && c != u'\r' && c != u'\n';
    });
}

QString valueText(const RegFile::Value& value)
{
    const QString name = value.name.isEmpty() ? QStringLiteral("@") : quoted(value.name);
    switch (value.type) {
    case RegFile::String: {
        // Written as text when it reads back the same, else as raw bytes:
        // a control character but a tab would make the file read as no
        // text at all (a path may hold any byte but NUL).
        const QByteArray body = value.data.endsWith('\0') ? value.data.chopped(1) : value.data;
        const QString text = QString::fromUtf8(body);
        const bool plain = std::none_of(text.begin(), text.end(), [](QChar c) {
            return c.unicode() < 0x20 && c != u'\t';
        });
        if (plain && text.toUtf8() == body && value.data.endsWith('\0'))
            return name + QLatin1Char('=') + quoted(text);
        break;
    }
    case RegFile::Dword:
        if (value.data.size() == 4) {
            uint number = 0;
            for (int i = 3; i >= 0; --i)
                number = (number << 8) | uchar(value.data[i]);
            return name + QStringLiteral("=dword:%1").arg(number, 8, 16, QLatin1Char('0'));
        }
        break;
    case RegFile::Binary: return name + QStringLiteral("=hex:") + hexText(value.data);
    default: break;
    }
    return name + QStringLiteral("=hex(%1):").arg(value.type, 0, 16) + hexText(value.data);
}

}  // namespace

RegFile::RegFile(QString path) : path_(std::move(path)) {}

RegFile::Value* RegFile::Key::find(const QString& name)
{
    const auto found = places.constFind(name.toLower());
    return found == places.constEnd() ? nullptr : &values[*found];
}

const RegFile::Value* RegFile::Key::find(const QString& name) const
{
    return const_cast<Key*>(this)->find(name);
}

RegFile::Value& RegFile::Key::place(const QString& name)
{
    const QString lower = name.toLower();
    const auto found = places.constFind(lower);
    if (found != places.constEnd())
        return values[*found];
    places.insert(lower, values.size());
    values.push_back(Value{name, String, {}});
    return values.back();
}

bool RegFile::hasKey(const QString& key) const { return keys_.count(key.toLower()) > 0; }

void RegFile::createKey(const QString& key)
{
    auto [entry, added] = keys_.try_emplace(key.toLower());
    if (added)
        entry->second.name = key;
}

const RegFile::Value* RegFile::value(const QString& key, const QString& name) const
{
    const auto found = keys_.find(key.toLower());
    return found == keys_.end() ? nullptr : found->second.find(name);
}

void RegFile::setValue(const QString& key, const Value& value)
{
    createKey(key);
    Value& stored = keys_[key.toLower()].place(value.name);
    stored.type = value.type;
    stored.data = value.data;
}

QByteArray RegFile::text() const
{
    QString out = QString::fromLatin1(header) + QStringLiteral("\n");
    for (const auto& [lower, key] : keys_) {
        out += QStringLiteral("\n[") + key.name + QStringLiteral("]\n");
        for (const Value& v : key.values)
            out += valueText(v) + QLatin1Char('\n');
    }
    return fileNameToBytes(out);
}

QStringList RegFile::parse(const QByteArray& bytes) { return parseText(decodedText(bytes)); }

QStringList RegFile::parseText(QString text)
{
    QStringList problems;
    const auto skip = [&problems](qsizetype line, const char* what) {
        problems << QStringLiteral("line %1: %2").arg(line).arg(QLatin1String(what));
    };
    droppedLines_ = false;
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    const QStringList lines = text.split(QLatin1Char('\n'));

    std::map<QString, Key> keys;
    QString current;  // "" before the first key, or after a key that was skipped
    bool headerSeen = false;
    for (qsizetype n = 0; n < lines.size(); ++n) {
        const qsizetype number = n + 1;
        QString line = lines[n].trimmed();
        // Long hex lists go on over the next lines after a backslash.
        while (line.endsWith(QLatin1Char('\\')) && n + 1 < lines.size()) {
            line.chop(1);
            line += lines[++n].trimmed();
        }
        if (line.isEmpty())
            continue;
        if (line.startsWith(QLatin1Char(';'))) {  // a comment, which a save does not keep
            droppedLines_ = true;
            continue;
        }
        // The header line is expected first; a file without one is read all the same.
        if (!headerSeen) {
            headerSeen = true;
            if (line == QLatin1String(header) || line == QLatin1String("REGEDIT4"))
                continue;
        }
        if (line.startsWith(QLatin1Char('['))) {
            current.clear();
            if (!line.endsWith(QLatin1Char(']')) || line.size() < 3) {
                skip(number, "a key that is not closed");
                continue;
            }
            if (line[1] == u'-') {  // a key deleted by an export: nothing to read
                droppedLines_ = true;
                continue;
            }
            current = line.mid(1, line.size() - 2);
            keys.try_emplace(current.toLower()).first->second.name = current;
            continue;
        }
        Value value;
        qsizetype at = 0;
        if (line.startsWith(QLatin1Char('@'))) {
            at = 1;
        } else if (!line.startsWith(QLatin1Char('"')) || !readQuoted(line, at, value.name)) {
            skip(number, "no value name");
            continue;
        }
        while (at < line.size() && line[at].isSpace())
            ++at;
        if (at >= line.size() || line[at] != u'=') {
            skip(number, "no \"=\" after the value name");
            continue;
        }
        const QString data = line.mid(at + 1).trimmed();
        if (data == QLatin1String("-")) {  // a value deleted by an export
            droppedLines_ = true;
            continue;
        }
        if (current.isEmpty()) {
            skip(number, "a value outside a key");
            continue;
        }
        if (!parseValue(data, value)) {
            skip(number, "a value that cannot be read");
            continue;
        }
        // A value given again replaces the one before, which is then lost.
        Key& key = keys[current.toLower()];
        const size_t before = key.values.size();
        Value& stored = key.place(value.name);
        if (key.values.size() == before)
            droppedLines_ = true;
        stored.type = value.type;
        stored.data = std::move(value.data);
    }
    keys_ = std::move(keys);
    return problems;
}

Result<RegFile::Reading> RegFile::load()
{
    keys_.clear();
    droppedLines_ = false;
    Reading reading;
    qint64 size = 0;
    const FileKind kind = fileKindOf(path_, &size);
    if (kind == FileKind::Missing)
        return reading;
    if (kind != FileKind::Regular)
        return Outcome::failed(QStringLiteral("it is %1, not a file").arg(fileKindText(kind)));
    if (size > largestFile) {
        reading.unusable = QStringLiteral("is larger than %1 MB").arg(largestFile / (1024 * 1024));
        return reading;
    }
    Result<QByteArray> bytes = readWholeFile(path_, largestFile, OddFiles::Refused);
    if (!bytes)
        return Outcome::failed(bytes.message());
    const QString text = decodedText(*bytes);
    if (!isText(text)) {
        reading.unusable = QStringLiteral("is not text");
        return reading;
    }
    reading.bytes = std::move(bytes.value());
    reading.problems = parseText(text);
    reading.dropsLines = droppedLines_;
    return reading;
}

Outcome RegFile::save() const
{
    QDir().mkpath(QFileInfo(path_).absolutePath());
    return writeFileAtomically(path_, text());
}

}  // namespace tav
