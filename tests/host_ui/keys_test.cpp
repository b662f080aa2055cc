// Keys: the window's hotkeys, the current tool, and an event filter that comes before both.
#include "foundation/UndoQueue.h"
#include "host_ui/UiTest.h"
#include "ui/ScriptLine.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>

#include <maya/MQtUtil.h>

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

TEST_F(Keys, UndoAndTimeInEveryWindow) {
    run("recordCtx one; setToolTo one;"
        "window floating; paneLayout -parent floating pane; modelPanel -parent pane panel;"
        "showWindow floating");
    auto* menu = window->menuBar()->findChild<QMenu*>("mainWindowMenu");
    menu = menu ? menu : window->findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    menu->showTearOffMenu(QPoint(20, 500));
    QWidget* floating = MQtUtil::findWindow("floating");
    QWidget* tornOff = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->inherits("QTornOffMenu"))
            tornOff = widget;
    }
    ASSERT_NE(tornOff, nullptr);
    for (QWidget* other : {floating, tornOff}) {
        SCOPED_TRACE(other->metaObject()->className());
        record(2);
        other->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(other));
        type({Qt::Key_Control, Qt::Key_Z});
        EXPECT_EQ(balance, 1);
        type({Qt::Key_Z});
        EXPECT_EQ(balance, 0);
        type({Qt::Key_Shift, Qt::Key_Z});
        EXPECT_EQ(balance, 1);
        run("currentTime 5");
        type({Qt::Key_Alt, Qt::Key_Period});
        type({Qt::Key_Alt, Qt::Key_Period});
        EXPECT_EQ(runInt("currentTime -q"), 7);
        type({Qt::Key_Alt, Qt::Key_Comma});
        EXPECT_EQ(runInt("currentTime -q"), 6);
        type({Qt::Key_Alt, Qt::Key_V});
        EXPECT_EQ(runInt("play -q -state"), 1);
        type({Qt::Key_Alt, Qt::Key_V});
        EXPECT_EQ(runInt("play -q -state"), 0);
    }
    tornOff->close();
    floating->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(floating));
    calls().clear();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_Delete})
        type({key});
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(floating, &repeated);
    EXPECT_THAT(calls(), ElementsAre("complete", "abort", "delete"));
    host::undoQueue().flush();
    run("deleteUI floating");
}

TEST_F(Keys, AltAndF10ReachTheMenus) {
    QMenuBar& bar = *window->menuBar();
    const auto opens = [&] {
        return uitest::waitFor([&] {
            const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            return menu && menu->menuAction() == bar.actions().constFirst();
        });
    };
    for (const Qt::Key menuKey : {Qt::Key_Alt, Qt::Key_F10}) {
        SCOPED_TRACE(menuKey);
        view().setFocus();
        type({menuKey});
        if (menuKey == Qt::Key_Alt)
            type({Qt::Key_Down});
        EXPECT_TRUE(opens());
        type({Qt::Key_Escape});
        type({Qt::Key_Escape});
        EXPECT_FALSE(QApplication::activePopupWidget());
        EXPECT_TRUE(view().hasFocus()) << "where it was before";
    }
    // Held for something else, Alt is no way to the menus.
    type({Qt::Key_Alt, Qt::Key_Period});
    EXPECT_TRUE(view().hasFocus());
    moveTo(view(), {60, 60});
    key(Qt::Key_Alt, true);
    press();
    moveTo(view(), {80, 60});
    release();
    key(Qt::Key_Alt, false);
    EXPECT_TRUE(view().hasFocus());
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

TEST_F(Keys, TheScriptLineLeavesUndoToTheSceneUnlessTextWasTyped) {
    QLineEdit& input = window->scriptLine().input();
    input.setFocus();
    input.insert("createNode transform -n fromLine");
    type({Qt::Key_Return});
    EXPECT_EQ(runInt("objExists fromLine"), 1);
    type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_EQ(runInt("objExists fromLine"), 0);
    EXPECT_EQ(input.text(), "");
    type({Qt::Key_Control, Qt::Key_Shift, Qt::Key_Z});
    EXPECT_EQ(runInt("objExists fromLine"), 1);
    type({Qt::Key_X});
    type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_EQ(runInt("objExists fromLine"), 1);
    EXPECT_EQ(input.text(), "");
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
    EXPECT_EQ(output.text(), "// Result: 42 //");
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

TEST_F(Keys, TheScriptLineShowsResultsOfEveryType) {
    const struct {
        const char* script;
        const char* shown;
    } results[] = {{"6 * 7", "42"},
                   {"1.0 / 4", "0.25"},
                   {"\"two words\"", "two words"},
                   {"int $i[] = {1, 2}", "1 2"},
                   {"float $f[] = {0.5, 2.0}", "0.5 2"},
                   {"string $s[] = {\"a\", \"b c\"}", "a b c"},
                   {"<<1, 2.5, -3>>", "<<1, 2.5, -3>>"},
                   {"createNode transform -n shown", "shown"}};
    for (const auto& [script, shown] : results) {
        window->scriptLine().input().setText(script);
        window->scriptLine().input().setFocus();
        type({Qt::Key_Return});
        EXPECT_EQ(window->scriptLine().output().text().toStdString(),
                  std::string("// Result: ") + shown + " //");
    }
}
