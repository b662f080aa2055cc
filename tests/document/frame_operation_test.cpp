// What each frame operation does, refuses and brings back.
#include "document/DocumentEnvironment.h"
#include "document/Drawing.h"
#include "document/IntTime.h"
#include "document/Retiming.h"
#include "document/edits/Edit.h"
#include "document/edits/FrameClipboard.h"
#include "document/edits/FrameEdits.h"
#include "plugin/base/Settings.h"
#include "support/FrameChanges.h"
#include "support/Sure.h"

#include <maya/MAnimControl.h>

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

using namespace vellum;
using support::sure;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr int kMost = std::numeric_limits<int>::max();
constexpr int kLeast = std::numeric_limits<int>::min();

using Frames = std::vector<std::pair<int, int>>; // time, mark

namespace op = frame_edit;

class FrameOperations : public testing::Test, public DocumentEnvironment {
protected:
    FrameOperations() {
        setDocumentEnvironment(this);
        MAnimControl::setCurrentTime(fromIntTime(7));
    }
    ~FrameOperations() override { setDocumentEnvironment(nullptr); }

    bool cameraExists(const QString& camera) const override { return camera != missing; }

    /// Frames of the active layer.
    Frames frames(const QString& camera = "cam") const {
        Frames found;
        const Layer* layer = document.activeLayer(camera);
        for (int i = 0; layer && i < layer->frameCount(); ++i)
            found.emplace_back(layer->frameAt(i)->intTime(),
                               drawing::markOf(layer->frameAt(i)->image()));
        return found;
    }

    void draw(const std::vector<int>& times, int firstMark = 1, const QString& camera = "cam") {
        document.insertLayer(camera, -1, drawing::layerWith(camera + "'s", times, firstMark));
    }

    using Verb = bool (Edit::*)(LayerManager&);

    bool does(const std::unique_ptr<Edit>& operation, Verb verb = &Edit::execute) {
        return (*operation.*verb)(document);
    }

    /// Does it, goes back and forth twice, and ends with it done.
    void undoable(const std::unique_ptr<Edit>& operation, const Frames& after) {
        const Frames before = frames();
        const int time = currentIntTime();
        ASSERT_TRUE(operation->execute(document));
        const int timeAfter = currentIntTime();
        for (int i = 0; i < 2; ++i) {
            SCOPED_TRACE(i == 0 ? "at first" : "once more");
            EXPECT_EQ(frames(), after);
            EXPECT_EQ(currentIntTime(), timeAfter);
            ASSERT_TRUE(operation->undo(document));
            EXPECT_EQ(frames(), before);
            EXPECT_EQ(currentIntTime(), time);
            ASSERT_TRUE(operation->redo(document));
        }
    }

    /// Must fail with this message ("" = without any) and change nothing.
    void refuses(const std::unique_ptr<Edit>& operation, const std::string& message,
                 Verb verb = &Edit::execute) {
        const Frames before = frames();
        const std::size_t copied = clipboard->frames().size();
        messages.take();
        EXPECT_FALSE(does(operation, verb));
        EXPECT_THAT(messages.take(), message.empty() ? std::vector<std::string>{}
                                                     : std::vector{"[Vellum2] " + message});
        EXPECT_EQ(frames(), before);
        EXPECT_EQ(clipboard->frames().size(), copied);
        EXPECT_EQ(currentIntTime(), 7);
    }

    const drawing::CleanScene scene;
    LayerManager document;
    const op::Clipboard clipboard = std::make_shared<FrameClipboard>();
    QString missing = "gone";
    drawing::Messages messages;
};

TEST_F(FrameOperations, InsertFillsTheGapsOfTheRange) {
    draw({11, 13});
    undoable(op::insert("cam", {10, 14}), {{10, 0}, {11, 1}, {12, 0}, {13, 2}, {14, 0}});
    undoable(op::insert("cam", {10, 14}), frames());
}

