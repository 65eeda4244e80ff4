// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windowlogic/main/MainWindowLogic.h"

#include <QMainWindow>
#include <array>
#include <memory>

class QAction;
class QCompleter;
class QStandardItemModel;
class QFileDialog;
class QComboBox;
class QLabel;
class QPushButton;
class QLineEdit;
class QMenu;
class QProgressBar;

namespace tav {

class WindowManager;

// The main window (frmTav): menus, toolbar, the current individual, the
// progress bar of a load. It forwards its events to MainWindowLogic and
// shows that logic's state.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    MainWindow(Session& session, RegistryStore& store, const QString& programFolder,
               QWidget* parent = nullptr);

    // Loads the settings and the start-up file (see MainWindowLogic::startUp).
    void startUp(const QString& commandLine);
    void openFile(const QString& path);

    MainWindowLogic& logic() { return logic_; }
    WindowManager& windows() { return *windows_; }
    QLineEdit* currentIndividualBox() const { return text1_; }
    QCompleter* nameCompleter() const { return completer_; }
    QLabel* currentIndividualName() const { return name_; }
    QComboBox* showSelector() const { return combo2_; }
    QPushButton* showButton() const { return command10_; }
    QComboBox* treeSelector() const { return combo3_; }
    QPushButton* treeButton() const { return command11_; }
    QProgressBar* progressBar() const { return progress_; }
    QAction* findRelationshipAction() const { return findRel_; }
    QAction* findAction() const { return find_; }
    QAction* findButton() const { return findButton_; }
    QAction* headerAction() const { return header_; }
    QAction* recentAction(int i) const { return recent_[size_t(i)]; }
    QAction* reportAction(ReportKind kind) const { return reports_[size_t(kind)]; }
    QAction* moreStatisticsAction() const { return moreStatistics_; }

    // Shows the logic's state: caption, enabled commands, recent files ...
    void refresh();
    // The File Open dialog, ready to be shown.
    std::unique_ptr<QFileDialog> makeOpenDialog();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildMenus();
    void buildCentre();
    // The main window's size and place, from the settings and back.
    void restorePlace();
    void keepPlace();
    void buildReportItems(QMenu* view);
    void buildNameCompletion();
    // Offers the people whose names hold the letters typed in the box.
    void offerNames(const QString& typed);
    // Runs a command with the busy pointer, then shows the new state.
    void busy(const std::function<void()>& command);
    void chooseFile();

    Session& session_;
    MainWindowLogic logic_;
    WindowManager* windows_;
    QLineEdit* text1_ = nullptr;
    QLabel* name_ = nullptr;  // the name of the individual the number names
    QCompleter* completer_ = nullptr;
    QStandardItemModel* completions_ = nullptr;
    int paintedStep_ = 0;  // the progress bar's last painted 200th
    QComboBox* combo2_ = nullptr;
    QPushButton* command10_ = nullptr;
    QComboBox* combo3_ = nullptr;
    QPushButton* command11_ = nullptr;
    QProgressBar* progress_ = nullptr;
    QLabel* image1_ = nullptr;
    QLabel* label1_ = nullptr;
    QAction* recentSeparator_ = nullptr;
    std::array<QAction*, 11> recent_{};
    QAction* findRel_ = nullptr;
    QAction* find_ = nullptr;
    QAction* findButton_ = nullptr;
    QAction* header_ = nullptr;
    std::array<QAction*, 4> reports_{};  // by ReportKind
    QAction* moreStatistics_ = nullptr;
};

}  // namespace tav
