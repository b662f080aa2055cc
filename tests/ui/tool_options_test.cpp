// The tool options under the user's hand.
#include "ui/MainWindow.h"
#include "ui/PanelSession.h"
#include "ui/ViewWidget.h"

#include <QApplication>
#include <QCheckBox>
#include <QFontComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSettings>
#include <QSlider>
#include <QSpinBox>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTest>

#include <gmock/gmock.h>

namespace vellum::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ToolOptionsPanel : public PanelSession {
protected:
    void SetUp() override {
        PanelSession::SetUp();
        ASSERT_TRUE(run(QStringLiteral(
            "rvVellumUtil -pencilOptions 6 90 0; rvVellumUtil -brushOptions 80 50 30 1;"
            "rvVellumUtil -lineOptions 7 60; rvVellumUtil -brushTool")));
        dialog = open("-toolOptions", "ToolOptionsDialog");
        ASSERT_TRUE(dialog);
        dialog->move(450, 300);
        support::settle();
        echoes.clear();
    }

    template <class Widget> Widget& child(const QString& name) {
        auto* found = dialog->findChild<Widget*>(name);
        EXPECT_TRUE(found) << name.toStdString();
        return *found;
    }
    QSpinBox& box(const char* option) {
        return child<QSpinBox>(QLatin1String(option) + QStringLiteral("SpinBox"));
    }
    QSlider& slider(const char* option) {
        return child<QSlider>(QLatin1String(option) + QStringLiteral("Slider"));
    }
    QCheckBox& tablet() { return *dialog->findChild<QCheckBox*>(); }
    QFontComboBox& fonts() { return *dialog->findChild<QFontComboBox*>(); }

    QPointF handle(QSlider& of) {
        QStyleOptionSlider option;
        option.initFrom(&of);
        option.orientation = Qt::Horizontal;
        option.minimum = of.minimum();
        option.maximum = of.maximum();
        option.sliderPosition = of.sliderPosition();
        option.sliderValue = of.value();
        const QRect rect =
            of.style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, &of);
        return QRectF(rect).center() * of.devicePixelRatioF();
    }

    void type(const QString& text) {
        for (const QChar c : text)
            hand.type({static_cast<Qt::Key>(c.toUpper().unicode())});
    }

    QDialog* dialog = nullptr;
};

TEST_F(ToolOptionsPanel, EachToolHasItsRows) {
    const struct {
        const char* flag;
        const char* title;
        int largest;
        bool opacity;
        bool tablet;
        bool font;
    } rows[] = {
        {"-brushTool", "Brush Options", 100, true, true, false},
        {"-lineTool", "Line Options", 50, true, false, false},
        {"-textTool", "Text Options", 100, true, false, true},
        {"-eraserTool", "Eraser Options", 100, false, false, false},
        {"-pencilTool", "Pencil Options", 100, true, true, false},
        {"-textTool", "Text Options", 100, true, false, true},
        {"-arrowTool", "Arrow Options", 50, true, false, false},
        {"-ellipseTool", "Ellipse Options", 50, true, false, false},
        {"-rectangleTool", "Rectangle Options", 50, true, false, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.flag);
        ASSERT_TRUE(run(QStringLiteral("rvVellumUtil %1").arg(row.flag)));
        EXPECT_EQ(dialog->windowTitle(), QString(row.title));
        EXPECT_EQ(box("size").maximum(), row.largest);
        EXPECT_EQ(slider("size").maximum(), row.largest);
        EXPECT_EQ(box("opacity").isVisible(), row.opacity);
        EXPECT_EQ(slider("opacity").isVisible(), row.opacity);
        EXPECT_EQ(tablet().isVisible(), row.tablet);
        EXPECT_EQ(fonts().isVisible(), row.font);
        QStringList labels;
        for (const QLabel* label : dialog->findChildren<QLabel*>()) {
            if (label->isVisible() && !label->text().isEmpty())
                labels.append(label->text());
        }
        labels.sort();
        QStringList expected{QStringLiteral("Size:")};
        if (row.font)
            expected.prepend(QStringLiteral("Font:"));
        if (row.opacity)
            expected.insert(expected.size() - 1, QStringLiteral("Opacity:"));
        EXPECT_EQ(labels, expected);
    }
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -lineTool")));
    EXPECT_EQ(box("size").value(), 7);
    EXPECT_EQ(slider("opacity").value(), 60);
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -brushTool")));
    EXPECT_EQ(box("size").value(), 80);
    EXPECT_TRUE(tablet().isChecked());
}

