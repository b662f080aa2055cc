// Positions of the pointer becoming points of a stroke: mapped, smoothed, thinned; and the thread
// that polls them.
#include "plugin/base/Settings.h"
#include "plugin/session/PluginState.h"
#include "support/Hand.h"
#include "support/Sure.h"
#include "tools/interaction/InputWorker.h"
#include "tools/interaction/ThreadManager.h"
#include "tools/raster/Stroke.h"

#include <QCoreApplication>
#include <QMutex>
#include <QSemaphore>
#include <QThread>

#include <deque>
#include <gtest/gtest.h>
#include <limits>

using namespace vellum;
using support::firstOf;
using support::lastOf;

namespace {

// A view of 1024 x 1024 that shows the canvas pixel by pixel: (x, y) of the view, y up, is image
// pixel (x, 1024 - y).
ViewMapping plainView() {
    return {kCanvasSize, kCanvasSize, 0.0, 0.0, kCanvasSize};
}

class Sampling : public ::testing::Test {
protected:
    ThreadManager::Target target() {
        ThreadManager::Target made;
        made.stroke = [this] { return alive_ ? &stroke_ : nullptr; };
        made.mapping = plainView;
        made.requestRedraw = [this] { ++redraws_; };
        return made;
    }

    void begin(Tool tool) {
        stroke_.tool = tool;
        manager_.start(target());
    }

    // A sample at an image position.
    void sample(int x, int y, int width = 6, float opacity = 1.0F) {
        manager_.OnMousePositionChanged(QPoint(x, kCanvasSize - y), width, opacity, 1.0F);
    }

    QList<QPoint> positions() const {
        QList<QPoint> all;
        for (const StrokePoint& point : stroke_.points)
            all.append(QPoint(point.x, point.y));
        return all;
    }

    ThreadManager manager_;
    Stroke stroke_;
    bool alive_ = true;
    int redraws_ = 0;
};

// Plays positions back, one a poll, and stays at the last one.
class ScriptedPoller : public CursorPoller {
public:
    explicit ScriptedPoller(std::deque<QPoint> positions, QSemaphore* polled = nullptr)
        : positions_(std::move(positions)), polled_(polled) {}

    std::optional<PointerSample> poll() override {
        if (polled_)
            polled_->release();
        if (positions_.empty())
            return std::nullopt;
        const QPoint position = positions_.front();
        if (positions_.size() > 1)
            positions_.pop_front();
        return PointerSample{position, kCanvasSize, ++polls_ >= releasedFrom};
    }

    int releasedFrom = std::numeric_limits<int>::max(); ///< the poll that finds the button up

private:
    std::deque<QPoint> positions_;
    QSemaphore* polled_;
    int polls_ = 0;
};

SampleOptions options(int width, bool pressure = false) {
    SampleOptions made;
    made.width = width;
    made.pressureEnabled = pressure;
    return made;
}

} // namespace

TEST_F(Sampling, ClickLeavesTwoPoints) {
    begin(Tool::Pencil);
    sample(99, 50);
    sample(100, 50);
    // The second is (2 x 100 + 99) / 3 = 99.67, to the nearest.
    EXPECT_EQ(positions(), (QList<QPoint>{{99, 50}, {100, 50}}));
    EXPECT_EQ(redraws_, 2);
    EXPECT_TRUE(stroke_.dirty);
    sample(100, 50); // the pointer rests
    EXPECT_EQ(stroke_.points.size(), 2U);
    EXPECT_EQ(redraws_, 2) << "nothing to show";
}

TEST_F(Sampling, SmoothsTowardsTheNewest) {
    begin(Tool::Brush);
    for (int i = 0; i < 6; ++i)
        sample(100 + 15 * i, 200, 6, 0.1F * static_cast<float>(i));
    // Weighted means of 0, 15, 30, ...: 10, 20, 30, then with five samples 40 and 55.
    EXPECT_EQ(
        positions(),
        (QList<QPoint>{{100, 200}, {110, 200}, {120, 200}, {130, 200}, {140, 200}, {155, 200}}));
    EXPECT_NEAR(stroke_.points[4].opacity, 0.4 * 2.0 / 3.0, 1e-6);
    EXPECT_EQ(stroke_.points[4].width, 6);
}

