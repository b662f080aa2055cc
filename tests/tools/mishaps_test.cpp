// What goes wrong between hand and tool: buttons that come in the middle of a stroke, releases that
// never come, pens that say less than they should. No stroke may be stuck, none lost.
#include "plugin/base/Settings.h"
#include "plugin/base/ToolOptions.h"
#include "plugin/session/PluginState.h"
#include "support/Sure.h"
#include "tools/ToolSession.h"
#include "tools/interaction/ThreadManager.h"
#include "ui/MainWindow.h"
#include "ui/ModelPanel.h"
#include "ui/ViewWidget.h"

#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QTest>

using support::lastOf;
using support::sure;

namespace vellum::test {
namespace {

class Mishaps : public ToolSession {
protected:
    void SetUp() override {
        ToolSession::SetUp();
        settings().activeTool = Tool::Pencil;
        settings().of(Tool::Pencil).size = 20;
        window->move(0, 0);
        activateDrawTool();
    }
    int inkAt(QPoint place) { return alphaAt(imagePixel(place)); }
    int lastX() { return lastOf(sure(document()->currentStroke()).points).x; }
    void nothingIsStuck() {
        EXPECT_FALSE(ThreadManager::instance().isActive());
        EXPECT_EQ(document()->currentStroke(), nullptr);
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    }
    // The next stroke is like any other.
    void drawsOn(int row) {
        const int size = toolSize(Tool::Pencil);
        drawLine({100, row}, {200, row});
        nothingIsStuck();
        EXPECT_EQ(inkAt({150, row}), 255) << "in row " << row;
        EXPECT_EQ(toolSize(Tool::Pencil), size) << "after drawing in row " << row;
    }

