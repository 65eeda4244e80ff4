#include "ui/QtMessages.h"

#include <QApplication>
#include <QGuiApplication>
#include <QMessageBox>

namespace tav {

namespace {

QString displayed(const QString& text)
{
    QString shown = text;
    shown.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    return shown;
}

}  // namespace

void QtMessages::showMessage(const QString& text, const QString& title, MessageKind kind)
{
    // A message over a busy pointer would look as if it were busy too.
    const bool busy = QGuiApplication::overrideCursor() != nullptr;
    if (busy)
        QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    const QMessageBox::Icon icon = kind == MessageKind::Error     ? QMessageBox::Critical
                                   : kind == MessageKind::Warning ? QMessageBox::Warning
                                                                  : QMessageBox::Information;
    QMessageBox box(icon, title, displayed(text), QMessageBox::Ok, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.exec();
    if (busy)
        QGuiApplication::restoreOverrideCursor();
}

bool QtMessages::askYesNo(const QString& text, const QString& title)
{
    QMessageBox box(QMessageBox::Question, title, displayed(text),
                    QMessageBox::Yes | QMessageBox::No, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::Yes);
    return box.exec() == QMessageBox::Yes;
}

}  // namespace tav
