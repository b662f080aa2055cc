// Controls as scripts make them, and the jobs that hang on windows.
#include "host_ui/UiTest.h"
#include "support/Sure.h"
#include "ui/ColorSliderGroup.h"
#include "ui/Elements.h"
#include "ui/OptionMenu.h"

#include <QColorDialog>
#include <QComboBox>
#include <QMenu>
#include <QSlider>
#include <QTimer>

#include <maya/MQtUtil.h>

#include <gmock/gmock.h>

using support::sure;
using testing::HasSubstr;

class Controls : public uitest::UiTest {
protected:
    void SetUp() override {
        UiTest::SetUp();
        run("scriptJob -ka -f; window -wh 320 200 -tlc 20 500 win; columnLayout -adj true col;"
            "global string $heard; $heard = \"\"");
    }
    void TearDown() override {
        run("if (`window -exists win`) deleteUI win");
        UiTest::TearDown();
    }
    void showWindow() {
        run("showWindow win");
        QWidget* own = MQtUtil::findWindow("win");
        ASSERT_TRUE(QTest::qWaitForWindowExposed(own));
        own->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(own));
        uitest::settle();
    }
    template <class Widget> Widget* control(const char* name) {
        return qobject_cast<Widget*>(MQtUtil::findControl(name));
    }
};

TEST_F(Controls, AnOptionMenuShowsItsItemsAndTellsOfChoices) {
    EXPECT_EQ(runString("optionMenu -l Colour -cc \"$heard += \\\"#1;\\\"\" option"),
              "win|col|option");
    EXPECT_EQ(runInt("optionMenu -q -select option"), 0);
    EXPECT_EQ(runString("menuItem -label Red -command \"$heard += \\\"never\\\"\" red"),
              "win|col|option|red");
    run("menuItem -label Green green; menuItem -label Blue -enable false blue");
    showWindow();
    auto* option = control<host::OptionMenu>("option");
    ASSERT_NE(option, nullptr);
    QComboBox& box = option->box();
    EXPECT_EQ(box.currentText(), "Red");
    EXPECT_EQ(runInt("optionMenu -e -sl 2 option; optionMenu -q -sl option"), 2);
    EXPECT_EQ(runString("optionMenu -q -v option; "), "Green");
    EXPECT_EQ(runString("$heard"), "") << "an edit runs no command";
    box.setFocus();
    type({Qt::Key_Up});
    EXPECT_EQ(runString("$heard"), "Red;");
    type({Qt::Key_Up});
    EXPECT_EQ(runString("$heard"), "Red;") << "no other item";
    type({Qt::Key_End});
    EXPECT_EQ(runString("optionMenu -q -v option"), "Green") << "the last one is disabled";
    for (const char* wrong : {"-sl 3", "-sl 0", "-sl 9", "-v Blue", "-v Grey"})
        EXPECT_THAT(errorOf("optionMenu -e " + std::string(wrong) + " option"),
                    HasSubstr("Item not found: "))
            << wrong;
    EXPECT_EQ(runString("optionMenu -q -v option"), "Green");
    EXPECT_EQ(run("optionMenu -q -ils option").get<host::script::Strings>(),
              (host::script::Strings{"red", "green", "blue"}));
    run("menuItem -e -label Lime green; deleteUI -mi red");
    EXPECT_EQ(box.count(), 2);
    EXPECT_EQ(runString("menuItem -p option -l Last; optionMenu -e -v Last option;"
                        "optionMenu -q -value option"),
              "Last");
    run("optionMenu -e -dai option");
    EXPECT_EQ(runInt("optionMenu -q -ni option"), 0);
    EXPECT_EQ(runString("optionMenu -q -v option"), "");
}

