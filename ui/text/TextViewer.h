#pragma once

#include "windowlogic/text/TextViewerLogic.h"

#include <QMainWindow>

class QAction;
class QPlainTextEdit;

namespace tav {

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

protected:
    bool event(QEvent* event) override;

private:
    TextViewerLogic logic_;
    QPlainTextEdit* text_;
    QAction* top_;
};

}  // namespace tav
