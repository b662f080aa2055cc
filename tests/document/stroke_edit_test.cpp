// Strokes as steps of an undo queue while the time goes here and there between them: whatever one
// takes away, another brings back.
#include "document/DocumentEnvironment.h"
#include "document/Frame.h"
#include "document/IntTime.h"
#include "document/Layer.h"
#include "document/LayerManager.h"
#include "document/edits/StrokeEdit.h"
#include "document/edits/TargetAdditions.h"
#include "plugin/base/Settings.h"
#include "support/Seed.h"
#include "support/Sure.h"

#include <maya/MAnimControl.h>

#include <gtest/gtest.h>
#include <map>
#include <random>

using support::sure;

namespace vellum {
namespace {

const QString kCamera = QStringLiteral("cam");
constexpr int kStaticTime = -999;

/// Pictures of the frames of every layer, by layer and time.
using Pictures = std::vector<std::map<int, QByteArray>>;

/// A document drawn on as the tool does it, with its undo queue.
class Board {
public:
    Board() {
        settings() = Settings();
        MTime::setUIUnit(MTime::kFilm);
        go(1);
    }
    ~Board() { settings() = Settings(); }

    void go(int time) {
        MAnimControl::setCurrentTime(fromIntTime(time));
        document.timeChanged(time);
    }
    bool isStatic() const {
        return sure(document.activeLayer(kCamera)).state() == LayerState::Static;
    }

    TargetAdditions begin(int y) {
        TargetAdditions added(kCamera);
        if (document.cameraLayerCount(kCamera) == 0)
            added.addLayer(document, 0);
        if (!document.hasFrameAtCurrentTime(kCamera))
            added.addFrame(document,
                           isStatic() ? fromIntTime(kStaticTime) : MAnimControl::currentTime());
        Stroke* stroke = document.beginStroke(kCamera, Tool::Pencil, Qt::black);
        EXPECT_NE(stroke, nullptr);
        if (stroke) {
            stroke->points = {{4, 1.0F, 1.0F, 100, y}, {4, 1.0F, 1.0F, 140, y}};
            stroke->dirty = true;
        }
        return added;
    }
    bool commit(const TargetAdditions& added) {
        auto edit =
            std::make_unique<StrokeEdit>(kCamera, added.layerIndex(document), added.hasFrame());
        if (!edit->execute(document))
            return false;
        edits.resize(done++);
        edits.push_back(std::move(edit));
        return true;
    }
    bool draw(int y) {
        const TargetAdditions added = begin(y);
        return commit(added);
    }
    bool undo() { return edits[done - 1]->undo(document) && done-- > 0; }
    bool redo() { return edits[done]->redo(document) && ++done > 0; }

    Pictures pictures() const {
        Pictures all;
        for (int i = 0; i < document.cameraLayerCount(kCamera); ++i) {
            all.emplace_back();
            const Layer& layer = *document.layer(kCamera, i);
            for (int f = 0; f < layer.frameCount(); ++f)
                all.back()[layer.frameAt(f)->intTime()] = layer.frameAt(f)->pngBytes();
        }
        return all;
    }
    QByteArray pictureAt(int time) const { return pictures().at(0).at(time); }
    bool isBlank(int time) const { return pictureAt(time) == Frame(MTime()).pngBytes(); }

    LayerManager document;
    std::vector<std::unique_ptr<Edit>> edits;
    std::size_t done = 0;
};

// What the steps do, said a second time without frames, layers or addresses.
struct Model {
    struct Step {
        bool addedLayer;
        std::size_t layer;
        std::optional<int> addedFrame;
        QByteArray held;                     ///< on the other side of the exchange
        std::map<int, QByteArray> keptLayer; ///< while undone
        QByteArray keptFrame;
    };

    QByteArray* shown(int time) {
        if (active >= layers.size())
            return nullptr;
        const auto after = layers[active].upper_bound(time);
        return after == layers[active].begin() ? nullptr : &std::prev(after)->second;
    }
    bool undo(Step& step, int time) {
        QByteArray* picture = shown(time);
        if (!picture)
            return false;
        std::swap(*picture, step.held);
        if (step.addedLayer) {
            step.keptLayer = layers.front();
            layers.clear();
        } else if (step.addedFrame) {
            step.keptFrame = layers[step.layer].at(*step.addedFrame);
            layers[step.layer].erase(*step.addedFrame);
        }
        return true;
    }
    bool redo(Step& step, int time) {
        const Pictures before = layers;
        if (step.addedLayer)
            layers = {step.keptLayer};
        else if (step.addedFrame)
            layers[step.layer][*step.addedFrame] = step.keptFrame;
        QByteArray* picture = shown(time);
        if (!picture) {
            layers = before;
            return false;
        }
        std::swap(*picture, step.held);
        return true;
    }

