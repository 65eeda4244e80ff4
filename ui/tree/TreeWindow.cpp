// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tree/TreeWindow.h"

#include "app/Session.h"
#include "draw/TreeFont.h"
#include "draw/TreePainter.h"
#include "tree/TreeLayout.h"
#include "ui/BusyPointer.h"
#include "ui/DrawingWindowParts.h"
#include "ui/Icons.h"
#include "ui/WindowFrames.h"
#include "ui/tree/TreeCanvas.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QStatusBar>
#include <QToolBar>

namespace tav {

namespace {

// The commands on a person, in the order of the Tree menu and the context menu.
constexpr TreeCommand personCommands[] = {
    TreeCommand::ShowDescendantsMost, TreeCommand::ShowDescendantsEldest,
    TreeCommand::NextSpouse,          TreeCommand::SetTop,
    TreeCommand::ShowParents,         TreeCommand::CountDescendants,
    TreeCommand::FindRelationship,    TreeCommand::ShowInBrowser,
    TreeCommand::Ancestors,
};

// Commands after which the selected person may stand anywhere.
bool movesTheView(TreeCommand command)
{
    return command != TreeCommand::CountDescendants && command != TreeCommand::FindRelationship &&
           command != TreeCommand::ShowInBrowser && command != TreeCommand::Ancestors &&
           command != TreeCommand::SaveView;
}

QKeySequence shortcutOf(TreeCommand command)
{
    switch (command) {
    case TreeCommand::ShowDescendantsMost: return QKeySequence(Qt::CTRL | Qt::Key_D);
    case TreeCommand::ShowDescendantsEldest: return QKeySequence(Qt::CTRL | Qt::Key_E);
    case TreeCommand::NextSpouse: return QKeySequence(Qt::CTRL | Qt::Key_N);
    case TreeCommand::ShowParents: return QKeySequence(Qt::CTRL | Qt::Key_U);
    case TreeCommand::FindRelationship: return QKeySequence(Qt::CTRL | Qt::Key_R);
    case TreeCommand::ShowInBrowser: return QKeySequence(Qt::Key_Return);
    case TreeCommand::Ancestors: return QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_T);
    case TreeCommand::GoBack: return QKeySequence(Qt::Key_Backspace);
    case TreeCommand::SaveView: return QKeySequence(Qt::CTRL | Qt::Key_S);
    case TreeCommand::OpenView: return QKeySequence(Qt::CTRL | Qt::Key_O);
    case TreeCommand::TriangleView: return QKeySequence(Qt::CTRL | Qt::Key_G);
    default: return QKeySequence();
    }
}

}  // namespace

TreeWindow::TreeWindow(Session& session, QWidget* parent)
    : QMainWindow(parent), session_(session),
      logic_(session, [](int fontSize) { return std::make_unique<FontMeasure>(fontSize); })
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowIcon(tavIcon("tree"));
    canvas_ = new TreeCanvas(logic_, this);
    setCentralWidget(canvas_);
    buildMenus();
    buildToolbar();

    status_ = addDrawingStatus(this);

    connect(canvas_, &TreeCanvas::boxClicked, this, &TreeWindow::select);
    connect(canvas_, &TreeCanvas::contextMenuWanted, this,
            [this](int32_t, QPoint at) { contextMenu_->popup(at); });
    connect(canvas_, &TreeCanvas::apexClicked, this,
            [this] { runCommand(TreeCommand::TriangleView); });
    connect(canvas_, &TreeCanvas::arrowPressed, this, [this](Qt::Key key) {
        const TreeMove move = key == Qt::Key_Left    ? TreeMove::Left
                              : key == Qt::Key_Right ? TreeMove::Right
                              : key == Qt::Key_Up    ? TreeMove::Up
                                                     : TreeMove::Down;
        if (logic_.move(move)) {
            canvas_->viewport()->update();
            canvas_->ensureSelectedVisible();
            refresh();
        }
    });
    connect(canvas_, &TreeCanvas::zoomChanged, this, &TreeWindow::refresh);
    new QShortcut(QKeySequence(Qt::Key_Escape), this, this, &TreeWindow::escape);

    resize(960, 700);
    canvas_->setFocus();
    refresh();
}