TEST_F(Controls, AColourIsSeenUnderAStyleSheetToo) {
    run("colorSliderGrp -rgb 0 0.5 0 ink");
    QWidget styled;
    styled.setStyleSheet("QWidget { background: #444444; }");
    QWidget* group = MQtUtil::findControl("ink");
    ASSERT_NE(group, nullptr);
    group->setParent(&styled);
    styled.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&styled));
    const auto* port = group->findChild<QWidget*>("port");
    ASSERT_NE(port, nullptr);
    const QPoint middle = port->mapTo(&styled, port->rect().center());
    EXPECT_EQ(styled.grab().toImage().pixelColor(middle), QColor(0, 128, 0));
}

TEST_F(Controls, AColourSliderKeepsItsColourAndTellsOfDrags) {
    run("colorSliderGrp -l Ink -rgb 0.2 0.4 0.8 -cc \"$heard += \\\"c\\\"\" "
        "-dc \"$heard += \\\"d\\\"\" ink");
    EXPECT_EQ(run("colorSliderGrp -q -rgbValue ink").get<host::script::Floats>(),
              (host::script::Floats{0.2, 0.4, 0.8}));
    const auto hsv = run("colorSliderGrp -q -hsv ink").get<host::script::Floats>();
    EXPECT_NEAR(hsv[0], 220, 1e-9);
    EXPECT_NEAR(hsv[1], 0.75, 1e-9);
    EXPECT_NEAR(hsv[2], 0.8, 1e-9);
    showWindow();
    QWidget* group = MQtUtil::findControl("ink");
    auto* slider = group->findChild<QSlider*>("slider");
    auto* port = group->findChild<QWidget*>("port");
    ASSERT_TRUE(slider && port);
    EXPECT_EQ(port->palette().color(port->backgroundRole()), QColor(51, 102, 204));
    // From the handle to the left end and back: the hue outlives black.
    const double y = slider->height() / 2.0;
    const double handle = 6 + 0.8 * (slider->width() - 12);
    moveTo(*slider, {handle, y});
    press();
    moveTo(*slider, {slider->width() / 2.0, y});
    EXPECT_THAT(runString("$heard"), testing::StartsWith("d"));
    moveTo(*slider, {0, y});
    release();
    EXPECT_THAT(runString("$heard"), testing::EndsWith("dc"));
    EXPECT_EQ(run("colorSliderGrp -q -rgb ink").get<host::script::Floats>(),
              (host::script::Floats{0, 0, 0}));
    slider->setValue(500); // as a key or the wheel does
    const auto rgb = run("colorSliderGrp -q -rgb ink").get<host::script::Floats>();
    EXPECT_NEAR(rgb[0], 0.125, 1e-9);
    EXPECT_NEAR(rgb[2], 0.5, 1e-9);

    run("$heard = \"\"; colorSliderGrp -e -hsvValue 120 1 0.5 ink");
    EXPECT_EQ(run("colorSliderGrp -q -rgb ink").get<host::script::Floats>(),
              (host::script::Floats{0, 0.5, 0}));
    EXPECT_EQ(runString("$heard"), "");
    moveTo(*port, {5, 5});
    press();
    release();
    auto* dialog = group->findChild<QColorDialog*>();
    ASSERT_NE(dialog, nullptr);
    dialog->setCurrentColor(Qt::red);
    EXPECT_EQ(runString("$heard"), "d");
    dialog->reject();
    EXPECT_EQ(runString("$heard"), "dc") << "back to what it was";
    EXPECT_EQ(run("colorSliderGrp -q -rgb ink").get<host::script::Floats>(),
              (host::script::Floats{0, 0.5, 0}));

    EXPECT_EQ(errorOf("colorSliderGrp -e -rgb 1 0 ink"),
              "Flag '-rgb' must be passed 3 arguments; argument 3 is not a float");
    EXPECT_EQ(errorOf("colorSliderGrp -q -rgb nobody"), "Object 'nobody' not found.");
    EXPECT_EQ(errorOf("colorSliderGrp -shine ink"), "Invalid flag '-shine'.");
    EXPECT_THAT(errorOf("colorSliderGrp -cw 7 20 other"), HasSubstr("column 7"));
    EXPECT_EQ(runInt("control -exists other"), 0) << "a wrong call leaves nothing behind";
}

