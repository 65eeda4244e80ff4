// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileLines.h"
#include "core/Outcome.h"

#include <QByteArray>
#include <QString>
#include <memory>

namespace tav {

// What a reader does with a path that is no regular file.
enum class OddFiles {
    // Refused before it is opened, with what it is ("it is a named pipe,
    // not a file"): the viewer opens files, and a named pipe with no
    // program writing to it would keep it waiting.
    Refused,
    // Read to its end, as a program on the command line reads its input: a
    // pipe (`zcat x.ged.gz | tav-cli info /dev/stdin`, `<(...)`), a
    // terminal, a device. A named pipe that no program writes to is given up
    // after a moment; a device that never ends (/dev/zero) is refused once
    // it passes `largest`.
    ReadToEnd,
};

// How long a named pipe may wait for a program to write to it.
constexpr int pipeWriterWaitMs = 2000;

// The bytes of a whole file of at most `largest` bytes. A failure gives the
// reason alone, for "Cannot open FILE: reason": the system's ("No such file
// or directory"), "Is a directory", "it is a named pipe, not a file",
// "nothing writes to this named pipe", "the file is too large to read (N MB;
// at most M MB)", "there is not enough memory to read it".
//
// A regular file is read, never mapped: another program may shorten or
// rewrite it meanwhile, and a mapped file that shrinks kills the reader
// (SIGBUS). At most the length it had when it was opened is read, so a file
// that grows meanwhile cannot keep the read going; one that shrinks gives
// what it still held.
Result<QByteArray> readWholeFile(const QString& path, qint64 largest, OddFiles oddFiles);

// A regular file opened to be read in pieces, its lines cut at `longest`
// bytes (see FileLines), with the checks and failures of readWholeFile; no
// FileLines (and no failure) for anything else (a pipe, a device, a missing
// file), left unopened for readWholeFile, and on systems where reading whole
// costs no more.
Result<std::unique_ptr<FileLines>> openFileLines(const QString& path, qint64 largest,
                                                 OddFiles oddFiles, qsizetype longest);

// The whole of a file that openFileLines opened, for a reader that takes it
// whole after all (before any line is taken), with the failures of
// readWholeFile.
Result<QByteArray> readWholeFile(FileLines& lines);

// "the file is too large to read (N MB; at most M MB)": the size rounded up
// and the limit down, so the two always differ.
QString tooLargeText(qint64 size, qint64 largest);

}  // namespace tav
