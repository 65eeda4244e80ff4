// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ancestors/AncestorsWindow.h"

#include "app/Session.h"
#include "draw/TreeFont.h"
#include "draw/TreePainter.h"
#include "ui/BusyPointer.h"
#include "ui/DrawingWindowParts.h"
#include "ui/Icons.h"
#include "ui/WindowFrames.h"
#include "ui/ancestors/AncestorsCanvas.h"

#include <QAction>
#include <QActionGroup>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QSpinBox>
#include <QStatusBar>
#include <QToolBar>

namespace tav {

namespace {

// The commands on a person, in the order of the Chart menu and the context menu.
constexpr AncestorsCommand personCommands[] = {
    AncestorsCommand::SetRoot,
    AncestorsCommand::Descendants,
    AncestorsCommand::ShowInBrowser,
};

QList<QKeySequence> shortcutsOf(AncestorsCommand command)
{
    switch (command) {
    case AncestorsCommand::SetRoot:
        return {QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter)};
    case AncestorsCommand::Back:
        return {QKeySequence(Qt::Key_Backspace), QKeySequence(Qt::ALT | Qt::Key_Left)};
    case AncestorsCommand::Descendants: return {QKeySequence(Qt::CTRL | Qt::Key_D)};
    case AncestorsCommand::ShowInBrowser: return {QKeySequence(Qt::CTRL | Qt::Key_B)};
    case AncestorsCommand::HtmlReport: return {};
    }
    return {};
}

}  // namespace

AncestorsWindow::AncestorsWindow(Session& session, QWidget* parent)
    : QMainWindow(parent), session_(session),
      logic_(session, [](int fontSize) { return std::make_unique<FontMeasure>(fontSize); })
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowIcon(tavIcon("ancestors"));
    canvas_ = new AncestorsCanvas(logic_, this);
    setCentralWidget(canvas_);
    buildMenus();
    buildToolbar();

    status_ = addDrawingStatus(this);

    connect(canvas_, &AncestorsCanvas::boxClicked, this, &AncestorsWindow::select);
    connect(canvas_, &AncestorsCanvas::boxDoubleClicked, this, [this](int32_t number) {
        select(number);
        runCommand(AncestorsCommand::SetRoot);
    });
    connect(canvas_, &AncestorsCanvas::contextMenuWanted, this,
            [this](int32_t, QPoint at) { contextMenu_->popup(at); });
    connect(canvas_, &AncestorsCanvas::arrowPressed, this, [this](Qt::Key key) {
        move(key == Qt::Key_Left    ? AncestorsMove::Child
             : key == Qt::Key_Right ? AncestorsMove::Parent
             : key == Qt::Key_Up    ? AncestorsMove::Father
                                    : AncestorsMove::Mother);
    });
    connect(canvas_, &AncestorsCanvas::zoomChanged, this, &AncestorsWindow::refresh);
    closeOnEscape(this);

    resize(1000, 720);
    canvas_->setFocus();
    refresh();
}

AncestorsWindow::~AncestorsWindow() = default;

void AncestorsWindow::buildMenus()
{
    const auto commandAction = [this](AncestorsCommand command) {
        QAction* action = new QAction(ancestorsCommandText(command), this);
        action->setShortcuts(shortcutsOf(command));
        connect(action, &QAction::triggered, this, [this, command] { runCommand(command); });
        actions_[command] = action;
        return action;
    };

    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    file->addAction(commandAction(AncestorsCommand::HtmlReport));
    pictureItems_ = addPictureItems(
        file, this, QStringLiteral("ancestors.png"),
        [this] { return treePicture(logic_.outputDrawing()); },
        [this](const QString& path) { return exportTo(path); });

    QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
    QMenu* generations = view->addMenu(QStringLiteral("&Generations"));
    auto* generationGroup = new QActionGroup(this);
    for (int n = Ahnentafel::minGenerations; n <= Ahnentafel::maxGenerations; ++n) {
        QAction* item =
            generations->addAction(QString::number(n), this, [this, n] { generationsChosen(n); });
        item->setCheckable(true);
        generationGroup->addAction(item);
        generationItems_[n] = item;
    }
    fontSizes_ = addFontSizeMenu(view, this, [this](int fontSize) {
        logic_.setFontSize(fontSize);
        viewChanged();
        emit settingsEdited();
    });
    view->addSeparator();
    for (const TreeOption option : ancestorsOptions) {
        const QString text = option == TreeOption::MainLine
                                 ? QStringLiteral("Show the father's line")
                                 : treeOptionText(option);
        QAction* item = view->addAction(text, this, [this, option](bool on) {
            logic_.setOption(option, on);
            viewChanged();
            emit settingsEdited();
        });
        item->setCheckable(true);
        options_[option] = item;
    }
    view->addSeparator();
    addZoomItems(view, canvas_, QStringLiteral("&Fit the whole chart"));

    QMenu* chart = menuBar()->addMenu(QStringLiteral("&Chart"));
    contextMenu_ = new QMenu(this);
    for (const AncestorsCommand command : personCommands) {
        QAction* action = commandAction(command);
        chart->addAction(action);
        contextMenu_->addAction(action);
    }
    chart->addSeparator();
    contextMenu_->addSeparator();
    QAction* back = commandAction(AncestorsCommand::Back);
    chart->addAction(back);
    contextMenu_->addAction(back);
}

