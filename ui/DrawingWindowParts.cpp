// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/DrawingWindowParts.h"

#include "app/Messages.h"
#include "core/FileNames.h"
#include "draw/PictureExport.h"
#include "ui/BusyPointer.h"
#include "ui/DrawingCanvas.h"
#include "ui/PicturePrinting.h"
#include "windowlogic/tree/TreeWindowLogic.h"

#include <QAction>
#include <QActionGroup>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QStatusBar>
#include <cmath>

namespace tav {

void DrawingStatus::show(const QString& status, double zoomFactor) const
{
    text->setText(status);
    zoom->setText(QStringLiteral("%1%").arg(std::lround(zoomFactor * 100)));
}

DrawingStatus addDrawingStatus(QMainWindow* window)
{
    DrawingStatus status{new QLabel(window), new QLabel(window)};
    // A long name is cut at the window's edge; it never widens the window.
    status.text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    window->statusBar()->addWidget(status.text, 1);
    window->statusBar()->addPermanentWidget(status.zoom);
    return status;
}

PictureItems addPictureItems(QMenu* file, QMainWindow* window, const QString& suggestedName,
                             const std::function<Picture()>& picture,
                             const std::function<bool(const QString&)>& exportTo)
{
    PictureItems items;
    items.exportPicture = file->addAction(
        QStringLiteral("&Export picture..."), window, [window, suggestedName, exportTo] {
            const QString path = choosePictureFile(window, suggestedName);
            if (!path.isEmpty())
                exportTo(path);
        });
    items.print = file->addAction(QStringLiteral("&Print..."), window, [window, picture] {
        previewAndPrint(window, picture(), window->windowTitle());
    });
    items.print->setShortcut(QKeySequence::Print);
    file->addSeparator();
    QAction* close = file->addAction(QStringLiteral("&Close"), window, &QWidget::close);
    close->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_W));
    return items;
}

void showCommandOutcome(QMainWindow* window, const QString& notice, const QString& report,
                        const std::function<bool(const QString&)>& open, Messages& messages)
{
    if (!notice.isEmpty())
        window->statusBar()->showMessage(notice, 5000);
    if (!report.isEmpty())
        openReport(open, messages, report);
}

std::map<int, QAction*> addFontSizeMenu(QMenu* view, QObject* context,
                                        const std::function<void(int)>& choose)
{
    std::map<int, QAction*> items;
    QMenu* sizes = view->addMenu(QStringLiteral("&Font size"));
    auto* group = new QActionGroup(context);
    for (int fontSize = 1; fontSize <= 4; ++fontSize) {
        QAction* size = sizes->addAction(treeFontSizeText(fontSize), context,
                                         [choose, fontSize] { choose(fontSize); });
        size->setCheckable(true);
        group->addAction(size);
        items[fontSize] = size;
    }
    return items;
}

void addZoomItems(QMenu* view, DrawingCanvas* canvas, const QString& fitText)
{
    QAction* zoomIn = view->addAction(QStringLiteral("Zoom &in"), canvas, &DrawingCanvas::zoomIn);
    zoomIn->setShortcuts({QKeySequence::ZoomIn, QKeySequence(Qt::CTRL | Qt::Key_Equal)});
    QAction* zoomOut =
        view->addAction(QStringLiteral("Zoom &out"), canvas, &DrawingCanvas::zoomOut);
    zoomOut->setShortcut(QKeySequence::ZoomOut);
    QAction* fit = view->addAction(fitText, canvas, &DrawingCanvas::fit);
    fit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_0));
}

QString choosePictureFile(QWidget* parent, const QString& suggestedName)
{
    QString filter;
    QString path = QFileDialog::getSaveFileName(
        parent, QStringLiteral("Export picture"), QDir::current().filePath(suggestedName),
        QStringLiteral("PNG picture (*.png);;SVG drawing (*.svg);;PDF document (*.pdf)"), &filter);
    if (path.isEmpty())
        return path;
    if (!pictureFormatFor(path))
        path += filter.contains(QLatin1String("svg"))   ? QStringLiteral(".svg")
                : filter.contains(QLatin1String("pdf")) ? QStringLiteral(".pdf")
                                                        : QStringLiteral(".png");
    return path;
}

bool exportPictureTo(QMainWindow* window, Messages& messages, const Picture& picture,
                     const QString& path)
{
    const Outcome written = [&] {
        const BusyPointer pointer;
        return exportPicture(picture, path);
    }();
    if (!written) {
        messages.warning(written.message());
        return false;
    }
    if (const QString note = pictureNote(picture, path); !note.isEmpty())
        messages.message(note, QStringLiteral("Export picture"));
    window->statusBar()->showMessage(
        QStringLiteral("Picture written to %1").arg(QDir::toNativeSeparators(shownFileName(path))),
        5000);
    return true;
}

void openReport(const std::function<bool(const QString&)>& open, Messages& messages,
                const QString& path)
{
    if (!open(path))
        messages.message(QStringLiteral("The report was written to %1, but no web browser could "
                                        "be started to show it.")
                             .arg(QDir::toNativeSeparators(shownFileName(path))));
}

}  // namespace tav
