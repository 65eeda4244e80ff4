// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// The program's texts break their lines with CR LF (the line separator of
// every report and message); a screen or a terminal shows them these ways.
namespace tav {

// Each CR LF as one newline: a message box, a report, standard error.
inline QString withNewlines(QString text)
{
    return text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
}

// All on one line, two blanks for each CR LF: a row of a list.
inline QString onOneLine(QString text)
{
    return text.replace(QLatin1String("\r\n"), QLatin1String("  "));
}

// A text as a file name to offer in a save dialog: letters, digits, blanks,
// "-" and "," kept, anything else (slashes, quotes, colons) made "_";
// `fallback` when nothing is left.
inline QString fileNameFrom(const QString& text, const QString& fallback)
{
    QString name = text.simplified();
    for (QChar& c : name) {
        if (!c.isLetterOrNumber() && c != u' ' && c != u'-' && c != u',')
            c = u'_';
    }
    return name.isEmpty() ? fallback : name;
}

// A text shown on one line (a box of the tree, a caption, a row of a list,
// a status bar) is at most this many characters long: a file may hold a
// name of a million, which no window can show and every layout of it
// slows. Tooltips and grids keep the whole text.
constexpr qsizetype longestShownText = 500;

// The text, or when it is longer than longestShownText its beginning and
// "..." in that many characters (a character's surrogate pair kept whole).
inline QString shortenedText(const QString& text)
{
    if (text.size() <= longestShownText)
        return text;
    qsizetype kept = longestShownText - 3;
    if (text[kept - 1].isHighSurrogate())
        --kept;
    return text.left(kept) + QLatin1String("...");
}

// Whether a text holds a word (a run without blanks or line ends) longer
// than `longest` characters. Text laid out in lines is wrapped at word
// boundaries; a word of a million characters takes that seconds, and such
// a text is wrapped anywhere instead.
inline bool hasWordLongerThan(const QString& text, qsizetype longest = 1000)
{
    qsizetype run = 0;
    for (QChar c : text) {
        run = c.isSpace() ? 0 : run + 1;
        if (run > longest)
            return true;
    }
    return false;
}

}  // namespace tav
