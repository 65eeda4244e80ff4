// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/main/MainWindow.h"

#include "app/Session.h"
#include "core/FileNames.h"
#include "core/TextNumbers.h"
#include "ui/BusyPointer.h"
#include "ui/ChoiceBox.h"
#include "ui/Icons.h"
#include "ui/WindowManager.h"
#include "windowlogic/main/HelpTopics.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QCompleter>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStandardItemModel>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

namespace tav {

namespace {

// A .ged file among dropped URLs, or "".
QString droppedGedcom(const QMimeData* mime)
{
    if (!mime || !mime->hasUrls())
        return QString();
    for (const QUrl& url : mime->urls()) {
        if (url.isLocalFile() &&
            url.toLocalFile().endsWith(QLatin1String(".ged"), Qt::CaseInsensitive))
            return url.toLocalFile();
    }
    return QString();
}

}  // namespace

MainWindow::MainWindow(Session& session, RegistryStore& store, const QString& programFolder,
                       QWidget* parent)
    : QMainWindow(parent), session_(session), logic_(session, store, programFolder)
{
    windows_ = new WindowManager(session, store, this);
    setWindowIcon(tavIcon("tav"));
    setAcceptDrops(true);
    buildMenus();
    buildCentre();

    // The bar runs from 0 to the file's length + 200, its value the read
    // position; it is painted again only when it has visibly moved.
    logic_.setLoadProgress(LoadProgress{
        [this](qint64 maximum) {
            progress_->setRange(0, int(std::min<qint64>(maximum, INT_MAX)));
            progress_->setValue(0);
            progress_->show();
            progress_->repaint();
            paintedStep_ = 0;
        },
        [this](qint64 value) {
            progress_->setValue(int(std::min<qint64>(value, progress_->maximum())));
            const int step =
                int(qint64(progress_->value()) * 200 / std::max(1, progress_->maximum()));
            if (step != paintedStep_) {
                paintedStep_ = step;
                progress_->repaint();
            }
        },
        [this] {
            progress_->hide();
            progress_->reset();
        }});
    connect(&session_, &Session::changed, this, &MainWindow::refresh);
    resize(600, 260);
    refresh();
}

void MainWindow::buildMenus()
{
    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    QAction* open =
        file->addAction(tavIcon("open"), QStringLiteral("&Open..."), this, &MainWindow::chooseFile);
    open->setShortcut(QKeySequence::Open);
    recentSeparator_ = file->addSeparator();
    for (int i = 1; i <= 10; ++i) {
        recent_[size_t(i)] = file->addAction(
            QString(), this, [this, i] { busy([this, i] { logic_.recentFileChosen(i); }); });
        recent_[size_t(i)]->setVisible(false);
    }
    file->addSeparator();
    QAction* exit = file->addAction(QStringLiteral("E&xit"), this, &QWidget::close);
    exit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));

    QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
    // Ctrl+F opens the find window whether or not a file is open, so the key
    // is a shortcut of the window and the menu item only shows it.
    find_ = view->addAction(tavIcon("find"), QStringLiteral("&Find...\tCtrl+F"), this,
                            [this] { session_.showWindow(AppWindow::Find); });
    new QShortcut(QKeySequence::Find, this, [this] { session_.showWindow(AppWindow::Find); });
    findRel_ = view->addAction(QStringLiteral("Find relationship"), this, [this] {
        logic_.findRelationshipClicked();
        refresh();
    });
    findRel_->setCheckable(true);
    findRel_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_R));
    view->addSeparator();
    buildReportItems(view);
    view->addSeparator();
    header_ = view->addAction(QStringLiteral("Gedcom header information"), this,
                              [this] { logic_.showHeaderInformation(); });
    view->addSeparator();
    QAction* options = view->addAction(QStringLiteral("&Options..."), this, [this] {
        session_.showWindow(AppWindow::Options);
        refresh();
    });
    options->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma));
    view->addAction(QStringLiteral("&About Tav"), this, [this] { logic_.showAbout(); });

    QMenu* help = menuBar()->addMenu(QStringLiteral("&Help"));
    for (int i = 0; i < int(std::size(helpTopics)); ++i) {
        QAction* topic = help->addAction(QString::fromLatin1(helpTopics[i].title), this,
                                         [this, i] { logic_.showHelp(i); });
        if (i == 0)
            topic->setShortcut(QKeySequence::HelpContents);
    }
    help->addSeparator();
    help->addAction(QStringLiteral("Test the progress bar"), this,
                    [this] { busy([this] { logic_.testProgressBar(); }); });

    QToolBar* toolbar = addToolBar(QStringLiteral("Toolbar"));
    toolbar->setMovable(false);
    toolbar->setIconSize(QSize(24, 24));
    toolbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    QAction* openButton =
        toolbar->addAction(tavIcon("open"), QStringLiteral("Open"), this, &MainWindow::chooseFile);
    openButton->setToolTip(QStringLiteral("Open a GEDCOM file"));
    findButton_ = toolbar->addAction(tavIcon("find"), QStringLiteral("Find"), this,
                                     [this] { session_.showWindow(AppWindow::Find); });
    findButton_->setToolTip(
        QStringLiteral("Find records by their words, and ask questions about the file (Ctrl+F)"));
}

