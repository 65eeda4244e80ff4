// SPDX-License-Identifier: GPL-3.0-or-later
// A file's lines read in pieces: the same lines as the whole buffer gives,
// wherever the pieces end (inside a CR LF, inside an over-long line), a
// read that fails half-way, and a header too long for the first piece.
#include "core/FileLines.h"
#include "core/GedcomReader.h"
#include "core/LineSplitter.h"
#include "tests/TestSupport.h"

#include <QRandomGenerator>
#include <algorithm>
#include <vector>

using namespace tav;

namespace {

// Hands out `bytes` a few at a time, at random, then fails with `failure`
// (or ends, when it is empty).
FileLines::ReadSome pieceByPiece(const QByteArray& bytes, quint32 seed, QString failure = {})
{
    return [bytes, at = qsizetype(0), random = QRandomGenerator(seed),
            failure](char* into, qint64 most, QString& why) mutable -> qint64 {
        if (at == bytes.size()) {
            why = failure;
            return failure.isEmpty() ? 0 : -1;
        }
        const qint64 n = std::min<qint64>({most, bytes.size() - at, random.bounded(1, 14)});
        std::copy_n(bytes.constData() + at, n, into);
        at += n;
        return n;
    };
}

// Text of letters, blanks and every kind of line end, with some lines
// longer than `longest`.
QByteArray mixedText(quint32 seed, qsizetype longest)
{
    QRandomGenerator random(seed);
    static const char* const ends[] = {"\n", "\r", "\r\n", "\n\r"};
    QByteArray text;
    for (int line = 0; line < 200; ++line) {
        const int length = random.bounded(10) == 0 ? int(longest) + random.bounded(-2, 60)
                                                   : random.bounded(0, 12);
        for (int i = 0; i < length; ++i)
            text += "ab c"[random.bounded(4)];
        text += ends[random.bounded(4)];
    }
    if (random.bounded(2) == 0)
        text.chop(1);  // a last line without its end, or with a lone CR
    return text;
}

}  // namespace

TEST(FileLinesTest, PiecesOfAnySizeGiveTheLinesOfTheWholeBuffer)
{
    constexpr qsizetype longest = 40;
    for (quint32 seed = 1; seed <= 60; ++seed) {
        const QByteArray text = mixedText(seed, longest);
        std::vector<QByteArray> expected;
        LineSplitter whole(text.constData(), text.size());
        const char* line;
        qsizetype length;
        while (whole.next(line, length))
            expected.emplace_back(line, length);

        // A buffer of a few bytes beside the longest line, filled a few
        // bytes a read: pieces end everywhere.
        FileLines pieces(pieceByPiece(text, seed), text.size(), longest, 16);
        std::vector<QByteArray> got;
        while (pieces.next(line, length))
            got.emplace_back(line, length);
        // An over-long line may come cut after longest + 1 bytes.
        const auto same = [](const QByteArray& a, const QByteArray& b) {
            return a == b || (a.size() > longest && b.size() > longest &&
                              a.first(longest + 1) == b.first(longest + 1));
        };
        ASSERT_TRUE(std::equal(got.begin(), got.end(), expected.begin(), expected.end(), same))
            << "seed " << seed;
        EXPECT_EQ(pieces.position(), text.size()) << "seed " << seed;
        EXPECT_TRUE(pieces.failure().isEmpty());
    }
}

class FileLinesLoadTest : public test::SessionTest {};

TEST_F(FileLinesLoadTest, AReadFailingHalfWayKeepsWhatWasReadAndSaysSo)
{
    const QByteArray start = "0 HEAD\n0 @I1@ INDI\n1 NAME Ann /Bell/\n0 @I2@ INDI\n1 NAME Bo";
    FileLines lines(pieceByPiece(start, 7, QStringLiteral("Input/output error")), 4096,
                    GedcomReader::longestLine, 64);
    QStringList messages;
    GedcomReader reader(session.records, [&](const QString& text) { messages << text; });
    ASSERT_TRUE(GedcomReader::readableInPieces(lines));
    reader.read(lines, 4096);
    EXPECT_EQ(session.records.individualCount(), 2);
    EXPECT_EQ(ind(1).name, u"Ann /Bell/");
    EXPECT_EQ(ind(2).name, u"Bo");
    EXPECT_EQ(messages, QStringList{QStringLiteral(
                            "The file could not be read to its end (Input/output error); what "
                            "was read is shown.")});
}

// The character set is named after three lines of nearly a megabyte each:
// past the first piece, so the file is read whole, and its names decoded by
// the set it names.
TEST_F(FileLinesLoadTest, AHeaderLongerThanTheFirstPieceStillNamesTheCharacterSet)
{
    QByteArray text = "0 HEAD\n";
    for (int i = 0; i < 3; ++i)
        text += "1 NOTE " + QByteArray(1000 * 1000, 'x') + "\n";
    text += "1 CHAR ANSEL\n0 @I1@ INDI\n1 NAME Jos\xE2"
            "e /M\xE8uller/\n";
    ASSERT_TRUE(load(text));
    EXPECT_EQ(ind(1).name, QStringLiteral(u"José /Müller/"));
    EXPECT_TRUE(messages.texts().isEmpty());
}
