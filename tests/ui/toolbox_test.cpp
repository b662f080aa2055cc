// The toolbox under the user's hand.
#include "ui/ToolboxSession.h"
#include "ui/ViewWidget.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QScreen>
#include <QSpinBox>

#include <maya/MQtUtil.h>

#include <gmock/gmock.h>

namespace vellum::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(Toolbox, ButtonsStandInOrderAndIssueTheirCommand) {
    const struct {
        const char* toolTip;
        const char* command;
        QStringList lit;
    } rows[] = {
        {"Pencil", "rvVellumUtil -pencilTool", {"Pencil"}},
        {"Brush", "rvVellumUtil -brushTool", {"Brush"}},
        {"Eraser", "rvVellumUtil -eraserTool", {"Eraser"}},
        {"Text", "rvVellumUtil -textTool", {"Text"}},
        {"Line", "rvVellumUtil -lineTool", {"Line"}},
        {"Arrow", "rvVellumUtil -arrowTool", {"Arrow"}},
        {"Ellipse", "rvVellumUtil -ellipseTool", {"Ellipse"}},
        {"Rectangle", "rvVellumUtil -rectangleTool", {"Rectangle"}},
        {"Ghost Previous", "rvVellumUtil -e -ghostPrevious 1", {"Rectangle", "Ghost Previous"}},
        {"Ghost Next",
         "rvVellumUtil -e -ghostNext 1",
         {"Rectangle", "Ghost Previous", "Ghost Next"}},
        {"Ghost Previous", "rvVellumUtil -e -ghostPrevious 0", {"Rectangle", "Ghost Next"}},
        {"Ghost Next", "rvVellumUtil -e -ghostNext 0", {"Rectangle"}},
        {"Insert Frame(s)", "rvVellumFrame -insert", {"Rectangle"}},
        {"Duplicate Key", "rvVellumFrame -duplicate", {"Rectangle"}},
        {"Copy Frame(s)", "rvVellumFrame -copy", {"Rectangle"}},
        {"Cut Frame(s)", "rvVellumFrame -cut", {"Rectangle"}},
        {"Paste Frame(s)", "rvVellumFrame -paste", {"Rectangle"}},
        {"Delete Frame(s)", "rvVellumFrame -delete", {"Rectangle"}},
    };
    ASSERT_TRUE(run(QStringLiteral("rvVellumLayer -addLayer persp")));
    EXPECT_EQ(buttons().join('|'),
              QStringLiteral("Pencil|Brush|Eraser|Text|Line|Arrow|Ellipse|Rectangle|"
                             "Ghost Previous|Ghost Next|Insert Frame(s)|Duplicate Key|"
                             "Delete Frame(s)|Cut Frame(s)|Copy Frame(s)|Paste Frame(s)"));
    EXPECT_EQ(box->windowTitle(), QStringLiteral(" "));
    for (const auto& row : rows) {
        SCOPED_TRACE(row.toolTip);
        echoes.clear();
        click(button(row.toolTip));
        EXPECT_THAT(echoes, ElementsAre(QString(row.command)));
        EXPECT_EQ(lit(), row.lit);
        EXPECT_TRUE(viewHasKeyboard());
    }
}

TEST_F(Toolbox, ClicksAndCommandsMakeTheSameScene) {
    const auto work = [this](bool byHand) {
        const auto act = [&](const char* toolTip, const char* flag) {
            if (byHand)
                click(button(toolTip));
            else
                ASSERT_TRUE(run(QStringLiteral("rvVellumFrame %1").arg(flag)));
        };
        ASSERT_TRUE(run(QStringLiteral("file -f -new; rvVellumUtil -draw; currentTime 1;"
                                       "rvVellumNode -exists; rvVellumLayer -addLayer persp")));
        act("Insert Frame(s)", "-insert");
        ASSERT_TRUE(run(QStringLiteral("currentTime 4")));
        act("Duplicate Key", "-duplicate");
        act("Copy Frame(s)", "-copy");
        ASSERT_TRUE(run(QStringLiteral("currentTime 9")));
        act("Paste Frame(s)", "-paste");
        act("Insert Frame(s)", "-insert");
        ASSERT_TRUE(run(QStringLiteral("currentTime 4")));
        act("Cut Frame(s)", "-cut");
        ASSERT_TRUE(run(QStringLiteral("currentTime 1")));
        act("Delete Frame(s)", "-delete");
    };
    work(false);
    const QByteArray byCommands = saved();
    work(true);
    EXPECT_EQ(saved(), byCommands);
}