void MainWindow::buildReportItems(QMenu* view)
{
    const auto report = [this, view](ReportKind kind, const QString& text) {
        reports_[size_t(kind)] = view->addAction(
            text, this, [this, kind] { busy([this, kind] { logic_.showReport(kind); }); });
    };
    report(ReportKind::Basic, QStringLiteral("&Statistics"));
    moreStatistics_ = view->addAction(QStringLiteral("&More statistics..."), this,
                                      [this] { logic_.showMoreStatistics(); });
    report(ReportKind::GivenNames, QStringLiteral("&Given names"));
    report(ReportKind::ChildNaming, QStringLiteral("&Child naming"));
    report(ReportKind::GedcomIntegrity, QStringLiteral("GEDCOM &integrity"));
}

void MainWindow::buildCentre()
{
    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(12, 12, 12, 8);

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(10);
    text1_ = new QLineEdit(central);
    text1_->setFixedWidth(170);
    text1_->setPlaceholderText(QStringLiteral("number or name"));
    text1_->setToolTip(QStringLiteral("Number of the current individual (its place in the file), "
                                      "or letters of a name to choose one from; Enter shows it"));
    text1_->installEventFilter(this);
    buildNameCompletion();
    connect(text1_, &QLineEdit::textEdited, this, [this](const QString& text) {
        logic_.setCurrentIndividualText(text);
        offerNames(text);
    });
    connect(text1_, &QLineEdit::returnPressed, this,
            [this] { busy([this] { logic_.currentIndividualEntered(); }); });
    auto* individualLabel = new QLabel(QStringLiteral("&Current individual:"), central);
    individualLabel->setBuddy(text1_);
    grid->addWidget(individualLabel, 0, 0);
    name_ = new QLabel(central);
    name_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    name_->setToolTip(QStringLiteral("The individual the number names"));
    QFont bold = name_->font();
    bold.setBold(true);
    name_->setFont(bold);
    // The name takes the room there is: a long one is cut at the window's
    // edge instead of widening the window past the screen.
    name_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* individualRow = new QHBoxLayout;
    individualRow->setSpacing(12);
    individualRow->addWidget(text1_);
    individualRow->addWidget(name_, 1);
    grid->addLayout(individualRow, 0, 1);

    combo2_ = new QComboBox(central);
    combo2_->addItems(MainWindowLogic::showChoices());
    combo2_->setMinimumWidth(240);
    combo2_->setToolTip(QStringLiteral("What to show in the record browser"));
    actOnChoice(combo2_, [this](int index) { busy([this, index] { logic_.showChosen(index); }); });
    command10_ = new QPushButton(QStringLiteral("&Go"), central);
    command10_->setToolTip(QStringLiteral("Show it again"));
    connect(command10_, &QPushButton::clicked, this,
            [this] { busy([this] { logic_.showChosen(combo2_->currentIndex()); }); });
    auto* showLabel = new QLabel(QStringLiteral("&Show:"), central);
    showLabel->setBuddy(combo2_);
    grid->addWidget(showLabel, 1, 0);
    auto* showRow = new QHBoxLayout;
    showRow->addWidget(combo2_);
    showRow->addWidget(command10_);
    showRow->addStretch();
    grid->addLayout(showRow, 1, 1);

    // The tree selector starts at "family tree from top".
    combo3_ = new QComboBox(central);
    combo3_->addItems(MainWindowLogic::treeChoices());
    combo3_->setCurrentIndex(logic_.treeIndex());
    combo3_->setMinimumWidth(240);
    combo3_->setToolTip(
        QStringLiteral("Where the family tree starts, or the ancestors chart of the "
                       "current individual"));
    actOnChoice(combo3_, [this](int index) { busy([this, index] { logic_.treeChosen(index); }); });
    command11_ = new QPushButton(QStringLiteral("G&o"), central);
    command11_->setToolTip(QStringLiteral("Show the family tree (or the ancestors) again"));
    connect(command11_, &QPushButton::clicked, this,
            [this] { busy([this] { logic_.treeChosen(combo3_->currentIndex()); }); });
    auto* treeLabel = new QLabel(QStringLiteral("Family &tree:"), central);
    treeLabel->setBuddy(combo3_);
    grid->addWidget(treeLabel, 2, 0);
    auto* treeRow = new QHBoxLayout;
    treeRow->addWidget(combo3_);
    treeRow->addWidget(command11_);
    treeRow->addStretch();
    grid->addLayout(treeRow, 2, 1);
    // Ctrl+T: the tree of the individual in the box.
    new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_T), this, [this] {
        if (logic_.commandsEnabled())
            busy([this] { logic_.treeChosen(0); });
    });
    // Ctrl+Shift+T: the ancestors chart of the individual in the box.
    new QShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_T), this, [this] {
        if (logic_.commandsEnabled())
            busy([this] { logic_.treeChosen(2); });
    });
    grid->setColumnStretch(1, 1);
    layout->addLayout(grid);
    layout->addStretch();

    progress_ = new QProgressBar(central);
    progress_->setTextVisible(false);
    progress_->hide();
    layout->addWidget(progress_);

    auto* footer = new QHBoxLayout;
    image1_ = new QLabel(central);
    image1_->setPixmap(tavIcon("tav").pixmap(40, 40));
    image1_->setToolTip(QStringLiteral("Save the settings and close the other windows"));
    image1_->setCursor(Qt::PointingHandCursor);
    image1_->installEventFilter(this);
    label1_ = new QLabel(QStringLiteral("Tav " TAV_VERSION " \u2014 GEDCOM viewer"), central);
    label1_->setCursor(Qt::PointingHandCursor);
    label1_->installEventFilter(this);
    footer->addWidget(image1_);
    footer->addWidget(label1_);
    footer->addStretch();
    layout->addLayout(footer);
    setCentralWidget(central);
}

