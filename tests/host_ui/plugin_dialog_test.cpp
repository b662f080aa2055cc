// Dialogs of a plug-in's own: controls of the host in them, and the keys typed in them.
#include "foundation/UndoQueue.h"
#include "host_ui/UiTest.h"
#include "ui/Elements.h"
#include "ui/Theme.h"
#include "ui/WindowKeys.h"

#include <QApplication>
#include <QColorDialog>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWindow>

#include <maya/MDoubleArray.h>
#include <maya/MQtUtil.h>

#include <array>
#include <cstdio>
#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {

class CountingStep : public host::UndoStep {
public:
    explicit CountingStep(int& undone) : undone_(undone) {}
    bool undo() override {
        ++undone_;
        return true;
    }
    bool redo() override { return true; }

private:
    int& undone_;
};

} // namespace

class PluginDialogs : public uitest::UiTest {
protected:
    void SetUp() override {
        UiTest::SetUp();
        run("global string $heard; $heard = \"\"");
        dialog = new QDialog(MQtUtil::mainWindow());
        dialog->setLayout(new QVBoxLayout);
        dialog->move(600, 30);
    }
    void TearDown() override {
        delete dialog;
        run("if (`window -exists home`) deleteUI home");
        host::undoQueue().flush();
        UiTest::TearDown();
    }
    void show() {
        dialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog));
    }
    void activate() {
        show();
        dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
    }
    /// Makes a color slider as a plug-in has to, in a window of its own, and moves it here.
    QWidget* movedPicker() {
        run("window home; columnLayout homeColumn;"
            "colorSliderGrp -columnWidth3 0 76 0 picker");
        QWidget* picker = MQtUtil::findControl("picker");
        dialog->layout()->addWidget(picker);
        run("deleteUI home");
        return picker;
    }
    void click(const QWidget& widget) {
        hand->click(widget, QPointF(widget.rect().center()) * widget.devicePixelRatioF());
    }

    QPointer<QDialog> dialog;
};

TEST_F(PluginDialogs, AMovedControlIsWhereItsWidgetIs) {
    EXPECT_EQ(errorOf("colorSliderGrp -columnWidth3 0 76 0 picker"),
              "colorSliderGrp: there is no current layout to put it in.");
    run("window home; columnLayout homeColumn; colorSliderGrp picker; columnLayout inner;"
        "setParent homeColumn; window other; columnLayout otherColumn");
    QWidget* picker = MQtUtil::findControl("picker");
    ASSERT_NE(picker, nullptr);
    EXPECT_EQ(MQtUtil::fullName(picker), "home|homeColumn|picker");
    MQtUtil::findLayout("inner")->layout()->addWidget(picker);
    EXPECT_EQ(MQtUtil::fullName(picker), "home|homeColumn|inner|picker");
    EXPECT_EQ(run("columnLayout -q -childArray homeColumn").get<host::script::Strings>(),
              host::script::Strings{"inner"});
    EXPECT_EQ(runInt("control -exists \"home|homeColumn|picker\""), 0) << "its former name";
    MQtUtil::findLayout("otherColumn")->layout()->addWidget(picker);
    EXPECT_EQ(runString("colorSliderGrp -q -fullPathName picker"), "other|otherColumn|picker");

    // A dialog is no element, nor is what is around the control in it: it stands at the top.
    auto* row = new QWidget;
    dialog->layout()->addWidget(row);
    auto* rowLayout = new QVBoxLayout(row);
    rowLayout->addWidget(picker);
    run("deleteUI home other");
    const std::string name = MQtUtil::fullName(picker).asChar();
    EXPECT_EQ(name, "picker");
    EXPECT_EQ(MQtUtil::findControl("picker", dialog), picker);
    EXPECT_EQ(MQtUtil::findControl("picker", window->centralWidget()), nullptr);
    run("colorSliderGrp -e -rgbValue 0.25 0.5 0.75 " + name);
    EXPECT_EQ(run("colorSliderGrp -q -rgbValue picker").get<host::script::Floats>(),
              (host::script::Floats{0.25, 0.5, 0.75}));

    // What made it is free for the next one, and so is the control's name once it is gone.
    EXPECT_THAT(errorOf("window home; columnLayout homeColumn; colorSliderGrp picker"),
                HasSubstr("not unique"));
    EXPECT_EQ(runString("setParent -q"), "home|homeColumn");
    delete row;
    EXPECT_EQ(MQtUtil::findControl("picker"), nullptr);
    EXPECT_EQ(runString("colorSliderGrp picker"), "home|homeColumn|picker");
    QWidget* again = MQtUtil::findControl("picker");
    dialog->layout()->addWidget(again);
    MQtUtil::findWindow("home")->close();
    EXPECT_EQ(runInt("window -exists home"), 0);
    EXPECT_EQ(MQtUtil::findControl("picker"), again);
}

