#pragma once

#include <QString>
#include <QStringList>
#include <deque>
#include <functional>
#include <vector>

namespace tav {

class RuntimeFault;

// Message boxes, as every window and routine shows them. The viewer answers
// with real boxes, tav-cli with standard error, tests with a recorder.
class Messages {
public:
    static QString applicationTitle() { return QStringLiteral("Tav"); }

    virtual ~Messages() = default;

    // A message with an OK button; an empty title means the application's own.
    void message(const QString& text, const QString& title = QString())
    {
        showMessage(text, title.isEmpty() ? applicationTitle() : title);
    }
    // A Yes/No question; true for Yes.
    bool ask(const QString& text, const QString& title = QString())
    {
        return askYesNo(text, title.isEmpty() ? applicationTitle() : title);
    }
    // "Error no: ..." for a fault that a window survives.
    void fault(const RuntimeFault& fault);

protected:
    virtual void showMessage(const QString& text, const QString& title) = 0;
    virtual bool askYesNo(const QString& text, const QString& title) = 0;
};

// tav-cli: each message on one line of standard error (line breaks inside a
// message become plain newlines); questions are answered Yes.
class StderrMessages : public Messages {
public:
    using Writer = std::function<void(const QString& line)>;
    // The writer receives each message as one line; by default it is stderr.
    explicit StderrMessages(Writer writer = {});

    int messageCount() const { return count_; }

protected:
    void showMessage(const QString& text, const QString& title) override;
    bool askYesNo(const QString& text, const QString& title) override;

private:
    Writer writer_;
    int count_ = 0;
};

// Keeps every message and question; questions take queued answers, then Yes.
class RecordingMessages : public Messages {
public:
    struct Entry {
        QString text;
        QString title;
        bool question = false;
    };

    std::vector<Entry> entries;
    std::deque<bool> answers;

    QStringList texts() const;
    void clear() { entries.clear(); }

protected:
    void showMessage(const QString& text, const QString& title) override;
    bool askYesNo(const QString& text, const QString& title) override;
};

}  // namespace tav