TEST_F(FrameOperations, InsertGivesACameraItsFirstLayer) {
    settings().defaultLayerState = numberOf(LayerState::Static);
    draw({1}, 1, "other");
    document.renameLayer("other", 0, "Layer");
    const auto insert = op::insert("cam", {7, 8});
    for (const Verb verb : {&Edit::execute, &Edit::redo}) {
        ASSERT_TRUE(does(insert, verb));
        EXPECT_EQ(document.layerName("cam", 0), "Layer 1");
        EXPECT_EQ(document.layerState("cam", 0), LayerState::Static);
        EXPECT_EQ(document.activeLayerIndex("cam"), 0);
        EXPECT_EQ(frames(), (Frames{{7, 0}, {8, 0}}));
        ASSERT_TRUE(insert->undo(document));
        EXPECT_EQ(document.cameraLayerCount("cam"), 0);
        settings().defaultLayerState = numberOf(LayerState::Animated);
    }
    EXPECT_EQ(document.currentCamera(), "other");

    LayerManager empty;
    const auto first = op::insert("cam", {7, 7});
    ASSERT_TRUE(first->execute(empty));
    EXPECT_EQ(empty.currentCamera(), "cam");
    ASSERT_TRUE(first->undo(empty));
    EXPECT_EQ(empty.currentCamera(), "") << "as it was";

    empty.addLayer("cam", -1, "other's way");
    messages.take();
    EXPECT_FALSE(first->redo(empty));
    EXPECT_THAT(messages.take(), ElementsAre("[Vellum2] Failed to create layer for frame"));
    EXPECT_EQ(empty.cameraLayerCount("cam"), 1);
}

TEST_F(FrameOperations, DuplicateCopiesThePreviousDrawing) {
    draw({1, 5, 9});
    undoable(op::duplicate("cam"), {{1, 1}, {5, 2}, {7, 2}, {9, 3}});
    refuses(op::duplicate("cam"), "A frame already exists at the current time.");
    document.setLayerState("cam", 0, LayerState::Static);
    document.takeFrameAt("cam", 7);
    refuses(op::duplicate("cam"), "A frame already exists at the current time.");
    draw({8, 20}, 4, "later");
    refuses(op::duplicate("later"), "");

    document.setLayerState("cam", 0, LayerState::Animated);
    const auto duplicate = op::duplicate("cam");
    ASSERT_TRUE(does(duplicate));
    document.takeFrameAt("cam", 7);
    refuses(duplicate, "Failed to undo duplicate frame operation.", &Edit::undo);
}

TEST_F(FrameOperations, DeletedFramesComeBackAsTheyWere) {
    draw({-3, -1, 7, 8});
    test::putFrame(document, "cam", 0, drawing::scribble(5)); // not packed
    const QImage picture = sure(document.currentFrame("cam")).image();
    const auto remove = op::remove("cam", {-1, 7});
    for (const Verb verb : {&Edit::execute, &Edit::redo, &Edit::redo}) {
        ASSERT_TRUE(does(remove, verb));
        EXPECT_EQ(frames(), (Frames{{-3, 1}, {8, 4}}));
        EXPECT_EQ(sure(document.activeLayer("cam")).currentIndex(), 0);
        ASSERT_TRUE(remove->undo(document));
        EXPECT_FALSE(sure(document.currentFrame("cam")).isDecoded()) << "kept packed";
        EXPECT_EQ(sure(document.currentFrame("cam")).image(), picture);
    }
}

