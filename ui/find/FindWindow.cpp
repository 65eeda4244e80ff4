// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/find/FindWindow.h"

#include "app/Session.h"
#include "core/DisplayText.h"
#include "core/Units.h"
#include "ui/BusyPointer.h"
#include "ui/ChoiceBox.h"
#include "ui/Icons.h"
#include "ui/TableCopying.h"
#include "ui/WindowFrames.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QToolBar>
#include <QVBoxLayout>

namespace tav {

FindWindow::FindWindow(Session& session, QWidget* parent)
    : QMainWindow(parent), session_(session), logic_(session)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowIcon(tavIcon("find"));
    setWindowTitle(QStringLiteral("Find"));

    top_ = addTopButton(addWindowToolbar(this, 18, Qt::ToolButtonTextBesideIcon), this,
                        session_.onTop.find);

    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(10, 6, 10, 8);
    layout->setSpacing(6);

    auto* searchRow = new QHBoxLayout;
    text1_ = new QLineEdit(central);
    text1_->setPlaceholderText(QStringLiteral("Up to four words, or a number such as I12"));
    text1_->setClearButtonEnabled(true);
    command1_ = new QPushButton(tavIcon("find"), QStringLiteral("&Find"), central);
    command1_->setDefault(true);
    auto* findLabel = new QLabel(QStringLiteral("Fi&nd:"), central);
    findLabel->setBuddy(text1_);
    searchRow->addWidget(findLabel);
    searchRow->addWidget(text1_, 1);
    searchRow->addWidget(command1_);
    layout->addLayout(searchRow);

    auto* checks = new QHBoxLayout;
    check1_ = new QCheckBox(QStringLiteral("Match case"), central);
    check1_->setToolTip(QStringLiteral("Tell capitals from small letters (Ctrl+C)"));
    checks->addWidget(check1_);
    checks->addSpacing(12);
    const char* kinds[4] = {"Individuals", "Families", "Sources", "Notes"};
    const char* tips[4] = {"Ctrl+I", "Ctrl+Y", nullptr, nullptr};
    for (int i = 0; i < 4; ++i) {
        kindChecks_[i] = new QCheckBox(QString::fromLatin1(kinds[i]), central);
        kindChecks_[i]->setChecked(true);
        if (tips[i])
            kindChecks_[i]->setToolTip(QString::fromLatin1(tips[i]));
        checks->addWidget(kindChecks_[i]);
    }
    checks->addStretch();
    layout->addLayout(checks);

    auto* resultsBox = new QGroupBox(central);
    auto* resultsLayout = new QVBoxLayout(resultsBox);
    label2_ = new QLabel(resultsBox);
    QFont bold = label2_->font();
    bold.setBold(true);
    label2_->setFont(bold);
    resultsLayout->addWidget(label2_);
    // The results stand open, about ten lines, under their heading.
    list1_ = new QListWidget(resultsBox);
    list1_->setUniformItemSizes(true);
    list1_->setTextElideMode(Qt::ElideRight);
    list1_->setToolTip(QStringLiteral("Click a line, or press Enter on it, to show that record"));
    list1_->setFixedHeight(list1_->fontMetrics().height() * 10 + 2 * list1_->frameWidth() + 12);
    resultsLayout->addWidget(list1_);
    // Ctrl+C is the window's own key (Match case): Copy is Ctrl+Insert here.
    list1_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    addTableCopying(list1_,
                    CopiedTable{[this] { return logic_.resultTable(); },
                                [this] {
                                    QList<int> lines;
                                    for (const QModelIndex& index :
                                         list1_->selectionModel()->selectedRows())
                                        lines << index.row();
                                    std::sort(lines.begin(), lines.end());
                                    return logic_.resultRows(lines);
                                },
                                QStringLiteral("results.csv")},
                    session_.messages(), QKeySequence(Qt::CTRL | Qt::Key_Insert));
    limitNote_ = new QLabel(resultsBox);
    QFont small = limitNote_->font();
    small.setPointSizeF(small.pointSizeF() * 0.9);
    small.setItalic(true);
    limitNote_->setFont(small);
    limitNote_->setForegroundRole(QPalette::PlaceholderText);
    limitNote_->hide();
    resultsLayout->addWidget(limitNote_);
    layout->addWidget(resultsBox);

    querySection_ = new QGroupBox(QStringLiteral("Questions about the whole file"), central);
    auto* queries = new QGridLayout(querySection_);
    combo2_ = new QComboBox(querySection_);
    combo2_->addItems(FindLogic::queryChoices());
    combo2_->setMaxVisibleItems(15);
    text2_ = new QLineEdit(querySection_);
    text2_->setFixedWidth(60);
    text2_->setToolTip(QStringLiteral("N for the questions that need a number"));
    command5_ = new QPushButton(QStringLiteral("&Go"), querySection_);
    queries->addWidget(combo2_, 0, 0);
    queries->addWidget(new QLabel(QStringLiteral("N:"), querySection_), 0, 1);
    queries->addWidget(text2_, 0, 2);
    queries->addWidget(command5_, 0, 3);
    queries->setColumnStretch(0, 1);
    layout->addWidget(querySection_);
    layout->addStretch();

    auto* buttons = new QHBoxLayout;
    command2_ = new QPushButton(QStringLiteral("Close"), central);
    command4_ = new QPushButton(central);
    buttons->addWidget(command4_);
    buttons->addStretch();
    buttons->addWidget(command2_);
    layout->addLayout(buttons);
    setCentralWidget(central);

