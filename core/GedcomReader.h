// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CharsetDecoder.h"
#include "core/RecordStore.h"

#include <QByteArray>
#include <functional>
#include <string_view>
#include <vector>

namespace tav {

class FileLines;

// One pass over the lines of a GEDCOM file that fills the record store,
// followed by a pass that resolves cross-references into slots. A level-0
// line's tag decides the record (INDI, FAM, SOUR, NOTE or SNOTE; any other
// record is skipped whole); only the tags the program uses are read. A
// fault in one statement is reported and reading goes on with the next.
class GedcomReader {
public:
    using Report = std::function<void(const QString& message)>;
    // Called on every 80th level-0 line with the read position in bytes.
    using Progress = std::function<void(qint64 position)>;

    GedcomReader(RecordStore& store, Report report, Progress progress = {});

    // GEDCOM's own limit is 255 characters a line. A line longer than this
    // (a name of 200 MB) is cut here, with one message for the load, so the
    // values the program keeps and shows stay within a few times the file.
    static constexpr qsizetype longestLine = 1024 * 1024;

    // `bytes` is the file with any byte order mark removed and UTF-16 turned
    // into UTF-8 (see prepareFileBytes). Starts by clearing the store.
    void read(QByteArrayView bytes);
    // The same, the file's lines taken as they are read (a byte order mark
    // skipped), for a file that is readableInPieces; `fileBytes` is its
    // length. A file that cannot be read to its end keeps what was read,
    // with a message.
    void read(FileLines& lines, qint64 fileBytes);
    // True unless the file is UTF-16 (converted whole) or its header goes on
    // past the first piece read.
    static bool readableInPieces(const FileLines& lines);

private:
    enum class RecordType { None, Head, Individual, Family, Source, Note, Skipped };
    // The level-1 tags whose level-2 lines the reader keeps.
    enum class Level1Tag { Other, Gedc, Birt, Deat, Marr };

    template <typename Lines>
    void readLines(Lines& lines, const QByteArray& charsetName, qint64 fileBytes);

    void readLine(const char* line, qsizetype length);
    void readLevel0(const char* line, qsizetype length, qsizetype blank);
    void readLevel1(std::string_view tag, const char* line, qsizetype length, qsizetype valueStart);
    void readLevel2(std::string_view tag, const char* line, qsizetype length, qsizetype valueStart);
    // The code of the cross-reference of a link's value ("@F12@"), from the
    // first "@" at or after `from` to the next; no such pair is the
    // InvalidCall fault.
    int32_t crossReference(const char* line, qsizetype length, qsizetype from);
    void reportCapacity(bool& truncated, const char* what, int32_t capacity);

    // Decoded bytes, kept in the store's text arena.
    QStringView storedText(const char* bytes, qsizetype length);
    QStringView trimmedValue(const char* line, qsizetype length, qsizetype valueStart);
    // A trimmed value that many records repeat (places, occupations, sex):
    // equal values share one string.
    QStringView sharedValue(const char* line, qsizetype length, qsizetype valueStart);
    QStringView untrimmedValue(const char* line, qsizetype length, qsizetype valueStart);
    // A note's text, which its CONT and CONC lines extend: set anew, or
    // extended by a line (after `separator`). An extended text is built
    // apart and goes to the arena when its record ends.
    void setNote(QStringView& field, QStringView text);
    void extendNote(QStringView& field, QLatin1StringView separator, const char* line,
                    qsizetype length, qsizetype valueStart);
    void finishNote();

    template <typename Statement>
    void trap(Statement&& statement);

    RecordStore& store_;
    Report report_;
    Progress progress_;
    CharsetDecoder decoder_;

    RecordType recordType_ = RecordType::None;
    Level1Tag level1Tag_ = Level1Tag::Other;
    // Values read with sharedValue, by their code in sharedTexts_.
    InternedTexts sharedTexts_;
    std::vector<QStringView> sharedValues_;
    // The note being extended, and its text so far.
    QStringView* noteField_ = nullptr;
    QString noteText_;
    int64_t level0Lines_ = 0;
    bool progressDue_ = false;
    int64_t longLines_ = 0;      // lines cut at longestLine
    int64_t firstLongLine_ = 0;  // the number of the first
};

}  // namespace tav
