// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LineSplitter.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <functional>
#include <memory>

namespace tav {

// The lines of a file read in pieces into one buffer as they are taken, so
// that no copy of the whole file is held: a large file then costs the
// reader a megabyte or two of memory instead of its own size in fresh pages,
// which a new process pays for dearly. Lines end as LineSplitter ends them:
// at CR (a following LF swallowed) or at LF.
//
// A line longer than `longest` bytes is given whole when it fits the buffer,
// else as its first longest + 1 bytes, so that the reader sees it is too
// long and cuts it, and the rest of it is skipped.
class FileLines {
public:
    // Reads at most `most` bytes into `into`: the count read, 0 at the end,
    // or -1 with the reason in `failure`.
    using ReadSome = std::function<qint64(char* into, qint64 most, QString& failure)>;

    // Reads `pieceBytes` at a time into a buffer of `longest` + 1 bytes and
    // a piece, or of `expectedBytes` (the file's length when opened) when
    // that is less.
    FileLines(ReadSome readSome, qint64 expectedBytes, qsizetype longest, qsizetype pieceBytes);
    ~FileLines();

    // The length the file had when opened.
    qint64 fileBytes() const { return fileBytes_; }
    // The file's first bytes, read before any line is taken (its header, as
    // a rule); empty for an empty file.
    QByteArrayView head() const;
    // True when head() is the whole file.
    bool headIsWhole() const { return atEnd_; }
    // Drops bytes at the very start (a byte order mark); before any line.
    void skipStart(qsizetype bytes);
    // The whole file, for a reader that takes it whole after all (before
    // any line is taken): false when a read fails (failure() says why).
    bool readWhole(QByteArray& bytes);

    // Gives the next line (without its terminator), valid until the next
    // call; false at the end.
    bool next(const char*& line, qsizetype& length)
    {
        // Inline for the usual line, ended within the buffer by LF, or by a
        // CR with more after it; the rest out of line.
        const char* eol = findLineEnd(pos_, filled_);
        if (skipping_ || eol + 1 >= filled_)
            return nextAtPieceEnd(line, length);
        line = pos_;
        length = eol - pos_;
        pos_ = const_cast<char*>(eol) + 1;
        if (*eol == '\r' && *pos_ == '\n')
            ++pos_;
        return true;
    }
    // The bytes of the file taken so far.
    qint64 position() const { return consumed_ + (pos_ - buffer_.get()); }
    // Why reading stopped before the end of the file; empty when it did not.
    const QString& failure() const { return failure_; }

private:
    bool nextAtPieceEnd(const char*& line, qsizetype& length);
    // Moves what is left to the front and reads more; false when nothing
    // more came.
    bool refill();

    ReadSome readSome_;
    qint64 fileBytes_;
    qsizetype longest_;
    qsizetype pieceBytes_;
    std::unique_ptr<char[]> buffer_;
    qsizetype capacity_ = 0;
    char* pos_ = nullptr;      // the next line starts here
    char* filled_ = nullptr;   // the end of what was read
    qint64 consumed_ = 0;      // file bytes before the buffer's start
    bool atEnd_ = false;
    bool skipping_ = false;    // inside the rest of an over-long line
    QString failure_;
};

}  // namespace tav