void AncestorsWindow::buildToolbar()
{
    QToolBar* toolbar = addWindowToolbar(this, 16, Qt::ToolButtonTextBesideIcon);
    QAction* back = actions_.at(AncestorsCommand::Back);
    back->setIcon(tavIcon("back"));
    back->setToolTip(
        QStringLiteral("Back to the chart before the last change of root (Backspace)"));
    toolbar->addAction(back);
    QAction* descendants = actions_.at(AncestorsCommand::Descendants);
    descendants->setIcon(tavIcon("tree"));
    descendants->setToolTip(
        QStringLiteral("The family tree with the selected person at its top (Ctrl+D)"));
    toolbar->addAction(descendants);
    toolbar->addSeparator();

    auto* label = new QLabel(QStringLiteral(" &Generations: "), toolbar);
    generations_ = new QSpinBox(toolbar);
    generations_->setRange(Ahnentafel::minGenerations, Ahnentafel::maxGenerations);
    generations_->setValue(logic_.generations());
    generations_->setToolTip(QStringLiteral("How many generations the chart shows, the person "
                                            "included (2 to 10)"));
    generations_->setFocusPolicy(Qt::ClickFocus);
    label->setBuddy(generations_);
    toolbar->addWidget(label);
    toolbar->addWidget(generations_);
    connect(generations_, &QSpinBox::valueChanged, this, &AncestorsWindow::generationsChosen);
    toolbar->addSeparator();
    addTopButton(toolbar, this, session_.onTop.ancestors);
}

QAction* AncestorsWindow::action(AncestorsCommand command) const
{
    const auto found = actions_.find(command);
    return found == actions_.end() ? nullptr : found->second;
}

QAction* AncestorsWindow::optionAction(TreeOption option) const
{
    const auto found = options_.find(option);
    return found == options_.end() ? nullptr : found->second;
}

void AncestorsWindow::activateRequest()
{
    const int32_t before = logic_.chart().root();
    {
        const BusyPointer pointer;
        logic_.activate();
    }
    canvas_->viewChanged();
    if (logic_.chart().root() != before)
        canvas_->showHome();
    refresh();
    canvas_->setFocus();
}

void AncestorsWindow::settingsChanged()
{
    logic_.settingsChanged();
    viewChanged();
}

void AncestorsWindow::select(int32_t number)
{
    logic_.select(number);
    canvas_->viewport()->update();
    refresh();
}

void AncestorsWindow::move(AncestorsMove move)
{
    if (!logic_.move(move))
        return;
    canvas_->viewport()->update();
    canvas_->ensureSelectedVisible();
    refresh();
}

void AncestorsWindow::generationsChosen(int generations)
{
    if (generations == logic_.generations())
        return;
    {
        const BusyPointer pointer;
        logic_.setGenerations(generations);
    }
    viewChanged();
}

void AncestorsWindow::runCommand(AncestorsCommand command)
{
    if (!logic_.enabled(command))
        return;
    const int32_t root = logic_.chart().root();
    {
        const BusyPointer pointer;
        logic_.run(command);
    }
    if (logic_.chart().root() != root) {
        canvas_->viewChanged();
        canvas_->showHome();
        canvas_->ensureSelectedVisible();
    }
    refresh();
    showCommandOutcome(this, logic_.takeNotice(), logic_.takeReportToOpen(), openInBrowser,
                       session_.messages());
}

bool AncestorsWindow::exportTo(const QString& path)
{
    return exportPictureTo(this, session_.messages(), treePicture(logic_.outputDrawing()), path);
}

void AncestorsWindow::viewChanged()
{
    canvas_->viewChanged();
    canvas_->ensureSelectedVisible();
    refresh();
}

void AncestorsWindow::refresh()
{
    setWindowTitle(logic_.caption());
    for (const auto& [command, action] : actions_)
        action->setEnabled(logic_.enabled(command));
    const bool shown = logic_.chart().root() != 0;
    pictureItems_.exportPicture->setEnabled(shown);
    pictureItems_.print->setEnabled(shown);
    for (const auto& [option, action] : options_)
        action->setChecked(logic_.option(option));
    for (const auto& [fontSize, action] : fontSizes_)
        action->setChecked(fontSize == logic_.fontSize());
    const int generations = logic_.generations();
    for (const auto& [n, action] : generationItems_)
        action->setChecked(n == generations);
    if (generations_->value() != generations) {
        const QSignalBlocker quiet(generations_);
        generations_->setValue(generations);
    }
    status_.show(logic_.statusText(), canvas_->zoom());
}

}  // namespace tav
