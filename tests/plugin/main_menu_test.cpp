// The main menu as it stands in the menu bar: every entry, in order, chosen one after the other.
#include "foundation/Idle.h"
#include "plugin/base/CommandStrings.h"
#include "support/Hand.h"
#include "support/Session.h"
#include "ui/MainWindow.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>

#include <vector>

namespace vellum::test {
namespace {

/// What one entry says and does. Entries of a sub-menu follow it with their place in it.
struct Entry {
    const char* path;
    const char* command = ""; ///< "" for dividers and sub-menus
    const char* after = "";   ///< not 0 once it has done its work
    const char* refusal = ""; ///< what it says while what it opens is not there
    const char* before = "";  ///< done first, so that there is something to choose it for
};

constexpr const char* kDrawing = "gmatch(`currentCtx`, \"rvVlDrawCtx*\")";

constexpr const char* kTransforming = "gmatch(`currentCtx`, \"rvVlTransformCtx*\")";

const std::vector<Entry>& expectedMenu() {
    static const std::vector<Entry> menu{
        {"Draw", "rvVellumUtil -draw", kDrawing},
        {"Transform", "rvVellumUtil -transform", kTransforming},
        {"--"},
        {"Draw Tool"},
        {"Draw Tool/Pencil", "rvVellumUtil -pencilTool", "vlRadio($gRvVlPencilToolMenuItem)"},
        {"Draw Tool/Brush", "rvVellumUtil -brushTool", "vlRadio($gRvVlBrushToolMenuItem)"},
        {"Draw Tool/Eraser", "rvVellumUtil -eraserTool", "vlRadio($gRvVlEraserToolMenuItem)"},
        {"Draw Tool/Text", "rvVellumUtil -textTool", "vlRadio($gRvVlTextToolMenuItem)"},
        {"Draw Tool/Line", "rvVellumUtil -lineTool", "vlRadio($gRvVlLineToolMenuItem)"},
        {"Draw Tool/Arrow", "rvVellumUtil -arrowTool", "vlRadio($gRvVlArrowToolMenuItem)"},
        {"Draw Tool/Ellipse", "rvVellumUtil -ellipseTool", "vlRadio($gRvVlEllipseToolMenuItem)"},
        {"Draw Tool/Rectangle", "rvVellumUtil -rectangleTool",
         "vlRadio($gRvVlRectangleToolMenuItem)"},
        {"--"},
        {"Layer"},
        {"Layer/New Layer...", "rvVellumUtil -newLayer"},
        {"Layer/Layer Properties...", "rvVellumUtil -layerProperties"},
        {"Frame"},
        {"Frame/Insert Frame(s)", "rvVellumFrame -insert", "vlStepsTo(2, 1)", "", "currentTime 1"},
        {"Frame/Duplicate Frame", "rvVellumFrame -duplicate", "vlStepsTo(7, 6)", "",
         "currentTime 6"},
        {"Frame/Delete Frame(s)", "rvVellumFrame -delete", "vlStepsTo(7, 1)", "", "currentTime 6"},
        {"Frame/--"},
        {"Frame/Cut Frame(s)", "rvVellumFrame -cut", "vlStepsTo(3, 1)", "",
         "currentTime 4; rvVellumFrame -insert; currentTime 2; rvVellumFrame -insert"},
        {"Frame/Copy Frame(s)", "rvVellumFrame -copy", "vlStepsTo(2, 1)", "", "currentTime 1"},
        {"Frame/Paste Frame(s)", "rvVellumFrame -paste", "vlStepsTo(10, 9)", "", "currentTime 9"},
        {"Frame/--"},
        {"Frame/Clear Frame(s)", "rvVellumFrame -clear", "vlStepsTo(10, 9)", "", "currentTime 9"},
        {"Frame/--"},
        {"Frame/Step Forward", "rvVellumFrame -stepForward", "vlNow() == 20", "",
         "currentTime 20; rvVellumFrame -insert; currentTime 9"},
        {"Frame/Step Back", "rvVellumFrame -stepBack", "vlNow() == 9"},
        {"Ghosting"},
        {"Ghosting/Ghost Previous", "rvVellumUtil -e -ghostPrevious -1", "`rvVellumUtil -q -gp`"},
        {"Ghosting/Ghost Next", "rvVellumUtil -e -ghostNext -1", "`rvVellumUtil -q -gn`"},
        {"Ghosting/--"},
        {"Ghosting/Settings...", "rvVellumUtil -ghostingSettings"},
        {"--"},
        {"Toolbox...", "rvVellumUtil -toolbox", "`control -exists rvVlToolboxColorPickerBtn`"},
        {"Tool Options...", "rvVellumUtil -toolOptions"},
        {"Layer Manager...", "rvVellumUtil -layerManager"},
        {"Retiming Tool...", "rvVellumUtil -retimingTool"},
        {"--"},
        {"Display Timeline Frames"},
        {"Display Timeline Frames/Always", "rvVellumUtil -e -timelineFrameDisplay 0",
         "vlRadio($gRvVlDisplayTimelineFramesAlwaysItem)"},
        {"Display Timeline Frames/Selection/Context Active",
         "rvVellumUtil -e -timelineFrameDisplay 1",
         "vlRadio($gRvVlDisplayTimelineFramesContextSelectionItem)"},
        {"Display Timeline Frames/Off", "rvVellumUtil -e -timelineFrameDisplay 2",
         "vlRadio($gRvVlDisplayTimelineFramesNeverItem)"},
        {"--"},
        {"View"},
        {"View/Vellum View", "rvVellumUtil -fv", "`window -q -visible rvVlFloatingWindow`"},
        {"View/Move layers to Vellum View", "rvVellumUtil -fvm \"\""},
        {"Utilities"},
        {"Utilities/Reset UI", "rvVellumUtil -resetUI"},
        {"Cleanup"},
        {"Cleanup/Delete Active Layer", "rvVlDeleteActiveLayer()",
         "`rvVellumLayer -count persp` == 1"},
        {"Cleanup/Delete Active Camera Layers", "rvVlDeleteActiveCameraLayers()",
         "`rvVellumLayer -count persp` == 0"},
        {"Cleanup/--"},
        {"Cleanup/Clear All", "rvVlDeleteAllNodes()", "!`objExists vellum`"},
        {"--"},
        {"Preferences...", "rvVellumUtil -preferences"},
        {"About...", "rvVellumUtil -about"},
    };
    return menu;
}

struct Shown {
    std::string path;
    QAction* action;
};

void collect(const QMenu& menu, const QString& prefix, std::vector<Shown>& list) {
    for (QAction* action : menu.actions()) {
        const QString path =
            prefix + (action->isSeparator() ? QStringLiteral("--") : action->text());
        list.push_back({path.toStdString(), action});
        if (const QMenu* sub = action->menu())
            collect(*sub, path + QLatin1Char('/'), list);
    }
}

class MainMenu : public Session {
protected:
    QMenu* menu() {
        for (const QAction* action : window->menuBar()->actions()) {
            if (action->text() == QStringLiteral("VL2"))
                return action->menu();
        }
        return nullptr;
    }

