// Smaller parts of the interface: names of elements, events and cursors of the API, deferred work,
// the bars around the view.
#include "foundation/Events.h"
#include "foundation/Idle.h"
#include "foundation/Report.h"
#include "host_ui/UiTest.h"
#include "render/Views.h"
#include "ui/ContextState.h"
#include "ui/Elements.h"
#include "ui/ScriptLine.h"
#include "ui/TimeBar.h"
#include "ui/TimeSlider.h"

#include <QDoubleSpinBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

#include <maya/MCursor.h>
#include <maya/MQtUtil.h>

#include <gmock/gmock.h>

class Interface : public uitest::UiTest {};

TEST_F(Interface, ElementsAreFoundByNamePathAndKind) {
    host::Elements& elements = host::Elements::instance();
    auto top = std::make_unique<QWidget>();
    auto* first = new QWidget(top.get());
    auto* second = new QWidget(first);
    elements.add(top.get(), "win", host::ElementKind::Window, nullptr);
    elements.add(first, "pane", host::ElementKind::Layout, top.get());
    elements.add(second, "pane", host::ElementKind::Control, first);
    EXPECT_EQ(elements.pathOf(second), "win|pane|pane");
    EXPECT_EQ(elements.find("pane", host::ElementKind::Layout), first);
    EXPECT_EQ(elements.find("win|pane|pane", host::ElementKind::Control), second);
    EXPECT_EQ(elements.find("pane|pane", host::ElementKind::Control), nullptr);
    EXPECT_EQ(elements.find("pane", host::ElementKind::Control, second), second);
    EXPECT_EQ(elements.find("pane", host::ElementKind::Window), nullptr);
    EXPECT_EQ(elements.uniqueName("pane"), "pane1");
    EXPECT_EQ(MQtUtil::fullName(second), MString("win|pane|pane"));
    delete second;
    EXPECT_EQ(elements.find("win|pane|pane", host::ElementKind::Control), nullptr);
    top.reset();
    EXPECT_EQ(elements.findAny("pane"), nullptr);
    EXPECT_EQ(elements.pathOf(nullptr), "");
}

TEST_F(Interface, DeferredScriptsRunFromTheEventLoop) {
    run("global int $deferredTest = 0; evalDeferred(\"$deferredTest = 1\")");
    EXPECT_EQ(runInt("$deferredTest"), 0);
    EXPECT_TRUE(uitest::waitFor([&] { return runInt("$deferredTest") == 1; }));
}

TEST_F(Interface, EventsOfTheApi) {
    MEvent event = host::EventAccess::make(3, 4, 30, 40, MEvent::kMiddleMouse, MEvent::controlKey,
                                           MEvent::kLeftMouse);
    short x = 0, y = 0;
    event.getPosition(x, y);
    EXPECT_EQ(x, 3);
    EXPECT_EQ(y, 4);
    event.getWindowPosition(x, y);
    EXPECT_EQ(y, 40);
    MStatus status;
    EXPECT_EQ(event.mouseButton(&status), MEvent::kMiddleMouse);
    EXPECT_TRUE(status);
    EXPECT_TRUE(event.isModifierControl());
    EXPECT_FALSE(event.isModifierShift());
    EXPECT_TRUE(event.isModifierLeftMouseButton());
    EXPECT_FALSE(event.isModifierNone());
    event.setModifiers(MEvent::shiftKey);
    EXPECT_TRUE(event.isModifierShift());
    EXPECT_FALSE(event.isModifierControl());
    MEvent().mouseButton(&status);
    EXPECT_FALSE(status) << "no button";
}

TEST_F(Interface, CursorsOfTheApi) {
    EXPECT_EQ(MCursor::crossHairCursor, MCursor(MCursor::crossHairCursor));
    EXPECT_NE(MCursor::crossHairCursor, MCursor::defaultCursor);
    EXPECT_EQ(host::CursorShape::toQt(MCursor::crossHairCursor).shape(), Qt::CrossCursor);
    unsigned char bits[] = {0xff, 0x81, 0x81, 0x81, 0x81, 0x81, 0x81, 0xff};
    const MCursor own(8, 8, 3, 4, bits, bits);
    bits[0] = 0;
    EXPECT_NE(own, MCursor(8, 8, 3, 4, bits, bits)) << "the bits are copied";
    const QCursor shown = host::CursorShape::toQt(own);
    EXPECT_EQ(shown.shape(), Qt::BitmapCursor);
    EXPECT_EQ(shown.hotSpot(), QPoint(3, 4));
}

