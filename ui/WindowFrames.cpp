#include "ui/WindowFrames.h"

#include <QAction>
#include <QShortcut>
#include <QWidget>

namespace tav {

void applyKeepOnTop(QWidget* window, QAction* topButton, TopChange change)
{
    topButton->setChecked(change.buttonPressed);
    window->setWindowFlag(Qt::WindowStaysOnTopHint, change.topmost);
    window->show();  // changing the flags hides the window
}

void closeOnEscape(QWidget* window)
{
    new QShortcut(QKeySequence(Qt::Key_Escape), window, window, &QWidget::close);
}

}  // namespace tav
