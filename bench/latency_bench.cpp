// From the moment the pen is somewhere to a picture that shows it: a tablet recording is played to
// the sampling thread in its own time, and the picture of the camera is brought up to date for
// every position that arrives, as the views do. Times are those of the wall: waiting for the next
// poll and for the other thread belongs to them.
#include "bench/BenchDocument.h"
#include "plugin/session/PluginState.h"
#include "tools/interaction/ThreadManager.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QMutex>
#include <QTimer>

#include <benchmark/benchmark.h>
#include <chrono>

namespace {

using namespace vellum;
using Clock = std::chrono::steady_clock;

constexpr double kPeriodMs = 8.0;
constexpr int kLayers = 5;
constexpr int kActive = 2;

/// A sign of the pen.
struct Sign {
    double when; ///< seconds
    QPoint position;
    float pressure;
};
using Strokes = std::vector<std::vector<Sign>>;

std::string theTablet;

double millisecondsSince(Clock::time_point moment) {
    return std::chrono::duration<double, std::milli>(Clock::now() - moment).count();
}

/// The recording, or generated strokes at 120 signs a second.
Strokes signs() {
    Strokes strokes;
    QFile source(QString::fromStdString(theTablet));
    bool down = false;
    while (!theTablet.empty() && (source.isOpen() || source.open(QIODevice::ReadOnly)) &&
           !source.atEnd()) {
        double when = 0.0, x = 0.0, y = 0.0, pressure = 0.0;
        if (std::sscanf(source.readLine().constData(), "%lf %lf %lf %lf", &when, &x, &y,
                        &pressure) != 4)
            continue;
        if (pressure > 0.0 && !down)
            strokes.emplace_back();
        down = pressure > 0.0;
        if (down)
            strokes.back().push_back(
                {when, QPoint(int(x * 1.25), int(y * 1.6)), static_cast<float>(pressure)});
    }
    if (!strokes.empty())
        return strokes;
    for (const bench::Points& points : bench::generatedStrokes()) {
        strokes.emplace_back();
        for (const StrokePoint& point : points)
            strokes.back().push_back({static_cast<double>(strokes.back().size()) / 120.0,
                                      QPoint(point.x, point.y), point.opacity});
    }
    return strokes;
}

/// The pointer: where the recording is at this moment. Polled on the sampling thread.
class Pen : public CursorPoller {
public:
    explicit Pen(const std::vector<Sign>& stroke) : stroke_(stroke), began_(Clock::now()) {}