TEST_F(FrameOperations, TheClipboardPastesOverWhatIsThere) {
    draw({10, 12, 14, 31, 34});
    ASSERT_TRUE(does(op::copy("cam", {10, 14}, clipboard)));
    const Frames pasted{{10, 1}, {12, 2}, {14, 3}, {30, 1}, {31, 4}, {32, 2}, {34, 3}};
    undoable(op::paste("cam", 30, clipboard), pasted);
    draw({}, 1, "other");
    ASSERT_TRUE(does(op::paste("other", -2, clipboard)));
    EXPECT_EQ(frames("other"), (Frames{{-2, 1}, {0, 2}, {2, 3}})) << "for all cameras";

    const auto cut = op::cut("cam", {31, 32}, clipboard);
    undoable(cut, {{10, 1}, {12, 2}, {14, 3}, {30, 1}, {34, 3}});
    EXPECT_EQ(clipboard->frames().size(), 2U);
    ASSERT_TRUE(does(op::copy("cam", {100, 200}, clipboard)));
    EXPECT_THAT(clipboard->frames(), IsEmpty());
    ASSERT_TRUE(cut->undo(document));
    ASSERT_TRUE(cut->redo(document));
    EXPECT_EQ(clipboard->frames().size(), 2U) << "cut again";
    EXPECT_FALSE(op::copy("cam", {1, 2}, clipboard)->isUndoable());
}

TEST_F(FrameOperations, ClearKeepsBlankFrames) {
    draw({5, 6, 8});
    undoable(op::clear("cam", {6, 100}), {{5, 1}, {6, 0}, {8, 0}});
}

TEST_F(FrameOperations, StepsGoAroundTheEnds) {
    draw({3, 7, 12});
    draw({100}, 1, "elsewhere");
    const auto steps = [this](int from, bool forward) {
        drawing::goTo(document, from);
        const auto step = forward ? op::stepForward() : op::stepBack();
        EXPECT_TRUE(does(step));
        const int to = currentIntTime();
        EXPECT_TRUE(step->undo(document));
        EXPECT_EQ(currentIntTime(), from);
        EXPECT_TRUE(step->redo(document));
        EXPECT_EQ(currentIntTime(), to);
        EXPECT_EQ(sure(document.currentFrame("cam")).intTime(), to) << "the document followed";
        return to;
    };
    EXPECT_EQ(steps(7, true), 12);
    EXPECT_EQ(steps(12, true), 3);
    EXPECT_EQ(steps(-9, true), 3);
    EXPECT_EQ(steps(7, false), 3);
    EXPECT_EQ(steps(3, false), 12);
    EXPECT_EQ(steps(99, false), 12);

    drawing::goTo(document, 7);
    for (const int frames : {1, 0}) {
        SCOPED_TRACE("frames " + std::to_string(frames));
        for (const int other : {3, 12, frames == 0 ? 7 : 3})
            document.takeFrameAt("cam", other);
        refuses(op::stepForward(), "");
        const auto back = op::stepBack();
        EXPECT_TRUE(does(back)) << "though there is nowhere to go";
        EXPECT_TRUE(back->undo(document));
        EXPECT_EQ(currentIntTime(), 7);
    }
}

TEST_F(FrameOperations, MoveTakesFramesAcrossOthers) {
    draw({1, 2, 5, 9});
    undoable(op::move("cam", 10, 1, 2), {{5, 3}, {9, 4}, {11, 1}, {12, 2}});
    undoable(op::move("cam", -20, 9, 11), {{-11, 4}, {-9, 1}, {5, 3}, {12, 2}});
    undoable(op::move("cam", 3, 50, 60), frames());
    refuses(op::move("cam", 16, -11, -9), "Move Failed. A frame already exists at time 5");
    refuses(op::move("cam", 2, -11, -11), "Move Failed. A frame already exists at time -9");
    refuses(op::move("cam", 2, -11, -9), "Move Failed. A frame already exists at time -9");
    refuses(op::move("cam", 0, -11, -9), "Move Failed. The offset is 0");
    refuses(op::move("cam", 3, 9, 8), "Move Failed. The range is empty: 9 to 8");
    refuses(op::move("cam", kMost, 5, 12), "Move Failed. Time 2147483652 is out of bounds");
    refuses(op::move("cam", kLeast, -11, -9), "Move Failed. Time -2147483659 is out of bounds");
    refuses(op::move("", 1, 1, 2), "Camera not specified");
    undoable(op::move("cam", kMost - 12, 12, kMost), {{-11, 4}, {-9, 1}, {5, 3}, {kMost, 2}});
}

