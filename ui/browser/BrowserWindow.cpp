// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/browser/BrowserWindow.h"

#include "app/Session.h"
#include "core/DisplayText.h"
#include "core/Units.h"
#include "ui/Icons.h"
#include "ui/TableCopying.h"
#include "ui/WindowFrames.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QShortcut>
#include <QTableView>
#include <QToolBar>

namespace tav {

namespace {
constexpr int fullHeight = 520;  // the window's height for long records and lists
}

// The grid as a table model: the heading row becomes the column headers,
// the hidden third cell is not shown.
class GridModel : public QAbstractTableModel {
public:
    explicit GridModel(const BrowserLogic& logic, QObject* parent)
        : QAbstractTableModel(parent), logic_(logic)
    {}

    void reload()
    {
        beginResetModel();
        endResetModel();
    }

    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : std::max(0, logic_.rowCount() - 1);
    }
    int columnCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : 2;
    }

    QVariant data(const QModelIndex& index, int role) const override
    {
        if (!index.isValid())
            return {};
        if (role == Qt::DisplayRole || role == Qt::ToolTipRole) {
            const QString cell = logic_.cell(index.row() + 1, index.column());
            // A list shows each record on one line, but for the notes,
            // whose rows grow to their lines.
            const bool oneLine = logic_.grid().isList() && role == Qt::DisplayRole &&
                                 logic_.grid().listKind != ViewKind::AllNotes;
            const QString text = oneLine ? onOneLine(cell) : withNewlines(cell);
            return role == Qt::ToolTipRole && text.size() < 40 ? QVariant() : QVariant(text);
        }
        if (role == Qt::BackgroundRole && index.column() == 0)
            return QApplication::palette().button();
        if (role == Qt::TextAlignmentRole)
            return int(Qt::AlignLeft | Qt::AlignTop);
        return {};
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
            return logic_.cell(0, section);
        if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole)
            return int(Qt::AlignLeft | Qt::AlignVCenter);
        return {};
    }

private:
    const BrowserLogic& logic_;
};

