#include "ui/HelpLine.h"

#include "foundation/Report.h"
#include "ui/MessageText.h"

#include <QCoreApplication>
#include <QEvent>

namespace host {

HelpLine::HelpLine(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // a long text widens no window
    QCoreApplication::instance()->installEventFilter(this);
    reportListener_ = report::addListener([this](report::Level level, const std::string& text) {
        // Why comes first; what follows from it says less.
        if (!isComplaint(level) || !turn_.begin())
            return;
        holdsMessage_ = true;
        setText(messageText(level, text));
        setStyleSheet(messageStyle(level));
    });
    showHelp();
}

HelpLine::~HelpLine() {
    report::removeListener(reportListener_);
}

void HelpLine::setHelp(const QString& text) {
    help_ = text;
    if (!holdsMessage_)
        showHelp();
}

void HelpLine::showHelp() {
    holdsMessage_ = false;
    setText(help_.isEmpty() ? QStringLiteral(" ") : help_);
    setStyleSheet(QString());
}

bool HelpLine::eventFilter(QObject* watched, QEvent* event) {
    const bool acts =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress;
    // As it reaches the window: the same event goes on to widgets, which may have complained.
    if (acts && holdsMessage_ && watched->isWindowType())
        showHelp();
    return QLabel::eventFilter(watched, event);
}

} // namespace host
