// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windowlogic/options/OptionsLogic.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QRadioButton;
class QTabWidget;

namespace tav {

// The options dialog (frmOptions): the auto-load file and surname settings
// on one tab, the family-tree options on the other. OK saves, Cancel and
// Escape leave everything as it was.
class OptionsDialog : public QDialog {
    Q_OBJECT
public:
    OptionsDialog(Session& session, RegistryStore& store, QWidget* parent = nullptr);

    void accept() override;
    OptionsLogic& logic() { return logic_; }
    QTabWidget* tabs() const { return tabs_; }
    QLineEdit* autoLoadBox() const { return autoLoad_; }
    QComboBox* fontSizeList() const { return fontSize_; }
    QComboBox* surnameStyleList() const { return surnameStyle_; }

private:
    void chooseAutoLoadFile();
    void readControls();

    OptionsLogic logic_;
    QTabWidget* tabs_;
    QLineEdit* autoLoad_;
    QComboBox* surnameStyle_;
    QRadioButton* givenFirst_;
    QRadioButton* surnameFirst_;
    QCheckBox* checks_[6];
    QComboBox* fontSize_;
};

}  // namespace tav
