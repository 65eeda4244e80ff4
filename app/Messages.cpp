#include "app/Messages.h"

#include "core/DisplayText.h"
#include "core/Fault.h"

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
