// A text that is being typed while something else happens to the scene: it is never lost unsaid.
#include "document/Frame.h"
#include "document/Layer.h"
#include "foundation/UndoQueue.h"
#include "tools/TextSession.h"
#include "ui/MainWindow.h"
#include "ui/ModelPanel.h"

#include <QApplication>
#include <QKeyEvent>

#include <functional>

namespace vellum::test {
namespace {

class KeptText : public TextSession {
protected:
    void typeH() {
        begin();
        type({Qt::Key_H});
        ASSERT_EQ(typed(), QStringLiteral("h"));
    }
    static QString refusal(const char* text, const char* reason) {
        return QStringLiteral("[Vellum2] Text \"%1\" is not committed: %2. "
                              "Press Escape to discard it.")
            .arg(QLatin1String(text), QLatin1String(reason));
    }
    void click(QPoint place) {
        moveTo(place);
        press();
        release();
    }
};

TEST_F(KeptText, AHotkeyCommitsItAndIsAHotkey) {
    begin({150, 300});
    type({Qt::Key_W, Qt::Key_Escape});
    const QImage before = picture();
    typeH();
    key(Qt::Key_Control, true);
    key(Qt::Key_Control, false);
    key(Qt::Key_Shift, true);
    type({Qt::Key_H});
    key(Qt::Key_Shift, false);
    EXPECT_EQ(typed(), QStringLiteral("hH"));
    const std::size_t steps = host::undoQueue().undoCount();
    key(Qt::Key_Control, true);
    type({Qt::Key_Z});
    key(Qt::Key_Control, false);
    EXPECT_EQ(document()->currentStroke(), nullptr);
    EXPECT_EQ(picture(), before) << "the text, and nothing else, is undone";
    EXPECT_EQ(host::undoQueue().undoCount(), steps);
    ASSERT_TRUE(run(QStringLiteral("redo")));
    EXPECT_GT(inkIn(picture()), inkIn(before) + 300);
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(KeptText, TypingMarksTheSceneAsModified) {
    begin();
    type({Qt::Key_Escape});
    const auto isModified = [this] { return number(QStringLiteral("file -q -modified")) == 1; };
    begin({200, 200});
    ASSERT_TRUE(run(QStringLiteral("file -modified off")));
    type({Qt::Key_F3, Qt::Key_Backspace});
    EXPECT_FALSE(isModified()) << "nothing is written";
    type({Qt::Key_H});
    EXPECT_TRUE(isModified());
}

// What goes comes back at the end, and the text with it.
TEST_F(KeptText, StaysWhereItsPlaceIsGone) {
    std::unique_ptr<Layer> layer;
    std::vector<std::unique_ptr<Frame>> frames;
    const MTime one(1, MTime::uiUnit());
    const struct {
        const char* reason;
        std::function<void()> happens;
        std::function<void()> isMended;
    } cases[] = {
        {"its layer does not exist", [&] { layer = document()->takeLayer(camera, 0); },
         [&] {
             document()->insertLayer(camera, 0, std::move(layer));
             document()->setActiveLayer(camera, 0, true);
         }},
        {"its frame does not exist", [&] { document()->exchangeFrames(camera, 0, {one}, frames); },
         [&] { document()->exchangeFrames(camera, 0, {}, frames); }},
        {"the active layer is locked",
         [&] { document()->setLayerState(camera, 0, LayerState::Locked); },
         [&] { document()->setLayerState(camera, 0, LayerState::Animated); }},
        {"its drawing does not exist", [&] { run(QStringLiteral("delete `ls -type rvVellum`")); },
         [&] { run(QStringLiteral("undo")); }},
    };
    const auto drawing = document();
    for (const auto& each : cases) {
        SCOPED_TRACE(each.reason);
        const auto text = [&] {
            const Stroke* stroke = drawing->currentStroke();
            return stroke ? stroke->text : QStringLiteral("<no text>");
        };
        at(1);
        typeH();
        const int second = drawing->cameraLayerCount(camera) == 1
                               ? drawing->addLayer(camera, 1, QStringLiteral("other"))
                               : 1;
        EXPECT_EQ(second, 1) << "another layer could take it, but is not meant to";
        each.happens();
        errors.clear();
        click({300, 300});
        EXPECT_EQ(errors, QStringList(refusal("h", each.reason))) << "said once";
        ASSERT_EQ(text(), QStringLiteral("h"));
        type({Qt::Key_I});
        EXPECT_EQ(text(), QStringLiteral("hi")) << "it goes on";
        key(Qt::Key_Control, true);
        type({Qt::Key_F5});
        key(Qt::Key_Control, false);
        EXPECT_EQ(errors.count(refusal("hi", each.reason)), 1);
        each.isMended();
        type({Qt::Key_Escape});
        EXPECT_EQ(drawing->currentStroke(), nullptr);
        const int ink = inkIn(picture());
        EXPECT_GT(ink, 300);

        typeH();
        each.happens();
        errors.clear();
        type({Qt::Key_Escape});
        EXPECT_EQ(errors, QStringList(refusal("h", each.reason)));
        EXPECT_EQ(text(), QStringLiteral("h"));
        type({Qt::Key_Escape});
        EXPECT_EQ(drawing->currentStroke(), nullptr) << "now it is wanted";
        each.isMended();
        EXPECT_EQ(inkIn(picture()), ink);

        typeH();
        each.happens();
        activateDrawTool();
        EXPECT_EQ(drawing->currentStroke(), nullptr) << "no field without a tool";
        each.isMended();
        ASSERT_TRUE(run(QStringLiteral("undo")));
        EXPECT_LT(inkIn(picture()), ink) << "the text before";
    }
}

TEST_F(KeptText, GoesIntoItsFrameWhereNoneIsShown) {
    at(10);
    typeH();
    at(4);
    key(Qt::Key_Control, true);
    type({Qt::Key_F5});
    key(Qt::Key_Control, false);
    EXPECT_EQ(document()->currentStroke(), nullptr);
    EXPECT_EQ(document()->currentFrame(camera), nullptr);
    at(10);
    EXPECT_GT(inkIn(picture()), 150);
    at(4);
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(document()->cameraLayerCount(camera), 0) << "what was made for it goes as well";
    ASSERT_TRUE(run(QStringLiteral("redo")));
    at(10);
    EXPECT_GT(inkIn(picture()), 150);
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

// A text begun in one window is typed in all of them.
TEST_F(KeptText, InAnotherWindow) {
    host::ModelPanel& panel = floating();
    typeH();
    const std::size_t steps = host::undoQueue().undoCount();
    panel.window()->activateWindow();
    ASSERT_TRUE(waitFor([&] { return panel.window()->isActiveWindow(); }));
    type({Qt::Key_I});
    EXPECT_EQ(typed(), QStringLiteral("hi"));
    key(Qt::Key_Control, true);
    type({Qt::Key_Z});
    key(Qt::Key_Control, false);
    EXPECT_EQ(document()->currentStroke(), nullptr);
    EXPECT_EQ(document()->cameraLayerCount(camera), 0);
    EXPECT_EQ(host::undoQueue().undoCount(), steps);
    window->activateWindow();
    ASSERT_TRUE(waitFor([&] { return window->isActiveWindow(); }));
}

} // namespace
} // namespace vellum::test