TEST_F(Controls, CommandsMayDeleteWhatTheyBelongTo) {
    run("colorSliderGrp -dc \"deleteUI win; window win; columnLayout inner\" ink;"
        "optionMenu -cc \"deleteUI col\" option; menuItem -l A; menuItem -l B");
    showWindow();
    QComboBox& box = control<host::OptionMenu>("option")->box();
    box.setFocus();
    type({Qt::Key_Down});
    EXPECT_EQ(runInt("layout -exists col"), 0);
    EXPECT_EQ(runInt("control -exists ink"), 0);
    EXPECT_EQ(errorOf("optionMenu late"), "optionMenu: there is no current layout to put it in.");
    EXPECT_THAT(errorOf("menuItem late"), HasSubstr("no current menu"));
    run("setParent win; columnLayout col; colorSliderGrp -dc \"deleteUI win; window win\" ink");
    uitest::settle();
    auto* slider = sure(MQtUtil::findControl("ink")).findChild<QSlider*>("slider");
    ASSERT_NE(slider, nullptr);
    slider->setSliderDown(true);
    slider->setValue(700);
    EXPECT_EQ(runInt("control -exists ink"), 0);
    EXPECT_EQ(runInt("window -exists win"), 1) << "the new one of that name";
    uitest::settle();
    EXPECT_EQ(runInt("window -exists win"), 1);
    // The closing command of a window that deletes it, and one that deletes itself while open.
    run("deleteUI win; window -ret -cc \"deleteUI win\" win; showWindow win");
    sure(MQtUtil::findWindow("win")).close();
    uitest::settle();
    EXPECT_EQ(runInt("window -exists win"), 0);
    for (const char* part : {"modelPanel4", "viewPanes", "timeControl1", "mainWindowLayout"})
        EXPECT_THAT(errorOf("deleteUI " + std::string(part)), HasSubstr("part of the main window"))
            << part;
}

TEST_F(Controls, JobsEndAndRunWithTheirWindows) {
    run("columnLayout -p win lower; scriptJob -p win -e Undo \"$heard += \\\"undo\\\"\";"
        "scriptJob -uid win \"$heard += \\\"gone\\\"\"; scriptJob -uid lower \"$heard += \\\"low "
        "\\\"\";"
        "scriptJob -p MayaWindow -e Undo \"$heard += \\\"main\\\"\"");
    EXPECT_EQ(errorOf("scriptJob -p nobody -e Undo \"\""), "Object 'nobody' not found.");
    EXPECT_EQ(errorOf("scriptJob -uid nobody \"\""), "Object 'nobody' not found.");
    showWindow();
    sure(MQtUtil::findWindow("win")).close(); // by the user
    ASSERT_TRUE(uitest::waitFor([&] { return runString("$heard").size() >= 8; }, 3000));
    EXPECT_THAT(runString("$heard"), testing::AnyOf("gonelow ", "low gone"));
    run("$heard = \"\"; createNode transform; undo");
    ASSERT_TRUE(uitest::waitFor([&] { return !runString("$heard").empty(); }, 3000));
    EXPECT_EQ(runString("$heard"), "main");
    EXPECT_EQ(runInt("size(`scriptJob -lj`)"), 1);
    run("scriptJob -ka");
}

TEST_F(Controls, WorkThatPostsItselfLeavesTheProgramAlive) {
    run("global int $rounds; $rounds = 0;"
        "global proc again() { global int $rounds; if (++$rounds < 100000) evalDeferred again; }"
        "again");
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&ticks] { ++ticks; });
    timer.start(1);
    ASSERT_TRUE(uitest::waitFor([&] { return ticks > 3 && runInt("$rounds") > 3; }, 10000));
    EXPECT_LT(runInt("$rounds"), 100000) << "timers ran in between";
    run("$rounds = 100000");
    uitest::settle();
}
