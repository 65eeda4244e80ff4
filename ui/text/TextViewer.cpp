// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/text/TextViewer.h"

#include "app/Session.h"
#include "core/DisplayText.h"
#include "ui/Icons.h"
#include "ui/PicturePrinting.h"
#include "ui/TableCopying.h"
#include "ui/WindowFrames.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QToolBar>
#include <QVBoxLayout>

namespace tav {

TextViewer::TextViewer(Session& session, QWidget* parent)
    : QMainWindow(parent), logic_(session), messages_(session.messages())
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowIcon(tavIcon("tav"));

    QToolBar* toolbar = addWindowToolbar(this, 20, Qt::ToolButtonTextBesideIcon);
    top_ = addTopButton(toolbar, this, session.onTop.textViewer);
    QAction* select = toolbar->addAction(tavIcon("select-all"), QStringLiteral("Select all"), this,
                                         &TextViewer::selectAll);
    select->setToolTip(QStringLiteral("Select all"));
    QAction* copy = toolbar->addAction(tavIcon("copy"), QStringLiteral("Copy"), this,
                                       &TextViewer::copySelection);
    copy->setToolTip(QStringLiteral("Copy the selected text to the clipboard"));

    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    saveAs_ = file->addAction(tavIcon("save"), QStringLiteral("Save &as..."), QKeySequence::Save,
                              this, &TextViewer::chooseSaveFile);
    print_ = file->addAction(QStringLiteral("&Print..."), QKeySequence::Print, this,
                             &TextViewer::printWithPreview);
    file->addSeparator();
    file->addAction(QStringLiteral("&Close"), QKeySequence(Qt::CTRL | Qt::Key_W), this,
                    &QWidget::close);
    QMenu* edit = menuBar()->addMenu(QStringLiteral("&Edit"));
    edit->addAction(QStringLiteral("Copy to clipboard"), QKeySequence::Copy, this,
                    &TextViewer::copySelection);
    edit->addSeparator();
    edit->addAction(QStringLiteral("Select All"), QKeySequence::SelectAll, this,
                    &TextViewer::selectAll);

    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(6, 6, 6, 6);
    text_ = new QPlainTextEdit(central);
    text_->setReadOnly(true);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text_->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    layout->addWidget(text_);
    auto* buttons = new QDialogButtonBox(central);
    QPushButton* close = buttons->addButton(QStringLiteral("Close"), QDialogButtonBox::RejectRole);
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    layout->addWidget(buttons);
    setCentralWidget(central);
    closeOnEscape(this);

    // Along the right-hand edge of the screen, nearly its full height.
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        setGeometry(TextViewerLogic::placement(screen->availableGeometry(), 560));
    refresh();
}

void TextViewer::refresh()
{
    const QString text = withNewlines(logic_.text());
    if (text_->toPlainText() != text) {
        text_->setWordWrapMode(hasWordLongerThan(text) ? QTextOption::WrapAnywhere
                                                       : QTextOption::WordWrap);
        text_->setPlainText(text);
    }
    setWindowTitle(logic_.title());
}

bool TextViewer::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate)
        refresh();
    return QMainWindow::event(event);
}

void TextViewer::copySelection()
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    clipboard->setText(
        text_->textCursor().selectedText().replace(QChar::ParagraphSeparator, QLatin1Char('\n')));
}

void TextViewer::selectAll() { text_->selectAll(); }

void TextViewer::chooseSaveFile()
{
    QString path = QFileDialog::getSaveFileName(
        this, QStringLiteral("Save as"), QDir(lastSaveFolder()).filePath(logic_.suggestedFileName()),
        QStringLiteral("Text files (*.txt);;All files (*)"));
    if (path.isEmpty())
        return;
    setLastSaveFolder(QFileInfo(path).absolutePath());
    if (const Outcome saved = logic_.saveAs(path); !saved)
        messages_.warning(saved.message());
}

void TextViewer::printWithPreview()
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(windowTitle());
    QPrintPreviewDialog preview(&printer, this);
    steadyPreview(preview);
    preview.setWindowTitle(QStringLiteral("Print - ") + windowTitle());
    connect(&preview, &QPrintPreviewDialog::paintRequested, this,
            [this](QPrinter* target) { text_->document()->print(target); });
    preview.resize(800, 700);
    preview.exec();
}

}  // namespace tav
