// The right button over the view and the time slider, and the tools it leads to.
#include "journey/Desk.h"

#include "ui/MainWindow.h"
#include "ui/TimeSlider.h"
#include "ui/ViewWidget.h"

#include <QApplication>
#include <QMenu>
#include <QTest>

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

} // namespace vellum::test
