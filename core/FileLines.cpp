// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/FileLines.h"

#include "core/LargePages.h"

#include <algorithm>
#include <cstring>

namespace tav {

FileLines::FileLines(ReadSome readSome, qint64 expectedBytes, qsizetype longest,
                     qsizetype pieceBytes)
    : readSome_(std::move(readSome)), fileBytes_(expectedBytes), longest_(longest),
      pieceBytes_(pieceBytes)
{
    // Room for an over-long line's first longest + 1 bytes beside a piece;
    // a small file needs no more than itself (and a byte to see its end).
    capacity_ = qsizetype(std::min<qint64>(longest_ + 1 + pieceBytes, expectedBytes + 1));
    capacity_ = std::max<qsizetype>(capacity_, 2);
    buffer_.reset(new char[size_t(capacity_)]);
    pos_ = filled_ = buffer_.get();
    // The first piece whole (a read may give less), for the header.
    while (filled_ - buffer_.get() < pieceBytes_ && refill()) {
    }
}

FileLines::~FileLines() = default;

QByteArrayView FileLines::head() const { return QByteArrayView(pos_, filled_ - pos_); }

void FileLines::skipStart(qsizetype bytes) { pos_ += std::min<qsizetype>(bytes, filled_ - pos_); }

bool FileLines::readWhole(QByteArray& bytes)
{
    const qsizetype head = filled_ - buffer_.get();
    bytes = QByteArray(qsizetype(std::max(fileBytes_, qint64(head))), Qt::Uninitialized);
    prepareForWriting(bytes.data(), size_t(bytes.size()));
    std::memcpy(bytes.data(), buffer_.get(), size_t(head));
    qsizetype done = head;
    while (!atEnd_ && done < bytes.size()) {
        const qint64 got = readSome_(bytes.data() + done, bytes.size() - done, failure_);
        if (got <= 0)
            break;
        done += qsizetype(got);
    }
    bytes.truncate(done);
    pos_ = filled_;
    atEnd_ = true;
    return failure_.isEmpty();
}

bool FileLines::refill()
{
    if (atEnd_)
        return false;
    char* start = buffer_.get();
    const qsizetype kept = filled_ - pos_;
    if (pos_ != start) {
        std::memmove(start, pos_, size_t(kept));
        consumed_ += pos_ - start;
        pos_ = start;
        filled_ = start + kept;
    }
    // Never full here: what is kept is at most an unfinished line of up to
    // `longest` bytes, or the whole of a file smaller than the buffer. A
    // piece at a time, so that only the buffer's start is used (and paid
    // for in fresh pages) unless lines are long.
    const qint64 room = std::min<qint64>(start + capacity_ - filled_, pieceBytes_);
    const qint64 got = readSome_(filled_, room, failure_);
    if (got <= 0) {
        atEnd_ = true;
        return false;
    }
    filled_ += got;
    return true;
}

bool FileLines::nextAtPieceEnd(const char*& line, qsizetype& length)
{
    for (;;) {
        const char* eol = findLineEnd(pos_, filled_);
        // A CR last in the buffer may have its LF in the next piece.
        const bool ended = eol < filled_ && !(*eol == '\r' && eol + 1 == filled_ && !atEnd_);
        if (!ended && !skipping_ && eol - pos_ > longest_) {
            // Longer than `longest`: give longest + 1 bytes, skip the rest.
            line = pos_;
            length = longest_ + 1;
            pos_ += longest_ + 1;
            skipping_ = true;
            return true;
        }
        if (ended) {
            line = pos_;
            length = eol - pos_;
            pos_ = const_cast<char*>(eol) + 1;
            if (*eol == '\r' && pos_ < filled_ && *pos_ == '\n')
                ++pos_;
            if (!skipping_)
                return true;
            skipping_ = false;  // the end of an over-long line, given already
            continue;
        }
        if (skipping_)
            pos_ = const_cast<char*>(eol);  // all but a CR whose LF may come next
        if (refill())
            continue;
        // The end of the file: a last line without its terminator, or
        // ended by a CR that was the file's last byte.
        if (skipping_ || pos_ == filled_) {
            pos_ = filled_;
            skipping_ = false;
            return false;
        }
        line = pos_;
        length = filled_ - pos_;
        if (line[length - 1] == '\r')
            --length;
        pos_ = filled_;
        return true;
    }
}

}  // namespace tav