TEST_F(FrameOperations, RetimeChangesTheGapsOfTheRange) {
    draw({1, 3, 7});
    undoable(op::retime({1, 7}, 2, false, false), {{1, 1}, {3, 2}, {5, 3}});
    document.setFrameTimes("cam", {1, 3, 7});
    MAnimControl::setCurrentTime(fromIntTime(7));
    undoable(op::retime({1, 7}, 1, true, true), {{1, 1}, {4, 2}, {9, 3}});
    EXPECT_EQ(currentIntTime(), 4) << "the next frame is shown";
    // From the middle of a hold: only that hold changes, what follows moves along.
    undoable(op::retime({6, 6}, 2, false, false), {{1, 1}, {4, 2}, {6, 3}});
    EXPECT_EQ(currentIntTime(), 4);
    undoable(op::retime({1, 1}, -50, true, false), {{1, 1}, {2, 2}, {4, 3}});
    undoable(op::retime({-20, -10}, 9, false, true), {{1, 1}, {2, 2}, {4, 3}});
    EXPECT_EQ(currentIntTime(), 1);
}

TEST_F(FrameOperations, RetimeRefusesWhatDoesNotFit) {
    refuses(op::retime({1, 2}, 3, false, false), "Camera not specified");
    draw({kLeast, 0, kMost - 1});
    refuses(op::retime({0, 0}, 2, true, false), "Retime Failed. Time 2147483648 is out of bounds");
    refuses(op::retime({kLeast, kMost}, kMost, true, false),
            "Retime Failed. Time 6442450940 is out of bounds");
    undoable(op::retime({kLeast, kLeast}, 4, false, true), {{kLeast, 1}, {kLeast + 4, 2}, {2, 3}});
    MAnimControl::setCurrentTime(fromIntTime(7));
    test::takeFrames(document, "cam");
    refuses(op::retime({1, 2}, 3, false, false), "There are no frames to retime");
    missing = "cam";
    refuses(op::retime({1, 2}, 3, false, false), "Camera does not exist: cam");
}

TEST_F(FrameOperations, LockedLayersRefuseEveryChange) {
    draw({1, 8});
    ASSERT_TRUE(does(op::copy("cam", {1, 1}, clipboard)));
    document.setLayerState("cam", 0, LayerState::Locked);
    refuses(op::insert("cam", {3, 4}), "Cannot add frames to a locked layer");
    refuses(op::duplicate("cam"), "Cannot duplicate frames on a locked layer");
    refuses(op::remove("cam", {1, 8}), "Cannot remove frames from a locked layer");
    refuses(op::cut("cam", {1, 8}, clipboard), "Cannot cut frames from a locked layer");
    refuses(op::paste("cam", 4, clipboard), "Cannot paste frames to a locked layer");
    refuses(op::clear("cam", {1, 8}), "Cannot remove frames from a locked layer");
    refuses(op::move("cam", 1, 1, 1), "Cannot move frames on a locked layer");
    refuses(op::retime({1, 8}, 1, false, false), "Cannot retime frames on a locked layer");
    EXPECT_TRUE(does(op::copy("cam", {1, 8}, clipboard))) << "copying changes nothing";
}

TEST_F(FrameOperations, NumbersBeyondTheFramesAreRefused) {
    draw({kLeast, -1, 0, kMost});
    refuses(op::insert("cam", {kLeast, kMost}), "Cannot insert more than 1000000 frames at once");
    refuses(op::copy("cam", {kLeast, kMost}, clipboard), "Time range is too long to be copied");
    refuses(op::cut("cam", {kLeast, kMost}, clipboard), "Time range is too long to be copied");
    ASSERT_TRUE(does(op::copy("cam", {-1, 0}, clipboard)));
    refuses(op::paste("cam", kMost, clipboard), "Cannot paste frames at time 2147483648");
    undoable(op::clear("cam", {kLeast, kMost}), {{kLeast, 0}, {-1, 0}, {0, 0}, {kMost, 0}});
    undoable(op::insert("cam", {kMost - 1, kMost}),
             {{kLeast, 0}, {-1, 0}, {0, 0}, {kMost - 1, 0}, {kMost, 0}});
    undoable(op::remove("cam", {kLeast, kMost}), {});
}

