#include "ui/PanelSession.h"

#include "foundation/Report.h"
#include "ui/MainWindow.h"
#include "ui/ModelPanel.h"
#include "ui/ViewWidget.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

namespace vellum::test {

PanelSession::PanelSession() {
    echoListener_ =
        host::report::addListener([this](host::report::Level level, const std::string& text) {
            if (level == host::report::Level::Print)
                echoes.append(QString::fromStdString(text).trimmed());
            if (level == host::report::Level::Info)
                notes.append(QString::fromStdString(text));
        });
}

PanelSession::~PanelSession() {
    host::report::removeListener(echoListener_);
}

void PanelSession::SetUp() {
    Session::SetUp();
    ASSERT_TRUE(hand.isReal()) << "these tests need an X server with XTEST";
    window->move(0, 0);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    view().setFocus();
    errors.clear();
}

host::ViewWidget& PanelSession::view() {
    return window->mainPanel().viewWidget();
}

QDialog* PanelSession::panel(const char* className) {
    const QByteArray wanted = QByteArray("vellum::") + className;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->metaObject()->className() == wanted)
            return qobject_cast<QDialog*>(widget);
    }
    return nullptr;
}

QDialog* PanelSession::open(const char* flag, const char* className) {
    EXPECT_TRUE(run(QStringLiteral("rvVellumUtil %1").arg(QLatin1String(flag))));
    QDialog* dialog = panel(className);
    if (!dialog) {
        ADD_FAILURE() << className << " did not open";
        return nullptr;
    }
    EXPECT_TRUE(QTest::qWaitForWindowExposed(dialog));
    support::settle();
    return dialog;
}

void PanelSession::click(const QWidget& widget, Qt::MouseButton button) {
    hand.moveTo(widget, QRectF(widget.rect()).center() * widget.devicePixelRatioF());
    hand.press(button);
    hand.release(button);
}

void PanelSession::answering(const char* className, const std::function<void(QDialog&)>& answer,
                             const std::function<void()>& command) {
    bool answered = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        // Keys typed before the window is active go nowhere.
        if (answered || !dialog || !dialog->inherits(className) || !dialog->isActiveWindow())
            return;
        answered = true;
        answer(*dialog);
    });
    timer.start(10);
    command();
    EXPECT_TRUE(answered) << className << " did not open";
}

bool PanelSession::viewHasKeyboard() {
    // The window system takes its time to activate a window.
    const bool has = support::waitFor(
        [&] { return QApplication::focusWidget() == &view() && view().isActiveWindow(); });
    support::settle();
    return has && QApplication::focusWidget() == &view();
}

} // namespace vellum::test
