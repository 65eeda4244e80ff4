// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windowlogic/text/TextViewerLogic.h"

#include <QMainWindow>

class QAction;
class QPlainTextEdit;

namespace tav {

class Messages;
class Session;

// The window every text report is shown in (frmText): the report text under
// the report title, Select all, Copy, keep on top, Close and Escape.
class TextViewer : public QMainWindow {
    Q_OBJECT
public:
    explicit TextViewer(Session& session, QWidget* parent = nullptr);

    // Shows the latest report, as each activation does.
    void refresh();

    QPlainTextEdit* textBox() const { return text_; }
    QAction* topAction() const { return top_; }
    void copySelection();
    void selectAll();
    QAction* saveAsAction() const { return saveAs_; }
    QAction* printAction() const { return print_; }

protected:
    bool event(QEvent* event) override;

private:
    void chooseSaveFile();
    void printWithPreview();

    TextViewerLogic logic_;
    Messages& messages_;
    QAction* saveAs_ = nullptr;
    QAction* print_ = nullptr;
    QPlainTextEdit* text_;
    QAction* top_;
};

}  // namespace tav
