#pragma once

#include "core/CharsetDecoder.h"
#include "core/RecordStore.h"

#include <QByteArray>
#include <functional>
#include <string_view>
#include <unordered_map>

namespace tav {

// One pass over the lines of a GEDCOM file that fills the record store,
// followed by a pass that resolves cross-reference numbers into slots.
// Only the tags the program uses are read; everything else is skipped.
// A fault in one statement is reported and reading goes on with the next.
class GedcomReader {
public:
    using Report = std::function<void(const QString& message)>;
    // Called on every 80th level-0 line with the read position in bytes.
    using Progress = std::function<void(qint64 position)>;

    GedcomReader(RecordStore& store, Report report, Progress progress = {});

    // `bytes` is the file with any byte order mark removed and UTF-16 turned
    // into UTF-8 (see prepareFileBytes). Starts by clearing the store.
    void read(QByteArrayView bytes);

private:
    enum class RecordType { None, Head, Individual, Family, Source, Note, Skipped };

    void readLine(const char* line, qsizetype length);
    void readLevel0(const char* line, qsizetype length, qsizetype blank);
    void readLevel1(std::string_view tag, const char* line, qsizetype length, qsizetype valueStart);
    void readLevel2(std::string_view tag, const char* line, qsizetype length, qsizetype valueStart);
    void resolveCrossReferences();
    void reportCapacity(bool& truncated, const char* what, int32_t capacity);

    QString trimmedValue(const char* line, qsizetype length, qsizetype valueStart) const;
    // A trimmed value that many records repeat (places, occupations, sex):
    // equal values share one string.
    QString sharedValue(const char* line, qsizetype length, qsizetype valueStart);
    QString untrimmedValue(const char* line, qsizetype length, qsizetype valueStart) const;

    template <typename Statement>
    void trap(Statement&& statement);

    RecordStore& store_;
    Report report_;
    Progress progress_;
    CharsetDecoder decoder_;
    QString lineSeparator_ = QStringLiteral("\r\n");

    RecordType recordType_ = RecordType::None;
    std::string_view level1Tag_;  // points into the file bytes, alive for the whole read
    std::unordered_map<std::string_view, QString> shared_;  // keys point into the file bytes
    int64_t level0Lines_ = 0;
    bool progressDue_ = false;
};

// Reads the cross-reference number of a value such as "@I12@" that starts at
// or after `from`: the digits after the "@" and its type letter, up to the
// closing "@". No "@", or no closing "@", is the InvalidCall fault.
int32_t crossReferenceNumber(const char* line, qsizetype length, qsizetype from);

}  // namespace tav
