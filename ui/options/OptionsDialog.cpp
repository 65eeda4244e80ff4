// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/options/OptionsDialog.h"

#include "ui/Icons.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace tav {

OptionsDialog::OptionsDialog(Session& session, RegistryStore& store, QWidget* parent)
    : QDialog(parent), logic_(session, store)
{
    setWindowTitle(QStringLiteral("Options"));
    setWindowIcon(tavIcon("tav"));
    tabs_ = new QTabWidget(this);

    // General: auto-load file and how surnames are shown.
    auto* general = new QWidget(tabs_);
    auto* generalLayout = new QVBoxLayout(general);
    auto* startBox = new QGroupBox(QStringLiteral("Open at start-up"), general);
    auto* startRow = new QHBoxLayout(startBox);
    autoLoad_ = new QLineEdit(logic_.autoLoadText, startBox);
    autoLoad_->setClearButtonEnabled(true);
    autoLoad_->setPlaceholderText(QStringLiteral("No file"));
    autoLoad_->setMinimumWidth(300);
    auto* browse = new QPushButton(QStringLiteral("..."), startBox);
    browse->setToolTip(QStringLiteral("Choose the file to open at start-up"));
    browse->setFixedWidth(36);
    connect(browse, &QPushButton::clicked, this, &OptionsDialog::chooseAutoLoadFile);
    startRow->addWidget(autoLoad_);
    startRow->addWidget(browse);
    generalLayout->addWidget(startBox);

    auto* namesBox = new QGroupBox(QStringLiteral("Names"), general);
    auto* namesForm = new QFormLayout(namesBox);
    surnameStyle_ = new QComboBox(namesBox);
    surnameStyle_->addItems({QStringLiteral("smith"), QStringLiteral("SMITH"),
                             QStringLiteral("/smith/"), QStringLiteral("/SMITH/"),
                             QStringLiteral("Smith"), QStringLiteral("/Smith/")});
    surnameStyle_->setCurrentIndex(logic_.surnameStyleIndex);
    namesForm->addRow(QStringLiteral("Surname style:"), surnameStyle_);
    givenFirst_ = new QRadioButton(QStringLiteral("First names first (John Smith)"), namesBox);
    surnameFirst_ = new QRadioButton(QStringLiteral("Surname first (Smith, John)"), namesBox);
    (logic_.surnameFirstNamesFirst ? givenFirst_ : surnameFirst_)->setChecked(true);
    namesForm->addRow(QStringLiteral("Surname position:"), givenFirst_);
    namesForm->addRow(QString(), surnameFirst_);
    generalLayout->addWidget(namesBox);
    generalLayout->addStretch();
    tabs_->addTab(general, QStringLiteral("General"));

    // Family tree.
    auto* tree = new QWidget(tabs_);
    auto* treeLayout = new QVBoxLayout(tree);
    const char* labels[6] = {
        "Show dates",         "Show surnames",     "Mark people with descendants",
        "Show the main line", "Leave out spouses", "Alternative background colour"};
    const bool values[6] = {logic_.viewDates,    logic_.viewSurnames, logic_.viewDescendentMark,
                            logic_.viewMainLine, logic_.viewNoSpouse, logic_.backColour};
    for (int i = 0; i < 6; ++i) {
        checks_[i] = new QCheckBox(QString::fromLatin1(labels[i]), tree);
        checks_[i]->setChecked(values[i]);
        treeLayout->addWidget(checks_[i]);
    }
    auto* fontRow = new QFormLayout;
    fontSize_ = new QComboBox(tree);
    // Item k stands for font size step 4 - k.
    fontSize_->addItems({QStringLiteral("Large (12 point)"), QStringLiteral("Medium (9.75 point)"),
                         QStringLiteral("Normal (8.25 point)"), QStringLiteral("Small (6 point)")});
    fontSize_->setCurrentIndex(logic_.fontSizeIndex);
    fontRow->addRow(QStringLiteral("Font size:"), fontSize_);
    treeLayout->addLayout(fontRow);
    treeLayout->addStretch();
    tabs_->addTab(tree, QStringLiteral("Family tree"));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &OptionsDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &OptionsDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs_);
    layout->addWidget(buttons);
}

void OptionsDialog::chooseAutoLoadFile()
{
    const QString start =
        logic_.autoLoadPath().isEmpty() ? QDir::currentPath() : logic_.autoLoadPath();
    logic_.autoLoadFileChosen(QFileDialog::getOpenFileName(this, QStringLiteral("Auto-load file"),
                                                           start, QStringLiteral("(*.ged)")));
    autoLoad_->setText(logic_.autoLoadText);
}

void OptionsDialog::readControls()
{
    logic_.autoLoadTextEdited(autoLoad_->text());
    logic_.surnameStyleIndex = surnameStyle_->currentIndex();
    logic_.surnameFirstNamesFirst = givenFirst_->isChecked();
    bool* flags[6] = {&logic_.viewDates,    &logic_.viewSurnames, &logic_.viewDescendentMark,
                      &logic_.viewMainLine, &logic_.viewNoSpouse, &logic_.backColour};
    for (int i = 0; i < 6; ++i)
        *flags[i] = checks_[i]->isChecked();
    logic_.fontSizeIndex = fontSize_->currentIndex();
}

void OptionsDialog::accept()
{
    readControls();
    if (logic_.accept())
        QDialog::accept();
}

}  // namespace tav
