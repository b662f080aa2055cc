// What the event filter makes of keys, pen and right button.
#include "plugin/base/QtCompat.h"
#include "plugin/base/Settings.h"
#include "plugin/session/PluginState.h"
#include "support/Sure.h"
#include "tools/ToolSession.h"
#include "tools/interaction/DrawContextInputHandler.h"
#include "ui/InputInjector.h"
#include "ui/MainWindow.h"
#include "ui/ModelPanel.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>

using support::sure;

namespace vellum::test {
namespace {

class Typist : public TextTarget {
public:
    bool typeKey(const QKeyEvent& event) override {
        typed += event.text();
        return true;
    }
    void typeText(const QString& text, const QString&) override { typed += text; }
    bool commitText() override { return ++commits > 0; }
    bool settleText() override { return commitText(); }
    QString typed;
    int commits = 0;
};

class InputHandler : public ToolSession {
protected:
    void SetUp() override {
        ToolSession::SetUp();
        handler.activate(true);
    }
    void TearDown() override {
        handler.activate(false);
        ToolSession::TearDown();
    }

    // True when the event was consumed before the window got it.
    bool send(QEvent::Type type, int key, Qt::KeyboardModifiers modifiers = {},
              const QString& text = {}, bool repeat = false) {
        QKeyEvent event(type, key, modifiers, text, repeat);
        event.ignore();
        return handler.eventFilter(window.get(), &event) &&
               (type != QEvent::ShortcutOverride || event.isAccepted());
    }

    QStringList labels(const QMenu& menu) {
        QStringList all;
        for (const QAction* action : menu.actions())
            all.append(action->isSeparator() ? QStringLiteral("-") : action->text());
        return all;
    }

