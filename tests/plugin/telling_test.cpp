// How much a command costs those who show the drawing: itself, its undo and its redo each draw anew
// once, refresh no surface twice and look for the drawing once, with all that Maya tells of them.
#include "document/LayerManager.h"
#include "foundation/Counters.h"
#include "foundation/Events.h"
#include "foundation/UndoQueue.h"
#include "plugin/WatchedCommands.h"
#include "plugin/base/Names.h"
#include "plugin/base/Settings.h"
#include "plugin/entry/SceneEvents.h"
#include "plugin/session/PluginState.h"
#include "script/PluginCommands.h"
#include "support/Sure.h"
#include "tools/interaction/StrokeCommand.h"
#include "tools/raster/Stroke.h"

#include <algorithm>
#include <functional>
#include <map>

using support::sure;

namespace vellum::test {
namespace {

QString line(const char* text) {
    return QString::fromLatin1(text);
}

class Telling : public WatchedCommands {
protected:
    void SetUp() override {
        WatchedCommands::SetUp();
        ASSERT_TRUE(host::script::registerPluginCommand(kStrokeCommand, StrokeCommand::creator,
                                                        StrokeCommand::newSyntax, "linked"));
        installSceneEvents();
        listener_ = host::changes::listen([this] { ++sceneChanges_; });
        eventListener_ = host::events::listen([this](const std::string&) { ++events_; });
        makeDrawing();
    }
    void TearDown() override {
        host::changes::removeListener(listener_);
        host::events::removeListener(eventListener_);
        EXPECT_EQ(removeSceneEvents(), MS::kSuccess);
        EXPECT_TRUE(host::script::unregisterPluginCommand(kStrokeCommand));
        WatchedCommands::TearDown();
    }

    struct Cost {
        int looks = 0;
        int redraws = 0;                 ///< of the node, or of all views
        std::map<QString, int> surfaces; ///< refreshes of each

        QString text() const {
            QString all = line("%1 looks, %2 redraws").arg(looks).arg(redraws);
            for (const auto& [name, count] : surfaces)
                all += line(", %1 %2").arg(count).arg(name);
            return all;
        }
    };

    /// What is written to the node's visibility reaches the views as a change of the scene, which
    /// every event is as well.
    Cost costOf(const QString& script) {
        return costOf([&] { return logOf(script); });
    }
    Cost costOf(const std::function<QString()>& work) {
        host::counters() = {};
        sceneChanges_ = events_ = 0;
        const QStringList log = work().split(line(", "), Qt::SkipEmptyParts);
        Cost cost;
        cost.looks = host::counters().dagWalks;
        cost.redraws = sceneChanges_ - events_ + host::counters().allViewRefreshes;
        for (QString surface : log) {
            surface.remove(line("no ")).remove(line(" 0"));
            ++cost.surfaces[surface.section(QLatin1Char(' '), 0, 0)];
        }
        return cost;
    }

    /// The surfaces that must be refreshed, and may only be once.
    void expectLittle(const char* verb, const Cost& cost, int looks, int redraws,
                      const char* surfaces) {
        SCOPED_TRACE(verb + std::string(": ") + cost.text().toStdString());
        EXPECT_EQ(cost.looks, looks);
        EXPECT_EQ(cost.redraws, redraws);
        std::map<QString, int> once;
        for (const QString& name : line(surfaces).split(QLatin1Char(' '), Qt::SkipEmptyParts))
            once[name] = 1;
        EXPECT_EQ(cost.surfaces, once);
    }

    struct Little {
        const char* surfaces; ///< by the command itself
        int looks = 1;
        int redraws = 1;
    };

