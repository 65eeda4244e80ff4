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

}  // namespace tav
