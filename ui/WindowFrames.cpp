// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/WindowFrames.h"

#include "ui/Icons.h"

#include <QAction>
#include <QMainWindow>
#include <QShortcut>
#include <QToolBar>
#include <QWidget>

namespace tav {

void applyKeepOnTop(QWidget* window, QAction* topButton, TopChange change)
{
    topButton->setChecked(change.buttonPressed);
    window->setWindowFlag(Qt::WindowStaysOnTopHint, change.topmost);
    window->show();  // changing the flags hides the window
}

QToolBar* addWindowToolbar(QMainWindow* window, int iconSize, Qt::ToolButtonStyle style)
{
    QToolBar* toolbar = window->addToolBar(QStringLiteral("Toolbar"));
    toolbar->setMovable(false);
    toolbar->setIconSize(QSize(iconSize, iconSize));
    toolbar->setToolButtonStyle(style);
    return toolbar;
}

QAction* addTopButton(QToolBar* toolbar, QWidget* window, bool& onTopFlag)
{
    QAction* top = toolbar->addAction(tavIcon("top"), QStringLiteral("Top"));
    top->setCheckable(true);
    top->setToolTip(QStringLiteral("Keep this screen on top all the time"));
    QObject::connect(top, &QAction::triggered, window, [window, top, &onTopFlag] {
        applyKeepOnTop(window, top, toggleKeepOnTop(onTopFlag));
    });
    return top;
}

void closeOnEscape(QWidget* window)
{
    new QShortcut(QKeySequence(Qt::Key_Escape), window, window, &QWidget::close);
}

}  // namespace tav
