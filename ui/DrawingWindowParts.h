// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "draw/Picture.h"

#include <QString>
#include <functional>
#include <map>

class QAction;
class QLabel;
class QMainWindow;
class QMenu;
class QObject;
class QWidget;

namespace tav {

class DrawingCanvas;
class Messages;

// What the tree window and the ancestors chart share around their canvas.

// The status bar of a drawing window: a text about the selection, and the
// zoom at the right.
struct DrawingStatus {
    QLabel* text = nullptr;
    QLabel* zoom = nullptr;

    void show(const QString& status, double zoom) const;
};
DrawingStatus addDrawingStatus(QMainWindow* window);

// "Export picture..." and "Print..." (Ctrl+P), then "Close" (Ctrl+W), at
// the foot of a File menu: the whole drawing that `picture` gives, exported
// by `exportTo` to the file the user names (first suggested:
// `suggestedName`).
struct PictureItems {
    QAction* exportPicture = nullptr;
    QAction* print = nullptr;
};
PictureItems addPictureItems(QMenu* file, QMainWindow* window, const QString& suggestedName,
                             const std::function<Picture()>& picture,
                             const std::function<bool(const QString&)>& exportTo);

// After a command: its note in the status bar for a while, and the report
// it wrote opened with `open` ("" for none).
void showCommandOutcome(QMainWindow* window, const QString& notice, const QString& report,
                        const std::function<bool(const QString&)>& open, Messages& messages);

// The "Font size" submenu of a View menu: a checkable item for each
// FontSize (1 to 4) that calls `choose`; the items by size.
std::map<int, QAction*> addFontSizeMenu(QMenu* view, QObject* context,
                                        const std::function<void(int)>& choose);

// "Zoom in" (Ctrl++), "Zoom out" (Ctrl+-) and the item that fits the whole
// drawing in the window (Ctrl+0).
void addZoomItems(QMenu* view, DrawingCanvas* canvas, const QString& fitText);

// Asks where to export a picture (PNG, SVG or PDF), starting with the
// suggested name in the current folder; a name without an extension takes
// the chosen type's. "" when the user cancels.
QString choosePictureFile(QWidget* parent, const QString& suggestedName);

// Writes the picture to the file with the busy pointer; the window's
// status bar says where, or the messages why not. False after a message.
bool exportPictureTo(QMainWindow* window, Messages& messages, const Picture& picture,
                     const QString& path);

// Opens a written report with `open` (the desktop's browser); a message
// says where it lies when no browser could be started.
void openReport(const std::function<bool(const QString&)>& open, Messages& messages,
                const QString& path);

}  // namespace tav