TEST_F(FrameOperations, RangesOfTheTimeSlider) {
    const auto range = [](double start, double end) {
        const auto found = frameRange(start, end);
        return found ? std::pair(found->first, found->last) : std::pair(1, 0);
    };
    EXPECT_EQ(range(10, 15), std::pair(10, 14));
    EXPECT_EQ(range(10.9, 15.9), std::pair(10, 14));
    EXPECT_EQ(range(-0.5, 0.5), std::pair(0, 0)) << "the current frame, whatever it truncates to";
    EXPECT_EQ(range(-1.5, -0.5), std::pair(-1, -1));
    EXPECT_EQ(range(kMost, kMost + 1.0), std::pair(kMost, kMost));
    EXPECT_EQ(range(kLeast, kLeast + 1.0), std::pair(kLeast, kLeast));
    EXPECT_THAT(messages.take(), IsEmpty());
    const double infinite = std::numeric_limits<double>::infinity();
    EXPECT_EQ(range(5, 5), std::pair(1, 0));
    EXPECT_EQ(range(9, 3), std::pair(1, 0));
    EXPECT_EQ(range(1, std::nan("")), std::pair(1, 0));
    EXPECT_EQ(range(1, infinite), std::pair(1, 0));
    EXPECT_EQ(range(-3e9, 4), std::pair(1, 0));
    EXPECT_THAT(messages.take(),
                ElementsAre("[Vellum2] Time range is empty: 5 to 5",
                            "[Vellum2] Time range is empty: 9 to 3",
                            "[Vellum2] Time range is empty: 1 to nan",
                            "[Vellum2] Time range is out of bounds: 1 to inf",
                            "[Vellum2] Time range is out of bounds: -3000000000 to 4"));
}

TEST_F(FrameOperations, WaitForACameraOrLayerThatIsGone) {
    draw({1, 8});
    document.addLayer("cam", -1, "above");
    const std::pair<const char*, std::unique_ptr<Edit>> operations[] = {
        {"insert", op::insert("cam", {2, 3})}, {"remove", op::remove("cam", {1, 8})},
        {"clear", op::clear("cam", {1, 8})},   {"duplicate", op::duplicate("cam")},
        {"move", op::move("cam", 1, 1, 1)},    {"retime", op::retime({1, 8}, 3, false, false)},
    };
    for (const auto& [name, operation] : operations) {
        SCOPED_TRACE(name);
        const Frames before = frames();
        ASSERT_TRUE(does(operation));
        const Frames after = frames();
        drawing::goTo(document, 7);
        missing = "cam";
        refuses(operation, "Camera does not exist: cam", &Edit::undo);
        missing.clear();
        std::unique_ptr<Layer> gone = document.takeLayer("cam", 0);
        document.addLayer("cam", 0, "cam's"); // it is the layer, not its name or place
        refuses(operation, "Layer does not exist for camera: cam (cam's)", &Edit::undo);
        document.takeLayer("cam", 0);
        document.insertLayer("cam", 0, std::move(gone));
        document.renameLayer("cam", 0, "away");
        document.renameLayer("cam", 1, "cam's");
        document.moveLayer("cam", 0, 1);
        document.setActiveLayer("cam", 0, false); // it is the layer, not the active one
        ASSERT_TRUE(operation->undo(document));
        document.moveLayer("cam", 1, 0);
        document.setActiveLayer("cam", 0, false);
        document.renameLayer("cam", 1, "above");
        document.renameLayer("cam", 0, "cam's");
        EXPECT_EQ(frames(), before);
        drawing::goTo(document, 7);
        missing = "cam";
        refuses(operation, "Camera does not exist: cam", &Edit::redo);
        missing.clear();
        ASSERT_TRUE(operation->redo(document));
        EXPECT_EQ(frames(), after);
        ASSERT_TRUE(operation->undo(document));
        drawing::goTo(document, 7);
    }
    refuses(op::remove("nobody", {1, 8}), "An active layer does not exist.");
    refuses(op::insert("", {1, 8}), "Camera not specified");
    missing = "cam";
    refuses(op::insert("cam", {1, 8}), "Camera does not exist: cam");
}

