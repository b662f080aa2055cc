// The line at the bottom of the main window: what the current tool is for, and over it the last
// error or warning, until the user presses a button or key.
#pragma once

#include "ui/TurnMark.h"

#include <QLabel>

namespace host {

class HelpLine : public QLabel {
public:
    explicit HelpLine(QWidget* parent);
    ~HelpLine() override;

    void setHelp(const QString& text);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showHelp();

    QString help_;
    TurnMark turn_;
    bool holdsMessage_ = false;
    int reportListener_;
};

} // namespace host
