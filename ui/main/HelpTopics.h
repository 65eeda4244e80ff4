#pragma once

#include <QString>

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

// Reads "help.txt" from the current folder, or else from `programFolder`;
// false with `problem` set when neither can be read.
bool readHelpFile(const QString& programFolder, QString& text, QString& problem);

}  // namespace tav
