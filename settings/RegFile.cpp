#include "settings/RegFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

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

bool parseValue(const QString& data, RegFile::Value& value)
{
    if (data.startsWith(QLatin1Char('"'))) {
        qsizetype at = 0;
        QString text;
        if (!readQuoted(data, at, text) || !data.mid(at).trimmed().isEmpty())
            return false;
        value.type = RegFile::String;
        value.data = text.toUtf8() + '\0';
        return true;
    }
    if (data.startsWith(QLatin1String("dword:"))) {
        bool ok = false;
        const uint number = data.mid(6).trimmed().toUInt(&ok, 16);
        if (!ok || data.mid(6).trimmed().size() != 8)
            return false;
        value.type = RegFile::Dword;
        value.data = QByteArray(4, '\0');
        for (int i = 0; i < 4; ++i)
            value.data[i] = char((number >> (8 * i)) & 0xFF);
        return true;
    }
    bool ok = false;
    if (data.startsWith(QLatin1String("hex:"))) {
        value.type = RegFile::Binary;
        value.data = hexList(data.mid(4), &ok);
        return ok;
    }
    if (data.startsWith(QLatin1String("hex("))) {
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

QString valueText(const RegFile::Value& value)
{
    const QString name = value.name.isEmpty() ? QStringLiteral("@") : quoted(value.name);
    switch (value.type) {
    case RegFile::String: {
        // Written as text when it reads back the same, else as raw bytes.
        const QByteArray body = value.data.endsWith('\0') ? value.data.chopped(1) : value.data;
        const QString text = QString::fromUtf8(body);
        if (!body.contains('\0') && !text.contains(QLatin1Char('\n')) &&
            !text.contains(QLatin1Char('\r')) && text.toUtf8() == body && value.data.endsWith('\0'))
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
    if (found == keys_.end())
        return nullptr;
    for (const Value& v : found->second.values) {
        if (v.name.compare(name, Qt::CaseInsensitive) == 0)
            return &v;
    }
    return nullptr;
}

void RegFile::setValue(const QString& key, const Value& value)
{
    createKey(key);
    std::vector<Value>& values = keys_[key.toLower()].values;
    for (Value& v : values) {
        if (v.name.compare(value.name, Qt::CaseInsensitive) == 0) {
            v.type = value.type;
            v.data = value.data;
            return;
        }
    }
    values.push_back(value);
}

QByteArray RegFile::text() const
{
    QString out = QString::fromLatin1(header) + QStringLiteral("\n");
    for (const auto& [lower, key] : keys_) {
        out += QStringLiteral("\n[") + key.name + QStringLiteral("]\n");
        for (const Value& v : key.values)
            out += valueText(v) + QLatin1Char('\n');
    }
    return out.toUtf8();
}

bool RegFile::parse(const QByteArray& bytes, QString* problem)
{
    const auto fail = [problem](int line, const char* what) {
        if (problem)
            *problem = QStringLiteral("line %1: %2").arg(line).arg(QLatin1String(what));
        return false;
    };
    QString text = QString::fromUtf8(bytes);
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    // Long hex lists continue on the next line after a backslash.
    text.replace(QLatin1String("\\\n"), QString());
    const QStringList lines = text.split(QLatin1Char('\n'));

    std::map<QString, Key> keys;
    QString current;
    bool headerSeen = false;
    for (qsizetype n = 0; n < lines.size(); ++n) {
        const QString line = lines[n].trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char(';')))
            continue;
        if (!headerSeen) {
            if (line != QLatin1String(header) && line != QLatin1String("REGEDIT4"))
                return fail(int(n + 1), "not a registry file");
            headerSeen = true;
            continue;
        }
        if (line.startsWith(QLatin1Char('['))) {
            if (!line.endsWith(QLatin1Char(']')) || line.size() < 3)
                return fail(int(n + 1), "unclosed key");
            current = line.mid(1, line.size() - 2);
            keys.try_emplace(current.toLower()).first->second.name = current;
            continue;
        }
        if (current.isEmpty())
            return fail(int(n + 1), "value outside a key");
        Value value;
        qsizetype at = 0;
        if (line.startsWith(QLatin1Char('@'))) {
            at = 1;
        } else if (!line.startsWith(QLatin1Char('"')) || !readQuoted(line, at, value.name)) {
            return fail(int(n + 1), "bad value name");
        }
        if (at >= line.size() || line[at] != u'=' || !parseValue(line.mid(at + 1).trimmed(), value))
            return fail(int(n + 1), "bad value");
        std::vector<Value>& values = keys[current.toLower()].values;
        const auto same = std::find_if(values.begin(), values.end(), [&](const Value& v) {
            return v.name.compare(value.name, Qt::CaseInsensitive) == 0;
        });
        if (same != values.end())
            *same = value;
        else
            values.push_back(value);
    }
    if (!headerSeen && !bytes.trimmed().isEmpty())
        return fail(1, "not a registry file");
    keys_ = std::move(keys);
    return true;
}

bool RegFile::load(QString* problem)
{
    keys_.clear();
    QFile file(path_);
    if (!file.exists())
        return true;
    if (!file.open(QIODevice::ReadOnly)) {
        if (problem)
            *problem = file.errorString();
        return false;
    }
    return parse(file.readAll(), problem);
}

bool RegFile::save() const
{
    QDir().mkpath(QFileInfo(path_).absolutePath());
    QSaveFile file(path_);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(text());
    return file.commit();
}

}  // namespace tav
