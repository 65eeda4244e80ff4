// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Outcome.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
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

    // A settings file is a few kilobytes: one larger than this is no
    // settings file, and is not read.
    static constexpr qint64 largestFile = 1024 * 1024;

    // What reading the file found: its bytes, and the lines that could not
    // be read (each "line N: what").
    struct Reading {
        QByteArray bytes;
        QStringList problems;
        // Lines that hold something a save does not write back: comments,
        // deletion lines, a value given twice (all but the last).
        bool dropsLines = false;
        // Why the file is no settings file at all ("is larger than 1 MB",
        // "is not text"); none of it is read then. "" for a settings file.
        QString unusable;
    };
    // Reads the file, forgiving as an exported registry file needs: UTF-16
    // or UTF-8, any line ends, type words in any case, blanks around "=",
    // deletion lines ignored. A line that cannot be read is skipped and
    // noted; the others count. A missing file is an empty registry. A file
    // that is there but cannot be opened, or is no file (a named pipe, a
    // folder), fails with the reason. Reading takes time in proportion to
    // the file's length.
    Result<Reading> load();
    // Replaces the file with the current keys and values, atomically; a
    // failure names the file and why (the file is then as it was).
    Outcome save() const;

    bool hasKey(const QString& key) const;
    void createKey(const QString& key);
    const Value* value(const QString& key, const QString& name) const;
    void setValue(const QString& key, const Value& value);

    // The file's text for the current keys and values.
    QByteArray text() const;
    // Reads a file's bytes into the keys and values; the lines skipped.
    QStringList parse(const QByteArray& bytes);
    // Whether the last parse met lines that a save does not write back.
    bool droppedLines() const { return droppedLines_; }

private:
    struct Key {
        QString name;  // as first written
        std::vector<Value> values;
        QHash<QString, size_t> places;  // each value by its name in lower case

        Value* find(const QString& name);
        const Value* find(const QString& name) const;
        // The value of that name, added when there is none.
        Value& place(const QString& name);
    };

    QStringList parseText(QString text);
    // Keys and value names are compared without regard to case.
    std::map<QString, Key> keys_;
    QString path_;
    bool droppedLines_ = false;
};

}  // namespace tav
