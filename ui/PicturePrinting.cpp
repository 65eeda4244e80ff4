// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/PicturePrinting.h"

#include "draw/PagedPicture.h"

#include <QComboBox>
#include <QGraphicsView>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QToolBar>

namespace tav {

void steadyPreview(QPrintPreviewDialog& preview)
{
    for (QGraphicsView* pages : preview.findChildren<QGraphicsView*>()) {
        pages->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        pages->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    }
}

void previewAndPrint(QWidget* parent, const Picture& picture, const QString& title)
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(title);
    printer.setPageOrientation(picture.bounds.width() > picture.bounds.height()
                                   ? QPageLayout::Landscape
                                   : QPageLayout::Portrait);
    QPrintPreviewDialog preview(&printer, parent);
    steadyPreview(preview);
    preview.setWindowTitle(QStringLiteral("Print - ") + title);
    PageScale scale = PageScale::FitOnePage;
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview,
                     [&](QPrinter* target) { paintOnPages(*target, picture, scale); });

    // The choice of scale sits in the preview's own toolbar.
    if (auto* toolbar = preview.findChild<QToolBar*>()) {
        auto* choice = new QComboBox(toolbar);
        choice->addItems(
            {QStringLiteral("Fit on one page"), QStringLiteral("Full size, across pages")});
        choice->setToolTip(QStringLiteral("How large to print the tree"));
        toolbar->addSeparator();
        toolbar->addWidget(choice);
        QObject::connect(choice, &QComboBox::currentIndexChanged, &preview, [&](int index) {
            scale = index == 0 ? PageScale::FitOnePage : PageScale::FullSize;
            if (auto* widget = preview.findChild<QPrintPreviewWidget*>())
                widget->updatePreview();
        });
    }
    preview.resize(900, 700);
    preview.exec();
}

}  // namespace tav