    std::optional<PointerSample> poll() override {
        const double when = stroke_.front().when + millisecondsSince(began_) / 1000.0;
        const auto next = std::upper_bound(stroke_.begin(), stroke_.end(), when,
                                           [](double t, const Sign& s) { return t < s.when; });
        const auto now =
            static_cast<std::size_t>(std::max<std::ptrdiff_t>(next - stroke_.begin(), 1)) - 1;
        pluginState().tabletPressure = stroke_[now].pressure;
        const QMutexLocker lock(&mutex_);
        // As the worker does: nothing for a pen at rest, two for the first.
        if (sent_.empty())
            sent_.assign(2, now);
        else if (stroke_[now].position != stroke_[sent_.back()].position)
            sent_.push_back(now);
        return PointerSample{stroke_[now].position, kCanvasSize};
    }
    /// The sign that the sample of this number, from 1, told of.
    std::size_t signOf(std::size_t sample) const {
        const QMutexLocker lock(&mutex_);
        return sent_.at(sample - 1);
    }
    Clock::time_point moment(std::size_t sign) const {
        const auto after = std::chrono::duration<double>(stroke_[sign].when - stroke_.front().when);
        return began_ + std::chrono::duration_cast<Clock::duration>(after);
    }

private:
    const std::vector<Sign>& stroke_;
    const Clock::time_point began_;
    mutable QMutex mutex_;
    std::vector<std::size_t> sent_;
};

struct Latencies {
    std::vector<double> toPicture; ///< from a sign of the pen to the picture that shows it
    std::vector<double> work;      ///< making that picture
    std::size_t lost = 0;          ///< strokes that do not reach their last sign
};

// Smoothing holds a stroke back by part of its last steps.
bool reachesEnd(const Stroke* stroke, const Sign& last) {
    if (!stroke || stroke->points.empty())
        return false;
    const StrokePoint& end = stroke->points.back();
    return std::hypot(end.x - last.position.x(), end.y - last.position.y()) < 60.0;
}

void drawStroke(LayerManager& manager, const std::vector<Sign>& stroke, int width,
                Latencies& found) {
    manager.beginStroke(bench::kCamera, Tool::Brush, QColor(200, 30, 60));
    ThreadManager& sampling = ThreadManager::instance();
    auto poller = std::make_unique<Pen>(stroke);
    const Pen& pen = *poller;
    std::size_t arrived = 0;
    ThreadManager::Target target;
    target.stroke = [&] { return manager.currentStroke(); };
    target.mapping = [&] {
        ++arrived;
        return ViewMapping{kCanvasSize, kCanvasSize, 0.0, 0.0, double(kCanvasSize)};
    };
    target.requestRedraw = [] {};
    SampleOptions options;
    options.width = width;
    options.pressureEnabled = true;
    sampling.start(std::move(target), std::move(poller), options);
    const Clock::time_point end = pen.moment(stroke.size() - 1) + std::chrono::milliseconds(24);
    std::size_t shown = 0;
    std::size_t seen = 0;
    QTimer tick; // a pen at rest sends nothing
    tick.start(20);
    while (Clock::now() < end) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        if (arrived == seen)
            continue;
        seen = arrived;
        const bool changed = manager.currentStroke()->dirty;
        const Clock::time_point begun = Clock::now();
        benchmark::DoNotOptimize(manager.compositeCamera(bench::kCamera));
        if (changed)
            found.work.push_back(millisecondsSince(begun));
        // Signs that the thinning left out have no picture of their own.
        for (; shown <= pen.signOf(seen); ++shown) {
            if (changed)
                found.toPicture.push_back(millisecondsSince(pen.moment(shown)));
        }
    }
    sampling.finish(std::nullopt);
    if (!reachesEnd(manager.currentStroke(), stroke.back()))
        ++found.lost;
    sampling.stop();
    manager.discardStroke();
}

double part(std::vector<double> times, double share) {
    std::sort(times.begin(), times.end());
    return times[static_cast<std::size_t>(share * double(times.size() - 1))];
}

/// The whole recording, drawn with a brush of that width over five layers.
void BM_PenToPicture(benchmark::State& state) {
    const Strokes strokes = signs();
    Latencies found;
    for (auto _ : state) {
        LayerManager manager;
        const std::vector<bench::Points> sketches = bench::generatedStrokes();
        for (int i = 0; i < kLayers; ++i) {
            manager.addLayer(bench::kCamera, -1, "");
            manager.setActiveLayer(bench::kCamera, i, true);
            manager.addFrameAt(bench::kCamera, 1);
            bench::goTo(manager, 1);
            bench::sketch(manager, sketches, 7 * i, 8);
        }
        manager.setActiveLayer(bench::kCamera, kActive, true);
        manager.compositeCamera(bench::kCamera);
        for (const std::vector<Sign>& stroke : strokes)
            drawStroke(manager, stroke, static_cast<int>(state.range(0)), found);
    }
    if (found.lost > 0 || found.toPicture.empty()) {
        state.SkipWithError("a stroke does not reach its end");
        return;
    }
    state.counters["signs"] = static_cast<double>(found.toPicture.size());
    state.counters["median_periods"] = part(found.toPicture, 0.5) / kPeriodMs;
    state.counters["p99_periods"] = part(found.toPicture, 0.99) / kPeriodMs;
    state.counters["work_median_periods"] = part(found.work, 0.5) / kPeriodMs;
    state.counters["work_p99_periods"] = part(found.work, 0.99) / kPeriodMs;
}

BENCHMARK(BM_PenToPicture)
    ->ArgName("width")
    ->Arg(6)
    ->Arg(40)
    ->Iterations(1)
    ->UseRealTime()
    ->Unit(benchmark::kSecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    theTablet = bench::tabletFile(argc, argv);
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