TEST_F(Interface, TheCurrentToolIsShown) {
    auto* help = window->findChild<QLabel*>("helpLine");
    auto* button = window->findChild<QToolButton*>("currentTool");
    EXPECT_FALSE(button->isVisible());
    EXPECT_EQ(view().cursor().shape(), Qt::ArrowCursor);
    run("recordCtx one; setToolTo one");
    uitest::settle();
    EXPECT_EQ(help->text(), "writes down what happens");
    EXPECT_TRUE(button->isVisible());
    EXPECT_TRUE(button->isChecked());
    EXPECT_EQ(button->toolTip(), "Recording Tool");
    run("setToolTo selectSuperContext");
    EXPECT_FALSE(button->isChecked());
    // The button brings the last tool back.
    moveTo(*button, {10, 10});
    press();
    release();
    EXPECT_EQ(runString("currentCtx"), "one");
    run("global string $gSelect; setToolTo $gSelect");
    host::Tools::instance().remove("one");
    EXPECT_EQ(runInt("contextInfo -exists one"), 0);
}

TEST_F(Interface, PicturesOfMayaAreFoundByTheirNames) {
    const QImage up(":/moveLayerUp.png");
    const QImage down(":/moveLayerDown.png");
    const QImage layer(":/newLayerEmpty.png");
    for (const QImage& image : {up, down, layer}) {
        ASSERT_FALSE(image.isNull());
        EXPECT_TRUE(image.hasAlphaChannel());
        EXPECT_EQ(image.size(), up.size());
    }
    EXPECT_NE(up, down);
    EXPECT_NE(up, layer);
}

TEST_F(Interface, TheFirstComplaintStaysUntilTheUserActs) {
    auto* help = window->findChild<QLabel*>("helpLine");
    const QLineEdit& output = window->scriptLine().output();
    run("recordCtx two; setToolTo two");
    uitest::settle();
    host::report::warning("why");
    host::report::error("(kFailure): Unexpected Internal Failure");
    EXPECT_EQ(help->text(), "Warning: why");
    EXPECT_EQ(output.text(), help->text());
    run("setToolTo selectSuperContext; setToolTo two");
    uitest::settle();
    EXPECT_EQ(help->text(), "Warning: why") << "a tool that is taken again does not hide it";
    host::report::error("something else, later");
    EXPECT_EQ(help->text(), "Error: something else, later");
    EXPECT_EQ(output.text(), help->text());
    moveTo(view(), {100, 100});
    EXPECT_EQ(help->text(), "Error: something else, later");
    press();
    EXPECT_EQ(help->text(), "writes down what happens");
    release();
    run("global string $gSelect; setToolTo $gSelect");
    host::Tools::instance().remove("two");
    uitest::settle();
    const QString selecting = help->text();
    host::report::error("again");
    EXPECT_EQ(help->text(), "Error: again");
    type({Qt::Key_Right});
    EXPECT_EQ(help->text(), selecting);
}

TEST_F(Interface, TimeBarShowsAndSetsTime) {
    auto* bar = window->findChild<host::TimeBar*>();
    QDoubleSpinBox& current = bar->currentField();
    run("currentTime 7");
    EXPECT_EQ(current.value(), 7);
    int changes = 0;
    const int listener = host::events::listen("timeChanged", [&] { ++changes; });
    current.setValue(11);
    EXPECT_EQ(run("currentTime -q").toFloat(), 11);
    EXPECT_EQ(changes, 1);
    host::events::removeListener(listener);
    run("playbackOptions -minTime 5 -maxTime 15");
    EXPECT_EQ(window->timeSlider().firstFrame(), 5);
    EXPECT_EQ(window->timeSlider().lastFrame(), 15);
    for (const QDoubleSpinBox* field : bar->findChildren<QDoubleSpinBox*>())
        EXPECT_THAT(field->value(), testing::AnyOf(5, 15, 11));
    type({Qt::Key_Alt, Qt::Key_Period});
    EXPECT_EQ(current.value(), 12);
    type({Qt::Key_Alt, Qt::Key_Comma});
    EXPECT_EQ(current.value(), 11);
}

TEST_F(Interface, WheelAndPanelsMenus) {
    const auto distance = [this] { return run("getAttr perspShape.centerOfInterest").toFloat(); };
    const double before = distance();
    moveTo(view(), {100, 100});
    hand->wheel(2);
    EXPECT_TRUE(uitest::waitFor([&] { return distance() < before * 0.9; }));
    hand->wheel(-2);
    EXPECT_TRUE(uitest::waitFor([&] { return std::abs(distance() - before) < 1e-6; }));
    EXPECT_EQ(host::Views::instance().active(), &view().view());
    EXPECT_EQ(window->mainPanel().cameraName(), "persp");
    EXPECT_FALSE(window->mainPanel().lookThrough("persp.translateX"));
    EXPECT_FALSE(window->mainPanel().lookThrough(""));
    EXPECT_TRUE(window->mainPanel().lookThrough("frontShape"));
    EXPECT_EQ(window->mainPanel().cameraName(), "front");
}
