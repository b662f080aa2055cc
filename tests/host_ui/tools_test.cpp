// Tools: names, which is current, and who tells them so.
#include "host_ui/UiTest.h"
#include "plugins/PluginServices.h"
#include "scene/files/FileIO.h"

#include <QPixmapCache>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;
using uitest::calls;
using uitest::RecordingContext;

class Tool : public uitest::UiTest {};

TEST_F(Tool, CommandMakesNamedContexts) {
    EXPECT_EQ(runString("recordCtx"), "recordCtx1");
    EXPECT_EQ(runString("recordCtx"), "recordCtx2");
    EXPECT_EQ(runString("recordCtx mine"), "mine");
    EXPECT_THAT(errorOf("recordCtx mine"), HasSubstr("not unique"));
    EXPECT_EQ(runInt("contextInfo -exists recordCtx2"), 1);
    EXPECT_EQ(runInt("contextInfo -exists nothing"), 0);
    EXPECT_EQ(runInt("recordCtx -exists mine"), 1);
    EXPECT_EQ(runString("contextInfo -class mine"), "recordingTool");
    EXPECT_EQ(runString("contextInfo -title mine"), "Recording Tool");
    EXPECT_EQ(runString("recordCtx -q -image1 mine"), "record.png");
    run("recordCtx -e -image1 \"other.png\" mine");
    EXPECT_EQ(runString("contextInfo -image1 mine"), "other.png");
    EXPECT_THAT(calls(), ElementsAre()) << "making a context does not make it current";
}

TEST_F(Tool, FlagsOfItsOwnReachTheCommand) {
    run("recordCtx mine; recordCtx -e -level 7 mine");
    EXPECT_EQ(runInt("recordCtx -q -lv mine"), 7);
    EXPECT_EQ(runString("recordCtx -level 3 other"), "other");
    EXPECT_EQ(runInt("recordCtx -q -level other"), 3);
    EXPECT_THAT(errorOf("recordCtx -e -nonsense 1 mine"), HasSubstr("-nonsense"));
    EXPECT_THAT(errorOf("recordCtx -e -level 1 nobody"), HasSubstr("nobody"));
}

TEST_F(Tool, SetupAndCleanupBracketBeingCurrent) {
    run("recordCtx one; recordCtx two");
    EXPECT_EQ(runString("currentCtx"), "selectSuperContext");
    run("setToolTo one");
    EXPECT_EQ(runString("currentCtx"), "one");
    run("setToolTo two; setToolTo two; global string $gSelect; setToolTo $gSelect");
    EXPECT_THAT(calls(), ElementsAre("setup", "cleanup", "setup", "cleanup", "setup", "cleanup"));
    EXPECT_THAT(errorOf("setToolTo nobody"), HasSubstr("nobody"));
    EXPECT_EQ(runString("currentCtx"), "selectSuperContext");
}

TEST_F(Tool, IsLeftBeforeThePluginGoes) {
    run("recordCtx one; setToolTo one");
    host::pluginServices().leaveToolsOf("otherCtx");
    EXPECT_EQ(runString("currentCtx"), "one");
    host::pluginServices().leaveToolsOf("recordCtx");
    EXPECT_EQ(runString("currentCtx"), "selectSuperContext");
    EXPECT_THAT(calls(), ElementsAre("setup", "cleanup"));

    run("setToolTo one");
    EXPECT_TRUE(host::pluginServices().deregisterContextCommand("recordCtx", ""));
    EXPECT_THAT(calls(), ElementsAre("setup", "cleanup", "setup", "cleanup", "deleted"));
    EXPECT_EQ(runInt("contextInfo -exists one"), 0);
    EXPECT_THAT(errorOf("recordCtx"), HasSubstr("recordCtx"));
    EXPECT_FALSE(host::pluginServices().deregisterContextCommand("recordCtx", ""));
}

TEST_F(Tool, IsLeftWhenTheSceneIsReplaced) {
    run("recordCtx one; setToolTo one");
    host::fileIO().newScene();
    EXPECT_THAT(calls(), ElementsAre("setup", "cleanup"));
    EXPECT_EQ(runString("currentCtx"), "selectSuperContext");
    EXPECT_EQ(runInt("contextInfo -exists one"), 1);
}

TEST_F(Tool, ChangingToolsWhileOneIsSetUpIsRefused) {
    RecordingContext::onSetup = "setToolTo selectSuperContext";
    run("recordCtx one; setToolTo one");
    EXPECT_EQ(runString("currentCtx"), "one");
    EXPECT_THAT(calls(), ElementsAre("setup"));
}

TEST_F(Tool, NamesThatAreTakenAreNotRegistered) {
    auto& services = host::pluginServices();
    const auto creator = uitest::RecordingCommand::creator;
    EXPECT_EQ(services.registerContextCommand("recordCtx", creator, "", nullptr, nullptr),
              MS::kInvalidParameter);
    EXPECT_EQ(services.registerContextCommand("setToolTo", creator, "", nullptr, nullptr),
              MS::kInvalidParameter);
}

TEST_F(Tool, ChangingToolsFillsNoCacheOfPictures) {
    const QTemporaryDir directory;
    const QString file = directory.filePath("tool.png");
    QPixmap picture(64, 64);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(file));
    run("recordCtx -image1 \"" + file.toStdString() + "\" one");
    const auto change = [this] {
        run("setToolTo one; setToolTo selectSuperContext");
        uitest::settle();
        window->grab();
    };
    change();
    // The oldest of what is kept goes first when there is no room.
    const int limit = QPixmapCache::cacheLimit();
    QPixmapCache::setCacheLimit(200); // KB
    const QPixmapCache::Key oldest = QPixmapCache::insert(picture);
    for (int i = 0; i < 60; ++i)
        change();
    QPixmap found;
    EXPECT_TRUE(QPixmapCache::find(oldest, &found));
    QPixmapCache::setCacheLimit(limit);
}
