#include "ui/OptionMenu.h"

#include "ui/CommandSupport.h"
#include "ui/ControlFlags.h"

#include <QActionEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QSignalBlocker>
#include <QStandardItemModel>

namespace host {

namespace {

/// A combo box that says when its list is about to open.
class OpeningBox : public QComboBox {
public:
    using QComboBox::QComboBox;
    std::function<void()> opening;

    void showPopup() override {
        const QPointer<QComboBox> self(this);
        if (opening)
            opening();
        if (self)
            QComboBox::showPopup();
    }
};

} // namespace

OptionMenu::OptionMenu(QWidget* parent)
    : QWidget(parent), label_(new QLabel(this)), menu_(new QMenu(this)) {
    auto* box = new OpeningBox(this);
    box_ = box;
    box_->setObjectName(QStringLiteral("box"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(2, 1, 2, 1);
    layout->addWidget(label_);
    layout->addWidget(box_, 1);
    label_->hide();
    menu_->installEventFilter(this);
    box->opening = [this] { command::runElementScript(postMenuCommand); };
    connect(box_, QOverload<int>::of(&QComboBox::activated), this, &OptionMenu::chosen);
}

QString OptionMenu::label() const {
    return label_->text();
}

void OptionMenu::setLabel(const QString& text) {
    label_->setText(text);
    label_->setHidden(text.isEmpty());
}

int OptionMenu::current() const {
    return box_->currentIndex() + 1;
}

bool OptionMenu::setCurrent(int number) {
    const QAction* action = menu_->actions().value(number - 1);
    if (!action || action->isSeparator() || !action->isEnabled())
        return false;
    box_->setCurrentIndex(number - 1);
    shown_ = number - 1;
    return true;
}

bool OptionMenu::setCurrent(const QString& value) {
    const QList<QAction*> actions = menu_->actions();
    for (int i = 0; i < actions.size(); ++i) {
        if (actions[i]->text() == value && setCurrent(i + 1))
            return true;
    }
    return false;
}

QString OptionMenu::value() const {
    const QAction* action = menu_->actions().value(box_->currentIndex());
    return action ? action->text() : QString();
}

bool OptionMenu::eventFilter(QObject* watched, QEvent* event) {
    const bool handled = QWidget::eventFilter(watched, event);
    if (watched == menu_ &&
        (event->type() == QEvent::ActionAdded || event->type() == QEvent::ActionChanged ||
         event->type() == QEvent::ActionRemoved))
        rebuild();
    return handled;
}

void OptionMenu::rebuild() {
    const QSignalBlocker quiet(box_);
    const QList<QAction*> actions = menu_->actions();
    const int before = box_->currentIndex();
    box_->clear();
    for (int i = 0; i < actions.size(); ++i) {
        const QAction* action = actions[i];
        if (action->isSeparator())
            box_->insertSeparator(i);
        else
            box_->insertItem(i, action->text());
        auto* model = qobject_cast<QStandardItemModel*>(box_->model());
        if (model && !action->isSeparator())
            model->item(i)->setEnabled(action->isEnabled());
    }
    box_->setCurrentIndex(std::min(std::max(before, 0), int(actions.size()) - 1));
    shown_ = box_->currentIndex();
}

void OptionMenu::chosen(int index) {
    const bool another = index != shown_;
    shown_ = index;
    if (another || alwaysCall)
        command::runElementScript(command::withValue(changeCommand, value()));
}

} // namespace host