TEST_F(PluginDialogs, TheSwatchFillsItsColumn) {
    QWidget* picker = movedPicker();
    auto* port = picker->findChild<QWidget*>("port");
    auto* slider = picker->findChild<QWidget*>("slider");
    ASSERT_TRUE(port && slider);
    slider->hide();
    port->setFixedHeight(28);
    show();
    for (const int width : {76, MQtUtil::dpiScale(76)}) {
        SCOPED_TRACE(width);
        picker->setFixedWidth(width);
        EXPECT_TRUE(uitest::waitFor([&] { return picker->width() == width; }));
        dialog->layout()->activate();
        picker->layout()->activate();
        EXPECT_EQ(port->geometry(), QRect(0, 0, width, 28));
    }
    picker->setFixedWidth(300);
    picker->layout()->activate();
    EXPECT_EQ(port->width(), MQtUtil::dpiScale(76)) << "no more than its column";
}

TEST_F(PluginDialogs, EveryColourOfEightBitsComesBack) {
    movedPicker();
    std::vector<int> wrong;
    for (int value = 0; value < 256; ++value) {
        std::array<char, 64> script{};
        std::snprintf(script.data(), script.size(), "colorSliderGrp -e -rgbValue %.17g 0 1 picker",
                      value / 255.0);
        run(script.data());
        MDoubleArray rgb;
        ASSERT_TRUE(MGlobal::executeCommand("colorSliderGrp -q -rgbValue picker", rgb));
        ASSERT_EQ(rgb.length(), 3U);
        if (int(rgb[0] * 255) != value || int(rgb[2] * 255) != 255)
            wrong.push_back(value);
    }
    EXPECT_THAT(wrong, testing::IsEmpty());
}

