// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/DrawingWindowParts.h"
#include "windowlogic/ancestors/AncestorsWindowLogic.h"

#include <QDesktopServices>
#include <QMainWindow>
#include <QUrl>
#include <functional>
#include <map>

class QAction;
class QMenu;
class QSpinBox;

namespace tav {

class AncestorsCanvas;

// The ancestors chart window: menus, a toolbar with the number of
// generations, the canvas and a status bar over AncestorsWindowLogic.
// Commands act on the selected person; a right click on a box selects it
// and offers them in a context menu.
class AncestorsWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit AncestorsWindow(Session& session, QWidget* parent = nullptr);
    ~AncestorsWindow() override;

    // Shown by a request: the chart of the session's current individual.
    void activateRequest();
    // The settings changed elsewhere: labels, sizes and colours follow.
    void settingsChanged();

    AncestorsWindowLogic& logic() { return logic_; }
    AncestorsCanvas* canvas() const { return canvas_; }
    QAction* action(AncestorsCommand command) const;
    QAction* optionAction(TreeOption option) const;
    QSpinBox* generationsBox() const { return generations_; }
    QMenu* contextMenu() const { return contextMenu_; }
    QAction* exportAction() const { return pictureItems_.exportPicture; }
    QAction* printAction() const { return pictureItems_.print; }

    // Selects a place's box, as a click on it does.
    void select(int32_t number);
    // Writes the whole chart as a picture (PNG, SVG or PDF by the name);
    // false after a message saying why it could not.
    bool exportTo(const QString& path);
    // Opens a written HTML report in the desktop's browser (unless a test
    // says otherwise); false when none could be started.
    std::function<bool(const QString& path)> openInBrowser = [](const QString& path) {
        return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
    };
    // Shows the logic's state: caption, enabled items, generations, status.
    void refresh();

signals:
    // The user changed a setting here (an option, the font size): the
    // other windows follow.
    void settingsEdited();

private:
    void buildMenus();
    void buildToolbar();
    void runCommand(AncestorsCommand command);
    void move(AncestorsMove move);
    void generationsChosen(int generations);
    // After the drawing changed: canvas, selection in sight, the rest.
    void viewChanged();

    Session& session_;
    AncestorsWindowLogic logic_;
    AncestorsCanvas* canvas_;
    std::map<AncestorsCommand, QAction*> actions_;
    std::map<TreeOption, QAction*> options_;
    std::map<int, QAction*> fontSizes_;
    std::map<int, QAction*> generationItems_;
    QSpinBox* generations_ = nullptr;
    QMenu* contextMenu_ = nullptr;
    DrawingStatus status_;
    PictureItems pictureItems_;
};

}  // namespace tav