    std::vector<Shown> entries() {
        std::vector<Shown> list;
        if (const QMenu* found = menu())
            collect(*found, QString(), list);
        return list;
    }

    QAction& entry(const std::string& path) {
        for (const Shown& shown : entries()) {
            if (shown.path == path)
                return *shown.action;
        }
        ADD_FAILURE() << "no entry " << path;
        static QAction none;
        return none;
    }

    void loadWith(const QString& setup) {
        unloadPlugin();
        ASSERT_TRUE(run(setup));
        loadPlugin();
    }
};

TEST_F(MainMenu, StandsInTheMenuBarEntryByEntry) {
    ASSERT_NE(menu(), nullptr);
    EXPECT_TRUE(menu()->isTearOffEnabled());
    EXPECT_TRUE(menu()->menuAction()->isVisible());
    EXPECT_TRUE(entry("Draw Tool").menu()->isTearOffEnabled());
    std::vector<std::string> shown, expected;
    for (const Shown& one : entries())
        shown.push_back(one.path);
    for (const Entry& one : expectedMenu())
        expected.push_back(one.path);
    EXPECT_EQ(shown, expected);
    int radioGroups = 0;
    for (const char* path : {"Draw Tool/Brush", "Display Timeline Frames/Always"}) {
        EXPECT_TRUE(entry(path).isChecked()) << path;
        radioGroups += entry(path).actionGroup() && entry(path).actionGroup()->isExclusive();
    }
    EXPECT_EQ(radioGroups, 2);
    EXPECT_FALSE(entry("Ghosting/Ghost Previous").isChecked());
    EXPECT_FALSE(entry("Ghosting/Ghost Next").isChecked());
}

TEST_F(MainMenu, EveryEntryDoesItsWork) {
    ASSERT_TRUE(run(QStringLiteral(
        "rvVellumNode -layer -camera persp; rvVellumLayer -add persp;"
        "global proc int vlRadio(string $item) { return `menuItem -q -radioButton $item`; }"
        "global proc int vlNow() { return `currentTime -q`; }"
        // Whether the frame before the first time is at the second.
        "global proc int vlStepsTo(int $from, int $to) {"
        "    currentTime $from; rvVellumFrame -stepBack; return vlNow() == $to; }")));
    QTimer closing; // what an entry asks is left without an answer
    QObject::connect(&closing, &QTimer::timeout, [] {
        if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
            dialog->reject();
    });
    closing.start(1);
    for (const Entry& expected : expectedMenu()) {
        if (*expected.command == '\0')
            continue;
        SCOPED_TRACE(expected.path);
        ASSERT_TRUE(run(QString::fromLatin1(expected.before)));
        errors.clear();
        QAction& chosen = entry(expected.path);
        EXPECT_EQ(chosen.property("command").toString().toStdString(), expected.command);
        chosen.trigger();
        host::idle::drainAll();
        support::settle();
        EXPECT_EQ(allErrors().toStdString(), expected.refusal);
        if (*expected.after != '\0') {
            EXPECT_EQ(number(QStringLiteral("$vlDone = ") + QLatin1String(expected.after)), 1);
        }
    }
    EXPECT_EQ(number(QStringLiteral("size(`ls -type rvVellum`)")), 0) << "Clear All came last";
    EXPECT_TRUE(entry("Draw Tool/Rectangle").isChecked());
    EXPECT_TRUE(entry("Display Timeline Frames/Off").isChecked());
    EXPECT_TRUE(entry("Ghosting/Ghost Previous").isChecked());
}

TEST_F(MainMenu, BelongsToTheAnimationSetOnlyWhenAsked) {
    ASSERT_TRUE(run(QStringLiteral("setMenuMode(\"modelingMenuSet\")")));
    EXPECT_TRUE(menu()->menuAction()->isVisible()) << "a menu of no set is always there";
    ASSERT_TRUE(run(QStringLiteral("rvVlCreateMainMenu(1)")));
    host::idle::drainAll();
    EXPECT_EQ(text(QStringLiteral("menuSet -q -cms")), QStringLiteral("modelingMenuSet"))
        << "the user's set comes back";
    ASSERT_NE(menu(), nullptr);
    EXPECT_FALSE(menu()->menuAction()->isVisible());
    ASSERT_TRUE(run(QStringLiteral("setMenuMode(\"animationMenuSet\")")));
    EXPECT_TRUE(menu()->menuAction()->isVisible());
    ASSERT_TRUE(run(QStringLiteral("rvVlCreateMainMenu(0); rvVlCreateMainMenu(0)")));
    int menus = 0;
    for (const QAction* action : window->menuBar()->actions())
        menus += action->text() == QStringLiteral("VL2");
    EXPECT_EQ(menus, 1) << "made anew, not twice";
}

TEST_F(MainMenu, FloatingViewShowsNothingButTheDrawing) {
    ASSERT_TRUE(run(QStringLiteral("polyCube -name box; select -r box; rvVellumUtil -fv")));
    EXPECT_EQ(number(QStringLiteral("window -q -visible rvVlFloatingWindow")), 1);
    EXPECT_EQ(text(QStringLiteral("window -q -title rvVlFloatingWindow")),
              QStringLiteral("Vellum"));
    EXPECT_EQ(number(QStringLiteral("window -q -width rvVlFloatingWindow")), 300);
    EXPECT_EQ(number(QStringLiteral("window -q -height rvVlFloatingWindow")), 280);
    EXPECT_EQ(text(QStringLiteral("modelPanel -q -camera rvVellumFloatingModelPanel")),
              QStringLiteral("vellumCam"));
    EXPECT_EQ(number(QStringLiteral("int(`getAttr vellumCam.translateY`)")), 1000);
    EXPECT_EQ(text(QStringLiteral("stringArrayToString(`ls -selection`, \" \")")),
              QStringLiteral("box"));

    // While it is shown nothing happens; closed and opened it looks through its camera again.
    ASSERT_TRUE(run(QStringLiteral("lookThroughModelPanel top rvVellumFloatingModelPanel;"
                                   "rvVellumUtil -fv")));
    EXPECT_EQ(text(QStringLiteral("modelPanel -q -camera rvVellumFloatingModelPanel")),
              QStringLiteral("top"));
    ASSERT_TRUE(run(QStringLiteral("window -e -visible false rvVlFloatingWindow;"
                                   "rvVellumUtil -fv")));
    EXPECT_EQ(number(QStringLiteral("window -q -visible rvVlFloatingWindow")), 1);
    EXPECT_EQ(text(QStringLiteral("modelPanel -q -camera rvVellumFloatingModelPanel")),
              QStringLiteral("vellumCam"));
    EXPECT_EQ(number(QStringLiteral("size(`ls -type camera \"vellumCam*\"`)")), 1);
    ASSERT_TRUE(run(QStringLiteral("deleteUI -window rvVlFloatingWindow")));
}

TEST_F(MainMenu, HostileNamesRunNothing) {
    const QString hostile = QStringLiteral("\"; $hurt = 1; `global int $hurt = 1` \\ \" //");
    ASSERT_TRUE(run(QStringLiteral("global int $hurt; $hurt = 0; "
                                   "rvVellumNode -layer -camera persp -layerName ") +
                    command::quote(hostile)));
    const auto name = [this](const char* camera) {
        return text(QStringLiteral("rvVellumLayer -qn 0 ") + QLatin1String(camera)).toStdString();
    };
    EXPECT_EQ(name("persp"), hostile.toStdString());
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -fvm persp")));
    EXPECT_EQ(name("vellumCam"), hostile.toStdString()) << "moved with its name";
    // What Maya makes of such a name for a camera is what the drawing knows it by.
    ASSERT_TRUE(run(QStringLiteral("string $made[] = `camera`; rename $made[0] ") +
                    command::quote(hostile)));
    const QString camera = text(QStringLiteral("$vlPicked = stringArrayToString(`ls -sl`, \"\")"));
    ASSERT_TRUE(run(QStringLiteral("rvVellumLayer -add ") + command::quote(camera)));
    ASSERT_TRUE(run(QStringLiteral("window -e -visible false rvVlFloatingWindow;"
                                   "rvVellumUtil -fvm ") +
                    command::quote(camera)));
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count vellumCam")), 2);
    EXPECT_EQ(number(QStringLiteral("$vlHurt = $hurt")), 0);
    ASSERT_TRUE(run(QStringLiteral("deleteUI -window rvVlFloatingWindow")));
}

TEST_F(MainMenu, FloatingViewTakesTheLayersOfACamera) {
    ASSERT_TRUE(run(QStringLiteral(
        "rvVellumNode -layer -camera persp -layerName a; rvVellumLayer -add -n b persp")));
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -fvm persp")));
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count persp")), 0);
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count vellumCam")), 2);
    errors.clear();
    EXPECT_TRUE(run(QStringLiteral("window -e -visible false rvVlFloatingWindow;"
                                   "rvVellumUtil -fvm \"\\\"; rvVlDeleteAllNodes; \\\"\"")))
        << "no camera of that name: nothing is moved";
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count vellumCam")), 2);
    ASSERT_TRUE(run(QStringLiteral("deleteUI -window rvVlFloatingWindow")));
}

} // namespace
} // namespace vellum::test