    /// Does it, undoes and redoes it. A command that moves the time looks once more, as every
    /// change of time does.
    void costsLittle(const QString& command, const Little& little) {
        SCOPED_TRACE(command.toStdString());
        expectLittle("done", costOf(command), little.looks, little.redraws, little.surfaces);
        const std::string again = std::string("layers markers ") + little.surfaces;
        // Time goes on without the views being told more than that.
        const int redraws = std::max(little.redraws, 1);
        expectLittle("undone", costOf(line("undo")), little.looks, redraws, again.c_str());
        expectLittle("redone", costOf(line("redo")), little.looks, redraws, again.c_str());
    }

private:
    int listener_ = 0;
    int eventListener_ = 0;
    int sceneChanges_ = 0;
    int events_ = 0;
};

TEST_F(Telling, LayerCommands) {
    for (const char* command :
         {"-e -act 0 shotCam", "-e -act 0 persp", "-add -n top persp", "-add -ls 1 shotCam",
          "-ins 1 -n ink persp", "-del 0 persp", "-mv 0 2 persp", "-mv 0 0 -nc shotCam persp",
          "-mva persp shotCam", "-en sky 0 persp", "-ev 1 0 persp", "-es 1 0 persp", "-da persp",
          "-add top"})
        costsLittle(line("rvVellumLayer ") + line(command), {"layers markers"});
    // The opacity of the layer drawn on is one of the tool's options.
    costsLittle(line("rvVellumLayer -eo 0.25 0 top"), {"options"});
    ASSERT_TRUE(run(line("rvVellumLayer -add top")));
    costsLittle(line("rvVellumLayer -eo 0.5 0 top"), {""});
}

TEST_F(Telling, FrameCommands) {
    for (const char* command : {"-ins persp", "-clr persp", "-cut persp", "-pst persp",
                                "-del persp", "-dup persp", "-mv 30 1 20 persp", "-ins top"})
        costsLittle(line("rvVellumFrame ") + line(command),
                    {line(command) == line("-ins top") ? "layers markers" : "markers"});
    costsLittle(line("rvVellumFrame -sf"), {"markers", 2, 0});
    costsLittle(line("rvVellumFrame -sb"), {"markers", 2, 0});
    costsLittle(line("rvVellumFrame -ret 4"), {"markers"});
    ASSERT_TRUE(run(line("currentTime 45"))); // off the frame that is shown
    costsLittle(line("rvVellumFrame -ret 5"), {"markers", 2});
}

TEST_F(Telling, Strokes) {
    const auto draw = [this](const char* flags) {
        Stroke* stroke = document()->beginStroke(line("persp"), Tool::Pencil, QColor(Qt::red));
        ASSERT_NE(stroke, nullptr);
        stroke->points = {{10, 1.0F, 1.0F, 100, 100}, {10, 1.0F, 1.0F, 900, 100}};
        stroke->dirty = true;
        costsLittle(line("rvVellumStroke persp") + line(flags), {""});
        EXPECT_EQ(host::counters().viewRefreshes, 1) << "at once, where the user draws";
    };
    ASSERT_TRUE(run(line("rvVellumFrame -ins persp")));
    draw("");
    draw(" -fa");
}

TEST_F(Telling, SettingsAndTheNode) {
    const struct {
        const char* line;
        int looks;
        int redraws;
        const char* surfaces;
    } rows[] = {
        {"Util -pt", 1, 0, "display UpdateMainMenu toolbox options"},
        {"Util -e -dc 1 2 3", 0, 0, "toolbox"},
        {"Util -po 5 60 1", 0, 0, "toolbox options"},
        {"Util -e -gp 1", 1, 1, "display UpdateMainMenu toolbox"},
        {"Util -e -gnc 4", 1, 1, "display UpdateMainMenu toolbox"},
        {"Util -e -gcn 4 5 6", 1, 1, "display UpdateMainMenu toolbox"},
        {"Util -e -tfd 0", 1, 0, "display markers UpdateMainMenu"},
        {"Util -rtd", 1, 0, "markers"},
        {"Util -rlm", 1, 0, "layers"},
        {"Node -rg", 1, 1, ""},
        {"Node -r", 1, 0, ""},
    };
    ASSERT_TRUE(run(line("rvVellumUtil -pt"))); // the tool has been made
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        expectLittle("done", costOf(line("rvVellum") + line(row.line)), row.looks, row.redraws,
                     row.surfaces);
    }
    ASSERT_TRUE(run(line("rvVellumLayer -e -act 0 shotCam")));
    expectLittle("adopts the camera", costOf(line("rvVellumNode -r")), 1, 1, "layers markers");
}

// Nothing is selected, so Maya tells of no selection that changed.
TEST_F(Telling, NodesThatComeAndGoAreToldOnceAMomentLater) {
    const struct {
        const char* script;
        const char* surfaces;
    } rows[] = {
        {"createNode rvVellum; createNode rvVellum; select -cl", "layers markers"},
        {"camera; camera; select -cl", "layers"},
        {"delete rvVellum1; delete rvVellum2; delete camera1; delete camera2", "layers markers"},
        {"file -f -new", "layers"}, // has cameras of its own; the event has told the rest
    };
    logOfNextMoment();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.script);
        logOf(line(row.script));
        const Cost cost = costOf([this] { return logOfNextMoment(); });
        std::map<QString, int> once;
        for (const QString& name : line(row.surfaces).split(QLatin1Char(' '), Qt::SkipEmptyParts))
            once[name] = 1;
        EXPECT_EQ(cost.surfaces, once) << cost.text().toStdString();
    }
}

TEST_F(Telling, TimeLooksOnce) {
    ASSERT_TRUE(run(line("rvVellumUtil -rtd"))); // the markers are shown
    const Cost cost = costOf(line("currentTime 20"));
    EXPECT_EQ(cost.looks, 1) << cost.text().toStdString();
    EXPECT_EQ(cost.surfaces, (std::map<QString, int>{{line("markers"), 1}}));
    EXPECT_EQ(sure(document()->currentFrame(line("persp"))).intTime(), 20);
    EXPECT_EQ(costOf(line("select -r persp")).looks, 1);
    host::counters() = {};
    host::events::emit("timeUnitChanged");
    EXPECT_EQ(host::counters().dagWalks, 1);
}

} // namespace
} // namespace vellum::test
