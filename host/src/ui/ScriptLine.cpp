#include "ui/ScriptLine.h"

#include "foundation/Report.h"
#include "script/Interpreter.h"
#include "ui/MessageText.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

namespace host {

ScriptLine::ScriptLine(QWidget* parent)
    : QWidget(parent), input_(new QLineEdit(this)), output_(new QLineEdit(this)) {
    input_->setObjectName(QStringLiteral("scriptInput"));
    output_->setObjectName(QStringLiteral("scriptOutput"));
    output_->setReadOnly(true);
    output_->setFocusPolicy(Qt::ClickFocus);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    layout->setSpacing(4);
    layout->addWidget(new QLabel(tr("MEL"), this));
    layout->addWidget(input_, 1);
    layout->addWidget(output_, 1);
    input_->installEventFilter(this);

    reportListener_ = report::addListener([this](report::Level level, const std::string& text) {
        if (isComplaint(level) && !turn_.begin())
            return; // the first says why
        output_->setText(messageText(level, text));
        output_->setCursorPosition(0);
        output_->setStyleSheet(messageStyle(level));
    });
}

ScriptLine::~ScriptLine() {
    report::removeListener(reportListener_);
}

void ScriptLine::run() {
    const QString text = input_->text().trimmed();
    if (text.isEmpty())
        return;
    if (history_.isEmpty() || history_.last() != text)
        history_.append(text);
    recalled_ = history_.size();
    input_->setText({}); // which, unlike clear(), the line does not undo
    script::RunOptions options;
    options.echo = true;
    script::run(text.toStdString(), nullptr, options);
}

void ScriptLine::recall(int step) {
    const int target = recalled_ + step;
    if (target < 0 || target > history_.size())
        return;
    if (recalled_ == history_.size())
        draft_ = input_->text();
    recalled_ = target;
    input_->setText(target == history_.size() ? draft_ : history_.at(target));
}

bool ScriptLine::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        // With nothing typed to take back, undo and redo are the scene's.
        if ((key.matches(QKeySequence::Undo) && !input_->isUndoAvailable()) ||
            (key.matches(QKeySequence::Redo) && !input_->isRedoAvailable())) {
            event->ignore();
            return true;
        }
    } else if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            recall(key == Qt::Key_Up ? -1 : 1);
            return true;
        }
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            run(); // here, as a line edit lets the key go on to the window's tool
            return true;
        }
        if (key == Qt::Key_Escape) {
            input_->clear();
            window()->setFocus();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace host
