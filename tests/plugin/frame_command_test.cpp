// rvVellumFrame: from the script line to the frames of the drawing and back through the undo queue.
#include "commands/FrameCommand.h"
#include "document/DocumentEnvironment.h"
#include "document/IntTime.h"
#include "document/LayerManager.h"
#include "foundation/UndoQueue.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/LinkedClasses.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/session/Cameras.h"
#include "plugin/session/PluginState.h"
#include "plugin/session/SceneTime.h"
#include "script/PluginCommands.h"
#include "ui/MainWindow.h"
#include "ui/TimeSlider.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MSelectionList.h>

#include <limits>

namespace vellum::test {
namespace {

QString line(const char* text) {
    return QString::fromLatin1(text);
}

class Frames : public LinkedClasses, public DocumentEnvironment {
protected:
    void SetUp() override {
        LinkedClasses::SetUp();
        ASSERT_TRUE(host::script::registerPluginCommand("rvVellumFrame", FrameCommand::creator,
                                                        FrameCommand::newSyntax, "linked"));
        setDocumentEnvironment(this);
        pluginState().interactive = true;
        ASSERT_TRUE(run(line("camera; rename camera1 shotCam; currentTime 12; flushUndo")));
    }
    void TearDown() override {
        setDocumentEnvironment(nullptr);
        pluginState().interactive = false;
        LinkedClasses::TearDown();
        EXPECT_TRUE(host::script::unregisterPluginCommand("rvVellumFrame"));
    }

    bool cameraExists(const QString& camera) const override { return vellum::cameraExists(camera); }

    void highlight(double start, double end) {
        window->timeSlider().setRange(host::TimeSlider::Range{start, end});
    }

    /// Times of the active layer's frames, "" for none, "-" without a layer.
    QString times(const char* camera = "persp") {
        const Layer* layer = document()->activeLayer(line(camera));
        QStringList all;
        for (int i = 0; layer && i < layer->frameCount(); ++i)
            all += QString::number(layer->frameAt(i)->intTime());
        return layer ? all.join(QLatin1Char(' ')) : line("-");
    }

