#include "core/GedcomReader.h"

#include "core/Fault.h"
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

// The number at the start of `length` bytes, read as the platform's number
// reading does. Plain digits, by far the common case, are read directly.
int32_t numberAt(const char* text, qsizetype length)
{
    int64_t value = 0;
    qsizetype i = 0;
    while (i < length && i < 10 && isDigit(text[i]))
        value = value * 10 + (text[i++] - '0');
    if (i > 0 && (i == length || (!isDigit(text[i]) && text[i] != ' ' && text[i] != '.' &&
                                  text[i] != '\t' && text[i] != '\n')))
        return toLong(double(value));
    return toLong(leadingNumber(text, length));
}

// A record's number taken from a level-0 cross-reference such as "@I12@":
// the characters after "@" and the type letter, up to the next blank.
int32_t level0Number(const char* line, qsizetype length, qsizetype from)
{
    if (from >= length)
        return 0;
    qsizetype end = indexOf(line, length, ' ', from);
    if (end < 0)
        end = length;
    return numberAt(line + from, end - from);
}

}  // namespace

int32_t crossReferenceNumber(const char* line, qsizetype length, qsizetype from)
{
    const qsizetype a = indexOf(line, length, '@', from);
    const qsizetype b = a < 0 ? -1 : indexOf(line, length, '@', a + 1);
    if (b < 0)
        raiseFault(RuntimeFault::InvalidCall);
    // The number is read from two past the first "@" up to and including the
    // closing "@", which the number reading ignores.
    const qsizetype start = a + 2;
    const qsizetype count = b - a - 1;
    if (start >= length)
        return 0;
    return numberAt(line + start, qMin(count, length - start));
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
    store_.resetRecords();
    decoder_ = CharsetDecoder(CharsetDecoder::charsetFromName(headerCharsetName(bytes)));
    recordType_ = RecordType::None;
    level1Tag_ = {};
    shared_.clear();
    level0Lines_ = 0;

    LineSplitter lines(bytes.data(), bytes.size());
    const char* line;
    qsizetype length;
    while (lines.next(line, length)) {
        readLine(line, length);
        if (progressDue_) {
            progressDue_ = false;
            if (progress_)
                progress_(lines.position());
        }
    }
    shared_.clear();
    resolveCrossReferences();
}