TEST_F(Sampling, HalvesRoundUpwardAlsoBelowZero) {
    begin(Tool::Brush);
    sample(-10, -10);
    sample(-13, -7); // (2 x -13 - 10) / 3 = -12, (2 x -7 - 10) / 3 = -8
    sample(-14, -7); // (3 x -14 + 2 x -13 - 10) / 6 = -13, (-21 - 14 - 10) / 6 = -7.5 -> -7
    EXPECT_EQ(positions(), (QList<QPoint>{{-10, -10}, {-12, -8}, {-13, -7}}));
}

TEST_F(Sampling, ThinsByTenthOfTheWidthAndForgetsWhatItDropped) {
    begin(Tool::Pencil);
    sample(100, 100, 40);
    sample(106, 100, 40); // mean 104: 4 away, kept, since only less than a tenth is dropped
    ASSERT_EQ(positions(), (QList<QPoint>{{100, 100}, {104, 100}}));
    sample(107, 100, 40); // mean 105.5 -> 106, 2 away: dropped
    sample(108, 100, 40); // 106 again, dropped, since 107 is not in the history
    EXPECT_EQ(stroke_.points.size(), 2U);
    sample(112, 100, 40); // (3 x 112 + 2 x 106 + 100) / 6 = 108
    EXPECT_EQ(lastOf(positions()), QPoint(108, 100));

    // Exactly a tenth is kept at every width, also where a tenth has no exact form.
    for (int width = 10; width <= 100; width += 10) {
        manager_.stop();
        stroke_ = Stroke();
        begin(Tool::Pencil);
        sample(0, 0, width);
        sample(0, 0, width);
        sample(width / 5, 0, width); // mean: half of it
        EXPECT_EQ(stroke_.points.size(), 3U) << "width " << width;
    }
}

TEST_F(Sampling, ShapesKeepPressAndPresentAndTextFollows) {
    begin(Tool::Line);
    sample(9, 10);
    sample(10, 10); // second sample of the press goes first
    sample(50, 60);
    sample(80, 20);
    EXPECT_EQ(positions(), (QList<QPoint>{{10, 10}, {80, 20}}));

    stroke_ = Stroke();
    settings().of(Tool::Text).fontFamily = QStringLiteral("DejaVu Serif");
    begin(Tool::Text);
    sample(9, 10);
    sample(300, 400);
    EXPECT_EQ(positions(), (QList<QPoint>{{300, 400}}));
    EXPECT_EQ(stroke_.fontFamily, QStringLiteral("DejaVu Serif"));
    resetSettings();
    EXPECT_EQ(redraws_, 6) << "nothing waits for the next event of the pointer";
}

TEST_F(Sampling, IgnoresSamplesWhenIdleOrWithoutStroke) {
    sample(10, 10);
    begin(Tool::Brush);
    alive_ = false; // the document went while the pointer was down
    sample(20, 20);
    alive_ = true;
    manager_.stop();
    sample(30, 30);
    EXPECT_TRUE(stroke_.points.empty());
}

TEST_F(Sampling, HistoryStartsAnewWithEveryStroke) {
    begin(Tool::Brush);
    sample(500, 500);
    sample(520, 500);
    manager_.stop();
    stroke_ = Stroke();
    begin(Tool::Brush);
    sample(10, 10);
    EXPECT_EQ(positions(), (QList<QPoint>{{10, 10}}));
}

TEST(InputWorkerPoll, OffsetsFirstSampleAndPressure) {
    struct Sent {
        QPoint position;
        float opacity;
    };
    std::vector<Sent> sent;
    InputWorker worker(std::make_unique<ScriptedPoller>(
                           std::deque<QPoint>{{10, 20}, {10, 20}, {11, 20}, {11, 21}}),
                       options(6, true));
    QObject::connect(&worker, &InputWorker::MousePositionChanged,
                     [&](const QPoint& p, int, float opacity, float) {
                         sent.push_back({p, opacity});
                     });
    pluginState().tabletPressure = 0.25F;
    worker.poll();
    pluginState().tabletPressure = 0.5F;
    worker.poll(); // same place: nothing
    worker.poll();
    pluginState().tabletPressure = 1.0F;
    worker.poll();
    ASSERT_EQ(sent.size(), 4U);
    // One pixel right of the pointer's, and height - y + 1 from the bottom.
    EXPECT_EQ(sent[0].position, QPoint(10, kCanvasSize - 20 + 1));
    EXPECT_EQ(sent[1].position, QPoint(11, kCanvasSize - 20 + 1));
    EXPECT_EQ(sent[2].position, QPoint(12, kCanvasSize - 20 + 1));
    EXPECT_EQ(sent[3].position, QPoint(12, kCanvasSize - 21 + 1));
    EXPECT_FLOAT_EQ(sent[1].opacity, 0.25F);
    EXPECT_FLOAT_EQ(sent[2].opacity, 0.5F);
    EXPECT_FLOAT_EQ(sent[3].opacity, 1.0F);
}

