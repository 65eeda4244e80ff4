// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <deque>
#include <functional>
#include <vector>

namespace tav {

class RuntimeFault;

// What a message box says, shown by its icon.
enum class MessageKind { Information, Warning, Error };

// Message boxes, as every window and routine shows them. The viewer answers
// with real boxes, tav-cli with standard error, tests with a recorder.
class Messages {
public:
    static QString applicationTitle() { return QStringLiteral("Tav"); }

    virtual ~Messages() = default;

    // A message with an OK button; an empty title means the application's own.
    void message(const QString& text, const QString& title = QString(),
                 MessageKind kind = MessageKind::Information)
    {
        showMessage(text, title.isEmpty() ? applicationTitle() : title, kind);
    }
    void warning(const QString& text) { message(text, QString(), MessageKind::Warning); }
    // A Yes/No question; true for Yes.
    bool ask(const QString& text, const QString& title = QString())
    {
        return askYesNo(text, title.isEmpty() ? applicationTitle() : title);
    }
    // "Error no: ..." for a fault that a window survives.
    void fault(const RuntimeFault& fault);

    // The messages of one load, shown together once it ends: by default one
    // box listing them a line each, at most `loadMessagesShown`, then
    // "... and N more.". An error box when a fault is among them.
    virtual void loadMessages(const QStringList& messages);
    static constexpr qsizetype loadMessagesShown = 20;
    // The text of that box, its lines broken by CR LF.
    static QString loadMessagesText(const QStringList& messages);

protected:
    virtual void showMessage(const QString& text, const QString& title, MessageKind kind) = 0;
    virtual bool askYesNo(const QString& text, const QString& title) = 0;
};

// tav-cli: each message on one line of standard error (line breaks inside a
// message become plain newlines), a load's messages one by one, in order;
// questions are answered Yes.
class StderrMessages : public Messages {
public:
    using Writer = std::function<void(const QString& line)>;
    // The writer receives each message as one line; by default it is stderr.
    explicit StderrMessages(Writer writer = {});

    void loadMessages(const QStringList& messages) override;

protected:
    void showMessage(const QString& text, const QString& title, MessageKind kind) override;
    bool askYesNo(const QString& text, const QString& title) override;

private:
    Writer writer_;
};

// Keeps every message and question; questions take queued answers, then Yes.
class RecordingMessages : public Messages {
public:
    struct Entry {
        QString text;
        QString title;
        bool question = false;
        MessageKind kind = MessageKind::Information;
    };

    std::vector<Entry> entries;
    std::deque<bool> answers;

    QStringList texts() const;
    void clear() { entries.clear(); }

protected:
    void showMessage(const QString& text, const QString& title, MessageKind kind) override;
    bool askYesNo(const QString& text, const QString& title) override;
};

}  // namespace tav