TEST_F(Toolbox, InsertWithoutADrawingMakesOneWhenIdle) {
    ASSERT_TRUE(run(QStringLiteral("setToolTo selectSuperContext; file -f -new")));
    ASSERT_EQ(number(QStringLiteral("rvVellumNode -exists")), 0);
    echoes.clear();
    click(button(QStringLiteral("Insert Frame(s)")));
    ASSERT_TRUE(
        support::waitFor([&] { return number(QStringLiteral("rvVellumNode -exists")) == 1; }));
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count persp")), 1);
    EXPECT_THAT(echoes, testing::Not(Contains(QStringLiteral("rvVellumFrame -insert"))));
}

TEST_F(Toolbox, KeysWorkRightAfterAClick) {
    const char* const viewport = "vp2Renderer";
    const char* const legacy = "base_OpenGL_Renderer";
    for (const auto& [toolTip, renderer] :
         {std::pair("Brush", viewport), std::pair("Ghost Next", legacy),
          std::pair("Duplicate Key", viewport), std::pair("Insert Frame(s)", legacy),
          std::pair("Copy Frame(s)", viewport)}) {
        SCOPED_TRACE(toolTip);
        ASSERT_TRUE(run(QStringLiteral("modelEditor -e -rendererName \"%1\" `getPanel -withFocus`;"
                                       "rvVellumUtil -brushOptions 20 90 100 0; polyCube -name a")
                            .arg(renderer)));
        click(button(toolTip));
        hand.type({Qt::Key_Control, Qt::Key_Z});
        EXPECT_TRUE(support::waitFor([&] { return number(QStringLiteral("objExists a")) == 0; }));
        click(button(toolTip));
        dragInView(Qt::Key_B);
        dragInView(Qt::Key_M);
        // A new size and opacity are what the pop-up shows; no stroke was drawn.
        click(button(QStringLiteral("Brush")), Qt::RightButton);
        ASSERT_TRUE(popUp());
        EXPECT_GT(popUp()->findChild<QSpinBox*>(QStringLiteral("sizeSpinBox"))->value(), 20);
        EXPECT_GT(popUp()->findChild<QSpinBox*>(QStringLiteral("opacitySpinBox"))->value(), 90);
        hand.type({Qt::Key_Escape});
        EXPECT_FALSE(popUp());
        EXPECT_TRUE(box->isVisible());
        const int before = now();
        hand.type({Qt::Key_Alt, Qt::Key_Period});
        EXPECT_TRUE(support::waitFor([&] { return now() != before; })) << "time key";
    }
}

TEST_F(Toolbox, RightClickOpensTheOptionsOfTheToolUnderIt) {
    ASSERT_TRUE(viewHasKeyboard());
    for (const char* tool : {"Line", "Eraser", "Text"}) {
        SCOPED_TRACE(tool);
        QLabel& label = button(tool);
        click(label, Qt::RightButton);
        ASSERT_TRUE(popUp());
        EXPECT_EQ(popUp()->windowTitle(), QStringLiteral("%1 Options").arg(tool));
        const int gap = MQtUtil::dpiScale(2);
        EXPECT_EQ(popUp()->pos(), label.mapToGlobal(QPoint(label.height() + gap, gap)));
        EXPECT_EQ(QApplication::focusWidget(), &view());
        hand.moveTo(*box, {2, 2}); // a press elsewhere closes it
        hand.press();
        hand.release();
        EXPECT_FALSE(popUp());
        EXPECT_TRUE(viewHasKeyboard());
    }
    EXPECT_EQ(lit(), QStringList{"Brush"});
    EXPECT_THAT(echoes, IsEmpty());

    // At the right end of the screen there is no room for it on that side.
    box->move(box->screen()->geometry().right() - box->width(), 60);
    support::settle();
    click(button(QStringLiteral("Brush")), Qt::RightButton);
    ASSERT_TRUE(popUp());
    EXPECT_LE(popUp()->geometry().right(),
              button(QStringLiteral("Brush")).mapToGlobal(QPoint()).x());
    hand.type({Qt::Key_Escape});
    EXPECT_FALSE(popUp());
}

