// Keys: the window's hotkeys, the current tool, and an event filter that comes before both.
#include "foundation/UndoQueue.h"
#include "host_ui/UiTest.h"
#include "ui/ScriptLine.h"

#include <QKeyEvent>
#include <QLineEdit>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using uitest::calls;

namespace {

class CountingStep : public host::UndoStep {
public:
    explicit CountingStep(int& balance) : balance_(balance) { ++balance_; }
    bool undo() override {
        --balance_;
        return true;
    }
    bool redo() override {
        ++balance_;
        return true;
    }

private:
    int& balance_;
};

/// As a plug-in does it: a filter on the main window that takes a key for itself.
class KeyTaker : public QObject {
public:
    KeyTaker(int key, bool takesOverride) : key_(key), takesOverride_(takesOverride) {}
    int presses = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        const bool isOverride = event->type() == QEvent::ShortcutOverride;
        if (!isOverride && event->type() != QEvent::KeyPress)
            return false;
        if (static_cast<QKeyEvent*>(event)->key() != key_ || (isOverride && !takesOverride_))
            return false;
        presses += isOverride ? 0 : 1;
        event->accept();
        return true;
    }

private:
    int key_;
    bool takesOverride_;
};

} // namespace

class Keys : public uitest::UiTest {
protected:
    void record(int steps) {
        host::undoQueue().flush();
        balance = 0;
        for (int i = 0; i < steps; ++i)
            host::undoQueue().record(std::make_unique<CountingStep>(balance));
    }
    int balance = 0;
};

TEST_F(Keys, UndoAndRedo) {
    record(4);
    type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_EQ(balance, 3);
    type({Qt::Key_Z});
    EXPECT_EQ(balance, 2);
    type({Qt::Key_Shift, Qt::Key_Z});
    EXPECT_EQ(balance, 3);
    type({Qt::Key_Control, Qt::Key_Y});
    EXPECT_EQ(balance, 4);
    host::undoQueue().flush();
}

TEST_F(Keys, AFilterWinsOnlyWhenItTakesTheOverrideToo) {
    record(2);
    KeyTaker careless(Qt::Key_Z, false);
    window->installEventFilter(&careless);
    type({Qt::Key_Z});
    EXPECT_EQ(balance, 1) << "the hotkey fires before the key press is seen";
    EXPECT_EQ(careless.presses, 0);
    window->removeEventFilter(&careless);

    KeyTaker careful(Qt::Key_Z, true);
    window->installEventFilter(&careful);
    type({Qt::Key_Z});
    EXPECT_EQ(balance, 1);
    EXPECT_EQ(careful.presses, 1);

    // The same while the focus is in the view.
    view().setFocus();
    type({Qt::Key_Z});
    EXPECT_EQ(balance, 1);
    EXPECT_EQ(careful.presses, 2);
    host::undoQueue().flush();
}

TEST_F(Keys, ActionsOfTheCurrentTool) {
    run("recordCtx one; setToolTo one");
    calls().clear();
    view().setFocus();
    type({Qt::Key_Return});
    type({Qt::Key_Escape});
    type({Qt::Key_Delete});
    type({Qt::Key_Backspace});
    EXPECT_THAT(calls(), ElementsAre("complete", "abort", "delete", "delete"));
    calls().clear();
    type({Qt::Key_Q});
    EXPECT_THAT(calls(), ElementsAre("cleanup"));
    EXPECT_EQ(runString("currentCtx"), "selectSuperContext");
}

TEST_F(Keys, TypingInTheScriptLineIsTyping) {
    record(1);
    run("recordCtx one; setToolTo one");
    calls().clear();
    QLineEdit& input = window->scriptLine().input();
    input.setFocus();
    for (const Qt::Key key : {Qt::Key_Z, Qt::Key_Q, Qt::Key_Backspace})
        type({key});
    EXPECT_EQ(input.text(), "z");
    EXPECT_EQ(balance, 1);
    EXPECT_THAT(calls(), IsEmpty());
    host::undoQueue().flush();
}

TEST_F(Keys, ScriptLineRunsAndRemembers) {
    QLineEdit& input = window->scriptLine().input();
    QLineEdit& output = window->scriptLine().output();
    const auto enter = [&](const char* text) {
        input.setText(text);
        input.setFocus();
        type({Qt::Key_Return});
    };
    enter("$lineTest = 6 * 7");
    EXPECT_TRUE(output.text().contains("42")) << output.text().toStdString();
    enter("noSuchProcedure");
    EXPECT_TRUE(output.text().contains("noSuchProcedure")) << output.text().toStdString();
    EXPECT_TRUE(input.text().isEmpty());
    input.setText("draft");
    type({Qt::Key_Up});
    EXPECT_EQ(input.text(), "noSuchProcedure");
    type({Qt::Key_Up});
    type({Qt::Key_Up});
    EXPECT_EQ(input.text(), "$lineTest = 6 * 7");
    type({Qt::Key_Down});
    type({Qt::Key_Down});
    EXPECT_EQ(input.text(), "draft");
}