BrowserWindow::BrowserWindow(Session& session, QWidget* parent)
    : QMainWindow(parent), session_(session), logic_(session)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowIcon(tavIcon("tav"));

    QToolBar* toolbar = addWindowToolbar(this, 20, Qt::ToolButtonTextUnderIcon);
    top_ = addTopButton(toolbar, this, session_.onTop.browser);
    listAll_ = toolbar->addAction(tavIcon("list"), QStringLiteral("ListAll"), this,
                                  [this] { command([this] { logic_.listAll(); }); });
    listAll_->setToolTip(QStringLiteral("List all individuals, or all families (Ctrl+L)"));
    find_ = toolbar->addAction(tavIcon("find"), QStringLiteral("Find"), this,
                               [this] { session_.showWindow(AppWindow::Find); });
    find_->setToolTip(QStringLiteral("Find records (Ctrl+F)"));
    famTree_ = toolbar->addAction(tavIcon("tree"), QStringLiteral("FamTree"), this,
                                  [this] { command([this] { logic_.famTree(); }); });
    famTree_->setToolTip(
        QStringLiteral("The family tree of this individual, or of this family's husband (Ctrl+T)"));
    ancestors_ = toolbar->addAction(tavIcon("ancestors"), QStringLiteral("Ancestors"), this,
                                    [this] { command([this] { logic_.ancestors(); }); });
    ancestors_->setToolTip(QStringLiteral("The ancestors chart of this individual, or of this "
                                          "family's husband (Ctrl+Shift+T)"));
    toolbar->addSeparator();
    const auto addMove = [this, toolbar](BrowserMove move, const char* icon, const char* tip) {
        QAction* action =
            toolbar->addAction(tavIcon(icon), browserMoveKey(move), this, [this, move] {
                command([this, move] { logic_.moveBackForward(move); });
            });
        action->setToolTip(QString::fromLatin1(tip));
        return action;
    };
    back_ = addMove(BrowserMove::Back, "back", "Back to what was shown before");
    forward_ = addMove(BrowserMove::Forward, "forward", "Forward again");
    previous_ =
        addMove(BrowserMove::Previous, "previous", "The record before this one (Left arrow)");
    next_ = addMove(BrowserMove::Next, "next", "The record after this one (Right arrow)");

    model_ = new GridModel(logic_, this);
    view_ = new QTableView(this);
    view_->setModel(model_);
    // The current row is marked so that Enter or Space can follow its link.
    view_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view_->setSelectionBehavior(QAbstractItemView::SelectRows);
    view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view_->setFocusPolicy(Qt::StrongFocus);
    view_->verticalHeader()->hide();
    view_->horizontalHeader()->setStretchLastSection(true);
    view_->horizontalHeader()->setHighlightSections(false);
    view_->setWordWrap(true);
    // Room around each cell's text, so that accents above capitals and the
    // lines of a wrapped note keep clear of the grid lines.
    view_->setStyleSheet(QStringLiteral("QTableView::item { padding: 3px 4px; }"));
    view_->setCursor(Qt::PointingHandCursor);
    connect(view_, &QTableView::clicked, this, [this](const QModelIndex& index) {
        command([this, index] { logic_.rowClicked(index.row() + 1); });
    });
    view_->installEventFilter(this);
    view_->viewport()->installEventFilter(this);
    setCentralWidget(view_);
    // Copy, Copy all and Save as CSV: the selected rows (the current one
    // when none is), the whole grid.
    addTableCopying(view_,
                    CopiedTable{[this] { return logic_.table(); },
                                [this] { return selectedRows(); },
                                QStringLiteral("records.csv")},
                    session_.messages());

    // The window sees these keys before the grid does.
    const auto key = [this](QKeySequence sequence, QAction* action) {
        new QShortcut(sequence, this, action, [action] {
            if (action->isEnabled())
                action->trigger();
        });
    };
    key(QKeySequence(Qt::Key_Left), previous_);
    key(QKeySequence(Qt::Key_Right), next_);
    key(QKeySequence(Qt::CTRL | Qt::Key_L), listAll_);
    key(QKeySequence(Qt::CTRL | Qt::Key_F), find_);
    key(QKeySequence(Qt::CTRL | Qt::Key_T), famTree_);
    key(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_T), ancestors_);
    key(QKeySequence(Qt::ALT | Qt::Key_Left), back_);
    key(QKeySequence(Qt::ALT | Qt::Key_Right), forward_);
    closeOnEscape(this);
    resize(640, fullHeight);
    refresh();
}

TextTable BrowserWindow::selectedRows() const
{
    QList<int> rows;
    for (const QModelIndex& index : view_->selectionModel()->selectedRows())
        rows << index.row();
    if (rows.isEmpty() && view_->currentIndex().isValid())
        rows << view_->currentIndex().row();
    std::sort(rows.begin(), rows.end());
    TextTable table;
    for (const int row : rows)
        table.append(QStringList{logic_.cell(row + 1, 0), logic_.cell(row + 1, 1)});
    return table;
}

BrowserWindow::~BrowserWindow()
{
    // The grid's model reads the logic, which goes first: a window deleted
    // while on screen hides its grid on the way out, and the grid would ask.
    view_->setModel(nullptr);
}

QAction* BrowserWindow::action(const char* key) const
{
    const QString name = QLatin1String(key);
    for (QAction* a :
         {top_, listAll_, find_, famTree_, ancestors_, back_, forward_, previous_, next_}) {
        if (a->text() == name)
            return a;
    }
    return nullptr;
}

void BrowserWindow::activateRequest()
{
    command([this] { logic_.activate(); });
}

void BrowserWindow::command(const std::function<void()>& run)
{
    run();
    refresh();
    session_.notifyChanged();
}

void BrowserWindow::reloadShown()
{
    logic_.reloadShown();
    refresh();
}

