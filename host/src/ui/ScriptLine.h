#pragma once

#include "ui/TurnMark.h"

#include <QStringList>
#include <QWidget>

class QLineEdit;

namespace host {

/// One line for scripts and one for their results and all messages. Up and Down walk through what
/// was entered before.
class ScriptLine : public QWidget {
    Q_OBJECT
public:
    explicit ScriptLine(QWidget* parent = nullptr);
    ~ScriptLine() override;

    QLineEdit& input() { return *input_; }
    QLineEdit& output() { return *output_; }
    const QStringList& history() const { return history_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void run();
    void recall(int step);

    QLineEdit* input_;
    QLineEdit* output_;
    QStringList history_;
    int recalled_ = 0; ///< position in the history; its size while a new line is typed
    QString draft_;
    TurnMark turn_;
    int reportListener_ = 0;
};

} // namespace host
