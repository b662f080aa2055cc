#include "FileFixture.h"
#include "plugins/PluginServices.h"
#include "script/Commands.h"

namespace {

class Plugins : public FileFixture {};

TEST_F(Plugins, LoadUnloadAndLoadAgainLeavesNothingBehind) {
    for (int round = 0; round < 3; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        EXPECT_EQ(run("pluginInfo -q -loaded hosttestplugin"), "0");
        EXPECT_NE(failing("createNode hostTestNode").find("Unknown object type"),
                  std::string::npos);
        loadTestPlugin();
        EXPECT_EQ(run("pluginInfo -q -loaded hosttestplugin"), "1");
        EXPECT_EQ(run("pluginInfo -q -version hosttestplugin") +
                      run("pluginInfo -q -vendor hosttestplugin") +
                      run("pluginInfo -q -apiVersion hosttestplugin"),
                  "3.1TestsAny");
        EXPECT_EQ(run("pluginInfo -q -dependNode hosttestplugin"), "hostTestNode hostTestLocator");
        EXPECT_EQ(run("pluginInfo -q -data hosttestplugin"), "hostTestData");
        EXPECT_EQ(run("pluginInfo -q -command hosttestplugin"), "hostTestData hostTestRun");
        run("hostTestData -text \"x\" -numbers 3 `createNode hostTestNode`;"
            "createNode hostTestLocator; select -all; delete; undo; file -f -new");
        EXPECT_EQ(run("unloadPlugin hosttestplugin"), "hosttestplugin");
        EXPECT_FALSE(host::script::commandExists("hostTestData"));
        EXPECT_EQ(run("pluginInfo -q -ls"), "");
    }
    EXPECT_TRUE(warnings.empty()) << warnings.front();
}

TEST_F(Plugins, AreNotUnloadedWhileTheSceneUsesThem) {
    loadTestPlugin();
    run("createNode hostTestLocator -n l");
    EXPECT_NE(failing("unloadPlugin hosttestplugin").find("still in use"), std::string::npos);
    EXPECT_EQ(run("pluginInfo -q -uo hosttestplugin") + run("getAttr l.amount"), "07");
    run("delete l");
    // The deleted node waits on the undo queue; unloading must not leave it there.
    run("unloadPlugin hosttestplugin");
    EXPECT_EQ(run("undoInfo -q -undoQueueEmpty"), "1");
    loadTestPlugin();
    // Forced, their nodes stay as unknown ones, which files carry as what they were.
    run("createNode hostTestLocator -n l; setAttr l.amount 9; createNode hostTestNode -n d;"
        "connectAttr persp.visibility l.visibility; connectAttr l.template top.template;"
        "unloadPlugin -f hosttestplugin");
    EXPECT_EQ(run("nodeType d") + ' ' + run("nodeType l"), "unknown unknownDag");
    for (const std::string name : {"kept.ma", "kept.mb"}) {
        SCOPED_TRACE(name);
        run("file -rename " + quotedPath(name) + "; file -f -save; file -f -new");
        loadTestPlugin();
        run("file -f -open " + quotedPath(name));
        EXPECT_EQ(run("nodeType d") + ' ' + run("getAttr l.amount"), "hostTestNode 9");
        EXPECT_EQ(run("stringArrayToString(`listConnections l`, \" \")"), "persp top");
        run("unloadPlugin -f hosttestplugin");
    }
}

TEST_F(Plugins, FailuresToLoadAreExplainedAndUndone) {
    EXPECT_NE(failing("loadPlugin noSuchPlugin").find("was not found on MAYA_PLUG_IN_PATH"),
              std::string::npos);
    write("broken.so", "not a library");
    EXPECT_NE(failing("loadPlugin " + quotedPath("broken.so")).find("Unable to dynamically load"),
              std::string::npos);
    EXPECT_EQ(failing("unloadPlugin noSuchPlugin"), "Plug-in, \"noSuchPlugin\", is not loaded.");
    qputenv("HOSTTESTPLUGIN_REFUSE", "1");
    const std::string load =
        "loadPlugin " + host::script::quoted(support::testPluginPath().toStdString());
    EXPECT_NE(failing(load).find("initializePlugin"), std::string::npos);
    qunsetenv("HOSTTESTPLUGIN_REFUSE");
    EXPECT_FALSE(host::script::commandExists("hostTestData")) << "what it registered is gone";
    EXPECT_EQ(run("pluginInfo -q -loaded hosttestplugin"), "0");
    loadTestPlugin();
    loadTestPlugin();
    EXPECT_TRUE(mentions(warnings, "already loaded"));
}

TEST_F(Plugins, TheToolsOfAPluginAreLeftBeforeItGoes) {
    loadTestPlugin();
    std::vector<std::string> left;
    host::PluginServices& services = host::pluginServices();
    const auto before = services.leaveToolsOf;
    services.leaveToolsOf = [&](const std::string& tool) { left.push_back(tool); };
    const auto drop = services.deregisterContextCommand;
    services.deregisterContextCommand = [&](const std::string& tool, const std::string& command) {
        return drop && tool != "someCtx" ? drop(tool, command) : MS::kSuccess;
    };
    host::pluginLoader().find("hosttestplugin")->tools.push_back({"someCtx", ""});
    forget();
    run("unloadPlugin hosttestplugin");
    services.leaveToolsOf = before;
    services.deregisterContextCommand = drop;
    EXPECT_EQ(left, (std::vector<std::string>{"hostTestCtx", "someCtx"}));
    EXPECT_TRUE(mentions(warnings, "did not deregister context command someCtx"));
}

} // namespace