    DrawContextInputHandler handler;
};

TEST(PressureCurve, Table) {
    EXPECT_FLOAT_EQ(pressureCurve(0.05F), 0.0F);
    EXPECT_FLOAT_EQ(pressureCurve(0.0799F), 0.0F);
    EXPECT_FLOAT_EQ(pressureCurve(0.08F), 0.15F);
    EXPECT_FLOAT_EQ(pressureCurve(0.1F), 0.15F);
    EXPECT_FLOAT_EQ(pressureCurve(0.15F), 0.15F);
    EXPECT_FLOAT_EQ(pressureCurve(0.3F), 0.3F);
    EXPECT_FLOAT_EQ(pressureCurve(0.5F), 0.5F);
    EXPECT_FLOAT_EQ(pressureCurve(0.6F), 0.68F);
    EXPECT_FLOAT_EQ(pressureCurve(0.8F), 0.92F);
    EXPECT_FLOAT_EQ(pressureCurve(0.95F), 1.0F); // 0.995
    EXPECT_FLOAT_EQ(pressureCurve(0.99F), 1.0F);
    for (int i = 1; i < 100; ++i)
        EXPECT_LE(pressureCurve(0.01F * float(i)), pressureCurve(0.01F * float(i + 1)));
}

TEST_F(InputHandler, SizeAndOpacityKeysAreConsumedWithTheirHotkeys) {
    for (const int key : {Qt::Key_B, Qt::Key_M}) {
        SCOPED_TRACE(key == Qt::Key_B ? "size key" : "opacity key");
        const auto held = [&] {
            return key == Qt::Key_B ? handler.sizeKeyHeld() : handler.opacityKeyHeld();
        };
        EXPECT_TRUE(send(QEvent::ShortcutOverride, key));
        EXPECT_TRUE(send(QEvent::KeyPress, key));
        EXPECT_TRUE(held());
        EXPECT_TRUE(send(QEvent::KeyRelease, key, {}, {}, true));
        EXPECT_TRUE(held()) << "a repeating key is still down";
        EXPECT_TRUE(send(QEvent::KeyRelease, key));
        EXPECT_FALSE(held());
        EXPECT_FALSE(send(QEvent::ShortcutOverride, key, Qt::ControlModifier));
        EXPECT_FALSE(send(QEvent::KeyPress, key, Qt::ControlModifier));
        EXPECT_FALSE(held());
    }
    for (const int key : {Qt::Key_Backslash, Qt::Key_Q, Qt::Key_Escape}) {
        SCOPED_TRACE("key " + std::to_string(key));
        EXPECT_FALSE(send(QEvent::ShortcutOverride, key));
        EXPECT_FALSE(send(QEvent::KeyPress, key));
        EXPECT_FALSE(send(QEvent::KeyRelease, key));
    }
    send(QEvent::KeyPress, Qt::Key_B);
    QEvent away(QEvent::WindowDeactivate);
    handler.eventFilter(window.get(), &away);
    EXPECT_FALSE(handler.sizeKeyHeld()) << "released in another window";
}

TEST_F(InputHandler, TypedKeysGoToTheTextAndCommandsDoNot) {
    Typist typist;
    handler.setTextTarget(&typist);
    EXPECT_TRUE(send(QEvent::ShortcutOverride, Qt::Key_B, {}, QStringLiteral("b")));
    EXPECT_TRUE(send(QEvent::KeyPress, Qt::Key_B, {}, QStringLiteral("b")));
    EXPECT_FALSE(handler.sizeKeyHeld());
    EXPECT_EQ(typist.typed, QStringLiteral("b"));
    const Qt::KeyboardModifiers both = Qt::ControlModifier | Qt::AltModifier;
    const struct {
        int key;
        Qt::KeyboardModifiers held;
        QString text;
        bool isTyped;
        int commits;
    } keys[] = {
        {Qt::Key_Control, Qt::ControlModifier, {}, false, 0}, // of itself it is nothing yet
        {Qt::Key_Alt, both, {}, false, 0},
        {Qt::Key_Q, both, QStringLiteral("@"), true, 0}, // AltGr
        {Qt::Key_E, Qt::GroupSwitchModifier, QStringLiteral("€"), true, 0},
        {Qt::Key_Dead_Tilde, both, {}, true, 0},
        {Qt::Key_A, Qt::ShiftModifier, QStringLiteral("A"), true, 0},
        {Qt::Key_T, both, QString(QChar(0x14)), false, 1},
        {Qt::Key_S, Qt::ControlModifier, QString(QChar(0x13)), false, 1},
        {Qt::Key_X, Qt::AltModifier, QStringLiteral("x"), false, 1},
    };
    for (const auto& each : keys) {
        SCOPED_TRACE(each.key);
        typist.commits = 0;
        EXPECT_EQ(send(QEvent::ShortcutOverride, each.key, each.held, each.text), each.isTyped);
        EXPECT_EQ(typist.commits, each.commits) << "a hotkey leaves no press";
    }
    typist.commits = 0;
    QInputMethodEvent composed;
    composed.setCommitString(QStringLiteral("é"));
    QApplication::sendEvent(&view(), &composed);
    EXPECT_EQ(typist.typed, QStringLiteral("bé"));
    handler.activate(false);
    EXPECT_EQ(typist.commits, 1);
    handler.setTextTarget(nullptr);
    EXPECT_FALSE(send(QEvent::KeyPress, Qt::Key_C, {}, QStringLiteral("c")));
    EXPECT_EQ(typist.typed, QStringLiteral("bé"));
}

TEST_F(InputHandler, PenSetsPressureAndEraser) {
    QWindow* native = window->windowHandle();
    const QPoint place = host::InputInjector::toScreen(&view(), QPoint(60, 60));
    using Phase = host::InputInjector::TabletPhase;
    host::InputInjector::tablet(native, Phase::Press, place, 0.8, true);
    ASSERT_TRUE(waitFor([] { return pluginState().tabletEraser.load(); }));
    EXPECT_FLOAT_EQ(pluginState().tabletPressure, 0.92F);
    host::InputInjector::tablet(native, Phase::Move, place + QPoint(2, 0), 0.0, false);
    ASSERT_TRUE(waitFor([] { return !pluginState().tabletEraser.load(); }));
    EXPECT_FLOAT_EQ(pluginState().tabletPressure, 0.92F) << "no pressure says nothing";
    host::InputInjector::tablet(native, Phase::Release, place, 0.0, false);
    handler.activate(false);
    handler.activate(true);
    EXPECT_FLOAT_EQ(pluginState().tabletPressure, 1.0F);
}

TEST_F(InputHandler, DrawMenu) {
    document()->addLayer(camera, 0, QStringLiteral("Fish & chips"));
    document()->addLayer(camera, 1, QStringLiteral("Top"));
    document()->setActiveLayer(camera, 1, true);
    settings().activeTool = Tool::Line;
    settings().ghostNext = true;
    const std::unique_ptr<QMenu> menu(handler.makeDrawMenu(window.get()));
    ASSERT_EQ(labels(*menu),
              (QStringList{"Top (active)", "Fish && chips", "-", "Transform", "-", "Draw Tool", "-",
                           "Layer", "Frame", "Ghosting", "-", "Toolbox...", "Tool Options...",
                           "Layer Manager...", "Retiming Tool...", "-", "Display Timeline Frames",
                           "-", "Cleanup"}));
    const auto sub = [&](const char* label) {
        for (QAction* action : menu->actions()) {
            if (action->text() == QLatin1String(label))
                return action->menu();
        }
        return static_cast<QMenu*>(nullptr);
    };
    EXPECT_EQ(labels(sure(sub("Frame"))),
              (QStringList{"Insert Frame(s)", "Duplicate Frame", "Delete Frame(s)", "-",
                           "Cut Frame(s)", "Copy Frame(s)", "Paste Frame(s)", "-", "Clear Frame(s)",
                           "-", "Step Forward", "Step Back"}));
    QStringList checked;
    for (const char* label : {"Draw Tool", "Ghosting", "Display Timeline Frames"}) {
        for (const QAction* action : sure(sub(label)).actions()) {
            if (action->isChecked())
                checked.append(action->text());
        }
    }
    EXPECT_EQ(checked, (QStringList{"Line", "Ghost Next", "Always"}));

    menu->actions().at(1)->trigger();
    EXPECT_EQ(document()->activeLayerIndex(camera), 0);

    const std::unique_ptr<QMenu> timeline(handler.makeTimelineMenu(window.get()));
    ASSERT_EQ(
        labels(*timeline),
        (QStringList{"Vellum 2", "-", "Insert Frame(s)", "Duplicate Frame", "Delete Frame(s)", "-",
                     "Cut Frame(s)", "Copy Frame(s)", "Paste Frame(s)", "-", "Clear Frame(s)"}));
    EXPECT_FALSE(timeline->actions().first()->isEnabled());
}

TEST_F(InputHandler, RightButtonOpensTheMenuOnlyWhenItMay) {
    const auto rightPress = [&](Qt::KeyboardModifiers modifiers) {
        QMouseEvent event(QEvent::MouseButtonPress, QPointF(50, 50),
                          view().mapToGlobal(QPoint(50, 50)), Qt::RightButton, Qt::RightButton,
                          modifiers);
        const bool consumed = handler.eventFilter(&view(), &event);
        QWidget* popup = QApplication::activePopupWidget();
        EXPECT_EQ(popup != nullptr, consumed);
        if (popup)
            popup->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return consumed;
    };
    EXPECT_TRUE(rightPress({}));
    EXPECT_FALSE(rightPress(Qt::ShiftModifier));
    send(QEvent::KeyPress, Qt::Key_Backslash);
    EXPECT_FALSE(rightPress({}));
    send(QEvent::KeyRelease, Qt::Key_Backslash);
    settings().drawToolContextMenu = false;
    EXPECT_FALSE(rightPress({}));
    settings().drawToolContextMenu = true;
    EXPECT_TRUE(rightPress({}));
}

} // namespace
} // namespace vellum::test