TreeWindow::~TreeWindow() = default;

void TreeWindow::buildMenus()
{
    const auto commandAction = [this](TreeCommand command) {
        QAction* action = new QAction(treeCommandText(command), this);
        action->setShortcut(shortcutOf(command));
        connect(action, &QAction::triggered, this, [this, command] { runCommand(command); });
        actions_[command] = action;
        return action;
    };

    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    file->addAction(commandAction(TreeCommand::SaveView));
    file->addAction(commandAction(TreeCommand::OpenView));
    saveViewAs_ = file->addAction(QStringLiteral("Save view &as..."), this,
                                  &TreeWindow::chooseViewToSave);
    saveViewAs_->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
    openViewFrom_ = file->addAction(QStringLiteral("Open &view..."), this,
                                    &TreeWindow::chooseViewToOpen);
    openViewFrom_->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O));
    file->addSeparator();
    file->addAction(commandAction(TreeCommand::HtmlReport));
    pictureItems_ = addPictureItems(
        file, this, QStringLiteral("family-tree.png"),
        [this] { return treePicture(logic_.outputDrawing()); },
        [this](const QString& path) { return exportTo(path); });

    QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
    fontSizes_ = addFontSizeMenu(view, this, [this](int fontSize) {
        logic_.setFontSize(fontSize);
        viewChanged();
        emit settingsEdited();
    });
    view->addSeparator();
    for (const TreeOption option : treeOptions) {
        QAction* item = view->addAction(treeOptionText(option), this, [this, option](bool on) {
            logic_.setOption(option, on);
            viewChanged();
            emit settingsEdited();
        });
        item->setCheckable(true);
        options_[option] = item;
    }
    view->addSeparator();
    addZoomItems(view, canvas_, QStringLiteral("&Fit the whole tree"));
    view->addSeparator();
    QAction* triangle = commandAction(TreeCommand::TriangleView);
    triangle->setCheckable(true);
    view->addAction(triangle);

    QMenu* tree = menuBar()->addMenu(QStringLiteral("&Tree"));
    contextMenu_ = new QMenu(this);
    for (const TreeCommand command : personCommands) {
        if (command == TreeCommand::CountDescendants) {
            tree->addSeparator();
            contextMenu_->addSeparator();
        }
        QAction* action = commandAction(command);
        tree->addAction(action);
        contextMenu_->addAction(action);
    }
    actions_[TreeCommand::FindRelationship]->setCheckable(true);
    tree->addSeparator();
    tree->addAction(commandAction(TreeCommand::GoBack));
}

void TreeWindow::buildToolbar()
{
    QToolBar* toolbar = addWindowToolbar(this, 16, Qt::ToolButtonTextBesideIcon);
    // The tree is laid out just under a toolbar of this height.
    toolbar->setFixedHeight(treeToolbarHeight);
    // The toolbar shows the menus' own actions, under the button's key.
    const auto button = [this, toolbar](const char* key, const char* icon, TreeCommand command,
                                        const char* tip) {
        QAction* action = actions_.at(command);
        action->setIcon(tavIcon(icon));
        action->setIconText(QLatin1String(key));
        action->setToolTip(QString::fromLatin1(tip));
        toolbar->addAction(action);
        buttons_[QLatin1String(key)] = action;
    };
    button("GoBack", "back", TreeCommand::GoBack,
           "Back to the view before the last change (Backspace)");
    button("Save", "save", TreeCommand::SaveView, "Save this view as temp.gds (Ctrl+S)");
    button("Open", "open", TreeCommand::OpenView, "Show the view saved in temp.gds (Ctrl+O)");
    button("Triangle", "triangle", TreeCommand::TriangleView,
           "How large the selected person's family is, generation by generation (Ctrl+G)");
    buttons_[QStringLiteral("Top")] = addTopButton(toolbar, this, session_.onTop.tree);
}

QAction* TreeWindow::action(TreeCommand command) const
{
    const auto found = actions_.find(command);
    return found == actions_.end() ? nullptr : found->second;
}

QAction* TreeWindow::optionAction(TreeOption option) const { return options_.at(option); }

