// Loading and unloading when a step fails: its message, and a program that goes on working.
#include "foundation/Events.h"
#include "foundation/Faults.h"
#include "foundation/Idle.h"
#include "journey/LayerData.h"
#include "support/Hand.h"
#include "support/HostProgram.h"
#include "support/Paths.h"
#include "support/Session.h"
#include "ui/MainWindow.h"
#include "ui/TimeSlider.h"

#include <QFile>
#include <QTemporaryDir>

#include <vector>

namespace vellum::test {
namespace {

struct Step {
    const char* step;
    const char* loading;   ///< message when it fails at load
    const char* unloading; ///< and its counterpart at unload, of "de" + step
    bool reason;           ///< followed by the status's own words
};

const std::vector<Step>& steps() {
    static const std::vector<Step> list{
        {"registerCommand rvVellumNode", "Failed to register 'rvVellumNode' command: ",
         "Failed to deregister 'rvVellumNode' command: ", true},
        {"registerCommand rvVellumLayer", "Failed to register 'rvVellumLayer' command: ",
         "Failed to deregister 'rvVellumLayer' command: ", true},
        {"registerCommand rvVellumFrame", "Failed to register 'rvVellumFrame' command: ",
         "Failed to deregister 'rvVellumFrame' command: ", true},
        {"registerCommand rvVellumStroke", "Failed to register 'rvVellumStroke' command: ",
         "Failed to deregister 'rvVellumStroke' command: ", true},
        {"registerCommand rvVellumUtil", "Failed to register 'rvVellumUtil' command: ",
         "Failed to deregister 'rvVellumUtil' command: ", true},
        {"registerContextCommand rvVlDrawCtx", "Failed to register 'rvVlDrawCtx' contextCommand: ",
         "Failed to deregister 'rvVlDrawCtx' contextCommand: ", true},
        {"registerContextCommand rvVlTransformCtx",
         "Failed to register 'rvVlTransformCtx' contextCommand: ",
         "Failed to deregister 'rvVlTransformCtx' contextCommand: ", true},
        {"registerData rvLayerData", "Could not register 'rvLayerData",
         "Could not deregister rvLayerData", false},
        {"registerNode rvVellum", "Failed to register base node", "Failed to deregister base node",
         false},
        {"registerDrawOverrideCreator rvVellumPlugin", "Failed to register draw node override",
         "Failed to deregister base node draw override", false},
    };
    return list;
}

class Registration : public HostSession {
protected:
    void TearDown() override {
        host::faults::clear();
        EXPECT_TRUE(run(QStringLiteral("file -f -new")));
        host::idle::drainAll();
        if (number(QStringLiteral("pluginInfo -q -loaded vellum2")) == 1) {
            EXPECT_TRUE(unload()) << allErrors().toStdString();
        }
    }

    bool load() {
        errors.clear();
        return run(QStringLiteral("loadPlugin \"%1\"").arg(support::pluginPath()));
    }
    bool unload() {
        errors.clear();
        return run(QStringLiteral("unloadPlugin vellum2"));
    }
    void says(const Step& step, const char* message) {
        ASSERT_FALSE(errors.isEmpty()) << step.step;
        const std::string first = errors.first().toStdString();
        if (step.reason) {
            EXPECT_EQ(first.rfind(message, 0), 0U) << first;
            EXPECT_GT(first.size(), std::string(message).size()) << first;
        } else {
            EXPECT_EQ(first, message);
        }
        EXPECT_EQ(errors.filter(QStringLiteral("register")).size(), 1) << allErrors().toStdString();
    }
    /// How often a load that goes well calls a script command in making the main menu.
    int menuCallsOfALoad(const char* fault) {
        const auto fails = [&](int passes) {
            host::faults::arm(fault, passes);
            EXPECT_TRUE(load()) << allErrors().toStdString();
            host::faults::clear();
            const bool failed = !errors.filter(QStringLiteral("main menu")).isEmpty();
            EXPECT_TRUE(unload()) << allErrors().toStdString();
            return failed;
        };
        int calls = 1;
        while (fails(calls))
            calls *= 2;
        for (int step = calls / 4; step > 0; step /= 2) {
            if (!fails(calls - step))
                calls -= step;
        }
        return calls;
    }
    /// A short piece of work with everything the plug-in has.
    void works() {
        errors.clear();
        EXPECT_TRUE(run(QStringLiteral("rvVellumNode -layer -camera persp; rvVellumUtil -brushTool;"
                                       "rvVellumFrame -insert; currentTime 9; rvVellumNode -rg;"
                                       "currentTime 1; setToolTo selectSuperContext;"
                                       "file -f -new")));
        support::settle();
        EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
    }
    /// What goes on without the plug-in: events, drawing, the slider, the menu bar.
    void hostWorks() {
        errors.clear();
        EXPECT_TRUE(run(QStringLiteral("polyCube; select -cl; currentTime 5; undo; currentTime 1;"
                                       "file -f -new")));
        support::settle();
        EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
        EXPECT_TRUE(window->timeSlider().findChildren<QWidget*>().isEmpty());
        EXPECT_EQ(number(QStringLiteral("size(`scriptJob -listJobs`)")), jobs_);
    }

