// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/GedcomReader.h"

#include "core/Fault.h"
#include "core/FileLines.h"
#include "core/LineSplitter.h"
#include "core/TextNumbers.h"

#include <cmath>

namespace tav {

namespace {

// Lines are short: a plain scan is quicker than a library search here.
inline qsizetype indexOf(const char* line, qsizetype length, char c, qsizetype from)
{
    for (qsizetype i = from < 0 ? 0 : from; i < length; ++i) {
        if (line[i] == c)
            return i;
    }
    return -1;
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// What a CONT line puts before its text in a note.
constexpr QLatin1StringView lineSeparator("\r\n");

// The length of a line cut to at most `longest` bytes, not inside a UTF-8
// character.
qsizetype cutLength(const char* line, qsizetype longest)
{
    qsizetype length = longest;
    for (int back = 0; back < 3 && length > 0 && (uchar(line[length]) & 0xC0) == 0x80; ++back)
        --length;
    return length;
}

}  // namespace

int32_t GedcomReader::crossReference(const char* line, qsizetype length, qsizetype from)
{
    const qsizetype a = indexOf(line, length, '@', from);
    const qsizetype b = a < 0 ? -1 : indexOf(line, length, '@', a + 1);
    if (b < 0)
        raiseFault(RuntimeFault::InvalidCall);
    return store_.crossReferences().intern(std::string_view(line + a + 1, size_t(b - a - 1)));
}

GedcomReader::GedcomReader(RecordStore& store, Report report, Progress progress)
    : store_(store), report_(std::move(report)), progress_(std::move(progress))
{}

template <typename Statement>
void GedcomReader::trap(Statement&& statement)
{
    try {
        statement();
    } catch (const RuntimeFault& fault) {
        if (report_)
            report_(fault.messageText());
    }
}

void GedcomReader::read(QByteArrayView bytes)
{
    LineSplitter lines(bytes.data(), bytes.size());
    readLines(lines, headerCharsetName(bytes).value(), bytes.size());
}

bool GedcomReader::readableInPieces(const FileLines& lines)
{
    const QByteArrayView head = lines.head();
    return !isUtf16File(head) &&
           headerCharsetName(head.sliced(utf8MarkLength(head)), lines.headIsWhole()).has_value();
}

void GedcomReader::read(FileLines& lines, qint64 fileBytes)
{
    lines.skipStart(utf8MarkLength(lines.head()));
    readLines(lines, headerCharsetName(lines.head(), lines.headIsWhole()).value_or(QByteArray()),
              fileBytes);
    if (!lines.failure().isEmpty() && report_)
        report_(QStringLiteral("The file could not be read to its end (%1); what was read is "
                               "shown.")
                    .arg(lines.failure()));
}

template <typename Lines>
void GedcomReader::readLines(Lines& lines, const QByteArray& charsetName, qint64 fileBytes)
{
    store_.resetRecords();
    // Room for the cross-references at once: a record with its links takes
    // some 200 to 300 bytes of a file.
    store_.crossReferences().clear(size_t(fileBytes / 256));
    store_.expectFileBytes(qsizetype(fileBytes));
    decoder_ = CharsetDecoder(CharsetDecoder::charsetFromName(charsetName));
    recordType_ = RecordType::None;
    level1Tag_ = Level1Tag::Other;
    sharedTexts_.clear();
    sharedValues_.clear();
    noteField_ = nullptr;
    level0Lines_ = 0;
    longLines_ = 0;

    const char* line;
    qsizetype length;
    int64_t lineNumber = 0;
    while (lines.next(line, length)) {
        ++lineNumber;
        if (length > longestLine) {
            if (longLines_++ == 0)
                firstLongLine_ = lineNumber;
            length = cutLength(line, longestLine);
        }
        readLine(line, length);
        if (progressDue_) {
            progressDue_ = false;
            if (progress_)
                progress_(lines.position());
        }
    }
    finishNote();
    sharedTexts_.clear();
    sharedValues_ = {};
    store_.resolveLinks();
    if (longLines_ > 0 && report_)
        report_(longLines_ == 1
                    ? QStringLiteral("Line %1 is longer than 1 MB; it is cut there.")
                          .arg(firstLongLine_)
                    : QStringLiteral("%1 lines are longer than 1 MB (the first is line %2); they "
                                     "are cut there.")
                          .arg(longLines_)
                          .arg(firstLongLine_));
}

void GedcomReader::readLine(const char* line, qsizetype length)
{
    // Blanks and tabs before the level are indentation; a line that then
    // does not start with a level and a blank (an empty line, text broken
    // onto a line of its own) is no line of the file's structure.
    qsizetype indent = 0;
    while (indent < length && (line[indent] == ' ' || line[indent] == '\t'))
        ++indent;
    if (indent == length || !isDigit(line[indent]))
        return;
    line += indent;
    length -= indent;
    const qsizetype blank = indexOf(line, length, ' ', 0);
    if (blank < 0)
        return;
    int level;
    if (blank == 1) {
        level = line[0] - '0';
    } else {
        // The level is the number read from the text up to and including the
        // first blank.
        const double value = leadingNumber(line, blank + 1);
        if (!(std::fabs(value) < 1e9))
            return;
        level = int(std::nearbyint(value));
    }
    if (level == 0) {
        readLevel0(line, length, blank);
        return;
    }
    if (level != 1 && level != 2)
        return;
    qsizetype tagEnd = indexOf(line, length, ' ', blank + 1);
    if (tagEnd < 0)
        tagEnd = length;
    const std::string_view tag(line + blank + 1, size_t(tagEnd - blank - 1));
    if (level == 1)
        readLevel1(tag, line, length, tagEnd + 1);
    else
        readLevel2(tag, line, length, tagEnd + 1);
}

void GedcomReader::reportCapacity(bool& truncated, const char* what, int32_t capacity)
{
    if (!truncated) {
        if (report_)
            report_(QStringLiteral("Maximum no. of %1 (%2) has been exceeded. Truncating...")
                        .arg(QLatin1String(what))
                        .arg(capacity));
        truncated = true;
    }
    recordType_ = RecordType::Skipped;
}

void GedcomReader::readLevel0(const char* line, qsizetype length, qsizetype blank)
{
    finishNote();
    progressDue_ = ++level0Lines_ % 80 == 0;
    recordType_ = RecordType::Skipped;
    const qsizetype at = blank + 1;
    if (at >= length || line[at] != '@') {
        // Without a cross-reference only the header is read.
        const qsizetype end = indexOf(line, length, ' ', at);
        if (std::string_view(line + at, size_t((end < 0 ? length : end) - at)) == "HEAD")
            recordType_ = RecordType::Head;
        return;
    }
    const qsizetype close = indexOf(line, length, '@', at + 1);
    if (close < 0)
        return;
    const std::string_view xref(line + at + 1, size_t(close - at - 1));
    qsizetype tagStart = close + 1;
    while (tagStart < length && line[tagStart] == ' ')
        ++tagStart;
    qsizetype tagEnd = indexOf(line, length, ' ', tagStart);
    if (tagEnd < 0)
        tagEnd = length;
    const std::string_view tag(line + tagStart, size_t(tagEnd - tagStart));

    const auto begin = [&](auto& record) {
        record.xref = store_.crossReferences().intern(xref);
        record.id = digitsValue(xref);
    };
    if (tag == "INDI") {
        if (store_.individualCount() < RecordStore::individualCapacity) {
            recordType_ = RecordType::Individual;
            begin(store_.addIndividual());
        } else {
            reportCapacity(store_.individualsTruncated, "individuals",
                           RecordStore::individualCapacity);
        }
    } else if (tag == "FAM") {
        if (store_.familyCount() < RecordStore::familyCapacity) {
            recordType_ = RecordType::Family;
            begin(store_.addFamily());
        } else {
            reportCapacity(store_.familiesTruncated, "families", RecordStore::familyCapacity);
        }
    } else if (tag == "SOUR") {
        if (store_.sourceCount() < RecordStore::sourceCapacity) {
            recordType_ = RecordType::Source;
            begin(store_.addSource());
        } else {
            reportCapacity(store_.sourcesTruncated, "sources", RecordStore::sourceCapacity);
        }
    } else if (tag == "NOTE" || tag == "SNOTE") {
        if (store_.noteCount() < RecordStore::noteCapacity) {
            recordType_ = RecordType::Note;
            Note& note = store_.addNote();
            begin(note);
            // Text on the level-0 line is the note's first line.
            setNote(note.text, untrimmedValue(line, length, tagEnd + 1));
        } else {
            reportCapacity(store_.notesTruncated, "notes", RecordStore::noteCapacity);
        }
    }
}

namespace {

std::string_view trimmedBytes(const char* line, qsizetype length, qsizetype valueStart)
{
    qsizetype begin = valueStart;
    qsizetype end = length;
    while (begin < end && line[begin] == ' ')
        ++begin;
    while (end > begin && line[end - 1] == ' ')
        --end;
    return begin < end ? std::string_view(line + begin, size_t(end - begin)) : std::string_view();
}

}  // namespace

QStringView GedcomReader::storedText(const char* bytes, qsizetype length)
{
    if (length <= 0)
        return {};
    TextArena& texts = store_.texts();
    const qsizetype written = decoder_.decodeInto(bytes, length, texts.reserve(length));
    return written >= 0 ? texts.take(written) : texts.add(decoder_.decode(bytes, length));
}

QStringView GedcomReader::trimmedValue(const char* line, qsizetype length, qsizetype valueStart)
{
    const std::string_view bytes = trimmedBytes(line, length, valueStart);
    return storedText(bytes.data(), qsizetype(bytes.size()));
}

QStringView GedcomReader::sharedValue(const char* line, qsizetype length, qsizetype valueStart)
{
    const std::string_view bytes = trimmedBytes(line, length, valueStart);
    if (bytes.empty())
        return {};
    const int32_t code = sharedTexts_.intern(bytes);
    if (size_t(code) == sharedValues_.size())
        sharedValues_.push_back(storedText(bytes.data(), qsizetype(bytes.size())));
    return sharedValues_[size_t(code)];
}

QStringView GedcomReader::untrimmedValue(const char* line, qsizetype length, qsizetype valueStart)
{
    return valueStart < length ? storedText(line + valueStart, length - valueStart)
                               : QStringView();
}

void GedcomReader::setNote(QStringView& field, QStringView text)
{
    if (noteField_ == &field)
        noteField_ = nullptr;
    field = text;
}

void GedcomReader::extendNote(QStringView& field, QLatin1StringView separator, const char* line,
                              qsizetype length, qsizetype valueStart)
{
    if (noteField_ != &field) {
        finishNote();
        noteField_ = &field;
        noteText_ = field.toString();
    }
    noteText_ += separator;
    if (valueStart < length)
        noteText_ += decoder_.decode(line + valueStart, length - valueStart);
}

void GedcomReader::finishNote()
{
    if (noteField_)
        *noteField_ = store_.texts().add(noteText_);
    noteField_ = nullptr;
}

void GedcomReader::readLevel1(std::string_view tag, const char* line, qsizetype length,
                              qsizetype valueStart)
{
    level1Tag_ = tag == "GEDC"   ? Level1Tag::Gedc
                 : tag == "BIRT" ? Level1Tag::Birt
                 : tag == "DEAT" ? Level1Tag::Deat
                 : tag == "MARR" ? Level1Tag::Marr
                                 : Level1Tag::Other;
    switch (recordType_) {
    case RecordType::Head:
        if (tag == "DATE")
            store_.headerDate = trimmedValue(line, length, valueStart).toString();
        else if (tag == "CHAR")
            store_.characterSet = trimmedValue(line, length, valueStart).toString();
        break;
    case RecordType::Individual: {
        Individual& person = store_.individualAt(store_.individualCount());
        if (tag == "NAME") {
            // The first name is the person's name; later ones are other names.
            const QStringView name = trimmedValue(line, length, valueStart);
            if (name.isEmpty())
                break;
            if (person.name.isEmpty())
                person.name = name;
            else
                store_.addOtherName(person, name);
        } else if (tag == "SEX") {
            person.sex = sharedValue(line, length, valueStart);
        } else if (tag == "OCCU") {
            person.occupation = sharedValue(line, length, valueStart);
        } else if (tag == "FAMS") {
            Link& link =
                store_.linkAt(store_.addLink(person.firstSpouseFamily, person.spouseFamilyCount));
            trap([&] { link.xref = crossReference(line, length, valueStart - 1); });
        } else if (tag == "FAMC") {
            trap([&] { person.childFamily.xref = crossReference(line, length, valueStart - 1); });
        } else if (tag == "NOTE" || tag == "SNOTE") {
            setNote(person.note, untrimmedValue(line, length, valueStart));
        }
        break;
    }
    case RecordType::Family: {
        Family& family = store_.familyAt(store_.familyCount());
        if (tag == "HUSB") {
            trap([&] { family.husband.xref = crossReference(line, length, valueStart - 1); });
        } else if (tag == "WIFE") {
            trap([&] { family.wife.xref = crossReference(line, length, valueStart - 1); });
        } else if (tag == "CHIL") {
            Link& link = store_.linkAt(store_.addLink(family.firstChild, family.childCount));
            trap([&] { link.xref = crossReference(line, length, valueStart - 1); });
        } else if (tag == "DIV") {
            family.divorced = true;
        }
        break;
    }
    case RecordType::Source: {
        Source& source = store_.sourceAt(store_.sourceCount());
        if (tag == "TITL")
            source.title = trimmedValue(line, length, valueStart);
        else if (tag == "AUTH")
            source.author = trimmedValue(line, length, valueStart);
        else if (tag == "PUBL")
            source.publication = trimmedValue(line, length, valueStart);
        else if (tag == "NOTE" || tag == "SNOTE")
            setNote(source.note, trimmedValue(line, length, valueStart));
        break;
    }
    case RecordType::Note: {
        Note& note = store_.noteAt(store_.noteCount());
        if (tag == "CONT")
            extendNote(note.text, lineSeparator, line, length, valueStart);
        else if (tag == "CONC")
            extendNote(note.text, {}, line, length, valueStart);
        break;
    }
    case RecordType::None:
    case RecordType::Skipped: break;
    }
}

void GedcomReader::readLevel2(std::string_view tag, const char* line, qsizetype length,
                              qsizetype valueStart)
{
    switch (recordType_) {
    case RecordType::Head:
        if (level1Tag_ == Level1Tag::Gedc && tag == "VERS")
            store_.gedcomVersion = trimmedValue(line, length, valueStart).toString();
        break;
    case RecordType::Individual: {
        Individual& person = store_.individualAt(store_.individualCount());
        if (level1Tag_ == Level1Tag::Birt) {
            if (tag == "DATE")
                person.birthDate = trimmedValue(line, length, valueStart);
            else if (tag == "PLAC")
                person.birthPlace = sharedValue(line, length, valueStart);
        } else if (level1Tag_ == Level1Tag::Deat) {
            // The standard PLAC and the spelling PLACE both give the death
            // place; the later line wins.
            if (tag == "DATE")
                person.deathDate = trimmedValue(line, length, valueStart);
            else if (tag == "PLAC" || tag == "PLACE")
                person.deathPlace = sharedValue(line, length, valueStart);
        } else if (tag == "CONT") {
            // Continuations under any other level-1 tag extend the note.
            extendNote(person.note, lineSeparator, line, length, valueStart);
        } else if (tag == "CONC") {
            extendNote(person.note, {}, line, length, valueStart);
        }
        break;
    }
    case RecordType::Family:
        if (level1Tag_ == Level1Tag::Marr) {
            Family& family = store_.familyAt(store_.familyCount());
            if (tag == "DATE")
                family.marriageDate = trimmedValue(line, length, valueStart);
            else if (tag == "PLAC")
                family.marriagePlace = sharedValue(line, length, valueStart);
        }
        break;
    default: break;
    }
}

}  // namespace tav
