// One session done twice: by hand, with menus, keys, pointer and time slider, and by commands. The
// saved documents are the same, layer by layer, frame by frame, pixel by pixel.
#include "journey/Desk.h"
#include "journey/LayerData.h"
#include "support/Paths.h"
#include "ui/MainWindow.h"
#include "ui/TimeSlider.h"
#include "ui/ViewWidget.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include <algorithm>

namespace vellum::test {
namespace {

class TwoWays : public Desk {
protected:
    /// The demo shot without a drawing, the settings of the factory.
    void startAfresh() {
        ASSERT_TRUE(run(QStringLiteral("file -force -new")));
        unloadPlugin();
        QFile::remove(text(QStringLiteral("internalVar -userPrefDir")) +
                      QStringLiteral("vellum2.ini"));
        loadPlugin();
        ASSERT_TRUE(run(
            QStringLiteral("source \"%1\"").arg(support::sourcePath("resources/demo/shot.mel"))));
        window->timeSlider().setRange(std::nullopt);
        ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -po 14 100 0; rvVellumUtil -bo 30 60 50 0;"
                                       "rvVellumUtil -eo 40 100 100 0")));
        support::settle();
    }

    // --- By hand -------------------------------------------------------------------------------

    /// Clicks through the menus to an entry.
    void choose(const QStringList& way) {
        QWidget* bar = window->menuBar();
        for (const QString& label : way) {
            QAction* found = nullptr;
            for (QAction* action : bar->actions()) {
                if (action->text().remove(QLatin1Char('&')).startsWith(label))
                    found = action;
            }
            ASSERT_TRUE(found) << label.toStdString();
            const auto* menu = qobject_cast<QMenu*>(bar);
            hand.click(*bar, menu ? menu->actionGeometry(found).center()
                                  : window->menuBar()->actionGeometry(found).center());
            if (!found->menu())
                break;
            bar = found->menu();
            ASSERT_TRUE(support::waitFor([&] { return bar->isVisible(); })) << label.toStdString();
        }
        ASSERT_TRUE(support::waitFor([&] { return !bar->isVisible(); }));
        support::settle();
    }
    void frameMenu(const char* entry) {
        choose({QStringLiteral("VL2"), QStringLiteral("Frame"), QLatin1String(entry)});
    }
    void drawTool(const char* tool) {
        choose({QStringLiteral("VL2"), QStringLiteral("Draw Tool"), QLatin1String(tool)});
    }
    void highlight(int first, int last) {
        host::TimeSlider& slider = window->timeSlider();
        const auto place = [&](int frame) {
            return QPointF(slider.xOf(frame + 0.5) * slider.devicePixelRatioF(), 5);
        };
        hand.key(Qt::Key_Shift, true);
        hand.moveTo(slider, place(first));
        hand.press();
        hand.moveTo(slider, place(last));
        hand.release();
        hand.key(Qt::Key_Shift, false);
        ASSERT_EQ(int(slider.range().start), first);
        ASSERT_EQ(int(slider.range().end), last + 1);
    }
    /// A press beside the highlighted range takes it away; one at its ends would change it.
    void leaveRange(int frame) {
        scrub(40);
        scrub(frame);
    }
    void line(QPoint from, QPoint to) {
        hand.moveTo(view(), from);
        hand.press();
        hand.moveTo(view(), to);
        hand.release();
        support::settle();
    }

    // --- By commands ---------------------------------------------------------------------------

    void script(const char* text) {
        ASSERT_TRUE(run(QString::fromLatin1(text))) << text << ": " << allErrors().toStdString();
        support::settle();
    }
    void at(int frame, const char* flag) {
        script(("currentTime " + std::to_string(frame) + "; rvVellumFrame " + flag).c_str());
    }

    QStringList saved(const char* name) {
        save(file(name));
        return layerData(file(name));
    }
    QStringList byHand();
    QStringList byCommands();
};

QStringList TwoWays::byHand() {
    startAfresh();
    drawTool("Line");
    scrub(5);
    line({100, 80}, {300, 200});
    highlight(9, 12);
    frameMenu("Insert Frame(s)");
    leaveRange(9);
    drawTool("Rectangle");
    line({150, 100}, {260, 180});
    highlight(5, 9);
    frameMenu("Copy Frame(s)");
    leaveRange(20);
    frameMenu("Paste Frame(s)");
    scrub(16);
    frameMenu("Duplicate Frame");
    hand.type({Qt::Key_Control, Qt::Key_Z});
    hand.type({Qt::Key_Shift, Qt::Key_Z});
    frameMenu("Step Forward");
    EXPECT_EQ(now(), 20);
    drawTool("Ellipse");
    line({200, 60}, {280, 120});
    frameMenu("Clear Frame(s)");
    hand.type({Qt::Key_Control, Qt::Key_Z});
    highlight(11, 12);
    frameMenu("Delete Frame(s)");
    leaveRange(24);
    frameMenu("Cut Frame(s)");
    frameMenu("Step Back");
    EXPECT_EQ(now(), 20);
    lookThrough("persp");
    drawTool("Arrow");
    line({120, 90}, {220, 90});
    choose(
        {QStringLiteral("VL2"), QStringLiteral("Cleanup"), QStringLiteral("Delete Active Camera")});
    hand.type({Qt::Key_Control, Qt::Key_Z});
    const QStringList drawings = saved("hand.ma");
    lookThrough("shotCam");
    return drawings;
}

QStringList TwoWays::byCommands() {
    startAfresh();
    script("rvVellumNode -layer -camera shotCam");
    at(5, "-insert");
    script("rvVellumUtil -lineTool");
    line({100, 80}, {300, 200});
    for (int frame = 9; frame <= 12; ++frame)
        at(frame, "-insert shotCam");
    script("rvVellumUtil -rectangleTool; currentTime 9");
    line({150, 100}, {260, 180});
    at(5, "-copy");
    at(20, "-paste");
    at(9, "-copy");
    at(24, "-paste");
    at(16, "-duplicate");
    script("rvVellumFrame -stepForward; rvVellumUtil -ellipseTool");
    line({200, 60}, {280, 120});
    script("rvVellumFrame -clear; undo");
    at(11, "-delete");
    at(12, "-delete");
    at(24, "-cut");
    script("rvVellumFrame -stepBack");
    lookThrough("persp");
    script("rvVellumLayer -addLayer persp; rvVellumFrame -insert; rvVellumUtil -arrowTool");
    line({120, 90}, {220, 90});
    script("rvVellumLayer -deleteAll persp; undo");
    return saved("commands.ma");
}

TEST_F(TwoWays, ByHandAndByCommands) {
    const QStringList drawn = byHand().value(0).split(QLatin1Char('\n'));
    const QStringList commands = byCommands().value(0).split(QLatin1Char('\n'));
    ASSERT_GT(drawn.size(), 10);
    for (int i = 0; i < std::max(drawn.size(), commands.size()); ++i)
        EXPECT_TRUE(commands.value(i) == drawn.value(i))
            << "by commands " << commands.value(i).left(120).toStdString() << "\nby hand "
            << drawn.value(i).left(120).toStdString();
}

} // namespace
} // namespace vellum::test