QAction* TreeWindow::fontSizeAction(int fontSize) const
{
    const auto found = fontSizes_.find(fontSize);
    return found == fontSizes_.end() ? nullptr : found->second;
}

QAction* TreeWindow::toolbarButton(const QString& key) const
{
    const auto found = buttons_.find(key);
    return found == buttons_.end() ? nullptr : found->second;
}

void TreeWindow::activateRequest()
{
    const bool built = logic_.activate();
    canvas_->viewChanged();
    if (built)
        canvas_->showTopAtTop();
    refresh();
    canvas_->setFocus();
}

void TreeWindow::select(int32_t slot)
{
    logic_.select(slot);
    canvas_->viewport()->update();
    refresh();
}

void TreeWindow::settingsChanged()
{
    logic_.settingsChanged();
    viewChanged();
}

void TreeWindow::runCommand(TreeCommand command)
{
    if (!logic_.enabled(command))
        return;
    {
        const BusyPointer pointer;
        logic_.run(command);
    }
    canvas_->viewChanged();
    if (movesTheView(command))
        canvas_->ensureSelectedVisible();
    refresh();
    showCommandOutcome(this, logic_.takeNotice(), logic_.takeReportToOpen(), openInBrowser,
                       session_.messages());
}

void TreeWindow::chooseViewToSave()
{
    QString path = QFileDialog::getSaveFileName(
        this, QStringLiteral("Save view as"),
        QDir(logic_.viewFolder()).filePath(logic_.suggestedViewName()),
        QStringLiteral("Tree views (*.gds)"));
    if (path.isEmpty())
        return;
    if (QFileInfo(path).suffix().isEmpty())
        path += QStringLiteral(".gds");
    logic_.saveViewAs(path);
    afterFileCommand();
}

void TreeWindow::chooseViewToOpen()
{
    const QString path =
        QFileDialog::getOpenFileName(this, QStringLiteral("Open view"), logic_.viewFolder(),
                                     QStringLiteral("Tree views (*.gds);;All files (*)"));
    if (path.isEmpty())
        return;
    {
        const BusyPointer pointer;
        logic_.openViewFrom(path);
    }
    canvas_->viewChanged();
    canvas_->ensureSelectedVisible();
    afterFileCommand();
}

void TreeWindow::afterFileCommand()
{
    refresh();
    showCommandOutcome(this, logic_.takeNotice(), QString(), openInBrowser, session_.messages());
}

bool TreeWindow::exportTo(const QString& path)
{
    return exportPictureTo(this, session_.messages(), treePicture(logic_.outputDrawing()), path);
}

void TreeWindow::viewChanged()
{
    canvas_->viewChanged();
    canvas_->ensureSelectedVisible();
    refresh();
}

void TreeWindow::escape()
{
    if (logic_.triangleShown())
        runCommand(TreeCommand::TriangleView);
    else
        close();
}

void TreeWindow::refresh()
{
    setWindowTitle(logic_.caption());
    for (const auto& [command, action] : actions_) {
        action->setEnabled(logic_.enabled(command));
        action->setText(logic_.text(command));
        if (action->isCheckable())
            action->setChecked(logic_.checked(command));
    }
    // Pictures and pages need a tree to show, as saving a view does.
    saveViewAs_->setEnabled(logic_.enabled(TreeCommand::SaveView));
    pictureItems_.exportPicture->setEnabled(logic_.enabled(TreeCommand::SaveView));
    pictureItems_.print->setEnabled(logic_.enabled(TreeCommand::SaveView));
    for (const auto& [option, action] : options_)
        action->setChecked(logic_.option(option));
    for (const auto& [fontSize, action] : fontSizes_)
        action->setChecked(fontSize == logic_.fontSize());
    status_.show(logic_.triangleShown()
                     ? QStringLiteral("Triangle view of %1 (Escape returns to the tree)")
                           .arg(logic_.triangleLabel())
                     : logic_.statusText(),
                 canvas_->zoom());
}

bool TreeWindow::event(QEvent* event)
{
    // Coming back to the window: "temp.gds" may have come or gone meanwhile.
    if (event->type() == QEvent::WindowActivate)
        refresh();
    return QMainWindow::event(event);
}

}  // namespace tav