void MainWindow::buildNameCompletion()
{
    // The people offered show their name, years and number; the box takes
    // the number of the one picked (the completion role).
    completions_ = new QStandardItemModel(this);
    completer_ = new QCompleter(completions_, this);
    completer_->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    completer_->setCompletionRole(Qt::EditRole);
    completer_->setMaxVisibleItems(12);
    completer_->setWidget(text1_);
    completer_->popup()->setMinimumWidth(420);
    connect(completer_, qOverload<const QModelIndex&>(&QCompleter::activated), this,
            [this](const QModelIndex& index) {
                logic_.completionChosen(index.data(Qt::UserRole).toInt());
                refresh();
            });
}

void MainWindow::offerNames(const QString& typed)
{
    completions_->clear();
    for (const MainWindowLogic::Completion& completion : logic_.completions(typed)) {
        auto* item = new QStandardItem(completion.text);
        item->setData(signedText(completion.slot), Qt::EditRole);
        item->setData(completion.text, Qt::DisplayRole);
        item->setData(completion.slot, Qt::UserRole);
        completions_->appendRow(item);
    }
    if (completions_->rowCount() > 0)
        completer_->complete(text1_->rect());
    else
        completer_->popup()->hide();
}

void MainWindow::startUp(const QString& commandLine)
{
    busy([&] { logic_.startUp(commandLine); });
    restorePlace();
}

