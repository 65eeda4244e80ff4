// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace tav {

// Turns the bytes of a GEDCOM value into text, by the character set the
// file's header names.
class CharsetDecoder {
public:
    enum class Charset {
        Automatic,  // no or unknown CHAR: UTF-8 when valid, else windows-1252
        Utf8,
        Ansel,
        Windows1252,
        CodePage437,
        CodePage850,
    };

    explicit CharsetDecoder(Charset charset = Charset::Automatic) : charset_(charset) {}

    // Maps the value of a HEAD / 1 CHAR line ("UTF-8", "ANSEL", "IBMPC" ...).
    static Charset charsetFromName(QByteArrayView name);

    Charset charset() const { return charset_; }
    QString decode(const char* bytes, qsizetype length) const;
    // Writes the text of the bytes to `out`, which has room for `length`
    // units (every character set gives at most one unit a byte, UTF-8's
    // four-byte letters two), and gives the units written; -1 for ANSEL,
    // whose composed letters need `decode`.
    qsizetype decodeInto(const char* bytes, qsizetype length, char16_t* out) const;

private:
    Charset charset_;
};

// Prepares raw file bytes for the line reader: a UTF-16 file (either byte
// order, with or without a byte order mark) is converted to UTF-8 in place,
// and the returned view skips a UTF-8 byte order mark.
QByteArrayView prepareFileBytes(QByteArray& raw);

// The length of the UTF-8 byte order mark a file starts with (3), or 0.
qsizetype utf8MarkLength(QByteArrayView start);
// True when a file's first bytes show UTF-16, which prepareFileBytes turns
// into UTF-8 whole.
bool isUtf16File(QByteArrayView start);

// Finds the value of the first "1 CHAR" line of the file's HEAD record ("" for
// none). `bytes` may be the file's start only (`whole` false): then nothing
// when the header goes on past them.
std::optional<QByteArray> headerCharsetName(QByteArrayView bytes, bool whole = true);

bool isValidUtf8(const char* bytes, qsizetype length);

}  // namespace tav
