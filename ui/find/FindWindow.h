// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windowlogic/find/FindLogic.h"

#include <QMainWindow>

class QAction;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QWidget;

namespace tav {

// The find window (frmFind): words to find with the kinds to look in, the
// results list, and below More the fifteen statistical queries. It forwards
// its events to FindLogic and shows that logic's state.
class FindWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit FindWindow(Session& session, QWidget* parent = nullptr);

    FindLogic& logic() { return logic_; }
    QLineEdit* searchBox() const { return text1_; }
    QCheckBox* caseBox() const { return check1_; }
    QCheckBox* kindBox(int i) const { return kindChecks_[i]; }
    QPushButton* findButton() const { return command1_; }
    QPushButton* moreButton() const { return command4_; }
    // The results list, shown open (decision 29 of the design).
    QListWidget* resultsList() const { return list1_; }
    QLabel* resultsHeading() const { return label2_; }
    QLabel* limitNote() const { return limitNote_; }
    QComboBox* querySelector() const { return combo2_; }
    QLineEdit* numberBox() const { return text2_; }
    QPushButton* goButton() const { return command5_; }

    void refresh();
    // Another file was opened: its results are gone.
    void resultsCleared();
    // The names of the results as the settings now show them.
    void relist();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void readControls();
    void busy(const std::function<void()>& command);
    bool handleKey(QObject* watched, QKeyEvent* key);

    Session& session_;
    FindLogic logic_;
    QLineEdit* text1_;
    QCheckBox* check1_;
    QCheckBox* kindChecks_[4];
    QPushButton* command1_;
    QPushButton* command2_;
    QPushButton* command4_;
    QLabel* label2_;
    QListWidget* list1_;
    QLabel* limitNote_;
    QWidget* querySection_;
    QComboBox* combo2_;
    QLineEdit* text2_;
    QPushButton* command5_;
    QAction* top_;
};

}  // namespace tav
