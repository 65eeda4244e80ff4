// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/CharsetDecoder.h"
#include "tests/TestSupport.h"

#include <QStringEncoder>

using namespace tav;

namespace {

QByteArray personFile(const QByteArray& charset, const QByteArray& nameBytes)
{
    QByteArray text = "0 HEAD\n";
    if (!charset.isEmpty())
        text += "1 CHAR " + charset + "\n";
    text += "0 @I1@ INDI\n1 NAME " + nameBytes + "\n1 BIRT\n2 PLAC K\xC3\xB6ln\n";
    return text;
}

QByteArray utf16(const QString& text, bool littleEndian)
{
    QStringEncoder encode(littleEndian ? QStringConverter::Utf16LE : QStringConverter::Utf16BE,
                          QStringConverter::Flag::WriteBom);
    return encode(text);
}

}  // namespace

class CharsetTest : public tav::test::SessionTest {
protected:
    QString nameRead(const QByteArray& charset, const QByteArray& nameBytes)
    {
        EXPECT_TRUE(load(personFile(charset, nameBytes)));
        return ind(1).name.toString();
    }
};

TEST_F(CharsetTest, EachDeclaredCharacterSetDecodesNames)
{
    EXPECT_EQ(nameRead("UTF-8", "Jos\xC3\xA9 /M\xC3\xBCller/"), QStringLiteral(u"José /Müller/"));
    EXPECT_EQ(nameRead("UTF8", "Zo\xC3\xAB /Dvo\xC5\x99\xC3\xA1k/"),
              QStringLiteral(u"Zoë /Dvořák/"));
    // ANSEL puts the mark before its letter; the text holds composed letters.
    EXPECT_EQ(nameRead("ANSEL", "Jos\xE2"
                                "e /M\xE8uller/"),
              QStringLiteral(u"José /Müller/"));
    EXPECT_EQ(nameRead("ANSEL", "Hans /\xA2rsted/ \xE9"
                                "c\xF0"
                                "c"),
              QStringLiteral(u"Hans /Ørsted/ čç"));
    EXPECT_EQ(nameRead("ANSI", "Jos\xE9 /M\xFCller/ \x8C"), QStringLiteral(u"José /Müller/ Œ"));
    EXPECT_EQ(nameRead("WINDOWS", "Ren\xE9"
                                  "e /L\xE9vy/"),
              QStringLiteral(u"Renée /Lévy/"));
    EXPECT_EQ(nameRead("IBMPC", "Jos\x82 /M\x81ller/"), QStringLiteral(u"José /Müller/"));
    EXPECT_EQ(nameRead("IBM DOS", "Fran\x87ois /\x9D/"), QStringLiteral(u"François /¥/"));
    EXPECT_EQ(nameRead("CP850", "Hans /\x9Drsted/"), QStringLiteral(u"Hans /Ørsted/"));
}

TEST_F(CharsetTest, WithoutADeclarationValidUtf8IsUtf8AndAnythingElseWindows1252)
{
    EXPECT_EQ(nameRead("", "Jos\xC3\xA9 /M/"), QStringLiteral(u"José /M/"));
    EXPECT_EQ(nameRead("UNICODE", "Jos\xC3\xA9 /M/"), QStringLiteral(u"José /M/"));
    EXPECT_EQ(nameRead("", "Jos\xE9 /M/"), QStringLiteral(u"José /M/"));
    // Each value is judged on its own: the place in the same record is UTF-8.
    EXPECT_EQ(ind(1).birthPlace, QStringLiteral(u"Köln"));
}

TEST_F(CharsetTest, InvalidUtf8BecomesReplacementCharacters)
{
    const QString name = nameRead("UTF-8", "Bad \xFF\xC3 /X/");
    EXPECT_EQ(name, QStringLiteral(u"Bad \uFFFD\uFFFD /X/"));
    EXPECT_FALSE(isValidUtf8("\xC0\x80", 2));      // overlong
    EXPECT_FALSE(isValidUtf8("\xED\xA0\x80", 3));  // surrogate
    EXPECT_FALSE(isValidUtf8("\xE2\x82", 2));      // cut short
    EXPECT_TRUE(isValidUtf8("\xF0\x9F\x98\x80", 4));
}

TEST_F(CharsetTest, ByteOrderMarkIsSkippedSoTheHeaderIsRead)
{
    ASSERT_TRUE(load("\xEF\xBB\xBF" + personFile("UTF-8", "Ana /\xC3\x81lvarez/")));
    EXPECT_EQ(session.records.characterSet, QStringLiteral("UTF-8"));
    EXPECT_EQ(ind(1).name, QStringLiteral(u"Ana /Álvarez/"));
}

TEST_F(CharsetTest, Utf16FilesInEitherByteOrderAreRead)
{
    const QString text =
        QStringLiteral(u"0 HEAD\r\n1 CHAR UNICODE\r\n0 @I1@ INDI\r\n1 NAME Łukasz /Żak/\r\n"
                       u"0 @I2@ INDI\r\n1 NAME 李 /王/\r\n");
    for (bool little : {true, false}) {
        ASSERT_TRUE(load(utf16(text, little)));
        EXPECT_EQ(session.records.individualCount(), 2);
        EXPECT_EQ(ind(1).name, QStringLiteral(u"Łukasz /Żak/"));
        EXPECT_EQ(ind(2).name, QStringLiteral(u"李 /王/"));
        EXPECT_EQ(session.records.characterSet, QStringLiteral("UNICODE"));
    }
    // Without a byte order mark the zero bytes give the order away.
    ASSERT_TRUE(load(utf16(text, true).mid(2)));
    EXPECT_EQ(ind(1).name, QStringLiteral(u"Łukasz /Żak/"));
}

// Line ends are split alike below the reader; here each kind reaches it.
TEST_F(CharsetTest, CrLfLfAndCrLineEndsReadAlike)
{
    for (const char* eol : {"\r\n", "\n", "\r"}) {
        ASSERT_TRUE(load(tav::test::gedcomText({"0 HEAD", "0 @I1@ INDI", "1 NAME Ann /Lee/",
                                                "1 NOTE a", "2 CONT b", "1 FAMS @F1@", "0 @F1@ FAM",
                                                "1 WIFE @I1@", "0 TRLR"},
                                               eol)));
        EXPECT_EQ(ind(1).name, QStringLiteral("Ann /Lee/")) << "eol " << int(eol[0]);
        EXPECT_EQ(ind(1).note, QStringLiteral("a\r\nb"));
        EXPECT_EQ(spouseFamily(1, 1), 1);
        EXPECT_EQ(fam(1).wife.slot, 1);
    }
    // A last line without any line end is still read.
    ASSERT_TRUE(load("0 @I1@ INDI\r\n1 NAME Last /Line/"));
    EXPECT_EQ(ind(1).name, QStringLiteral("Last /Line/"));
}
