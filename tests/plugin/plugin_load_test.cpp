// Loading and unloading in one process leaves things as they were.
#include "foundation/Idle.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/Settings.h"
#include "support/Hand.h"
#include "support/Paths.h"
#include "support/Session.h"
#define MNoPluginEntry
#define MNoVersionString
#include "foundation/Events.h"
#include "scene/api/PluginTypes.h"
#include "ui/Elements.h"
#include "ui/Tools.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QWidget>

#include <malloc.h>
#include <map>

namespace vellum::test {
namespace {

class Loading : public Session {
protected:
    /// What a plug-in could leave behind, as the host counts it.
    std::map<std::string, int> inventory() {
        std::map<std::string, int> counts;
        counts["widgets"] = static_cast<int>(QApplication::allWidgets().size());
        counts["contexts"] = static_cast<int>(host::Tools::instance().names().size());
        counts["listeners"] = static_cast<int>(host::events::listenerCount());
        counts["menus"] =
            static_cast<int>(host::Elements::instance().namesOf(host::ElementKind::Menu).size());
        counts["jobs"] = number(QStringLiteral("size(`scriptJob -listJobs`)"));
        for (const char* command :
             {"rvVellumNode", "rvVellumLayer", "rvVellumFrame", "rvVellumStroke", "rvVellumUtil",
              "rvVlDrawCtx", "rvVlTransformCtx"})
            counts[command] = number(QStringLiteral("exists ") + QLatin1String(command));
        counts["node type"] = host::nodeTypeKnown("rvVellum");
        MTypeId id;
        counts["data type"] = host::dataTypeKnown("rvLayerData", id);
        counts["loaded"] = number(QStringLiteral("pluginInfo -q -loaded vellum2"));
        return counts;
    }
};

TEST_F(Loading, LoadUnloadLoadLeavesNothing) {
    const auto loaded = inventory();
    EXPECT_EQ(loaded.at("rvVellumUtil"), 1);
    unloadPlugin();
    const auto without = inventory();
    EXPECT_EQ(without.at("rvVellumUtil"), 0);
    EXPECT_EQ(without.at("rvVlDrawCtx"), 0);
    EXPECT_EQ(without.at("rvVlTransformCtx"), 0);
    EXPECT_EQ(without.at("loaded"), 0);
    EXPECT_EQ(without.at("jobs"), loaded.at("jobs") - 1);
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE("load " + std::to_string(i));
        loadPlugin();
        EXPECT_EQ(inventory(), loaded);
        // Work with everything that could hang on.
        ASSERT_TRUE(run(QStringLiteral("rvVellumNode -layer -camera persp")));
        ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -e -ghostPrevious 1; rvVellumNode -rg;"
                                       "rvVellumUtil -brushTool; currentTime 5; undo; redo;"
                                       "select -cl; select vellum")));
        ASSERT_TRUE(run(QStringLiteral("file -f -new")));
        host::idle::drain();
        unloadPlugin();
        EXPECT_EQ(inventory(), without);
        ASSERT_TRUE(run(QStringLiteral("currentTime 7; polyCube; select -cl; undo; undo")))
            << "events reach nobody who is gone";
    }
    loadPlugin();
}

TEST_F(Loading, MemoryDoesNotGrowWithTheLoads) {
    const auto used = [] {
        const auto heap = mallinfo2();
        return static_cast<double>(heap.uordblks + heap.hblkhd);
    };
    constexpr int cycles = 25;
    double before = 0;
    for (int i = 0; i < 2 * cycles; ++i) {
        if (i == cycles) // by now every cache is filled
            before = used();
        ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -brushTool; rvVellumNode -rg;"
                                       "rvVellumLayer -add persp; rvVellumFrame -ins persp;"
                                       "rvVellumUtil -transform; file -f -new")));
        unloadPlugin();
        loadPlugin();
        support::settle();
    }
    EXPECT_LT((used() - before) / cycles, 3000) << "bytes a cycle";
}

TEST_F(Loading, UnloadSavesTheSettingsAndLoadReadsThem) {
    const QString file =
        text(QStringLiteral("internalVar -userPrefDir")) + QStringLiteral("/vellum2.ini");
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -e -gpc 7; rvVellumUtil -pencilOptions 80 0 1")));
    unloadPlugin();
    ASSERT_TRUE(QFile::exists(file));
    loadPlugin();
    EXPECT_EQ(number(QStringLiteral("rvVellumUtil -q -gpc")), 7);
    unloadPlugin();
    QFile::remove(file);
    loadPlugin();
    EXPECT_EQ(number(QStringLiteral("rvVellumUtil -q -gpc")), 3) << "defaults, not the old values";
}