// A number of the settings file that names no tool.
TEST_F(ToolOptionsPanel, NoToolHasNoOptions) {
    ASSERT_TRUE(run(QStringLiteral("file -f -new; setToolTo selectSuperContext; file -f -new")));
    unloadPlugin();
    QSettings(text(QStringLiteral("internalVar -userPrefDir")) + QStringLiteral("/vellum2.ini"),
              QSettings::IniFormat)
        .setValue(QStringLiteral("tools/activeTool"), 8);
    loadPlugin();
    dialog = open("-toolOptions", "ToolOptionsDialog");
    ASSERT_TRUE(dialog);
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Unknown Options"));
    echoes.clear();
    slider("size").setValue(50);
    EXPECT_THAT(echoes, IsEmpty());
    EXPECT_THAT(errors, IsEmpty());
}

TEST_F(ToolOptionsPanel, ControlsIssueTheOptionsOfTheActiveTool) {
    QSlider& size = slider("size");
    hand.moveTo(size, handle(size));
    hand.press();
    int last = size.value();
    for (int step = 1; step <= 6; ++step) {
        hand.moveTo(size, handle(size) + QPointF(6, 0));
        EXPECT_EQ(box("size").value(), size.value());
    }
    hand.release();
    EXPECT_GT(size.value(), last);
    ASSERT_FALSE(echoes.isEmpty());
    for (const QString& echo : echoes) { // one a step, each larger than the one before
        const int value = echo.section(' ', 2, 2).toInt();
        EXPECT_EQ(echo, QStringLiteral("rvVellumUtil -brushOptions %1 50 30 1").arg(value));
        EXPECT_GT(value, last);
        last = value;
    }
    EXPECT_EQ(last, size.value());
    EXPECT_TRUE(viewHasKeyboard()) << "after a drag";

    echoes.clear();
    click(tablet());
    EXPECT_THAT(echoes,
                ElementsAre(QStringLiteral("rvVellumUtil -brushOptions %1 50 30 0").arg(last)));
    EXPECT_TRUE(viewHasKeyboard()) << "after the check box";

    echoes.clear();
    click(box("opacity"));
    box("opacity").selectAll();
    type(QStringLiteral("64"));
    EXPECT_THAT(echoes, IsEmpty()) << "while it is typed";
    hand.type({Qt::Key_Return});
    EXPECT_THAT(echoes,
                ElementsAre(QStringLiteral("rvVellumUtil -brushOptions %1 64 30 0").arg(last)));
    EXPECT_EQ(slider("opacity").value(), 64);
    EXPECT_TRUE(viewHasKeyboard()) << "after Enter";

    echoes.clear();
    hand.moveTo(box("opacity"), {10, 5});
    hand.wheel(1); // as on the slider beside it: what is shown is always set
    EXPECT_EQ(echoes.size(), 1);
    EXPECT_EQ(box("opacity").value(), slider("opacity").value());
}

TEST_F(ToolOptionsPanel, FieldsAreLeftWithoutACommandWhenNothingChanged) {
    click(box("size"));
    hand.type({Qt::Key_Return});
    click(box("size"));
    box("size").selectAll();
    type(QStringLiteral("33"));
    hand.type({Qt::Key_Escape});
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(box("size").value(), 80);
    EXPECT_TRUE(viewHasKeyboard()) << "after Escape";
    EXPECT_THAT(echoes, IsEmpty());

    // A value that has been typed is taken when the view is clicked.
    click(box("size"));
    box("size").selectAll();
    type(QStringLiteral("12"));
    hand.moveTo(*dialog, {5, 5});
    hand.press();
    hand.release();
    EXPECT_THAT(echoes, ElementsAre(QStringLiteral("rvVellumUtil -brushOptions 12 50 30 1")));
    EXPECT_TRUE(viewHasKeyboard());
}

