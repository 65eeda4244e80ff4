// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

namespace tav {

// File names as the system gives them. On Linux a name is bytes, and they
// need not be UTF-8 (a file copied from an old disk: "k\xFF\xFE.ged").
// Such a name becomes text as UTF-8 with each byte that is no part of valid
// UTF-8 kept as the lone surrogate U+DC00 + byte, so the text turns back
// into the very same bytes and the file opens again (a name read from the
// command line, the recent-file list or a saved view). Qt's own
// QFile::decodeName turns those bytes into U+FFFD, which names no file.
// On Windows names are UTF-16 and these are QFile's conversions.

// The text of a name's bytes.
QString fileNameFromBytes(QByteArrayView bytes);
// The bytes of a name made by fileNameFromBytes (any other text as UTF-8).
QByteArray fileNameToBytes(QStringView name);
// A name as a window or a message shows it: each kept byte as U+FFFD, as
// the system's file-name encoding shows it.
QString shownFileName(QString name);

// What is at a path, without opening it (opening a named pipe can wait
// for ever), and its size in bytes when `size` is given. Missing also
// when it cannot be looked at.
enum class FileKind { Missing, Regular, Folder, Pipe, Device, Socket, Other };
FileKind fileKindOf(const QString& path, qint64* size = nullptr);
// "a named pipe", "a device", ... for a message; "" for a regular file.
QString fileKindText(FileKind kind);

// Makes `folder` the current folder; false when it cannot be.
bool changeFolder(const QString& folder);
// The current folder, and a path made absolute from it, cleaned.
QString currentFolderName();
QString absoluteFileName(const QString& path);

}  // namespace tav
