// What waits for the program to be idle, and plug-ins that something wants unloaded while they run.
#include "host_ui/UiTest.h"
#include "plugins/PluginLoader.h"
#include "support/HostProgram.h"
#include "support/Paths.h"
#include "ui/Playback.h"

#include <QApplication>
#include <QDialog>
#include <QMessageBox>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {

const char* const inUse = "cannot be unloaded because it is still in use";

} // namespace

class Idle : public uitest::UiTest {
protected:
    void SetUp() override {
        UiTest::SetUp();
        run("global string $heard; $heard = \"\"");
    }
    static std::string later(const std::string& what, const std::string& flag = {}) {
        return "evalDeferred " + flag + "\"global string $heard; $heard += \\\"" + what +
               "\\\"\"; ";
    }
    std::string heard() { return runString("$heard"); }
    bool hears(const std::string& what) {
        return uitest::waitFor([&] { return heard() == what; });
    }
};

TEST_F(Idle, TheQueueGoesOnInADialogThatItOpens) {
    // The dialog of the second one holds up the rest, and what they queue comes last.
    run(later("a", "-lowestPriority ") + later("b") +
        "evalDeferred \"confirmDialog; global string $heard; $heard += \\\"closed\\\"\"; " +
        later("c") + "evalDeferred \"evalDeferred \\\"$heard += \\\\\\\"e\\\\\\\"\\\"\"; " +
        later("d"));
    // The program waits in the dialog until this closes it.
    bool more = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        auto* box = window->findChild<QMessageBox*>();
        if (box && !more && heard() == "bcdae")
            run(later("f") + later("g"));
        more = more || heard() == "bcdae";
        if (box && heard() == "bcdaefg")
            box->reject();
    });
    watch.start(5);
    EXPECT_TRUE(hears("bcdaefgclosed")) << heard();
}

TEST_F(Idle, NobodyIsIdleWhileDraggingOrPlaying) {
    run("recordCtx one; setToolTo one");
    moveTo(view(), {60, 60});
    press();
    run(later("a"));
    moveTo(view(), {80, 60});
    QTest::qWait(60);
    EXPECT_EQ(heard(), "");
    release();
    EXPECT_TRUE(hears("a"));

    run("play -state true; " + later("b"));
    const int frame = runInt("currentTime -q");
    EXPECT_TRUE(uitest::waitFor([&] { return runInt("currentTime -q") > frame + 1; }));
    EXPECT_EQ(heard(), "a");
    run("play -state false");
    EXPECT_TRUE(hears("ab"));

    // A dialog that a press opened is not part of the drag.
    moveTo(view(), {60, 60});
    press();
    QDialog question(window.get());
    question.setModal(true);
    question.show();
    run(later("c"));
    EXPECT_TRUE(hears("abc"));
    question.hide();
    release();
}

class BusyPlugin : public Idle {
protected:
    void SetUp() override {
        Idle::SetUp();
        run("loadPlugin \"" + support::testPluginPath().toStdString() + "\"");
    }
    void TearDown() override {
        run("unloadPlugin hosttestplugin");
        EXPECT_EQ(runInt("pluginInfo -q -loaded hosttestplugin"), 0);
        Idle::TearDown();
    }
};

TEST_F(BusyPlugin, IsNotUnloadedUnderACallOfIts) {
    for (const char* force : {"", "-force "}) {
        SCOPED_TRACE(force);
        const std::string unload = "unloadPlugin " + std::string(force) + "hosttestplugin";
        EXPECT_EQ(errorOf("hostTestRun \"" + unload + "\""),
                  "line 1: Plug-in, \"hosttestplugin\", " + std::string(inUse) +
                      ": a call of it has not returned");
    }
    run("evalDeferred \"unloadPlugin hosttestplugin\";"
        "evalDeferred \"$heard += `pluginInfo -q -unloadOk hosttestplugin`\"");
    QMessageBox* box = nullptr;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        box = window->findChild<QMessageBox*>();
        if (box && heard() == "0")
            box->reject();
    });
    watch.start(5);
    run("hostTestRun \"confirmDialog\"");
    EXPECT_NE(box, nullptr);
    EXPECT_EQ(heard(), "0");
    EXPECT_EQ(runInt("pluginInfo -q -unloadOk hosttestplugin"), 1);
}

TEST_F(BusyPlugin, IsNotUnloadedInAPressOfItsTool) {
    run("global proc hostTestPress() { global string $heard; confirmDialog; $heard += \"closed\"; "
        "};"
        "setToolTo `hostTestCtx`");
    std::string message;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        auto* box = window->findChild<QMessageBox*>();
        if (!box)
            return;
        watch.stop();
        message = errorOf("unloadPlugin hosttestplugin");
        box->reject();
    });
    watch.start(5);
    moveTo(view(), {60, 60});
    press();
    release();
    EXPECT_THAT(message, HasSubstr(inUse));
    EXPECT_EQ(heard(), "closed");
    EXPECT_EQ(runString("contextInfo -c `currentCtx`"), "hostTestCtx") << "the tool is still there";
}

TEST(BusyProgram, QuitsOutOfADialogOfAPlugin) {
    const QTemporaryDir directory;
    const QStringList plugin{"--plugin", support::testPluginPath()};
    // The second time something wants the plug-in gone as well.
    for (const char* before : {"", "evalDeferred \"unloadPlugin -force hosttestplugin\";"}) {
        SCOPED_TRACE(before);
        const support::Outcome outcome =
            support::HostProgram(
                plugin + QStringList{"--command", QString(before) +
                                                      "evalDeferred \"quit -force -exitCode 3\";"
                                                      "hostTestRun \"confirmDialog; confirmDialog; "
                                                      "print \\\"returned\\\\n\\\"\""},
                directory.path())
                .outcome();
        EXPECT_EQ(outcome.code, 3) << outcome.err;
        EXPECT_THAT(outcome.out, HasSubstr("returned"));
        EXPECT_EQ(outcome.err.find(inUse) != std::string::npos, *before != 0) << outcome.err;
    }
}

TEST(BusyProgram, TellsPluginsTheScaleOfTheScreen) {
    const QTemporaryDir directory;
    const struct {
        QStringList environment;
        const char* says;
    } cases[] = {
        {{"QT_FONT_DPI", "96"}, "at:24\n"},
        {{"QT_FONT_DPI", "100"}, "at:25\n"},
        {{"QT_FONT_DPI", "192"}, "at:48\n"},
        // Qt itself makes everything twice as large.
        {{"QT_FONT_DPI", "96", "QT_SCALE_FACTOR", "2"}, "at:24\n"},
        {{"QT_FONT_DPI", "144", "QT_SCALE_FACTOR", "2"}, "at:36\n"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.environment.join(' ').toStdString());
        const support::Outcome outcome =
            support::HostProgram(
                {"--plugin", support::testPluginPath(), "--command",
                 "print (\"at:\" + `hostTestRun -scale 24` + \"\\n\"); quit -force"},
                directory.path(), each.environment)
                .outcome();
        EXPECT_EQ(outcome.code, 0) << outcome.err;
        EXPECT_THAT(outcome.out, HasSubstr(each.says));
    }
}