// A click on another panel takes the number first, for the tool that it was typed for.
TEST_F(ToolOptionsPanel, WhatIsTypedIsTakenBeforeTheNextAction) {
    QDialog* toolbox = open("-toolbox", "ToolboxDialog");
    ASSERT_TRUE(toolbox);
    toolbox->move(300, 60);
    support::settle();
    hand.click(box("size"), {8, 8});
    hand.type({Qt::Key_Control, Qt::Key_A});
    type(QStringLiteral("55"));
    echoes.clear();
    for (QLabel* button : toolbox->findChildren<QLabel*>()) {
        if (button->toolTip() == QStringLiteral("Line"))
            click(*button);
    }
    EXPECT_THAT(echoes, ElementsAre(QStringLiteral("rvVellumUtil -brushOptions 55 50 30 1"),
                                    QStringLiteral("rvVellumUtil -lineTool")));
    EXPECT_EQ(box("size").value(), 7);
    EXPECT_TRUE(viewHasKeyboard());
}

TEST_F(ToolOptionsPanel, EveryTypedFontIsSetAndEscapeRestoresTheFirst) {
    ASSERT_TRUE(
        run(QStringLiteral("rvVellumUtil -textTool; rvVellumUtil -textOptions 20 100 Arial")));
    echoes.clear();
    const QString shown = fonts().currentText();
    click(*fonts().lineEdit());
    fonts().lineEdit()->selectAll();
    type(QStringLiteral("xq"));
    EXPECT_THAT(echoes, ElementsAre(QStringLiteral("rvVellumUtil -textOptions 20 100 \"x\""),
                                    QStringLiteral("rvVellumUtil -textOptions 20 100 \"xq\"")));
    EXPECT_EQ(fonts().currentText(), QStringLiteral("xq"));
    hand.type({Qt::Key_Backspace});
    hand.type({Qt::Key_Backspace}); // nothing is left: no font
    EXPECT_EQ(echoes.size(), 3);
    echoes.clear();
    hand.type({Qt::Key_Escape});
    EXPECT_THAT(echoes, ElementsAre(QStringLiteral("rvVellumUtil -textOptions 20 100 \"Arial\"")));
    EXPECT_EQ(fonts().currentText(), shown);
    EXPECT_TRUE(viewHasKeyboard());

    // From the list, which the case of the name does not matter for.
    ASSERT_GT(fonts().count(), 1);
    const QString entry = fonts().itemText(1);
    ASSERT_TRUE(
        run(QStringLiteral("rvVellumUtil -textOptions 20 100 \"%1\"").arg(entry.toUpper())));
    EXPECT_EQ(fonts().currentText(), entry);
    echoes.clear();
    hand.moveTo(fonts(), QPointF(fonts().width() - 8, fonts().height() / 2.0));
    hand.press();
    hand.release();
    ASSERT_TRUE(support::waitFor([] { return QApplication::activePopupWidget() != nullptr; }));
    hand.type({Qt::Key_Up});
    hand.type({Qt::Key_Return});
    EXPECT_THAT(
        echoes,
        ElementsAre(
            QStringLiteral("rvVellumUtil -textOptions 20 100 \"%1\"").arg(fonts().itemText(0))));
    EXPECT_TRUE(viewHasKeyboard());
}

TEST_F(ToolOptionsPanel, FollowsTheHandInTheViewAndAnswersNothing) {
    ASSERT_TRUE(viewHasKeyboard());
    for (const auto& [key, option] :
         {std::pair(Qt::Key_B, "size"), std::pair(Qt::Key_M, "opacity")}) {
        const int before = box(option).value();
        hand.moveTo(view(), {200, 200});
        hand.key(key, true);
        hand.press();
        for (int x = 190; x >= 150; x -= 10) {
            hand.moveTo(view(), QPointF(x, 200));
            EXPECT_EQ(box(option).value(), before + (x - 200) / 10);
            EXPECT_EQ(slider(option).value(), box(option).value());
        }
        hand.release();
        hand.key(key, false);
    }
    EXPECT_THAT(echoes, IsEmpty());
    EXPECT_THAT(errors, IsEmpty());
}

} // namespace
} // namespace vellum::test