TEST_F(Toolbox, ThePopUpTakesTypedNumbersAndLetsOtherKeysPass) {
    click(button(QStringLiteral("Line")), Qt::RightButton);
    ASSERT_TRUE(popUp());
    auto& size = *popUp()->findChild<QSpinBox*>(QStringLiteral("sizeSpinBox"));
    EXPECT_EQ(size.maximum(), 50);
    click(size);
    size.selectAll();
    hand.type({Qt::Key_1});
    hand.type({Qt::Key_7});
    hand.type({Qt::Key_Return});
    EXPECT_THAT(echoes, ElementsAre(QStringLiteral("rvVellumUtil -lineOptions 17 100")));
    ASSERT_TRUE(popUp());

    // Escape takes back what is typed, the next one closes.
    click(size);
    size.selectAll();
    hand.type({Qt::Key_9});
    hand.type({Qt::Key_Escape});
    ASSERT_TRUE(popUp());
    EXPECT_EQ(size.value(), 17);
    EXPECT_EQ(echoes.size(), 1);
    hand.type({Qt::Key_Escape});
    EXPECT_FALSE(popUp());

    // A value that was typed is taken when the pop-up is left.
    click(button(QStringLiteral("Line")), Qt::RightButton);
    ASSERT_TRUE(popUp());
    click(size);
    size.selectAll();
    hand.type({Qt::Key_8});
    hand.moveTo(*box, {2, 2});
    hand.press();
    hand.release();
    EXPECT_FALSE(popUp());
    EXPECT_EQ(echoes.back(), QStringLiteral("rvVellumUtil -lineOptions 8 100"));
    EXPECT_TRUE(viewHasKeyboard());

    // Keys of Maya and of the tools do not wait for it to be closed.
    ASSERT_TRUE(run(QStringLiteral("polyCube -name a")));
    click(button(QStringLiteral("Line")), Qt::RightButton);
    ASSERT_TRUE(popUp());
    hand.type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_TRUE(support::waitFor([&] { return number(QStringLiteral("objExists a")) == 0; }));
    EXPECT_FALSE(popUp());
    click(button(QStringLiteral("Brush")), Qt::RightButton);
    ASSERT_TRUE(popUp());

    const int before = popUp()->findChild<QSpinBox*>(QStringLiteral("sizeSpinBox"))->value();
    dragInView(Qt::Key_B);
    click(button(QStringLiteral("Brush")), Qt::RightButton);
    ASSERT_TRUE(popUp());
    EXPECT_GT(popUp()->findChild<QSpinBox*>(QStringLiteral("sizeSpinBox"))->value(), before);
}

TEST_F(Toolbox, GhostMenuOffersOneToFive) {
    const auto entries = [this] {
        QString all;
        for (const QAction* entry : menu()->actions()) {
            all += entry->isSeparator() ? QStringLiteral("-") : entry->text();
            all += entry->isChecked() ? QStringLiteral("* ") : QStringLiteral(" ");
        }
        return all.trimmed();
    };
    const auto choose = [this](int index) {
        click(button(QStringLiteral("Ghost Next")), Qt::RightButton);
        ASSERT_TRUE(menu());
        QMenu& open = *menu();
        hand.click(open, open.actionGeometry(open.actions().at(index)).center() *
                             open.devicePixelRatioF());
        ASSERT_TRUE(support::waitFor([this] { return menu() == nullptr; }));
    };
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -e -gpc 7; rvVellumUtil -e -gnc 2")));
    echoes.clear();
    click(button(QStringLiteral("Ghost Previous")), Qt::RightButton);
    ASSERT_TRUE(menu());
    EXPECT_EQ(entries(), QStringLiteral("1 2 3 4 5 - Settings..."));
    hand.type({Qt::Key_Escape});
    click(button(QStringLiteral("Ghost Next")), Qt::RightButton);
    ASSERT_TRUE(menu());
    EXPECT_EQ(entries(), QStringLiteral("1 2* 3 4 5 - Settings..."));
    hand.type({Qt::Key_Escape});
    choose(4);
    EXPECT_THAT(echoes, ElementsAre(QStringLiteral("rvVellumUtil -e -ghostNextCount 5")));
    EXPECT_EQ(number(QStringLiteral("rvVellumUtil -q -gnc")), 5);
    EXPECT_EQ(number(QStringLiteral("rvVellumUtil -q -gpc")), 7);
    EXPECT_TRUE(viewHasKeyboard());
}

TEST_F(Toolbox, RightClicksCanBeSwitchedOff) {
    for (const char* key : {"toolboxDrawToolContextMenu", "toolboxGhostingContextMenu"}) {
        reload(key, false);
        const bool tools = QByteArray(key).contains("Ghosting");
        click(button(QStringLiteral("Brush")), Qt::RightButton);
        EXPECT_EQ(popUp() != nullptr, tools) << key;
        hand.type({Qt::Key_Escape});
        click(button(QStringLiteral("Ghost Next")), Qt::RightButton);
        EXPECT_EQ(menu() != nullptr, !tools) << key;
        hand.type({Qt::Key_Escape});
        reload(key, true);
    }
}

} // namespace
} // namespace vellum::test
