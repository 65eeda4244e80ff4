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

}  // namespace tav
