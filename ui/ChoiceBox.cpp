// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ChoiceBox.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QKeyEvent>

namespace tav {

namespace {

class ChoiceFilter : public QObject {
public:
    ChoiceFilter(QComboBox* box, std::function<void(int)> act)
        : QObject(box), box_(box), act_(std::move(act))
    {}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const bool wheel = event->type() == QEvent::Wheel;
        if (watched != box_ || (!wheel && event->type() != QEvent::KeyPress) ||
            box_->view()->isVisible())
            return false;
        if (wheel)
            return true;
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))
            return false;
        const int count = box_->count();
        const int current = box_->currentIndex();
        int wanted = -1;
        switch (key->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (current >= 0)
                act_(current);
            return true;
        case Qt::Key_Up: wanted = current - 1; break;
        case Qt::Key_Down: wanted = current + 1; break;
        case Qt::Key_PageUp: wanted = current - 10; break;
        case Qt::Key_PageDown: wanted = current + 10; break;
        case Qt::Key_Home: wanted = 0; break;
        case Qt::Key_End: wanted = count - 1; break;
        default:
            if (key->text().isEmpty() || !key->text()[0].isPrint())
                return false;
            wanted = box_->findText(key->text(), Qt::MatchStartsWith);
            if (wanted < 0)
                return true;
        }
        box_->setCurrentIndex(std::clamp(wanted, 0, count - 1));
        return true;
    }

private:
    QComboBox* box_;
    std::function<void(int)> act_;
};

}  // namespace

void actOnChoice(QComboBox* box, std::function<void(int index)> act)
{
    box->installEventFilter(new ChoiceFilter(box, act));
    QObject::connect(box, &QComboBox::activated, box, std::move(act));
}

}  // namespace tav
