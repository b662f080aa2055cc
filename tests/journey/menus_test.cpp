// The right button over the view and the time slider, the main menu, and the tools they lead to.
#include "journey/Desk.h"
#include "ui/MainWindow.h"
#include "ui/ModelPanel.h"
#include "ui/TimeSlider.h"
#include "ui/ViewWidget.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include <maya/MQtUtil.h>

namespace vellum::test {

namespace {

class RightButton : public Desk {
protected:
    void SetUp() override {
        Desk::SetUp();
        take("pencil");
    }

    QMenu* menuOver(QWidget& place, QPoint position) {
        hand.moveTo(place, position);
        hand.press(Qt::RightButton);
        hand.release(Qt::RightButton);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        EXPECT_NE(menu, nullptr);
        return menu;
    }
    // Clicks through the menu with the pointer, one label after the other.
    void choose(QMenu* menu, const QStringList& labels) {
        for (const QString& label : labels) {
            SCOPED_TRACE(label.toStdString());
            ASSERT_NE(menu, nullptr);
            ASSERT_TRUE(support::waitFor([&] { return menu->isVisible(); }));
            QAction* found = nullptr;
            for (QAction* action : menu->actions())
                found = action->text() == label ? action : found;
            ASSERT_NE(found, nullptr) << label.toStdString();
            QMenu* next = found->menu(); // the menu may be gone after the click
            hand.click(*menu, menu->actionGeometry(found).center());
            menu = next;
        }
        EXPECT_TRUE(support::waitFor([] { return QApplication::activePopupWidget() == nullptr; }));
        support::settle();
    }
};

} // namespace

TEST_F(RightButton, ChoosesTheToolThatDrawsNext) {
    const QImage blank = picture();
    choose(menuOver(view(), {300, 60}), {QStringLiteral("Draw Tool"), QStringLiteral("Rectangle")});
    hand.moveTo(view(), {100, 100});
    hand.press();
    hand.moveTo(view(), {240, 220});
    hand.release();
    const QImage drawn = picture();
    for (const QPoint side : {QPoint(170, 100), {100, 160}, {240, 160}, {170, 220}})
        EXPECT_TRUE(differAt(drawn, blank, side)) << side.x() << ", " << side.y();
    EXPECT_FALSE(differAt(drawn, blank, {170, 160})) << "hollow";
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(RightButton, WorksOnFramesFromTheViewAndFromTheTimeSlider) {
    const QImage blank = picture();
    stroke({{120, 120}, {220, 120}});
    const QImage drawn = picture();
    choose(menuOver(window->timeSlider(), {200, 8}), {QStringLiteral("Clear Frame(s)")});
    EXPECT_TRUE(shows(blank)) << allErrors().toStdString();
    hand.type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_TRUE(shows(drawn));
    choose(menuOver(view(), {300, 60}),
           {QStringLiteral("Frame"), QStringLiteral("Delete Frame(s)")});
    EXPECT_TRUE(shows(blank)) << allErrors().toStdString();
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

namespace {

class MenuBar : public RightButton {
protected:
    QMenu* openMainMenu() {
        QMenuBar& bar = *window->menuBar();
        for (QAction* title : bar.actions()) {
            if (title->text() == QStringLiteral("VL2")) {
                hand.click(bar, bar.actionGeometry(title).center());
                return title->menu();
            }
        }
        return nullptr;
    }
    static QMenu* tornOff() {
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (top->inherits("QTornOffMenu") && top->isVisible())
                return qobject_cast<QMenu*>(top);
        }
        return nullptr;
    }
};

} // namespace

TEST_F(MenuBar, ItsToolsStayAtHandWhenTornOff) {
    choose(openMainMenu(), {QStringLiteral("Draw Tool"), QStringLiteral("Rectangle")});
    QMenu* main = openMainMenu();
    ASSERT_NE(main, nullptr);
    QAction* tools = nullptr;
    for (QAction* entry : main->actions())
        tools = entry->text() == QStringLiteral("Draw Tool") ? entry : tools;
    ASSERT_NE(tools, nullptr);
    QMenu* list = tools->menu();
    hand.click(*main, main->actionGeometry(tools).center());
    ASSERT_TRUE(support::waitFor([&] { return list->isVisible(); }));
    for (const QAction* entry : list->actions())
        EXPECT_EQ(entry->isChecked(), entry->text() == QStringLiteral("Rectangle"))
            << entry->text().toStdString();
    hand.click(*list, {list->width() / 2.0, 3}); // the strip above the entries
    ASSERT_TRUE(support::waitFor([] { return tornOff() != nullptr; }));
    for (const char* tool : {"Eraser", "Line"}) {
        QAction* entry = nullptr;
        for (QAction* each : tornOff()->actions())
            entry = each->text() == QLatin1String(tool) ? each : entry;
        ASSERT_NE(entry, nullptr) << tool;
        hand.click(*tornOff(), tornOff()->actionGeometry(entry).center());
        EXPECT_TRUE(support::waitFor([&] { return entry->isChecked(); })) << tool;
        ASSERT_NE(tornOff(), nullptr);
    }
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
    ASSERT_TRUE(run(QStringLiteral("file -f -new")));
    unloadPlugin();
    EXPECT_EQ(tornOff(), nullptr) << "its commands are gone";
    loadPlugin();
}

TEST_F(Desk, TheFloatingViewComesToTheFrontAndTakesTheUndoKey) {
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -fv; window -widthHeight 300 280 cover;"
                                   "showWindow cover")));
    QWidget* floating = MQtUtil::findWindow("rvVlFloatingWindow");
    ASSERT_NE(floating, nullptr);
    for (QWidget* placed : {floating, MQtUtil::findWindow("cover")}) {
        placed->move(400, 300);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(placed));
    }
    const auto inFront = [&] { return QApplication::topLevelAt(500, 400) == floating; };
    EXPECT_FALSE(inFront());
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -fv")));
    EXPECT_TRUE(support::waitFor(inFront));
    ASSERT_TRUE(QTest::qWaitForWindowActive(floating));

    take("pencil");
    const auto nothingToRedo = [this] {
        return number(QStringLiteral("undoInfo -q -redoQueueEmpty"));
    };
    host::ModelPanel* panel = host::ModelPanel::find(QStringLiteral("rvVellumFloatingModelPanel"));
    ASSERT_NE(panel, nullptr);
    hand.moveTo(panel->viewWidget(), {60, 60});
    hand.press();
    hand.moveTo(panel->viewWidget(), {120, 90});
    hand.release();
    EXPECT_EQ(nothingToRedo(), 1);
    hand.type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_EQ(nothingToRedo(), 0) << "the stroke is what can be redone";
}

} // namespace vellum::test