    const int jobs_ = number(QStringLiteral("size(`scriptJob -listJobs`)"));
};

TEST_F(Registration, AFailedLoadSaysWhyAndLeavesTheProgramAlone) {
    run(QStringLiteral(
        "scriptJob -f -k `scriptJob -e SceneSaved \"\"`")); // the host listens from here
    const std::size_t listeners = host::events::listenerCount();
    for (const Step& step : steps()) {
        SCOPED_TRACE(step.step);
        host::faults::arm(step.step);
        EXPECT_FALSE(load());
        says(step, step.loading);
        EXPECT_EQ(number(QStringLiteral("pluginInfo -q -loaded vellum2")), 0);
        EXPECT_EQ(number(QStringLiteral("menu -exists $gRvVlMainMenu")), 0);
        EXPECT_EQ(host::events::listenerCount(), listeners);
        hostWorks();
        host::faults::clear();
        ASSERT_TRUE(load()) << allErrors().toStdString();
        EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
        works();
        ASSERT_TRUE(unload());
    }
}

TEST_F(Registration, AFailedUnloadSaysWhyAndCanBeTakenUpAgain) {
    for (const Step& step : steps()) {
        SCOPED_TRACE(step.step);
        ASSERT_TRUE(load());
        host::faults::arm("de" + std::string(step.step));
        EXPECT_FALSE(unload());
        says(step, step.unloading);
        EXPECT_EQ(number(QStringLiteral("pluginInfo -q -loaded vellum2")), 1);
        EXPECT_TRUE(run(QStringLiteral("polyCube; currentTime 4; currentTime 1")));
        host::faults::clear();
        EXPECT_TRUE(unload()) << allErrors().toStdString();
        EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
        hostWorks();
    }
}

TEST_F(Registration, TheFirstAndTheLastStepsHaveTheirMessagesToo) {
    host::faults::arm("MFnPlugin");
    EXPECT_FALSE(load());
    ASSERT_FALSE(errors.isEmpty());
    EXPECT_TRUE(errors.first().startsWith(QStringLiteral("Failed to initialize plugin: ")));
    host::faults::clear();

    ASSERT_TRUE(load());
    host::faults::arm("removeCallbacks");
    EXPECT_FALSE(unload());
    EXPECT_EQ(errors.value(0), QStringLiteral("Failed to remove callbacks"));
    host::faults::clear();
    EXPECT_EQ(number(QStringLiteral("exists rvVellumNode")), 1) << "nothing was deregistered";
    works();

    host::faults::arm("MFnPlugin");
    EXPECT_FALSE(unload());
    EXPECT_TRUE(errors.value(0).startsWith(QStringLiteral("Failed to uninitialize plugin: ")))
        << allErrors().toStdString();
    host::faults::clear();
    EXPECT_TRUE(unload()) << allErrors().toStdString();
    hostWorks();
}

TEST_F(Registration, MenuAndJobMayFailWithoutStoppingTheLoad) {
    struct Case {
        const char* fault;
        int passes;
        const char* message;
    };
    const int items = menuCallsOfALoad("command menuItem");
    ASSERT_GT(items, 2) << "the menu has entries, and they are brought up to date";
    for (const Case& one : {Case{"command menu", 0, "Failed to create main menu"},
                            Case{"command menuItem", 1, "Failed to create main menu"},
                            Case{"command menuItem", items - 1, "Failed to update main menu"},
                            Case{"command scriptJob", 0, nullptr}}) {
        SCOPED_TRACE(one.fault + (" after " + std::to_string(one.passes)));
        host::faults::arm(one.fault, one.passes);
        EXPECT_TRUE(load()) << allErrors().toStdString();
        const QStringList said = errors;
        host::faults::clear();
        if (one.message)
            EXPECT_TRUE(said.contains(QLatin1String(one.message)))
                << said.join(QLatin1Char('|')).toStdString();
        else
            EXPECT_TRUE(said.filter(QStringLiteral("Failed")).isEmpty());
        works();
        EXPECT_TRUE(unload()) << allErrors().toStdString();
        EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
        hostWorks();
    }

    host::faults::arm("command deleteUI");
    ASSERT_TRUE(load());
    EXPECT_TRUE(unload());
    EXPECT_TRUE(errors.contains(QStringLiteral("Failed to delete main menu")));
    host::faults::clear();
    ASSERT_TRUE(load()) << "the menu that stayed is made anew";
    EXPECT_EQ(number(QStringLiteral("menu -exists $gRvVlMainMenu")), 1);
}

TEST_F(Registration, WithoutPreferencesItStillLoads) {
    host::faults::arm("command internalVar");
    EXPECT_TRUE(load());
    EXPECT_TRUE(
        errors.contains(QStringLiteral("[Vellum2] Failed to retrieve Maya prefs directory")));
    works();
    EXPECT_TRUE(unload());
    host::faults::clear();
}

TEST_F(Registration, WithoutATimeSliderItSaysSoOnceAndWorks) {
    window.reset();
    EXPECT_TRUE(load());
    EXPECT_EQ(errors.filter(QStringLiteral("[Vellum2] Failed to get time control widget.")).size(),
              1)
        << allErrors().toStdString();
    EXPECT_TRUE(run(QStringLiteral("rvVellumNode; currentTime 3; select -cl; select vellum;"
                                   "rvVellumUtil -refreshTimelineDisplay; file -f -new")));
}

TEST_F(Registration, AProgramThatDoesNotSayWhetherItHasAnInterfaceCountsAsHavingOne) {
    host::faults::arm("command about");
    ASSERT_TRUE(load()) << allErrors().toStdString();
    host::faults::clear();
    EXPECT_EQ(number(QStringLiteral("menu -exists $gRvVlMainMenu")), 1);
    EXPECT_EQ(window->timeSlider().findChildren<QWidget*>().size(), 1);
    works();
}

TEST_F(Registration, AForeignHandInItsJobIsNoReasonToFail) {
    ASSERT_TRUE(load());
    ASSERT_TRUE(run(QStringLiteral("scriptJob -killAll -force")));
    errors.clear();
    EXPECT_TRUE(unload());
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
    EXPECT_FALSE(unload()) << "it is gone";
    ASSERT_TRUE(load());
    EXPECT_TRUE(load()) << "a second load is none";
    EXPECT_EQ(window->timeSlider().findChildren<QWidget*>().size(), 1);
    EXPECT_EQ(number(QStringLiteral("size(`scriptJob -listJobs`)")), 1);
}

TEST_F(Registration, LeavesItsToolsBeforeAnythingElseGoes) {
    for (const char* tool : {"-draw", "-transform"}) {
        SCOPED_TRACE(tool);
        ASSERT_TRUE(load());
        ASSERT_TRUE(run(QStringLiteral("rvVellumNode; rvVellumUtil %1; delete vellum").arg(tool)));
        std::vector<int> menus; // whether the menu was there at each change of tool
        const int listener = host::events::listen("ToolChanged", [&] {
            menus.push_back(number(QStringLiteral("menu -exists $gRvVlMainMenu")));
        });
        host::faults::arm("leaveToolsOf");
        EXPECT_TRUE(unload()) << allErrors().toStdString();
        host::faults::clear();
        host::events::removeListener(listener);
        EXPECT_EQ(menus, std::vector<int>{1});
        EXPECT_EQ(text(QStringLiteral("$r = `currentCtx`")), QStringLiteral("selectSuperContext"));
        EXPECT_FALSE(run(QStringLiteral("undo"))) << "no step of ours is left";
        hostWorks();
    }
}

TEST_F(Registration, AForcedUnloadLeavesTheDrawingsToTheScene) {
    QTemporaryDir directory;
    const auto file = [&](const char* name) { return directory.filePath(QLatin1String(name)); };
    const auto save = [&](const QString& path) {
        EXPECT_TRUE(run(QStringLiteral("file -rename \"%1\"; file -f -save").arg(path)));
        QStringList data = layerData(path);
        for (QString& one : data)
            one = one.simplified();
        return data;
    };
    ASSERT_TRUE(load());
    ASSERT_TRUE(run(QStringLiteral("rvVellumNode -layer -camera persp -layerName \"a \\\"b\\\"\";"
                                   "rvVellumFrame -insert persp; setAttr vellumShape.op 0.5;"
                                   "setKeyframe vellumShape.opacity")));
    const QStringList before = save(file("before.ma"));
    ASSERT_EQ(before.size(), 1);
    EXPECT_FALSE(unload()) << "the scene uses it";

    host::faults::arm("removeCallbacks");
    EXPECT_FALSE(run(QStringLiteral("unloadPlugin -force vellum2")));
    host::faults::clear();
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count persp")), 1) << "nothing was lost";
    EXPECT_EQ(save(file("failed.ma")), before);

    ASSERT_TRUE(run(QStringLiteral("unloadPlugin -force vellum2")));
    EXPECT_EQ(text(QStringLiteral("$r = nodeType(\"vellum|vellumShape\")")),
              QStringLiteral("unknownDag"));
    EXPECT_EQ(save(file("without.ma")), before);
    ASSERT_TRUE(load());
    for (const char* name : {"failed.ma", "without.ma"}) {
        SCOPED_TRACE(name);
        errors.clear();
        ASSERT_TRUE(run(QStringLiteral("file -f -open \"%1\"").arg(file(name)))) << name;
        EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
        EXPECT_EQ(text(QStringLiteral("rvVellumLayer -qn 0 persp")), QStringLiteral("a \"b\""));
        EXPECT_EQ(text(QStringLiteral("$r = string(`getAttr vellumShape.op`)")),
                  QStringLiteral("0.5"));
        EXPECT_EQ(number(QStringLiteral("size(`listConnections vellumShape.op`)")), 1) << name;
    }
}

TEST_F(Registration, QuittingSavesAndClosesWhatTheInterfaceHas) {
    const QString file =
        text(QStringLiteral("internalVar -userPrefDir")) + QStringLiteral("/vellum2.ini");
    ASSERT_TRUE(load());
    ASSERT_TRUE(run(QStringLiteral("rvVellumNode -layer -camera persp; rvVellumFrame -insert")));
    EXPECT_EQ(window->timeSlider().findChildren<QWidget*>().size(), 1);
    EXPECT_FALSE(QFile::exists(file));
    host::events::emit("quitApplication");
    EXPECT_TRUE(QFile::exists(file));
    EXPECT_TRUE(window->timeSlider().findChildren<QWidget*>().isEmpty());
    EXPECT_TRUE(run(QStringLiteral("currentTime 4; undo; select -cl; select vellum")));
}

TEST(BatchMode, RegistersEverythingAndMakesNoWidget) {
    support::HostProgram program(
        {QStringLiteral("--batch"), QStringLiteral("--plugin"), support::pluginPath(),
         QStringLiteral("--command"),
         QStringLiteral("print(\"menu \" + ($gRvVlMainMenu == \"\") + \" scripts \" + "
                        "`exists rvVlCreateMainMenu` + \" contexts \" + `exists rvVlDrawCtx` + "
                        "\"\\n\"); rvVellumNode -layer -camera persp; rvVellumFrame -ins persp;"
                        "currentTime 8; print(\"layers \" + `rvVellumLayer -count persp` + "
                        "\"\\n\"); file -f -new; unloadPlugin vellum2; loadPlugin ") +
             QStringLiteral("\"%1\"").arg(support::pluginPath())});
    const support::Outcome outcome = program.outcome();
    EXPECT_EQ(outcome.code, 0);
    EXPECT_NE(outcome.out.find("menu 1 scripts 1"), std::string::npos) << outcome.out;
    EXPECT_NE(outcome.out.find("layers 1"), std::string::npos) << outcome.out;
    EXPECT_EQ(outcome.err.find("Error"), std::string::npos) << outcome.err;
}

TEST(BatchMode, AMenuScriptThatFailsStopsNothing) {
    // A global of that name with another type stops the script where it stands.
    support::HostProgram program(
        {QStringLiteral("--batch"), QStringLiteral("--command"),
         QStringLiteral("global int $gRvVlMainMenu; loadPlugin \"%1\"; rvVellumNode;"
                        "print(\"nodes \" + size(`ls -type rvVellum`) + \"\\n\");")
             .arg(support::pluginPath())});
    const support::Outcome outcome = program.outcome();
    EXPECT_EQ(outcome.code, 0);
    EXPECT_NE(outcome.out.find("nodes 1"), std::string::npos) << outcome.out;
    EXPECT_NE(outcome.err.find("Error: Failed to source scripts"), std::string::npos)
        << outcome.err;
}

TEST(Window, AMenuScriptThatFailsIsSaidOnceAndNothingAsksForTheMenu) {
    const QString plugin = support::pluginPath();
    support::HostProgram program(
        {QStringLiteral("--command"),
         QStringLiteral("global int $gRvVlMainMenu; loadPlugin \"%1\"; rvVellumNode;"
                        "rvVellumUtil -brushTool; rvVellumUtil -e -ghostPrevious 1;"
                        "rvVellumUtil -e -timelineFrameDisplay 1; rvVellumUtil -draw;"
                        "print(\"works \" + `currentCtx` + \"\\n\"); quit -force")
             .arg(plugin)});
    const support::Outcome outcome = program.outcome();
    EXPECT_EQ(outcome.code, 0);
    EXPECT_NE(outcome.out.find("works rvVl"), std::string::npos) << outcome.out;
    EXPECT_NE(outcome.err.find("Error: Failed to source scripts"), std::string::npos)
        << outcome.err;
    EXPECT_EQ(outcome.err.find("rvVlUpdateMainMenu"), std::string::npos) << outcome.err;
}

} // namespace
} // namespace vellum::test