void MainWindow::openFile(const QString& path)
{
    busy([&] { logic_.openFile(path); });
}

void MainWindow::busy(const std::function<void()>& command)
{
    {
        const BusyPointer pointer;
        command();
    }
    refresh();
}

std::unique_ptr<QFileDialog> MainWindow::makeOpenDialog()
{
    auto dialog = std::make_unique<QFileDialog>(this, QStringLiteral("Open"), QDir::currentPath(),
                                                QStringLiteral("(*.ged)"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    // "*.ged" matches SMITH.GED too.
    dialog->setFilter(dialog->filter() & ~QDir::CaseSensitive);
    return dialog;
}

void MainWindow::chooseFile()
{
    const std::unique_ptr<QFileDialog> dialog = makeOpenDialog();
    const QString path =
        dialog->exec() == QDialog::Accepted ? dialog->selectedFiles().value(0) : QString();
    if (!path.isEmpty())
        setWindowTitle(shownFileName(path));
    busy([&] { logic_.fileOpenChosen(path); });
}

void MainWindow::restorePlace()
{
    const Settings::WindowPlace& place = session_.settings.mainWindow;
    if (place.width <= 0 || place.height <= 0)
        return;
    const QRect wanted(place.left, place.top, place.width, place.height);
    // Only a place that is still on a screen: screens come and go.
    for (const QScreen* screen : QGuiApplication::screens()) {
        if (screen->availableGeometry().intersects(wanted)) {
            setGeometry(wanted);
            if (place.maximized)
                showMaximized();
            return;
        }
    }
}

void MainWindow::keepPlace()
{
    const QRect normal = normalGeometry();
    session_.settings.mainWindow = {normal.x(), normal.y(), normal.width(), normal.height(),
                                    isMaximized()};
}

void MainWindow::refresh()
{
    logic_.followCurrentIndividual();
    setWindowTitle(logic_.caption());
    if (text1_->text() != logic_.currentIndividualText())
        text1_->setText(logic_.currentIndividualText());
    name_->setText(logic_.currentIndividualName());
    const bool enabled = logic_.commandsEnabled();
    text1_->setEnabled(enabled);
    combo2_->setEnabled(enabled);
    command10_->setEnabled(enabled);
    if (combo2_->currentIndex() != logic_.showIndex())
        combo2_->setCurrentIndex(logic_.showIndex());
    combo3_->setEnabled(enabled);
    command11_->setEnabled(enabled);
    header_->setEnabled(enabled);
    for (QAction* report : reports_)
        report->setEnabled(enabled);
    moreStatistics_->setEnabled(enabled);
    find_->setEnabled(enabled);
    findButton_->setEnabled(enabled);
    findRel_->setChecked(logic_.findRelationshipChecked());
    findRel_->setText(logic_.findRelationshipCaption());
    findRel_->setEnabled(logic_.fileOpen());
    for (int i = 1; i <= 10; ++i) {
        const MainWindowLogic::RecentItem& item = logic_.recentItems()[size_t(i)];
        recent_[size_t(i)]->setVisible(item.visible);
        recent_[size_t(i)]->setText(item.caption);
    }
    recentSeparator_->setVisible(logic_.recentSeparatorVisible());
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    keepPlace();
    logic_.shutDown();
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!droppedGedcom(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    const QString path = droppedGedcom(event->mimeData());
    if (path.isEmpty())
        return;
    event->acceptProposedAction();
    openFile(path);
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == text1_ && event->type() == QEvent::FocusIn) {
        QMetaObject::invokeMethod(text1_, &QLineEdit::selectAll, Qt::QueuedConnection);
    } else if (event->type() == QEvent::MouseButtonRelease) {
        if (watched == label1_) {
            logic_.showCredit();
            return true;
        }
        if (watched == image1_) {
            logic_.shutDown();
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

}  // namespace tav
