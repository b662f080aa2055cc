// The panels of the loaded plug-in, worked with pointer and keys.
#pragma once

#include "support/Hand.h"
#include "support/Session.h"

#include <QDialog>
#include <QPoint>
#include <QStringList>

#include <functional>

namespace host {
class ViewWidget;
}

namespace vellum::test {

class PanelSession : public Session {
protected:
    PanelSession();
    ~PanelSession() override;
    void SetUp() override;

    host::ViewWidget& view();

    /// The window of this class of the plug-in, "ToolboxDialog"; null without one.
    static QDialog* panel(const char* className);
    /// Runs the flag of rvVellumUtil and waits until the panel can be seen.
    QDialog* open(const char* flag, const char* className);

    /// The middle of a widget is clicked.
    void click(const QWidget& widget, Qt::MouseButton button = Qt::LeftButton);

    /// What the command runs is in `answer` while the dialog is open: it gets the dialog, whose own
    /// event loop runs.
    void answering(const char* className, const std::function<void(QDialog&)>& answer,
                   const std::function<void()>& command);

    /// Whether keys reach the view.
    bool viewHasKeyboard();
    int now() { return number(QStringLiteral("int($vlNow = `currentTime -q`)")); }

    support::Hand hand;
    QStringList echoes; ///< what was shown in the script history since the last clear
    QStringList notes;  ///< information for the user

private:
    int echoListener_;
};

} // namespace vellum::test
