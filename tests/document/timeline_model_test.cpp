// Thousands of random sequences of edits of layers and frames, with undo and redo, against a model
// that is too simple to be wrong.
#include "document/DocumentEnvironment.h"
#include "document/Drawing.h"
#include "document/TimelineModel.h"
#include "document/edits/Edit.h"
#include "document/edits/FrameClipboard.h"
#include "document/edits/FrameEdits.h"
#include "support/FrameChanges.h"
#include "support/Seed.h"
#include "support/Sure.h"
#include "tools/raster/PngCodec.h"

#include <QHash>

#include <maya/MAnimControl.h>

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <random>

using namespace vellum;
using namespace timeline_model;
using support::sure;

namespace {

constexpr int kMarks = 12;

/// Pictures as files hold them, made once: no sequence has to encode or decode any.
const QByteArray& pngOf(int mark) {
    static const std::vector<QByteArray> pictures = [] {
        std::vector<QByteArray> made{Frame(MTime()).pngBytes()};
        for (int i = 1; i < kMarks; ++i) {
            made.emplace_back();
            imageToPng(drawing::marked(i), made.back());
        }
        return made;
    }();
    return pictures[static_cast<std::size_t>(mark)];
}

int markOf(const Frame& frame) {
    static const QHash<QByteArray, int> marks = [] {
        QHash<QByteArray, int> known;
        for (int i = 0; i < kMarks; ++i)
            known[pngOf(i)] = i;
        return known;
    }();
    return marks.value(frame.pngBytes(), -1);
}

Moment momentOf(const MTime& time) {
    return std::llround(time.as(MTime::kSeconds) * 600.0);
}

MTime timeOf(Moment moment, Moment unit) {
    return {static_cast<double>(moment) / static_cast<double>(unit), MTime::uiUnit()};
}

/// One document and its model, changed alike.
class Twins {
public:
    explicit Twins(unsigned seed) : random_(seed) {
        MTime::setUIUnit(MTime::kFilm);
        MAnimControl::setCurrentTime(timeOf(model_.now, model_.unit));
    }

    void step() {
        camera_ = upTo(3) == 0 ? "other" : upTo(4) == 0 ? "third" : "cam";
        switch (upTo(8)) {
        case 0:
            return editLayers();
        case 1:
            return elsewhere();
        case 2:
        case 3:
            return undo();
        case 4:
            return redo();
        default:
            return editFrames();
        }
    }

    void compare() {
        ASSERT_EQ(document_.currentCamera(), model_.drawing.current) << log;
        ASSERT_EQ(document_.previousCamera(), model_.drawing.previous) << log;
        ASSERT_EQ(momentOf(MAnimControl::currentTime()), model_.now) << log;
        for (const auto& [name, plain] : model_.drawing.cameras) {
            ASSERT_EQ(document_.cameraLayerCount(name), static_cast<int>(plain.layers.size()))
                << log;
            ASSERT_EQ(document_.activeLayerIndex(name), plain.active) << log;
            for (std::size_t i = 0; i < plain.layers.size(); ++i)
                compare(*document_.layer(name, static_cast<int>(i)), plain.layers[i]);
        }
        ASSERT_EQ(clipboard_->frames().size(), model_.clipboard.size()) << log;
        auto copied = model_.clipboard.begin();
        for (const auto& frame : clipboard_->frames()) {
            ASSERT_EQ(momentOf(frame->time()), copied->first) << log;
            ASSERT_EQ(markOf(*frame), copied++->second) << log;
        }
    }

    void undoAll() {
        while (!done_.empty() && !testing::Test::HasFatalFailure())
            undo();
    }
    void redoAll() {
        while (!undone_.empty() && !testing::Test::HasFatalFailure())
            redo();
    }

    std::string log; ///< what was done, to be read when it went wrong

private:
    /// A step of the undo queue.
    struct Step {
        std::unique_ptr<Edit> operation; ///< null: the two functions
        std::function<void()> undo;
        std::function<void()> redo;
        Drawing before;
        Drawing after;
        bool movesTime = false;
        Moment timeBefore = 0;
        Moment timeAfter = 0;
        std::optional<std::map<Moment, int>> clipboard; ///< redo fills it again
    };

