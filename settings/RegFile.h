#pragma once

#include <QByteArray>
#include <QString>
#include <map>
#include <vector>

namespace tav {

// Registry keys and values kept in one text file in the registry-export
// syntax ("Windows Registry Editor Version 5.00", [key] lines,
// "name"="text", dword:0000000a, hex:ff,ff). Values keep their type and
// raw bytes, as the registry does. Every save replaces the file atomically.
class RegFile {
public:
    enum Type : uint32_t { String = 1, Binary = 3, Dword = 4 };

    struct Value {
        QString name;
        uint32_t type = String;
        QByteArray data;
    };

    explicit RegFile(QString path);

    const QString& path() const { return path_; }

    // Reads the file. A missing file is an empty registry; a damaged or
    // unreadable one too, with `problem` saying what was wrong.
    bool load(QString* problem = nullptr);
    // Replaces the file with the current keys and values; false on failure.
    bool save() const;

    bool hasKey(const QString& key) const;
    void createKey(const QString& key);
    const Value* value(const QString& key, const QString& name) const;
    void setValue(const QString& key, const Value& value);

    // The file's text for the current keys and values.
    QByteArray text() const;
    // Parses a file's text; false (and nothing changed) when it is damaged.
    bool parse(const QByteArray& text, QString* problem);

private:
    struct Key {
        QString name;  // as first written
        std::vector<Value> values;
    };
    // Keys and value names are compared without regard to case.
    std::map<QString, Key> keys_;
    QString path_;
};

}  // namespace tav
