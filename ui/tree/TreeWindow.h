// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/DrawingWindowParts.h"
#include "windowlogic/tree/TreeWindowLogic.h"

#include <QDesktopServices>
#include <QMainWindow>
#include <QUrl>
#include <functional>
#include <map>

class QAction;
class QLabel;
class QMenu;

namespace tav {

class TreeCanvas;

// The family tree window (frmTree): menus, a toolbar, the canvas and a
// status bar over TreeWindowLogic. Commands act on the selected person; a
// right click on a box selects it and offers them in a context menu.
class TreeWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit TreeWindow(Session& session, QWidget* parent = nullptr);
    ~TreeWindow() override;

    // Shown by a request: builds the tree when the session asks for a new
    // one, with the top person centred at the top.
    void activateRequest();
    // The options changed: labels, sizes and colours follow at once.
    void settingsChanged();

    TreeWindowLogic& logic() { return logic_; }
    TreeCanvas* canvas() const { return canvas_; }
    QAction* action(TreeCommand command) const;
    QAction* optionAction(TreeOption option) const;
    QAction* fontSizeAction(int fontSize) const;
    // A toolbar button by its key: "GoBack", "Save", "Open", "Triangle", "Top".
    QAction* toolbarButton(const QString& key) const;
    QMenu* contextMenu() const { return contextMenu_; }

    // Selects a person's box, as a click on it does.
    void select(int32_t slot);
    // Writes the whole tree as a picture (PNG, SVG or PDF by the name);
    // false after a message saying why it could not.
    bool exportTo(const QString& path);
    // Opens a written HTML report in the desktop's browser (unless a test
    // says otherwise); false when none could be started.
    std::function<bool(const QString& path)> openInBrowser = [](const QString& path) {
        return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
    };
    QAction* exportAction() const { return pictureItems_.exportPicture; }
    QAction* saveViewAsAction() const { return saveViewAs_; }
    QAction* openViewFromAction() const { return openViewFrom_; }
    QAction* printAction() const { return pictureItems_.print; }
    // Shows the logic's state: caption, enabled and checked items, status.
    void refresh();

signals:
    // The user changed a setting here (an option, the font size): the
    // other windows follow.
    void settingsEdited();

protected:
    bool event(QEvent* event) override;

private:
    void buildMenus();
    void buildToolbar();
    void runCommand(TreeCommand command);
    // After anything that changed the drawing: canvas, then the rest.
    void viewChanged();
    void escape();
    void chooseViewToSave();
    void chooseViewToOpen();
    // The status bar's note after a command of the File menu.
    void afterFileCommand();

    Session& session_;
    TreeWindowLogic logic_;
    TreeCanvas* canvas_;
    std::map<TreeCommand, QAction*> actions_;
    std::map<TreeOption, QAction*> options_;
    std::map<int, QAction*> fontSizes_;
    std::map<QString, QAction*> buttons_;  // by key, the commands' actions and "Top"
    QMenu* contextMenu_ = nullptr;
    DrawingStatus status_;
    QAction* saveViewAs_ = nullptr;
    QAction* openViewFrom_ = nullptr;
    PictureItems pictureItems_;
};

}  // namespace tav