    Pictures layers;
    std::size_t active = 0;
};

class Walk {
public:
    explicit Walk(unsigned seed) : random_(seed) {
        settings().defaultLayerState = upTo(3) == 0 ? 1 : 0;
        if (upTo(2) == 0)
            return; // the first stroke makes the first layer
        for (const LayerState state : {LayerState::Animated, LayerState::Static}) {
            const int index = board_.document.addLayer(kCamera, -1, QString());
            board_.document.setLayerState(kCamera, index, state);
            model_.layers.emplace_back();
        }
    }

    void run(int steps) {
        for (int i = 0; i < steps && !testing::Test::HasFailure(); ++i) {
            step();
            ASSERT_TRUE(board_.pictures() == model_.layers) << "after step " << i;
        }
        everythingComesBack();
    }

private:
    int upTo(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

    void step() {
        switch (upTo(7)) {
        case 0:
            return draw();
        case 1:
        case 2:
            if (board_.done > 0) {
                EXPECT_EQ(board_.undo(), model_.undo(steps_[board_.done - 1], time_)) << "undo";
            }
            return;
        case 3:
        case 4:
            if (board_.done < steps_.size()) {
                EXPECT_EQ(board_.redo(), model_.redo(steps_[board_.done], time_)) << "redo";
            }
            return;
        case 5:
            if (model_.layers.size() == 2) {
                model_.active = static_cast<std::size_t>(upTo(2));
                board_.document.setActiveLayer(kCamera, static_cast<int>(model_.active), false);
                return;
            }
            [[fallthrough]];
        default:
            time_ = 1 + upTo(6);
            board_.go(time_);
        }
    }

    void draw() {
        const Pictures before = model_.layers;
        TargetAdditions added = board_.begin(20 + 12 * (number_++ % 80));
        Model::Step step{added.hasLayer(), model_.active, {}, {}, {}, {}};
        if (added.hasLayer()) {
            model_.layers.assign(1, {});
            step.layer = 0;
        }
        if (added.hasFrame()) {
            step.addedFrame = board_.isStatic() ? kStaticTime : time_;
            model_.layers[step.layer][*step.addedFrame] = Frame(MTime()).pngBytes();
        }
        // Now and then the time goes on under the hand.
        if (upTo(3) == 0) {
            time_ = 1 + upTo(6);
            board_.go(time_);
        }
        QByteArray* picture = model_.shown(time_);
        ASSERT_EQ(board_.commit(added), picture != nullptr);
        if (!picture) { // no step
            board_.document.discardStroke();
            added.takeBackUntouched(board_.document);
            model_.layers = before;
            return;
        }
        step.held = *picture;
        *picture = sure(board_.document.currentFrame(kCamera)).pngBytes();
        EXPECT_NE(*picture, step.held);
        steps_.resize(board_.done - 1);
        steps_.push_back(step);
    }

    // As far back as it goes at one time, and forth again.
    void everythingComesBack() {
        const Pictures before = board_.pictures();
        const std::size_t from = board_.done;
        while (board_.done > 0 && board_.undo()) {
        }
        while (board_.done < from && board_.redo()) {
        }
        EXPECT_EQ(board_.done, from);
        EXPECT_TRUE(board_.pictures() == before);
    }

    std::mt19937 random_;
    Board board_;
    Model model_;
    std::vector<Model::Step> steps_;
    int time_ = 1;
    int number_ = 0;
};

TEST(StrokeSteps, RandomScrubbingBetweenThemLosesNothing) {
    for (unsigned walk = 0; walk < 40 && !testing::Test::HasFailure(); ++walk) {
        const unsigned seed = support::seed() + walk;
        SCOPED_TRACE("seed " + std::to_string(seed));
        Walk(seed).run(25);
    }
}

TEST(StrokeSteps, OnTheFrameShownBringBackWhatTheyTook) {
    Board board;
    for (const int time : {1, 2, 3}) {
        board.go(time);
        ASSERT_TRUE(board.draw(100 * time));
    }
    const Pictures drawn = board.pictures();
    board.go(1);
    ASSERT_TRUE(board.undo() && board.undo());
    EXPECT_EQ(board.pictures().at(0).size(), 1U);
    ASSERT_TRUE(board.redo() && board.redo());
    EXPECT_TRUE(board.pictures() == drawn);

    board.go(14);
    ASSERT_TRUE(board.draw(500));
    board.go(10); // before it, and empty
    ASSERT_TRUE(board.draw(600));
    const QByteArray ten = board.pictureAt(10);
    board.go(14);
    ASSERT_TRUE(board.undo() && board.redo());
    EXPECT_EQ(board.pictureAt(10), ten);
}

TEST(StrokeSteps, RefusedOnesKeepWhatTheyHold) {
    Board board;
    board.go(5);
    ASSERT_TRUE(board.draw(100));
    ASSERT_TRUE(board.draw(200));
    const Pictures drawn = board.pictures();
    board.go(2); // nothing is shown
    EXPECT_FALSE(board.undo());
    EXPECT_TRUE(board.pictures() == drawn);
    board.go(5);
    ASSERT_TRUE(board.undo() && board.undo());
    board.go(2);
    EXPECT_FALSE(board.redo());
    EXPECT_EQ(board.document.cameraLayerCount(kCamera), 0);
    board.go(5);
    ASSERT_TRUE(board.redo() && board.redo());
    EXPECT_TRUE(board.pictures() == drawn);

    // The frame that was made for a stroke has gone, behind the back of the undo queue.
    board.go(9);
    ASSERT_TRUE(board.draw(300));
    const Pictures nine = board.pictures();
    std::vector<std::unique_ptr<Frame>> gone;
    ASSERT_TRUE(board.document.exchangeFrames(kCamera, 0, {fromIntTime(9)}, gone));
    EXPECT_FALSE(board.undo());
    EXPECT_TRUE(board.pictures() == drawn);
    ASSERT_TRUE(board.document.exchangeFrames(kCamera, 0, {}, gone));
    ASSERT_TRUE(board.undo());
    ASSERT_GE(board.document.addFrameAt(kCamera, 9), 0); // in its place
    const Pictures taken = board.pictures();
    EXPECT_FALSE(board.redo());
    EXPECT_TRUE(board.pictures() == taken);
    ASSERT_TRUE(board.document.takeFrameAt(kCamera, 9));
    ASSERT_TRUE(board.redo());
    EXPECT_TRUE(board.pictures() == nine);
}

TEST(StrokeSteps, ReturnToTheFrameDrawnOnWhereTheUserWishes) {
    Board board;
    settings().undoReturnsToFrame = true;
    for (const int time : {1, 5, 9}) {
        board.go(time);
        ASSERT_TRUE(board.draw(100 * time));
    }
    const Pictures drawn = board.pictures();
    board.go(9);
    ASSERT_TRUE(board.undo() && board.undo());
    EXPECT_EQ(currentIntTime(), 5);
    EXPECT_EQ(board.pictures().at(0).size(), 1U);
    EXPECT_EQ(board.pictureAt(1), drawn.at(0).at(1));
    board.go(-3); // where nothing is shown
    ASSERT_TRUE(board.redo());
    EXPECT_EQ(currentIntTime(), 5);
    ASSERT_TRUE(board.redo());
    EXPECT_EQ(currentIntTime(), 9);
    EXPECT_TRUE(board.pictures() == drawn);

    // The time goes on under the hand.
    board.go(5);
    const TargetAdditions added = board.begin(300);
    board.go(9);
    ASSERT_TRUE(board.commit(added));
    EXPECT_EQ(currentIntTime(), 9);
    EXPECT_EQ(sure(board.document.currentFrame(kCamera)).intTime(), 9);
    EXPECT_EQ(board.pictureAt(9), drawn.at(0).at(9));
    EXPECT_NE(board.pictureAt(5), drawn.at(0).at(5));
    ASSERT_TRUE(board.undo());
    EXPECT_EQ(currentIntTime(), 5);
    EXPECT_TRUE(board.pictures() == drawn);

    // The frame has gone, behind the back of the undo queue.
    std::vector<std::unique_ptr<Frame>> gone;
    ASSERT_TRUE(board.document.exchangeFrames(kCamera, 0, {fromIntTime(5)}, gone));
    board.go(7);
    EXPECT_FALSE(board.redo());
    EXPECT_EQ(currentIntTime(), 7);
}

TEST(StrokeSteps, ReturnOnAStaticLayerOnlyFromAnotherDrawing) {
    Board board;
    settings().undoReturnsToFrame = true;
    settings().defaultLayerState = numberOf(LayerState::Static);
    board.go(30);
    ASSERT_TRUE(board.draw(100));
    ASSERT_TRUE(board.draw(200));
    board.go(50);
    ASSERT_TRUE(board.undo());
    EXPECT_EQ(currentIntTime(), 50) << "it is shown here too";
    ASSERT_GE(board.document.addFrameAt(kCamera, 40), 0);
    ASSERT_TRUE(board.redo());
    EXPECT_EQ(currentIntTime(), 30);
    EXPECT_TRUE(board.isBlank(40));
}

} // namespace
} // namespace vellum