    connect(command1_, &QPushButton::clicked, this, [this] { busy([this] { logic_.find(); }); });
    connect(command2_, &QPushButton::clicked, this, &QWidget::close);
    connect(command4_, &QPushButton::clicked, this, [this] {
        logic_.moreLess();
        refresh();
    });
    connect(list1_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
        const int line = list1_->row(item);
        busy([this, line] { logic_.lineChosen(line); });
    });
    actOnChoice(combo2_, [this](int index) {
        busy([this, index] {
            if (isQueryIndex(index))
                logic_.queryChosen(queryAt(index));
        });
        if (logic_.numberEnabled()) {
            text2_->setFocus();
            text2_->selectAll();
        }
    });
    connect(command5_, &QPushButton::clicked, this, [this] { busy([this] { logic_.go(); }); });

    // The window sees its keys before its boxes do (an open drop-down list,
    // a window of its own, keeps them).
    for (QWidget* control : std::initializer_list<QWidget*>{
             text1_, text2_, check1_, command1_, command2_, command4_, command5_, list1_, combo2_,
             kindChecks_[0], kindChecks_[1], kindChecks_[2], kindChecks_[3]})
        control->installEventFilter(this);
    installEventFilter(this);
    resize(560, 200);
    refresh();
    text1_->setFocus();
}

void FindWindow::readControls()
{
    logic_.searchText = text1_->text();
    logic_.caseSensitive = check1_->isChecked();
    logic_.kinds = {kindChecks_[0]->isChecked(), kindChecks_[1]->isChecked(),
                    kindChecks_[2]->isChecked(), kindChecks_[3]->isChecked()};
    logic_.numberText = text2_->text();
}

void FindWindow::busy(const std::function<void()>& command)
{
    readControls();
    {
        const BusyPointer pointer;
        command();
    }
    refresh();
    session_.notifyChanged();
}

void FindWindow::resultsCleared()
{
    logic_.clearResults();
    refresh();
}

void FindWindow::relist()
{
    logic_.relist();
    refresh();
}

void FindWindow::refresh()
{
    command4_->setText(logic_.moreLessCaption());
    querySection_->setVisible(logic_.expanded());
    text2_->setEnabled(logic_.numberEnabled());
    if (combo2_->currentIndex() != queryIndex(logic_.query()))
        combo2_->setCurrentIndex(queryIndex(logic_.query()));
    label2_->setText(logic_.heading());
    QStringList shown;
    for (const QString& line : logic_.lines())
        shown << onOneLine(line);
    bool same = list1_->count() == shown.size();
    for (int i = 0; same && i < shown.size(); ++i)
        same = list1_->item(i)->text() == shown[i];
    if (!same) {
        list1_->clear();
        list1_->addItems(shown);
        // Line 0 selected and in view, nothing opened.
        list1_->setCurrentRow(shown.isEmpty() ? -1 : 0);
        list1_->scrollToTop();
    }
    limitNote_->setText(logic_.limitNote());
    limitNote_->setVisible(!limitNote_->text().isEmpty());
    // Collapsed and expanded heights; never less than the controls need (the
    // layouts measured anew, as a part was just shown or hidden).
    centralWidget()->layout()->invalidate();
    centralWidget()->layout()->activate();
    layout()->activate();
    const int wanted = twipsToPixels(logic_.heightTwips());
    const int least = minimumSizeHint().height();
    setFixedHeight(std::max(wanted, least));
}

bool FindWindow::handleKey(QObject* watched, QKeyEvent* key)
{
    const bool ctrl = (key->modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier;
    if (key->key() == Qt::Key_Escape || (ctrl && key->key() == Qt::Key_Q)) {
        close();
        return true;
    }
    if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) && !ctrl) {
        // Enter opens the results line it stands on, runs the query whose
        // number was typed, and elsewhere finds.
        if (watched == list1_) {
            const int line = list1_->currentRow();
            if (line >= 0)
                busy([this, line] { logic_.lineChosen(line); });
        } else if (watched == text2_) {
            command5_->click();
        } else {
            command1_->click();
        }
        return true;
    }
    if (!ctrl)
        return false;
    switch (key->key()) {
    case Qt::Key_F: command1_->click(); return true;
    case Qt::Key_I: kindChecks_[0]->toggle(); return true;
    case Qt::Key_Y: kindChecks_[1]->toggle(); return true;
    case Qt::Key_C: check1_->toggle(); return true;
    default: return false;
    }
}

bool FindWindow::eventFilter(QObject* watched, QEvent* event)
{
    // The search and number boxes select their whole text when they gain the
    // focus (after the click that gave it, which would place the cursor).
    if (event->type() == QEvent::FocusIn && (watched == text1_ || watched == text2_)) {
        auto* box = static_cast<QLineEdit*>(watched);
        QMetaObject::invokeMethod(box, &QLineEdit::selectAll, Qt::QueuedConnection);
    }
    // A box would take Ctrl+C or Enter for itself: claim them first.
    if (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        // On a closed list, Enter makes the choice of that list.
        const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        if (enter && watched == combo2_)
            return false;
        if (event->type() == QEvent::ShortcutOverride) {
            const bool ours =
                key->key() == Qt::Key_Escape || key->key() == Qt::Key_Return ||
                key->key() == Qt::Key_Enter ||
                ((key->modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier &&
                 (key->key() == Qt::Key_C || key->key() == Qt::Key_F || key->key() == Qt::Key_I ||
                  key->key() == Qt::Key_Y || key->key() == Qt::Key_Q));
            if (ours) {
                event->accept();
                return true;
            }
            return false;
        }
        if (handleKey(watched, key))
            return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

}  // namespace tav