TEST_F(Loading, TheMenuFollowsTheSettings) {
    QString name = QStringLiteral("\"; print(\"ran\"); \" \\ {UTIL_CMD} меню 菜单");
    unloadPlugin();
    resetSettings();
    settings().mainMenuName = name;
    settings().activeTool = Tool::Arrow;
    settings().ghostNext = true;
    settings().timelineFrameDisplay = TimelineDisplay::Never;
    ASSERT_TRUE(saveSettingsTo(text(QStringLiteral("internalVar -userPrefDir")) +
                               QStringLiteral("/vellum2.ini")));
    resetSettings();
    loadPlugin();
    // The name is filled in first, with whatever it holds.
    name.replace(QStringLiteral("{UTIL_CMD}"), QStringLiteral("rvVellumUtil"));
    EXPECT_EQ(text(QStringLiteral("menu -q -label $gRvVlMainMenu")).toStdString(),
              name.toStdString());
    const auto radio = [this](const char* item) {
        return number(QStringLiteral("menuItem -q -radioButton ") + QLatin1String(item));
    };
    const auto check = [this](const char* item) {
        return number(QStringLiteral("menuItem -q -checkBox ") + QLatin1String(item));
    };
    EXPECT_EQ(radio("$gRvVlArrowToolMenuItem"), 1);
    EXPECT_EQ(radio("$gRvVlPencilToolMenuItem"), 0);
    EXPECT_EQ(radio("$gRvVlDisplayTimelineFramesNeverItem"), 1);
    EXPECT_EQ(check("$gRvVlGhostPrevMenuItem"), 0);
    EXPECT_EQ(check("$gRvVlGhostNextMenuItem"), 1);

    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -eraserTool; rvVellumUtil -e -gp -1;"
                                   "rvVellumUtil -e -gn -1; rvVellumUtil -e -tfd 1")));
    EXPECT_EQ(radio("$gRvVlEraserToolMenuItem"), 1);
    EXPECT_EQ(radio("$gRvVlArrowToolMenuItem"), 0);
    EXPECT_EQ(radio("$gRvVlDisplayTimelineFramesContextSelectionItem"), 1);
    EXPECT_EQ(check("$gRvVlGhostPrevMenuItem"), 1);
    EXPECT_EQ(check("$gRvVlGhostNextMenuItem"), 0);
    ASSERT_TRUE(
        run(QStringLiteral("rvVlUpdateMainMenu(%1, 0, 0, 7)").arg(numberOf(Tool::Transform))));
    EXPECT_EQ(radio("$gRvVlEraserToolMenuItem"), 1) << "that is no tool to choose";
    EXPECT_EQ(radio("$gRvVlDisplayTimelineFramesContextSelectionItem"), 1);
}

TEST_F(Loading, CleanupProcedures) {
    ASSERT_TRUE(run(QStringLiteral("rvVlDeleteActiveLayer; rvVlDeleteActiveCameraLayers")))
        << "without a node they do nothing";
    ASSERT_TRUE(run(QStringLiteral("rvVellumNode -layer -camera persp;"
                                   "rvVellumLayer -add persp; rvVellumLayer -add persp")));
    ASSERT_TRUE(run(QStringLiteral("rvVlDeleteActiveLayer")));
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count persp")), 2);
    ASSERT_TRUE(run(QStringLiteral("rvVlDeleteActiveCameraLayers")));
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count persp")), 0);
    ASSERT_TRUE(run(QStringLiteral("createNode rvVellum -name another; rvVlDeleteAllNodes")));
    EXPECT_EQ(number(QStringLiteral("size(`ls -type rvVellum`)")), 0);
    EXPECT_EQ(number(QStringLiteral("objExists vellum")), 0);
}

TEST_F(Loading, ANodeInTheSceneKeepsThePluginUnlessForced) {
    ASSERT_TRUE(run(QStringLiteral("rvVellumNode")));
    EXPECT_FALSE(run(QStringLiteral("unloadPlugin vellum2")));
    EXPECT_EQ(number(QStringLiteral("rvVellumNode -exists")), 1) << "everything still works";
    ASSERT_TRUE(run(QStringLiteral("file -f -new")));
}

TEST_F(Loading, ATakenCommandNameStopsLoadingWithItsMessage) {
    unloadPlugin();
    const QString library = support::pluginPath();
    // The same library under another name finds every command taken.
    loadPlugin();
    QTemporaryDir directory;
    const QString twin = directory.filePath(QStringLiteral("twin.so"));
    ASSERT_TRUE(QFile::copy(library, twin));
    const auto before = inventory();
    errors.clear();
    EXPECT_FALSE(run(QStringLiteral("loadPlugin ") + command::quote(twin)));
    EXPECT_TRUE(errors.join(QStringLiteral("\n"))
                    .contains(QStringLiteral("Failed to register 'rvVellumNode' command: ")))
        << errors.join(QStringLiteral(" | ")).toStdString();
    ASSERT_TRUE(run(QStringLiteral("rvVellumNode"))) << "the first one still works";
    EXPECT_EQ(number(QStringLiteral("menu -exists $gRvVlMainMenu")), 1) << "and has its menu";
    EXPECT_EQ(inventory(), before);
}

} // namespace
} // namespace vellum::test