TEST_F(PluginDialogs, AClickOnTheSwatchOpensAChooser) {
    QWidget* picker = movedPicker();
    run("colorSliderGrp -e -rgbValue 0.1 0.2 0.3 -dragCommand \"$heard += \\\"d\\\"\" "
        "-changeCommand \"$heard += \\\"c\\\"\" picker");
    EXPECT_EQ(runString("$heard"), "") << "a script's own change is no choice";
    activate();
    auto* port = picker->findChild<QWidget*>("port");
    const auto chooser = [&] { return picker->findChild<QColorDialog*>(); };
    const auto answer = [&](QDialogButtonBox::StandardButton which) {
        QPointer<QColorDialog> open = chooser();
        click(*open->findChild<QDialogButtonBox*>()->button(which));
        EXPECT_TRUE(uitest::waitFor([&] { return !open; })) << "it closes";
    };
    const auto opens = [&] {
        click(*port);
        return uitest::waitFor([&] { return chooser() && chooser()->isVisible(); }) &&
               QTest::qWaitForWindowExposed(chooser());
    };
    const auto colour = [&] {
        return run("colorSliderGrp -q -rgbValue picker").get<host::script::Floats>();
    };
    // Let go elsewhere, the press was no click.
    moveTo(*port, {5, 5});
    press();
    moveTo(*port, {5, -40});
    release();
    EXPECT_EQ(chooser(), nullptr);

    ASSERT_TRUE(opens());
    EXPECT_EQ(chooser()->windowModality(), Qt::WindowModal);
    EXPECT_EQ(chooser()->windowHandle()->transientParent(), dialog->windowHandle());
    chooser()->setCurrentColor(QColor(64, 100, 15));
    EXPECT_EQ(runString("$heard"), "d");
    answer(QDialogButtonBox::Ok);
    EXPECT_EQ(runString("$heard"), "dc");
    const host::script::Floats chosen = colour();
    EXPECT_EQ((std::vector<int>{int(chosen[0] * 255), int(chosen[1] * 255), int(chosen[2] * 255)}),
              (std::vector<int>{64, 100, 15}));

    run("$heard = \"\"");
    ASSERT_TRUE(opens());
    chooser()->setCurrentColor(Qt::red);
    answer(QDialogButtonBox::Cancel);
    EXPECT_EQ(runString("$heard"), "dc") << "the old color is back";
    EXPECT_EQ(colour(), chosen);

    // It goes with the dialog, and the click that opened it is over.
    ASSERT_TRUE(opens());
    delete dialog;
    EXPECT_EQ(runInt("control -exists picker"), 0);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(PluginDialogs, HaveTheColoursOfTheMainWindow) {
    const QPalette before = QApplication::palette();
    host::theme::apply(*qApp);
    auto* field = new QLineEdit(dialog);
    show();
    for (const QWidget* widget : std::initializer_list<QWidget*>{window.get(), dialog, field}) {
        SCOPED_TRACE(widget->metaObject()->className());
        EXPECT_EQ(widget->palette().color(QPalette::Mid), QColor(0x36, 0x36, 0x36));
        EXPECT_EQ(widget->palette().color(QPalette::Midlight), QColor(0x4e, 0x4e, 0x4e));
        EXPECT_EQ(widget->palette().color(QPalette::Highlight), QColor(0x52, 0x85, 0xa6));
        EXPECT_EQ(widget->palette().color(QPalette::HighlightedText), QColor(Qt::white));
    }
    EXPECT_EQ(dialog->windowHandle()->transientParent(), window->windowHandle());
    qApp->setStyleSheet({});
    QApplication::setPalette(before);
}

TEST_F(PluginDialogs, OneWithoutFocusLeavesTheKeysToTheView) {
    auto* button = new QPushButton(QStringLiteral("tool"), dialog);
    button->setFocusPolicy(Qt::NoFocus);
    dialog->layout()->addWidget(button);
    dialog->setWindowFlag(Qt::WindowDoesNotAcceptFocus);
    dialog->setAttribute(Qt::WA_ShowWithoutActivating);
    int clicks = 0;
    QObject::connect(button, &QPushButton::clicked, dialog, [&] { ++clicks; });
    int undone = 0;
    host::undoQueue().flush();
    host::undoQueue().record(std::make_unique<CountingStep>(undone));
    view().setFocus();
    show();
    click(*button);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(QApplication::activeWindow(), window.get());
    EXPECT_TRUE(view().hasFocus());
    type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_EQ(undone, 1);
    run("currentTime 5");
    type({Qt::Key_Alt, Qt::Key_Period});
    EXPECT_EQ(runInt("currentTime -q"), 6);
    key(Qt::Key_Backslash, true);
    EXPECT_TRUE(host::PanZoomKey::instance().isHeld());
    key(Qt::Key_Backslash, false);
    EXPECT_FALSE(host::PanZoomKey::instance().isHeld());
}

TEST_F(PluginDialogs, OneWithTheFocusKeepsWhatIsTypedAndPassesHotkeysOn) {
    auto* field = new QLineEdit(dialog);
    auto* button = new QPushButton(QStringLiteral("button"), dialog);
    dialog->layout()->addWidget(field);
    dialog->layout()->addWidget(button);
    button->setAutoDefault(false);
    int undone = 0;
    host::undoQueue().flush();
    for (int i = 0; i < 4; ++i)
        host::undoQueue().record(std::make_unique<CountingStep>(undone));
    activate();
    click(*field);
    type({Qt::Key_Z});
    type({Qt::Key_Q});
    type({Qt::Key_Backslash});
    EXPECT_EQ(field->text(), "zq\\");
    EXPECT_FALSE(host::PanZoomKey::instance().isHeld());
    type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_EQ(field->text(), "");
    type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_EQ(undone, 0) << "the field has nothing to undo, but it is the field's key";
    run("currentTime 5");
    type({Qt::Key_Alt, Qt::Key_Period});
    EXPECT_EQ(runInt("currentTime -q"), 6);

    button->setFocus();
    type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_EQ(undone, 1);
    type({Qt::Key_Z});
    EXPECT_EQ(undone, 2);
    // Held in the dialog, the key still pans once the pointer is pressed in the view, and is over
    // when it is let go there.
    auto& panZoom = host::PanZoomKey::instance();
    key(Qt::Key_Backslash, true);
    EXPECT_TRUE(panZoom.isHeld());
    moveTo(view(), {60, 60});
    press();
    window->activateWindow(); // as a window manager does on a click
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    EXPECT_TRUE(panZoom.isHeld());
    moveTo(view(), {80, 60});
    release();
    key(Qt::Key_Backslash, false);
    EXPECT_FALSE(panZoom.isHeld());
    EXPECT_EQ(runInt("getAttr perspShape.panZoomEnabled"), 1) << "the drag was a pan";

    // A question takes the keys for itself.
    QDialog question(dialog);
    question.setModal(true);
    question.move(600, 300);
    question.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&question));
    question.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&question));
    type({Qt::Key_Control, Qt::Key_Z});
    key(Qt::Key_Backslash, true);
    EXPECT_FALSE(panZoom.isHeld());
    key(Qt::Key_Backslash, false);
    EXPECT_EQ(undone, 2);
}
