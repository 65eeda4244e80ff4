// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>
#include <bit>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tav {

// The first CR or LF from p on, or end. GEDCOM lines are short: an inline
// 16-byte scan beats library searches that pay a set-up cost on every call.
inline const char* findLineEnd(const char* p, const char* end)
{
#if defined(__SSE2__)
    const __m128i cr = _mm_set1_epi8('\r');
    const __m128i lf = _mm_set1_epi8('\n');
    while (end - p >= 16) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        const int hits = _mm_movemask_epi8(
            _mm_or_si128(_mm_cmpeq_epi8(block, cr), _mm_cmpeq_epi8(block, lf)));
        if (hits)
            return p + std::countr_zero(unsigned(hits));
        p += 16;
    }
#endif
    while (p < end && *p != '\n' && *p != '\r')
        ++p;
    return p;
}

// Splits a buffer into lines ending at CR (a following LF swallowed) or at LF,
// so CR LF, LF-only and CR-only files read alike.
class LineSplitter {
public:
    LineSplitter(const char* data, qsizetype size) : begin_(data), pos_(data), end_(data + size) {}

    // Gives the next line (without its terminator); false at the end.
    bool next(const char*& line, qsizetype& length)
    {
        if (pos_ >= end_)
            return false;
        const char* eol = findLineEnd(pos_, end_);
        line = pos_;
        length = eol - pos_;
        pos_ = eol;
        if (pos_ < end_) {
            ++pos_;
            if (*eol == '\r' && pos_ < end_ && *pos_ == '\n')
                ++pos_;
        }
        return true;
    }

    // Bytes consumed so far: the read position in the file.
    qsizetype position() const { return pos_ - begin_; }

private:
    const char* begin_;
    const char* pos_;
    const char* end_;
};

}  // namespace tav
