// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Outcome.h"

#include <QString>
#include <QStringList>

namespace tav {

// The help topics of the Help menu, in menu order: key in help.txt and the
// title the text viewer shows.
struct HelpTopic {
    const char* key;
    const char* title;
};
extern const HelpTopic helpTopics[5];

// The text of topic `key` in a help text: from just after "***!!!" and the
// key to the next marker, less the line break before it (for the last topic,
// less the file's last three characters). "" when the key is absent.
QString helpTopic(const QString& helpText, const QString& key);
// Whether a help text has a topic `key` (which may be empty).
bool hasHelpTopic(const QString& helpText, const QString& key);

// Where "help.txt" is looked for, in order: the current folder, beside the
// program, then ../share/tav from the program's folder (an installed copy).
// Without a program folder, the current folder alone.
QStringList helpFilePlaces(const QString& programFolder);

// The text of the first "help.txt" of helpFilePlaces that can be read.
Result<QString> readHelpFile(const QString& programFolder);

}  // namespace tav