    support::Hand other;
};

TEST_F(Mishaps, OtherButtonsInTheMiddleOfAStroke) {
    int row = 60;
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        for (const bool leftFirst : {true, false}) {
            SCOPED_TRACE(testing::Message() << button << leftFirst);
            drawTo({100, row}, {200, row});
            press(button);
            EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << "the hand is drawing";
            EXPECT_TRUE(ThreadManager::instance().isActive());
            const int before = lastX();
            moveTo({300, row});
            EXPECT_TRUE(waitFor([&] { return lastX() > before; })) << "the stroke goes on";
            release(leftFirst ? Qt::LeftButton : button);
            moveTo({350, row + 5});
            release(leftFirst ? button : Qt::LeftButton);
            nothingIsStuck();
            EXPECT_EQ(inkAt({150, row}), 255);
            drawsOn(row + 40);
            row += 80;
        }
    }
}

// Alt is for moving the camera: it may come too late, and go too early.
TEST_F(Mishaps, NavigationBegunOrEndedInTheMiddleOfAStroke) {
    const auto place = [this] {
        return number(QStringLiteral("int(1000 * `getAttr persp.translateX`)"));
    };
    const int first = place();
    drawTo({100, 100}, {200, 100});
    key(Qt::Key_Alt, true);
    const int before = lastX();
    moveTo({260, 100});
    EXPECT_TRUE(waitFor([&] { return lastX() > before; })) << "the stroke goes on";
    press(Qt::MiddleButton);
    moveTo({300, 130});
    release(Qt::MiddleButton);
    moveTo({340, 100});
    release();
    key(Qt::Key_Alt, false);
    nothingIsStuck();
    EXPECT_EQ(place(), first);
    EXPECT_EQ(inkAt({150, 100}), 255);
    drawsOn(160);

    const QImage drawn = picture();
    moveTo({300, 200});
    key(Qt::Key_Alt, true);
    press();
    moveTo({330, 220});
    key(Qt::Key_Alt, false); // before the button
    press(Qt::RightButton);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    moveTo({350, 200});
    release(Qt::RightButton);
    release();
    nothingIsStuck();
    EXPECT_NE(place(), first);
    EXPECT_EQ(picture(), drawn);
    drawsOn(220);
}

TEST_F(Mishaps, ReleasesThatNeverCome) {
    // A dialog that lets no other window have events.
    drawTo({100, 100}, {200, 100});
    {
        QDialog dialog(window.get());
        dialog.setModal(true);
        dialog.move(700, 700);
        dialog.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
        EXPECT_TRUE(waitFor([this] { return document()->currentStroke() == nullptr; }));
        host::InputInjector::create()->release(Qt::LeftButton); // nobody is told
        support::settle();
    }
    nothingIsStuck();
    EXPECT_EQ(inkAt({150, 100}), 255);
    drawsOn(150);

    // A window that is hidden, not closed.
    for (const bool adjusting : {false, true}) {
        SCOPED_TRACE(adjusting ? "adjusting" : "drawing");
        host::ModelPanel& panel = floating();
        panel.window()->activateWindow();
        panel.viewWidget().setFocus();
        ASSERT_TRUE(QTest::qWaitForWindowActive(panel.window()));
        other.moveTo(panel.viewWidget(), {100, 100});
        if (adjusting)
            other.key(Qt::Key_B, true);
        other.press();
        other.moveTo(panel.viewWidget(), {160, 100});
        if (!adjusting) {
            EXPECT_TRUE(waitFor([this] { return sampled() > 2; }));
        }
        ASSERT_TRUE(run(adjusting ? QStringLiteral("deleteUI floating")
                                  : QStringLiteral("window -e -visible 0 floating")));
        EXPECT_TRUE(waitFor([this] { return document()->currentStroke() == nullptr; }));
        EXPECT_FALSE(ThreadManager::instance().isActive());
        EXPECT_EQ(document()->cameraLayerCount(QStringLiteral("top")), 1) << "kept";
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        view().setFocus();
        moveTo({100, 200});
        other.release();
        if (adjusting)
            other.key(Qt::Key_B, false);
        drawsOn(200);
        run(QStringLiteral("if (`window -exists floating`) deleteUI floating"));
    }
}

TEST_F(Mishaps, AMenuOpenedInTheMiddleOfAStroke) {
    drawTo({100, 100}, {200, 100});
    QMenu menu; // by a hotkey, say
    menu.addAction(QStringLiteral("entry"));
    menu.popup(window->mapToGlobal(QPoint(500, 300)));
    EXPECT_TRUE(waitFor([this] { return document()->currentStroke() == nullptr; }));
    EXPECT_EQ(inkAt({150, 100}), 255);
    release(); // on the menu
    menu.close();
    support::settle();
    drawsOn(200);
}

TEST_F(Mishaps, SizeKeyReleasedOnAMenuIsNotHeldAfterwards) {
    moveTo({200, 200});
    key(Qt::Key_B, true);
    press(Qt::RightButton);
    QWidget* menu = QApplication::activePopupWidget();
    ASSERT_NE(menu, nullptr);
    release(Qt::RightButton);
    key(Qt::Key_B, false); // the menu gets it
    menu->close();
    support::settle();
    drawsOn(100);
}

TEST_F(Mishaps, ANumberThatIsNoToolMakesNothing) {
    settings().activeTool = Tool::Transform; // a settings file may say so
    errors.clear();
    moveTo({100, 100});
    press();
    moveTo({200, 100});
    release();
    EXPECT_EQ(
        errors,
        QStringList{
            QStringLiteral("[Vellum2] Unknown tool type: %1").arg(numberOf(Tool::Transform))});
    EXPECT_EQ(document()->cameraLayerCount(camera), 0);
    nothingIsStuck();
}

TEST_F(Mishaps, TabWhileTypingStaysInTheText) {
    settings().activeTool = Tool::Text;
    moveTo({150, 120});
    press();
    ASSERT_TRUE(waitFor([this] { return sampled() == 1; }));
    release();
    type({Qt::Key_A, Qt::Key_Tab, Qt::Key_B});
    ASSERT_NE(document()->currentStroke(), nullptr);
    EXPECT_EQ(sure(document()->currentStroke()).text, QStringLiteral("a\tb"));
    type({Qt::Key_Escape});
    nothingIsStuck();
}

} // namespace
} // namespace vellum::test