TEST_F(Sampling, QuickClickThroughTheThreadLeavesExactlyTwoPoints) {
    for (int round = 0; round < 50; ++round) {
        stroke_ = Stroke();
        stroke_.tool = Tool::Brush;
        manager_.start(target(), std::make_unique<ScriptedPoller>(std::deque<QPoint>{{99, 100}}),
                       options(6));
        manager_.finish(QPoint(100, kCanvasSize - 100 + 1)); // released at once
        manager_.stop();
        ASSERT_EQ(positions(), (QList<QPoint>{{99, 99}, {100, 99}})) << "round " << round;
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(stroke_.points.size(), 2U);
}

TEST_F(Sampling, BeginsAtThePressHoweverLateTheThreadIs) {
    const QPoint press(50 + 1, kCanvasSize - 60 + 1);
    // Elsewhere at the first poll; and on the pressed pixel, rounded to its neighbour.
    const struct {
        QPoint polled;
        QList<QPoint> line, brush;
    } cases[] = {
        {{200, 90}, {{51, 59}, {201, 89}}, {{50, 59}, {51, 59}, {126, 74}}},
        {{51, 60}, {{51, 59}, {50, 59}}, {{50, 59}, {51, 59}}},
    };
    for (const auto& c : cases) {
        for (const Tool tool : {Tool::Line, Tool::Brush}) {
            SCOPED_TRACE("tool " + std::to_string(numberOf(tool)));
            stroke_ = Stroke();
            stroke_.tool = tool;
            QSemaphore polled;
            manager_.start(target(),
                           std::make_unique<ScriptedPoller>(std::deque<QPoint>{c.polled}, &polled),
                           options(6), press);
            EXPECT_EQ(stroke_.points.size(), 2U); // at once
            ASSERT_TRUE(polled.tryAcquire(1, 5000));
            manager_.finish(std::nullopt);
            manager_.stop();
            EXPECT_EQ(positions(), tool == Tool::Line ? c.line : c.brush) << c.polled.x();
        }
    }
}

TEST_F(Sampling, NothingSampledBeforeTheReleaseIsLost) {
    stroke_.tool = Tool::Brush;
    QSemaphore polled;
    manager_.start(target(),
                   std::make_unique<ScriptedPoller>(
                       std::deque<QPoint>{{100, 100}, {130, 100}, {160, 100}, {190, 100}}, &polled),
                   options(6));
    ASSERT_TRUE(polled.tryAcquire(3, 5000)); // three samples are under way, none delivered
    EXPECT_TRUE(stroke_.points.empty());
    manager_.finish(QPoint(190 + 1, kCanvasSize - 100 + 1));
    manager_.stop();
    // The click's two points and the smoothed ones, then straight to where the button went up.
    const QList<QPoint> all = positions();
    ASSERT_GE(all.size(), 5);
    EXPECT_EQ(all[3], QPoint((4 * 161 + 3 * 131 + 2 * 101 + 100 + 5) / 10, 99));
    EXPECT_EQ(all.last(), QPoint(191, 99));
    for (int i = 1; i < all.size(); ++i)
        EXPECT_GT(all[i].x(), all[i - 1].x());
}

// Whatever was thinned out or smoothed away, at any width and speed.
TEST_F(Sampling, EndsWhereTheButtonWentUp) {
    for (const int width : {1, 6, 40, 100}) {
        for (const int way : {1, 2, 7, 30, 400}) {
            for (const Tool tool : {Tool::Pencil, Tool::Brush, Tool::Eraser, Tool::Line}) {
                SCOPED_TRACE(testing::Message()
                             << "width " << width << ", way " << way << ", tool " << int(tool));
                stroke_ = Stroke();
                begin(tool);
                sample(99, 100, width);
                sample(100, 100, width);
                sample(100 + way / 2, 100, width);
                manager_.finish(QPoint(100 + way, kCanvasSize - 100));
                manager_.finish(std::nullopt); // as the tool does once more
                EXPECT_EQ(lastOf(positions()), QPoint(100 + way, 100));
            }
        }
    }
}

// A machine under load: the release is handled long after the button went up.
TEST_F(Sampling, NothingPolledAfterTheButtonWentUpCounts) {
    for (const Tool tool : {Tool::Pencil, Tool::Line}) {
        stroke_ = Stroke();
        stroke_.tool = tool;
        QSemaphore polled;
        auto poller = std::make_unique<ScriptedPoller>(
            std::deque<QPoint>{{100, 100}, {150, 100}, {300, 300}, {500, 500}}, &polled);
        poller->releasedFrom = 3;
        manager_.start(target(), std::move(poller), options(6),
                       QPoint(90 + 1, kCanvasSize - 100 + 1));
        ASSERT_TRUE(polled.tryAcquire(3, 5000));
        QThread::msleep(50);
        EXPECT_LE(polled.available(), 0) << "nor is it asked any more";
        manager_.finish(QPoint(200 + 1, kCanvasSize - 100 + 1));
        manager_.stop();
        EXPECT_EQ(lastOf(positions()), QPoint(201, 99));
        for (const QPoint position : positions())
            EXPECT_EQ(position.y(), 99);
    }
}

TEST_F(Sampling, APollSeenOffByTheReleaseIsTheLast) {
    stroke_.tool = Tool::Line;
    QSemaphore polled;
    manager_.start(target(),
                   std::make_unique<ScriptedPoller>(std::deque<QPoint>{{100, 100}}, &polled),
                   options(6));
    ASSERT_TRUE(polled.tryAcquire(1, 5000));
    manager_.pointerUp();
    QThread::msleep(30);
    const int asked = polled.available();
    QThread::msleep(30);
    EXPECT_EQ(polled.available(), asked);
    manager_.stop();
}

TEST_F(Sampling, StopDropsWhatIsStillUnderWay) {
    stroke_.tool = Tool::Brush;
    QSemaphore polled;
    manager_.start(target(),
                   std::make_unique<ScriptedPoller>(std::deque<QPoint>{{100, 100}}, &polled),
                   options(6));
    ASSERT_TRUE(polled.tryAcquire(1, 5000));
    manager_.stop();
    begin(Tool::Brush); // the next stroke
    QCoreApplication::processEvents();
    EXPECT_TRUE(stroke_.points.empty());
}

// Qt wakes the event dispatcher of a thread after it has queued a call there, and the thread takes
// the dispatcher with it when it ends.
TEST(InputWorkerThread, OutlivesWhoeverQueuesTheCallThatEndsIt) {
    QThread thread;
    InputWorker worker(std::make_unique<ScriptedPoller>(std::deque<QPoint>{}), options(6));
    worker.moveToThread(&thread);
    thread.start();
    QMetaObject::invokeMethod(&worker, &InputWorker::Run, Qt::QueuedConnection);
    QMetaObject::invokeMethod(&worker, &InputWorker::Shutdown, Qt::QueuedConnection);
    EXPECT_FALSE(thread.wait(50));
    worker.wake();
    EXPECT_TRUE(thread.wait(5000));
}

// A window system that does not answer in time: what it told before is kept.
TEST_F(Sampling, APollThatHangsIsLeftBehind) {
    struct Signs {
        QSemaphore asked, answer, gone;
    };
    class Hanging : public CursorPoller {
    public:
        explicit Hanging(std::shared_ptr<Signs> signs) : signs_(std::move(signs)) {}
        ~Hanging() override { signs_->gone.release(); }
        std::optional<PointerSample> poll() override {
            if (++polls_ == 3) {
                signs_->asked.release();
                signs_->answer.acquire();
            }
            return PointerSample{{100 + 50 * polls_, 100}, kCanvasSize};
        }

    private:
        std::shared_ptr<Signs> signs_;
        int polls_ = 0;
    };
    const auto signs = std::make_shared<Signs>();
    stroke_.tool = Tool::Brush;
    manager_.start(target(), std::make_unique<Hanging>(signs), options(6));
    ASSERT_TRUE(signs->asked.tryAcquire(1, 5000));
    manager_.finish(QPoint(251, kCanvasSize - 100 + 1));
    manager_.stop();
    // Two polls, of which the first counts double, and on to where the button went up.
    EXPECT_EQ(positions().mid(0, 3), (QList<QPoint>{{150, 99}, {151, 99}, {176, 99}}));
    EXPECT_EQ(lastOf(positions()), QPoint(251, 99));

    stroke_ = Stroke();
    stroke_.tool = Tool::Brush;
    manager_.start(target(), std::make_unique<ScriptedPoller>(std::deque<QPoint>{}), options(6));
    signs->answer.release(); // late
    sample(10, 10);
    EXPECT_TRUE(support::waitFor([&] { return signs->gone.tryAcquire(); }))
        << "it polls for the next stroke";
    support::settle();
    EXPECT_EQ(stroke_.points.size(), 1U) << "nothing of it reaches the next stroke";

    // Nor does it answer at all, with the press held back for the pen's pressure.
    for (const bool awaited : {false, true}) {
        const auto silent = std::make_shared<Signs>();
        class Silent : public CursorPoller {
        public:
            explicit Silent(std::shared_ptr<Signs> signs) : signs_(std::move(signs)) {}
            ~Silent() override { signs_->gone.release(); }
            std::optional<PointerSample> poll() override {
                signs_->asked.release();
                signs_->answer.acquire();
                return std::nullopt;
            }

        private:
            std::shared_ptr<Signs> signs_;
        };
        stroke_ = Stroke();
        stroke_.tool = Tool::Brush;
        pluginState().pressureAwaited = awaited;
        manager_.start(target(), std::make_unique<Silent>(silent), options(6, true),
                       QPoint(100, 500));
        ASSERT_TRUE(silent->asked.tryAcquire(1, 5000));
        manager_.finish(QPoint(500, 500));
        manager_.stop();
        pluginState().pressureAwaited = false;
        EXPECT_EQ(firstOf(positions()), QPoint(99, 524));
        EXPECT_EQ(lastOf(positions()), QPoint(500, 524));
        silent->answer.release(2);
        EXPECT_TRUE(support::waitFor([&] { return silent->gone.tryAcquire(); }));
    }
}

TEST_F(Sampling, PointerOutOfSightYieldsNothing) {
    stroke_.tool = Tool::Brush;
    QSemaphore polled;
    manager_.start(target(), std::make_unique<ScriptedPoller>(std::deque<QPoint>{}, &polled),
                   options(6));
    ASSERT_TRUE(polled.tryAcquire(2, 5000));
    manager_.finish(QPoint(5, 5));
    manager_.stop();
    EXPECT_TRUE(stroke_.points.empty());
}

// A pen that is down but has told no pressure yet: nothing is lost, and nothing waits for ever.
TEST(InputWorkerPoll, HoldsPositionsBackUntilThePressureIsKnown) {
    std::vector<std::pair<QPoint, float>> sent;
    const auto worker = [&](int polls, bool pressure) {
        sent.clear();
        std::deque<QPoint> way;
        for (int i = 0; i < polls; ++i)
            way.emplace_back(10 + i, 20);
        auto made = std::make_unique<InputWorker>(std::make_unique<ScriptedPoller>(way),
                                                  options(6, pressure));
        QObject::connect(
            made.get(), &InputWorker::MousePositionChanged,
            [&](const QPoint& p, int, float opacity, float) { sent.emplace_back(p, opacity); });
        return made;
    };
    pluginState().tabletPressure = 1.0F;
    pluginState().pressureAwaited = true;
    const auto told = worker(4, true);
    told->poll();
    told->poll();
    EXPECT_TRUE(sent.empty());
    pluginState().tabletPressure = 0.25F;
    pluginState().pressureAwaited = false;
    told->poll();
    ASSERT_EQ(sent.size(), 4U); // the first one twice
    for (std::size_t i = 0; i < sent.size(); ++i) {
        EXPECT_EQ(sent[i].first.x(), 10 + int(i));
        EXPECT_FLOAT_EQ(sent[i].second, 0.25F) << "sample " << i;
    }

    pluginState().tabletPressure = 1.0F;
    pluginState().pressureAwaited = true;
    const auto silent = worker(100, true);
    for (int i = 0; i < 100; ++i)
        silent->poll();
    EXPECT_EQ(sent.size(), 101U);
    const auto lifted = worker(3, true);
    lifted->poll();
    EXPECT_TRUE(sent.empty());
    lifted->releaseHeld();
    EXPECT_EQ(sent.size(), 2U);
    const auto mouse = worker(3, false);
    mouse->poll();
    EXPECT_EQ(sent.size(), 2U) << "who does not ask for pressure does not wait";
    pluginState().pressureAwaited = false;
}