    void undoable(const QString& command, const char* before, const char* after) {
        ASSERT_EQ(times(), line(before)) << command.toStdString();
        ASSERT_TRUE(run(command)) << command.toStdString() << " " << allErrors().toStdString();
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(times(), line(after)) << command.toStdString();
            ASSERT_TRUE(run(line("undo"))) << command.toStdString();
            EXPECT_EQ(times(), line(before)) << command.toStdString();
            ASSERT_TRUE(run(line("redo"))) << command.toStdString();
        }
        EXPECT_EQ(times(), line(after)) << command.toStdString();
    }
};

TEST_F(Frames, EveryFlagIsOneUndoableStep) {
    document();
    undoable(line("rvVellumFrame -insert persp"), "-", "12");
    highlight(10, 15);
    undoable(line("rvVellumFrame -ins persp"), "12", "10 11 12 13 14");
    EXPECT_EQ(document()->currentCamera(), line("persp"));
    undoable(line("rvVellumFrame -cutFrame"), "10 11 12 13 14", "");
    highlight(30, 31);
    undoable(line("rvVellumFrame -pst persp"), "", "30 31 32 33 34");
    undoable(line("rvVellumFrame -del"), "30 31 32 33 34", "31 32 33 34");
    undoable(line("rvVellumFrame -clear"), "31 32 33 34", "31 32 33 34");
    undoable(line("currentTime 40; rvVellumFrame -duplicate"), "31 32 33 34", "31 32 33 34 40");
    undoable(command::moveFrames(-30, 31, 40), "31 32 33 34 40", "1 2 3 4 10");
    highlight(2, 3);
    undoable(command::retimeFrames(3, false, false), "1 2 3 4 10", "1 2 5 6 12");
    EXPECT_EQ(currentIntTime(), 2);
    undoable(command::retimeFrames(2, true, true), "1 2 5 6 12", "1 2 7 8 14");
    EXPECT_EQ(currentIntTime(), 7);
    undoable(line("rvVellumFrame -stepForward"), "1 2 7 8 14", "1 2 7 8 14");
    EXPECT_EQ(currentIntTime(), 8);
    undoable(line("rvVellumFrame -sb"), "1 2 7 8 14", "1 2 7 8 14");
    EXPECT_EQ(currentIntTime(), 7);
}

TEST_F(Frames, OneOperationACallTheFirstOfTheList) {
    document();
    ASSERT_TRUE(run(line("rvVellumFrame -delete -insert persp")));
    EXPECT_EQ(times(), line("12"));
    ASSERT_TRUE(run(line("flushUndo; rvVellumFrame -copy persp")));
    EXPECT_EQ(number(line("undoInfo -q -uqe")), 1) << "copying is no step";
    ASSERT_TRUE(run(line("rvVellumFrame -insert shotCam")));
    highlight(20, 22);
    ASSERT_TRUE(run(line("rvVellumFrame -paste shotCam"))) << "one clipboard for all cameras";
    EXPECT_EQ(times("shotCam"), line("12 20"));
}

TEST_F(Frames, RetimeAddressesTheCurrentCamera) {
    document();
    ASSERT_TRUE(run(line("rvVellumFrame -insert persp; currentTime 13;"
                         "rvVellumFrame -insert persp; rvVellumFrame -insert shotCam")));
    highlight(12, 13);
    undoable(line("rvVellumFrame -retime 4 shotCam"), "12 13", "12 16");
    EXPECT_EQ(times("shotCam"), line("13"));
    // One that is named is moved in, whatever is current.
    ASSERT_TRUE(run(line("rvVellumFrame -move 5 13 13 shotCam")));
    EXPECT_EQ(times("shotCam"), line("18"));
}

TEST_F(Frames, RefusalsSayWhyAndChangeNothing) {
    refuses(line("rvVellumFrame -insert nobody"), line("[Vellum2] Camera does not exist: nobody"));
    refuses(line("rvVellumFrame -insert persp"),
            line("[Vellum2] Failed to insert key. Node does not exist."));
    refuses(line("rvVellumFrame -delete persp"), line("[Vellum2] Node not found"));
    document();
    refuses(line("rvVellumFrame persp"), line("[Vellum2] Invalid command parameters"));
    refuses(line("rvVellumFrame -relative -moveToNext persp"),
            line("[Vellum2] Invalid command parameters"));
    EXPECT_FALSE(run(line("rvVellumFrame -stepForward persp"))) << "nowhere to go";
    EXPECT_TRUE(run(line("rvVellumFrame -stepBack persp")));
    refuses(line("rvVellumFrame -duplicate persp"),
            line("[Vellum2] An active layer does not exist."));
    EXPECT_FALSE(run(line("rvVellumFrame -q -insert persp")));
    EXPECT_FALSE(run(line("rvVellumFrame -retime")));
    EXPECT_FALSE(run(line("rvVellumFrame -move 1 2 persp")));
    EXPECT_EQ(times(), line("-"));
    EXPECT_EQ(number(line("file -q -modified")), 1);
}

TEST_F(Frames, TimesBeyondTheFrameNumbersAreRefused) {
    document();
    for (const bool interactive : {true, false}) {
        SCOPED_TRACE(interactive ? "interactive" : "batch");
        pluginState().interactive = interactive;
        for (const char* flag : {"-insert", "-delete", "-copy", "-paste", "-clear", "-retime 2"}) {
            ASSERT_TRUE(run(line("currentTime 3000000000")));
            refuses(line("rvVellumFrame ") + line(flag) + line(" persp"),
                    line("[Vellum2] Time range is out of bounds: 3000000000 to 3000000001"));
        }
        EXPECT_EQ(currentFrame(), std::numeric_limits<int>::max()) << "the last there is";
        EXPECT_EQ(times(), line("-"));
    }
    pluginState().interactive = true;
    for (const char* time : {"2147483647", "-2147483648", "0"})
        ASSERT_TRUE(run(line("currentTime ") + line(time) + line("; rvVellumFrame -ins persp")))
            << time;
    const char* all = "-2147483648 0 2147483647";
    EXPECT_EQ(times(), line(all));
    refuses(line("rvVellumFrame -move -2147483648 -2147483648 2147483647 persp"),
            line("[Vellum2] Move Failed. Time -4294967296 is out of bounds"));
    refuses(line("rvVellumFrame -move 2147483647 0 0 persp"),
            line("[Vellum2] Move Failed. A frame already exists at time 2147483647"));
    refuses(line("rvVellumFrame -retime 2147483647 -relative"),
            line("[Vellum2] Retime Failed. Time 4294967294 is out of bounds"));
    EXPECT_EQ(times(), line(all));
    undoable(line("currentTime 2147483647; rvVellumFrame -del persp"), all, "-2147483648 0");
}

TEST_F(Frames, AnUndoThatIsRefusedWaitsInTheQueue) {
    document();
    highlight(10, 12);
    ASSERT_TRUE(run(line("rvVellumFrame -insert shotCam; flushUndo; rvVellumFrame -del shotCam")));
    EXPECT_EQ(times("shotCam"), line(""));
    MSelectionList list;
    MObject camera;
    list.add("shotCam");
    ASSERT_EQ(list.getDependNode(0, camera), MS::kSuccess);
    MFnDependencyNode(camera).setName("renamed"); // outside of the undo queue
    refuses(line("undo"), line("[Vellum2] Camera does not exist: shotCam"));
    EXPECT_EQ(times("shotCam"), line(""));
    MFnDependencyNode(camera).setName("shotCam");
    ASSERT_TRUE(run(line("undo")));
    EXPECT_EQ(times("shotCam"), line("10 11")) << "nothing was lost";
    MFnDependencyNode(camera).setName("renamed");
    refuses(line("redo"), line("[Vellum2] Camera does not exist: shotCam"));
    EXPECT_EQ(times("shotCam"), line("10 11"));
    MFnDependencyNode(camera).setName("shotCam");
    ASSERT_TRUE(run(line("redo")));
    EXPECT_EQ(times("shotCam"), line(""));
}

TEST_F(Frames, TheDrawingMayGoAndComeBackInBetween) {
    document();
    const QString shape = text(line("stringArrayToString(`ls -type rvVellum`, \"\")"));
    ASSERT_TRUE(run(line("rvVellumFrame -insert persp")));
    ASSERT_TRUE(run(line("delete ") + shape));
    EXPECT_FALSE(hasActiveNode());
    ASSERT_TRUE(run(line("undo; undo")));
    EXPECT_EQ(times(), line("-"));
    ASSERT_TRUE(run(line("redo; redo; undo")));
    EXPECT_EQ(times(), line("12"));
    // A drawing that replaced it is not touched.
    {
        const host::UndoSuspender off;
        ASSERT_TRUE(run(line("delete ") + shape + line("; createNode rvVellum")));
    }
    refuses(line("undo"), line("[Vellum2] Node not found"));
}

class LoadedFrames : public Session {};

TEST_F(LoadedFrames, StepsFollowTheFramesOfTheWholePlugin) {
    ASSERT_TRUE(run(line("rvVellumNode -layer -camera persp; rvVellumFrame -insert persp;"
                         "currentTime 20; rvVellumFrame -insert persp; currentTime 15;"
                         "file -modified false; flushUndo")));
    const auto now = [this] { return number(line("$now = int(`currentTime -q`)")); };
    for (const int expected : {20, 1, 20}) {
        ASSERT_TRUE(run(line("rvVellumFrame -stepForward persp")));
        EXPECT_EQ(now(), expected);
    }
    EXPECT_EQ(number(line("file -q -modified")), 0) << "looking changes nothing";
    ASSERT_TRUE(run(line("undo; undo")));
    EXPECT_EQ(now(), 20);
    ASSERT_TRUE(run(line("undo")));
    EXPECT_EQ(now(), 15);
    ASSERT_TRUE(run(line("rvVellumFrame -retime 4 persp")));
    EXPECT_EQ(now(), 1);
    EXPECT_EQ(number(line("file -q -modified")), 1);
    ASSERT_TRUE(run(line("rvVellumFrame -stepBack persp")));
    EXPECT_EQ(now(), 5);
}

} // namespace
} // namespace vellum::test