bool BrowserWindow::followCurrentRow()
{
    const QModelIndex current = view_->currentIndex();
    if (!current.isValid())
        return false;
    command([this, row = current.row()] { logic_.rowClicked(row + 1); });
    return true;
}

bool BrowserWindow::eventFilter(QObject* watched, QEvent* event)
{
    // The mouse's back and forward buttons, anywhere over the grid.
    if (event->type() == QEvent::MouseButtonPress) {
        const Qt::MouseButton button = static_cast<QMouseEvent*>(event)->button();
        QAction* move = button == Qt::BackButton      ? back_
                        : button == Qt::ForwardButton ? forward_
                                                      : nullptr;
        if (move) {
            if (move->isEnabled())
                move->trigger();
            return true;
        }
    }
    if (watched == view_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space)
            return followCurrentRow();
    }
    return QMainWindow::eventFilter(watched, event);
}

void BrowserWindow::mousePressEvent(QMouseEvent* event)
{
    if (!eventFilter(this, event))
        QMainWindow::mousePressEvent(event);
}

void BrowserWindow::refresh()
{
    model_->reload();
    setWindowTitle(logic_.caption());
    back_->setEnabled(logic_.backEnabled());
    forward_->setEnabled(logic_.forwardEnabled());
    previous_->setEnabled(logic_.nextPreviousEnabled());
    next_->setEnabled(logic_.nextPreviousEnabled());
    famTree_->setEnabled(logic_.famTreeEnabled());
    ancestors_->setEnabled(logic_.ancestorsEnabled());
    const bool list = logic_.grid().isList();
    const bool notes = logic_.grid().listKind == ViewKind::AllNotes;
    QHeaderView* rows = view_->verticalHeader();
    // A list row is one line, cut with an ellipsis (the tooltip has it
    // all); a note of the notes list and a record's cells wrap whole.
    view_->setWordWrap(!list || notes);
    if (list) {
        rows->setSectionResizeMode(notes ? QHeaderView::Interactive : QHeaderView::Fixed);
        rows->setDefaultSectionSize(fontMetrics().height() + 10);
    } else {
        rows->setSectionResizeMode(QHeaderView::ResizeToContents);
    }
    view_->resizeColumnToContents(0);
    view_->setColumnWidth(0, std::max(view_->columnWidth(0) + 12, 90));
    if (notes)
        fitNoteRows();
    if (logic_.fitRequests() != fitted_) {
        fitted_ = logic_.fitRequests();
        fitHeight();
    } else if (list && height() < fullHeight) {
        resize(width(), fullHeight);  // a list after a short record: room for its rows again
    }
}

// Each note of the notes list gets the height of its lines as the column
// wraps them, up to a few lines; the tooltip shows a longer one whole.
void BrowserWindow::fitNoteRows()
{
    constexpr int mostLines = 6;
    const QFontMetrics metrics = view_->fontMetrics();
    const int width = std::max(40, view_->columnWidth(1) - 10);
    const int padding = 10;
    for (int row = 0; row < model_->rowCount(); ++row) {
        const QString text = withNewlines(logic_.cell(row + 1, 1));
        const int height =
            metrics.boundingRect(QRect(0, 0, width, 1 << 20), Qt::TextWordWrap, text).height();
        view_->setRowHeight(row, std::min(height, mostLines * metrics.lineSpacing()) + padding);
    }
}

void BrowserWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    if (logic_.grid().listKind == ViewKind::AllNotes)
        fitNoteRows();
}

// A record grid that needs less than 6000 twips (400 pixels) shortens the
// window to fit; a longer one gives the window its full height and scrolls.
void BrowserWindow::fitHeight()
{
    int rowsHeight = view_->horizontalHeader()->height();
    for (int r = 0; r < model_->rowCount(); ++r)
        rowsHeight += view_->rowHeight(r);
    const int gridTop = view_->geometry().top();
    const int needed = rowsHeight + gridTop + twipsToPixels(430);
    resize(width(), needed < twipsToPixels(6000) ? needed : fullHeight);
}

}  // namespace tav
