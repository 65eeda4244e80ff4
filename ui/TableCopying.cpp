// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/TableCopying.h"

#include "app/Messages.h"
#include "core/AtomicFile.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>

namespace tav {

namespace {

QString& saveFolder()
{
    static QString folder = QDir::homePath();
    return folder;
}

void saveAsCsv(QWidget* parent, const CopiedTable& table, Messages& messages)
{
    QString path = QFileDialog::getSaveFileName(
        parent, QStringLiteral("Save as CSV"), QDir(lastSaveFolder()).filePath(table.fileName),
        QStringLiteral("CSV files (*.csv)"));
    if (path.isEmpty())
        return;
    if (QFileInfo(path).suffix().isEmpty())
        path += QStringLiteral(".csv");
    setLastSaveFolder(QFileInfo(path).absolutePath());
    if (const Outcome written = writeFileAtomically(path, csvBytes(table.all())); !written)
        messages.warning(written.message());
}

}  // namespace

QString lastSaveFolder() { return saveFolder(); }

void setLastSaveFolder(const QString& folder) { saveFolder() = folder; }

QMenu* addTableCopying(QAbstractItemView* view, CopiedTable table, Messages& messages,
                       const QKeySequence& copyKey)
{
    auto* menu = new QMenu(view);
    const auto action = [view, menu](const QString& text, const QKeySequence& key,
                                     std::function<void()> run) {
        QAction* item = menu->addAction(text, view, std::move(run));
        item->setShortcut(key);
        item->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        view->addAction(item);
    };
    action(QStringLiteral("&Copy"), copyKey, [table] {
        QApplication::clipboard()->setText(tabSeparated(table.selected()));
    });
    action(QStringLiteral("Copy &all"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C), [table] {
        QApplication::clipboard()->setText(tabSeparated(table.all()));
    });
    menu->addSeparator();
    action(QStringLiteral("&Save as CSV..."), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S),
           [view, table, &messages] { saveAsCsv(view->window(), table, messages); });
    view->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(view, &QWidget::customContextMenuRequested, menu,
                     [view, menu](const QPoint& at) { menu->popup(view->viewport()->mapToGlobal(at)); });
    return menu;
}

}  // namespace tav