    /// What an operation does each time, beside what undo takes back.
    enum class Also { Nothing, FillsClipboard, ShowsAFrame };

    int upTo(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

    void say(const QString& what) { log += what.toStdString() + "\n"; }

    void compare(const Layer& layer, const PlainLayer& plain) {
        ASSERT_EQ(layer.name(), plain.name) << log;
        ASSERT_EQ(numberOf(layer.state()), plain.state) << log;
        ASSERT_EQ(layer.frameCount(), static_cast<int>(plain.frames.size())) << log;
        int index = 0;
        for (const auto& [moment, mark] : plain.frames) {
            const Frame& frame = *layer.frameAt(index++);
            ASSERT_EQ(momentOf(frame.time()), moment) << log;
            ASSERT_EQ(markOf(frame), mark) << log;
        }
        ASSERT_EQ(layer.currentIndex(), model_.shown(plain)) << log;
    }

    void record(Step step, const Drawing& before) {
        step.before = before;
        step.after = model_.drawing;
        done_.push_back(std::move(step));
        undone_.clear();
    }

    void undo() {
        if (done_.empty())
            return;
        say("undo");
        Step step = std::move(done_.back());
        done_.pop_back();
        if (step.operation)
            ASSERT_TRUE(step.operation->undo(document_)) << log;
        else
            step.undo();
        model_.drawing = step.before;
        if (step.movesTime)
            model_.now = step.timeBefore;
        undone_.push_back(std::move(step));
        compare();
    }

    void redo() {
        if (undone_.empty())
            return;
        say("redo");
        Step step = std::move(undone_.back());
        undone_.pop_back();
        if (step.operation)
            ASSERT_TRUE(step.operation->redo(document_)) << log;
        else
            step.redo();
        model_.drawing = step.after;
        if (step.movesTime) {
            step.timeBefore = model_.now;
            model_.now = step.timeAfter;
        }
        if (step.clipboard)
            model_.clipboard = *step.clipboard;
        done_.push_back(std::move(step));
        compare();
    }

    void editFrames();
    void run(std::unique_ptr<Edit> operation, const std::function<Refusal()>& plainly,
             Also also = Also::Nothing);
    void editLayers();
    void edit(const std::function<void()>& redo, const std::function<void()>& undo,
              const std::function<void()>& plainly);
    void addLayer();
    void takeLayer(int index);
    void moveToCamera(int index);
    void elsewhere();
    void paint();

    std::mt19937 random_;
    LayerManager document_;
    const frame_edit::Clipboard clipboard_ = std::make_shared<FrameClipboard>();
    Model model_;
    QString camera_;
    std::vector<Step> done_;
    std::vector<Step> undone_;
};

void Twins::editFrames() {
    using namespace frame_edit;
    const int first = upTo(30) - 15;
    const int last = first + (upTo(3) ? upTo(4) : 0);
    const int offset = upTo(13) - 6;
    const int count = upTo(6) - 1;
    const bool a = upTo(2) != 0, b = upTo(2) != 0;
    const FrameRange range{first, last};
    const int kind = upTo(11);
    say(QString("%1: frames %2..%3 offset %4 count %5 %6 %7 on ")
            .arg(kind)
            .arg(first)
            .arg(last)
            .arg(offset)
            .arg(count)
            .arg(a)
            .arg(b) +
        camera_);
    switch (kind) {
    case 0:
    case 1:
        return run(insert(camera_, range), [&] { return model_.insert(camera_, first, last); });
    case 2:
        return run(duplicate(camera_), [&] { return model_.duplicate(camera_); });
    case 3:
        return run(frame_edit::remove(camera_, range),
                   [&] { return model_.remove(camera_, first, last); });
    case 4:
        return run(copy(camera_, range, clipboard_),
                   [&] { return model_.copy(camera_, first, last); });
    case 5:
        return run(
            cut(camera_, range, clipboard_), [&] { return model_.cut(camera_, first, last); },
            Also::FillsClipboard);
    case 6:
        return run(paste(camera_, first, clipboard_), [&] { return model_.paste(camera_, first); });
    case 7:
        return run(clear(camera_, range), [&] { return model_.clear(camera_, first, last); });
    case 8:
        return run(a ? stepForward() : stepBack(), [&] { return model_.step(a); });
    case 9:
        if (offset != 0)
            run(move(camera_, offset, first, last),
                [&] { return model_.move(camera_, offset, first, last); });
        return;
    default:
        return run(
            retime(range, count, a, b), [&] { return model_.retime(first, last, count, a, b); },
            Also::ShowsAFrame);
    }
}

void Twins::run(std::unique_ptr<Edit> operation, const std::function<Refusal()>& plainly,
                Also also) {
    drawing::Messages messages;
    const Drawing before = model_.drawing;
    const Moment timeBefore = model_.now;
    const bool done = operation->execute(document_);
    const std::vector<std::string> shown = messages.take();
    const Refusal refusal = plainly();
    say(QString("operation -> %1").arg(done));
    ASSERT_EQ(done, !refusal) << log;
    if (refusal) {
        ASSERT_EQ(shown, refusal->isEmpty() ? std::vector<std::string>{}
                                            : std::vector{"[Vellum2] " + refusal->toStdString()})
            << log;
        model_.drawing = before;
    } else {
        ASSERT_TRUE(shown.empty()) << log;
    }
    if (!refusal && operation->isUndoable()) {
        Step step;
        step.operation = std::move(operation);
        step.movesTime = also == Also::ShowsAFrame || timeBefore != model_.now;
        step.timeBefore = timeBefore;
        step.timeAfter = model_.now;
        if (also == Also::FillsClipboard)
            step.clipboard = model_.clipboard;
        record(std::move(step), before);
    }
    compare();
}

/// Time, time unit and clipboard go their own way, outside of what is undone.
void Twins::elsewhere() {
    if (upTo(3) == 0) {
        const std::pair<MTime::Unit, Moment> units[] = {
            {MTime::kFilm, kFilm}, {MTime::kPALFrame, kPal}, {MTime::kNTSCFrame, kNtsc}};
        const auto& [unit, length] = units[upTo(3)];
        MTime::setUIUnit(unit);
        model_.unit = length;
        say(QString("unit %1").arg(length));
    } else {
        model_.now = (upTo(34) - 17) * model_.unit;
        MAnimControl::setCurrentTime(timeOf(model_.now, model_.unit));
        say(QString("time %1").arg(model_.frame()));
    }
    document_.timeChanged(model_.frame());
    compare();
}

void Twins::edit(const std::function<void()>& redo, const std::function<void()>& undo,
                 const std::function<void()>& plainly) {
    const Drawing before = model_.drawing;
    Step step;
    // Whoever changes the current camera gives it back.
    step.undo = [this, undo, before] {
        undo();
        document_.restoreCurrentCamera(before.current, before.previous);
    };
    step.redo = redo;
    redo();
    plainly();
    record(std::move(step), before);
    compare();
}

void Twins::addLayer() {
    const QString camera = camera_;
    const int count = document_.cameraLayerCount(camera);
    const int at = upTo(count + 1);
    const QString name = upTo(2) ? QString() : QString("Ink");
    auto kept = std::make_shared<std::unique_ptr<Layer>>();
    say(QString("add layer %1 to %2").arg(at).arg(camera));
    edit(
        [=] {
            if (*kept)
                document_.insertLayer(camera, at, std::move(*kept));
            else
                document_.addLayer(camera, at, name);
        },
        [=] { *kept = document_.takeLayer(camera, at); },
        [&] {
            model_.insertLayer(camera, at, {model_.uniqueName(name), 0, {}});
        });
}

void Twins::takeLayer(int index) {
    const QString camera = camera_;
    const int active = document_.activeLayerIndex(camera);
    auto kept = std::make_shared<std::unique_ptr<Layer>>();
    say(QString("take layer %1 from %2").arg(index).arg(camera));
    edit([=] { *kept = document_.takeLayer(camera, index); },
         [=] {
             document_.insertLayer(camera, index, std::move(*kept));
             document_.setActiveLayer(camera, active, false);
         },
         [&] { model_.takeLayer(camera, index); });
}

void Twins::moveToCamera(int index) {
    const QString from = camera_, to = camera_ == "cam" ? "other" : "cam";
    const int active = document_.activeLayerIndex(from);
    const int activeThere = document_.activeLayerIndex(to);
    say(QString("move layer %1 of %2 to %3").arg(index).arg(from, to));
    edit([=] { document_.moveLayerToCamera(from, index, to, 0); },
         [=] {
             document_.moveLayerToCamera(to, 0, from, index);
             document_.setActiveLayer(from, active, false);
             if (activeThere >= 0)
                 document_.setActiveLayer(to, activeThere, false);
         },
         [&] { model_.insertLayer(to, 0, model_.takeLayer(from, index)); });
}

void Twins::paint() {
    const QString camera = camera_;
    if (!document_.currentFrame(camera))
        return;
    PlainLayer& plain = *model_.active(camera);
    auto picture = std::next(plain.frames.begin(), model_.shown(plain));
    const int mark = upTo(kMarks), before = picture->second;
    say(QString("paint %1 over %2 on %3").arg(mark).arg(before).arg(camera));
    // By moment: with the scene's time elsewhere it is another frame that is shown.
    const MTime time = sure(document_.currentFrame(camera)).time();
    const auto put = [=](int which) {
        test::putFrame(document_, camera, document_.activeLayerIndex(camera),
                       Frame::fromPng(time, pngOf(which)));
    };
    edit([=] { put(mark); }, [=] { put(before); }, [&] { picture->second = mark; });
}

void Twins::editLayers() {
    const QString camera = camera_;
    const int count = document_.cameraLayerCount(camera);
    if (count == 0)
        return addLayer();
    PlainCamera& plain = model_.drawing.cameras[camera];
    const int index = upTo(count);
    switch (upTo(12)) {
    case 0:
        return addLayer();
    case 1:
        return takeLayer(index);
    case 2:
        return moveToCamera(index);
    case 3: {
        const int active = plain.active;
        say(QString("activate %1 of %2").arg(index).arg(camera));
        return edit([=] { document_.setActiveLayer(camera, index, true); },
                    [=] { document_.setActiveLayer(camera, active, false); },
                    [&] {
                        plain.active = index;
                        model_.makeCurrent(camera);
                    });
    }
    case 4: {
        // Locked layers refuse most things: rare, and soon unlocked.
        const int before = plain.layers[static_cast<std::size_t>(index)].state;
        const int state = before == 2 ? 0 : upTo(3);
        say(QString("state %1 of %2 %3").arg(state).arg(camera).arg(index));
        return edit([=] { document_.setLayerState(camera, index, LayerState(state)); },
                    [=] { document_.setLayerState(camera, index, LayerState(before)); },
                    [&] { plain.layers[static_cast<std::size_t>(index)].state = state; });
    }
    default:
        return paint();
    }
}

} // namespace

TEST(Timeline, RandomSequencesEqualAModel) {
    const unsigned seed = support::seed();
    const drawing::CleanScene scene;
    for (unsigned run = 0; run < 2000; ++run) {
        SCOPED_TRACE("VELLUM_TEST_SEED=" + std::to_string(seed + run));
        Twins twins(seed + run);
        for (int i = 0; i < 60 && !HasFatalFailure(); ++i)
            twins.step();
        // Back to the empty drawing, on to the end, and back again.
        twins.undoAll();
        twins.redoAll();
        twins.undoAll();
        if (HasFatalFailure())
            return;
    }
}