void GedcomReader::readLine(const char* line, qsizetype length)
{
    const qsizetype blank = indexOf(line, length, ' ', 0);
    int level;
    if (blank == 1 && isDigit(line[0])) {
        level = line[0] - '0';
    } else {
        // The level is the number read from the text up to and including the
        // first blank; no blank leaves nothing to read, which is level 0.
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
    progressDue_ = ++level0Lines_ % 80 == 0;
    const qsizetype at = blank + 1;  // the two characters after the first blank
    if (at + 1 >= length)
        return;
    const char c0 = line[at];
    const char c1 = line[at + 1];
    if (c0 == 'H' && c1 == 'E') {
        recordType_ = RecordType::Head;
    } else if (c0 != '@') {
        return;  // TRLR and the like: the previous record type carries over
    } else if (c1 == 'I') {
        if (store_.individualCount() < RecordStore::individualCapacity) {
            recordType_ = RecordType::Individual;
            Individual& person = store_.addIndividual();
            trap([&] { person.id = level0Number(line, length, at + 2); });
        } else {
            reportCapacity(store_.individualsTruncated, "individuals",
                           RecordStore::individualCapacity);
        }
    } else if (c1 == 'F') {
        if (store_.familyCount() < RecordStore::familyCapacity) {
            recordType_ = RecordType::Family;
            Family& family = store_.addFamily();
            trap([&] { family.id = level0Number(line, length, at + 2); });
        } else {
            reportCapacity(store_.familiesTruncated, "families", RecordStore::familyCapacity);
        }
    } else if (c1 == 'S') {
        if (at + 2 >= length || !isDigit(line[at + 2])) {
            recordType_ = RecordType::Skipped;  // submitter records such as @SUBM1@
        } else if (store_.sourceCount() < RecordStore::sourceCapacity) {
            recordType_ = RecordType::Source;
            Source& source = store_.addSource();
            trap([&] { source.id = level0Number(line, length, at + 2); });
        } else {
            reportCapacity(store_.sourcesTruncated, "sources", RecordStore::sourceCapacity);
        }
    } else if (c1 == 'N') {
        if (store_.noteCount() >= RecordStore::noteCapacity) {
            reportCapacity(store_.notesTruncated, "notes", RecordStore::noteCapacity);
        } else {
            recordType_ = RecordType::Note;
            Note& note = store_.addNote();
            qsizetype end = indexOf(line, length, ' ', at);
            if (end < 0)
                end = length;
            trap([&] { note.id = digitsValue(QString::fromLatin1(line + at, end - at)); });
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

QString GedcomReader::trimmedValue(const char* line, qsizetype length, qsizetype valueStart) const
{
    const std::string_view bytes = trimmedBytes(line, length, valueStart);
    return decoder_.decode(bytes.data(), qsizetype(bytes.size()));
}

QString GedcomReader::sharedValue(const char* line, qsizetype length, qsizetype valueStart)
{
    const std::string_view bytes = trimmedBytes(line, length, valueStart);
    if (bytes.empty())
        return QString();
    auto [entry, added] = shared_.try_emplace(bytes);
    if (added)
        entry->second = decoder_.decode(bytes.data(), qsizetype(bytes.size()));
    return entry->second;
}

QString GedcomReader::untrimmedValue(const char* line, qsizetype length, qsizetype valueStart) const
{
    return valueStart < length ? decoder_.decode(line + valueStart, length - valueStart)
                               : QString();
}

void GedcomReader::readLevel1(std::string_view tag, const char* line, qsizetype length,
                              qsizetype valueStart)
{
    level1Tag_ = tag;
    switch (recordType_) {
    case RecordType::Head:
        if (tag == "DATE")
            store_.headerDate = trimmedValue(line, length, valueStart);
        else if (tag == "CHAR")
            store_.characterSet = trimmedValue(line, length, valueStart);
        break;
    case RecordType::Individual: {
        Individual& person = store_.individualAt(store_.individualCount());
        if (tag == "NAME") {
            person.name = trimmedValue(line, length, valueStart);
        } else if (tag == "SEX") {
            person.sex = sharedValue(line, length, valueStart);
        } else if (tag == "OCCU") {
            person.occupation = sharedValue(line, length, valueStart);
        } else if (tag == "FAMS") {
            const int32_t k = ++person.spouseFamilyCount;
            trap([&] {
                const int32_t number = crossReferenceNumber(line, length, valueStart - 1);
                if (k > Individual::maxSpouseFamilies)
                    raiseFault(RuntimeFault::SubscriptOutOfRange);
                person.spouseFamilyId[size_t(k)] = number;
                person.spouseFamiliesWritten |= uint16_t(1u << k);
            });
        } else if (tag == "FAMC") {
            trap([&] {
                person.childFamilyId = crossReferenceNumber(line, length, valueStart - 1);
                person.childFamilyWritten = true;
            });
        } else if (tag == "NOTE") {
            person.note = untrimmedValue(line, length, valueStart);
        }
        break;
    }
    case RecordType::Family: {
        Family& family = store_.familyAt(store_.familyCount());
        if (tag == "HUSB") {
            trap([&] {
                family.husbandId = crossReferenceNumber(line, length, valueStart - 1);
                family.husbandWritten = true;
            });
        } else if (tag == "WIFE") {
            trap([&] {
                family.wifeId = crossReferenceNumber(line, length, valueStart - 1);
                family.wifeWritten = true;
            });
        } else if (tag == "CHIL") {
            const int32_t k = ++family.childCount;
            trap([&] {
                const int32_t number = crossReferenceNumber(line, length, valueStart - 1);
                if (k > Family::maxChildren)
                    raiseFault(RuntimeFault::SubscriptOutOfRange);
                family.childId[size_t(k)] = number;
                family.childrenWritten |= 1u << k;
            });
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
        else if (tag == "NOTE")
            source.note = trimmedValue(line, length, valueStart);
        break;
    }
    case RecordType::Note: {
        Note& note = store_.noteAt(store_.noteCount());
        if (tag == "CONT")
            note.text += lineSeparator_ + untrimmedValue(line, length, valueStart);
        else if (tag == "CONC")
            note.text += untrimmedValue(line, length, valueStart);
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
        if (level1Tag_ == "GEDC" && tag == "VERS")
            store_.gedcomVersion = trimmedValue(line, length, valueStart);
        break;
    case RecordType::Individual: {
        Individual& person = store_.individualAt(store_.individualCount());
        if (level1Tag_ == "BIRT") {
            if (tag == "DATE")
                person.birthDate = trimmedValue(line, length, valueStart);
            else if (tag == "PLAC")
                person.birthPlace = sharedValue(line, length, valueStart);
        } else if (level1Tag_ == "DEAT") {
            // The standard PLAC and the spelling PLACE both give the death
            // place; the later line wins.
            if (tag == "DATE")
                person.deathDate = trimmedValue(line, length, valueStart);
            else if (tag == "PLAC" || tag == "PLACE")
                person.deathPlace = sharedValue(line, length, valueStart);
        } else if (tag == "CONT") {
            // Continuations under any other level-1 tag extend the note.
            person.note += lineSeparator_ + untrimmedValue(line, length, valueStart);
        } else if (tag == "CONC") {
            person.note += untrimmedValue(line, length, valueStart);
        }
        break;
    }
    case RecordType::Family:
        if (level1Tag_ == "MARR") {
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

void GedcomReader::resolveCrossReferences()
{
    store_.indexIds();
    const int32_t individuals = store_.individualCount();
    for (int32_t i = 1; i <= individuals; ++i) {
        Individual& person = store_.individualAt(i);
        for (int32_t k = 1; k <= person.spouseFamilyCount; ++k) {
            trap([&] {
                if (k > Individual::maxSpouseFamilies)
                    raiseFault(RuntimeFault::SubscriptOutOfRange);
                person.spouseFamilyIndex[size_t(k)] = store_.spouseFamilyOf(person, k);
            });
        }
        trap([&] { person.childFamilyIndex = store_.childFamilyOf(person); });
    }
    const int32_t families = store_.familyCount();
    for (int32_t f = 1; f <= families; ++f) {
        Family& family = store_.familyAt(f);
        family.husbandIndex = store_.husbandOf(family);
        family.wifeIndex = store_.wifeOf(family);
        for (int32_t k = 1; k <= family.childCount; ++k) {
            trap([&] {
                if (k > Family::maxChildren)
                    raiseFault(RuntimeFault::SubscriptOutOfRange);
                family.childIndex[size_t(k)] = store_.childOf(family, k);
            });
        }
    }
}

}  // namespace tav
