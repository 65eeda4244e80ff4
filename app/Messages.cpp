// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Messages.h"

#include "core/DisplayText.h"
#include "core/Fault.h"

#include <algorithm>
#include <cstdio>

namespace tav {

void Messages::fault(const RuntimeFault& fault)
{
    message(fault.messageText(), QString(), MessageKind::Error);
}

StderrMessages::StderrMessages(Writer writer) : writer_(std::move(writer))
{
    if (!writer_) {
        writer_ = [](const QString& line) {
            const QByteArray bytes = line.toUtf8() + '\n';
            std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
        };
    }
}

void StderrMessages::showMessage(const QString& text, const QString&, MessageKind)
{
    writer_(withNewlines(text));
}

bool StderrMessages::askYesNo(const QString&, const QString&) { return true; }

void StderrMessages::loadMessages(const QStringList& messages)
{
    for (const QString& message : messages)
        writer_(withNewlines(message));
}

QString Messages::loadMessagesText(const QStringList& messages)
{
    QStringList lines = messages.mid(0, loadMessagesShown);
    if (messages.size() > loadMessagesShown)
        lines << QStringLiteral("... and %1 more.").arg(messages.size() - loadMessagesShown);
    return lines.join(QLatin1String("\r\n"));
}

void Messages::loadMessages(const QStringList& messages)
{
    if (messages.isEmpty())
        return;
    const bool fault = std::any_of(messages.begin(), messages.end(), [](const QString& message) {
        return message.startsWith(QLatin1String("Error no:"));
    });
    message(loadMessagesText(messages), QString(),
            fault ? MessageKind::Error : MessageKind::Warning);
}

QStringList RecordingMessages::texts() const
{
    QStringList list;
    for (const Entry& e : entries)
        list << e.text;
    return list;
}

void RecordingMessages::showMessage(const QString& text, const QString& title, MessageKind kind)
{
    entries.push_back({text, title, false, kind});
}

bool RecordingMessages::askYesNo(const QString& text, const QString& title)
{
    entries.push_back({text, title, true});
    if (answers.empty())
        return true;
    const bool answer = answers.front();
    answers.pop_front();
    return answer;
}

}  // namespace tav
