// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/TableText.h"
#include "windowlogic/browser/BrowserLogic.h"

#include <QMainWindow>

class QAction;
class QTableView;

namespace tav {

class GridModel;

// The record browser (frmList): a toolbar over one grid showing a record or
// a list. It forwards clicks and commands to BrowserLogic and shows its state.
class BrowserWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit BrowserWindow(Session& session, QWidget* parent = nullptr);
    ~BrowserWindow() override;

    // Loads the grid when the session has a new request, then shows it.
    void activateRequest();
    BrowserLogic& logic() { return logic_; }
    QTableView* view() const { return view_; }
    QAction* action(const char* key) const;

    // Shows the logic's state: grid, caption, enabled buttons, height.
    void refresh();
    // Shows the same record again, as new settings show it.
    void reloadShown();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    // Enter or Space on a row follows its link as a click does.
    bool followCurrentRow();
    TextTable selectedRows() const;
    void command(const std::function<void()>& run);
    void fitHeight();
    void fitNoteRows();

    Session& session_;
    BrowserLogic logic_;
    GridModel* model_;
    QTableView* view_;
    QAction* top_;
    QAction* listAll_;
    QAction* find_;
    QAction* famTree_;
    QAction* ancestors_;
    QAction* back_;
    QAction* forward_;
    QAction* previous_;
    QAction* next_;
    int fitted_ = 0;
};

}  // namespace tav