TEST_F(FrameOperations, FramesChangedBehindTheirBackAreLeftAlone) {
    draw({1, 8});
    const auto remove = op::remove("cam", {1, 8});
    ASSERT_TRUE(does(remove));
    document.addFrameAt("cam", 8);
    const std::string undone = "Failed to undo: the frames of the layer have changed since.";
    refuses(remove, undone, &Edit::undo);
    document.takeFrameAt("cam", 8);
    ASSERT_TRUE(remove->undo(document)) << "nothing was lost";
    EXPECT_EQ(frames(), (Frames{{1, 1}, {8, 2}}));
    document.takeFrameAt("cam", 1);
    refuses(remove, "The frames of the layer have changed since.", &Edit::redo);
    const auto move = op::move("cam", 2, 8, 8);
    ASSERT_TRUE(does(move));
    document.addFrameAt("cam", 8);
    refuses(move, "The frames of the layer have changed since.", &Edit::undo);
}

TEST_F(FrameOperations, TimeUnitsNeitherLoseFramesNorMixThemUp) {
    MTime::setUIUnit(MTime::kNTSCFrame);
    draw({0, 1, 2, 3, 4, 5});
    ASSERT_TRUE(does(op::copy("cam", {0, 5}, clipboard)));
    const auto remove = op::remove("cam", {0, 2});
    const auto retime = op::retime({3, 5}, 2, false, false);
    ASSERT_TRUE(does(remove));
    ASSERT_TRUE(does(retime));
    MTime::setUIUnit(MTime::kFilm);
    ASSERT_TRUE(retime->undo(document));
    ASSERT_TRUE(remove->undo(document));
    EXPECT_EQ(frames(), (Frames{{0, 1}, {0, 2}, {1, 3}, {2, 4}, {3, 5}, {4, 6}}))
        << "two have no whole frame of their own now, but both are there";
    const auto paste = op::paste("cam", 10, clipboard);
    ASSERT_TRUE(does(paste));
    EXPECT_EQ(frames().size(), 11U) << "of two at one frame the later is pasted";
    ASSERT_TRUE(paste->undo(document));
    MTime::setUIUnit(MTime::kNTSCFrame);
    EXPECT_EQ(frames(), (Frames{{0, 1}, {1, 2}, {2, 3}, {3, 4}, {4, 5}, {5, 6}}));
    MTime::setUIUnit(MTime::kFilm);
}

TEST(Retiming, SpanAndFrameToShow) {
    const QList<int> times{5, 10, 20};
    const struct {
        FrameRange range;
        qint64 start, end;
        int shown, next;
    } cases[] = {
        {{12, 12}, 10, 20, 1, 2}, {{10, 19}, 10, 20, 1, 2}, {{10, 20}, 10, 21, 1, 2},
        {{1, 3}, 1, 5, 0, 0},     {{25, 30}, 20, 31, 2, 2}, {{5, 5}, 5, 10, 0, 1},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.range.first);
        const RetimeSpan span = retimeSpan(times, one.range);
        EXPECT_EQ(span.start, one.start);
        EXPECT_EQ(span.end, one.end);
        EXPECT_EQ(frameToShow(times, span, false), one.shown);
        EXPECT_EQ(frameToShow(times, span, true), one.next);
    }
    EXPECT_THAT(retimed(times, {5, 21}, {kLeast, false}), ElementsAre(5, 6, 7));
}

} // namespace
