// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/QtMessages.h"

#include "core/DisplayText.h"
#include "ui/BusyPointer.h"

#include <QApplication>
#include <QGuiApplication>
#include <QMessageBox>
#include <optional>

namespace tav {

void QtMessages::showMessage(const QString& text, const QString& title, MessageKind kind)
{
    // A message over a busy pointer would look as if it were busy too.
    std::optional<BusyPointer> arrow;
    if (QGuiApplication::overrideCursor())
        arrow.emplace(Qt::ArrowCursor);
    const QMessageBox::Icon icon = kind == MessageKind::Error     ? QMessageBox::Critical
                                   : kind == MessageKind::Warning ? QMessageBox::Warning
                                                                  : QMessageBox::Information;
    QMessageBox box(icon, title, withNewlines(text), QMessageBox::Ok, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

bool QtMessages::askYesNo(const QString& text, const QString& title)
{
    QMessageBox box(QMessageBox::Question, title, withNewlines(text),
                    QMessageBox::Yes | QMessageBox::No, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::Yes);
    return box.exec() == QMessageBox::Yes;
}

}  // namespace tav
