// The picture of a camera: from a new sample to an up-to-date picture, a rebuild of everything, and
// scrubbing with ghosts; next to QPainter painting the same straight-alpha images in the same run.
#include "bench/BenchDocument.h"
#include "document/FrameCache.h"
#include "plugin/base/Settings.h"
#include "tools/raster/PixelKernels.h"
#include "tools/raster/PngCodec.h"
#include "tools/raster/Simd.h"
#include "tools/raster/StrokeImage.h"

#include <QPainter>

#include <algorithm>
#include <benchmark/benchmark.h>

namespace {

using namespace vellum;

constexpr int kLayers = 10;
constexpr int kActive = 5;
constexpr int kFrames = 30; ///< of the active layer
constexpr int kNow = 15;

std::vector<bench::Points> theStrokes;

enum class Content { Sketch, Noise };

/// Every pixel of every layer half transparent: no drawing looks like that, nothing can be skipped.
QImage noise(unsigned seed) {
    std::mt19937 random(seed);
    QImage image(kCanvasSize, kCanvasSize, QImage::Format_RGBA8888);
    for (int y = 0; y < kCanvasSize; ++y) {
        std::generate_n(image.scanLine(y), 4 * kCanvasSize,
                        [&] { return static_cast<uchar>(random() >> 8); });
    }
    return image;
}

void fill(LayerManager& manager, Content content) {
    for (int i = 0; i < kLayers; ++i) {
        manager.addLayer(bench::kCamera, -1, "");
        manager.setActiveLayer(bench::kCamera, i, true);
        const int last = i == kActive ? kFrames : 1;
        for (int frame = 1; frame <= last; ++frame) {
            manager.addFrameAt(bench::kCamera, frame);
            bench::goTo(manager, frame);
            if (content == Content::Noise) {
                auto noisy = bench::copyOfCurrent(manager);
                noisy->setImage(noise(unsigned(i)));
                bench::put(manager, std::move(noisy));
            } else {
                bench::sketch(manager, theStrokes, 7 * i + frame, 8);
            }
        }
    }
    manager.setActiveLayer(bench::kCamera, kActive, true);
    bench::goTo(manager, kNow);
    manager.compositeCamera(bench::kCamera);
}

void setGhosts(int count) {
    settings().ghostPrev = settings().ghostNext = count > 0;
    settings().ghostPrevCount = settings().ghostNextCount = count;
}

/// The least of several times, as good as undisturbed.
template <typename Work> double leastSeconds(int times, Work work) {
    double least = 1e9;
    for (int i = 0; i < times; ++i)
        least = std::min(least, bench::seconds(work));
    return least;
}

/// All layers, the ghosts' picture beneath and the stroke's in the middle, with QPainter.
double painterRebuild(LayerManager& manager, bool ghosts, bool stroke) {
    std::vector<QImage> images;
    for (int i = 0; i < kLayers; ++i)
        images.push_back(manager.layer(bench::kCamera, i)->currentFrame()->image());
    const QImage extra = images[kActive];
    QImage picture = blankCanvas();
    return leastSeconds(5, [&] {
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        if (ghosts)
            painter.drawImage(0, 0, extra);
        for (int i = 0; i < kLayers; ++i) {
            painter.drawImage(0, 0, images[static_cast<std::size_t>(i)]);
            if (stroke && i == kActive)
                painter.drawImage(0, 0, extra);
        }
    });
}

/// Begins a stroke and draws it around the canvas with a 40-pixel brush, 8 pixels a sample: one
/// round, since over its own paint a stroke costs less. Seconds a sample, the picture brought up to
/// date after each.
double drawAround(LayerManager& manager) {
    constexpr int kSamples = 300;
    Stroke* stroke = manager.beginStroke(bench::kCamera, Tool::Brush, Qt::blue);
    const double spent = bench::seconds([&] {
        for (int sample = 0; sample < kSamples; ++sample) {
            const double angle = sample * 0.02;
            stroke->points.push_back({40, 0.8F, 1.0F, static_cast<int>(512 + 400 * std::cos(angle)),
                                      static_cast<int>(512 + 400 * std::sin(angle))});
            stroke->dirty = true;
            benchmark::DoNotOptimize(manager.compositeCamera(bench::kCamera));
        }
    });
    return spent / kSamples;
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// With ghosts and without, in turn.
void BM_SampleToPicture(benchmark::State& state) {
    const int ghosts = static_cast<int>(state.range(0));
    LayerManager manager;
    fill(manager, Content::Sketch);
    const double painter = painterRebuild(manager, ghosts > 0, true);
    std::vector<double> times;
    std::vector<double> ratios;
    for (auto _ : state) {
        double spent[2];
        for (const bool shown : {false, true}) {
            setGhosts(shown ? ghosts : 0);
            manager.discardStroke();
            manager.compositeCamera(bench::kCamera);
            spent[shown] = drawAround(manager);
        }
        times.push_back(spent[true]);
        ratios.push_back(spent[true] / spent[false]);
    }
    const QImage piecemeal = manager.compositeCamera(bench::kCamera)->copy();
    manager.markCameraModified(bench::kCamera);
    if (piecemeal != *manager.compositeCamera(bench::kCamera))
        state.SkipWithError("the picture differs from one built anew");
    state.counters["us_a_sample"] = median(times) * 1e6;
    state.counters["x_faster_than_QPainter_rebuild"] = painter / median(times);
    state.counters["cost_with_ghosts"] = median(ratios);
    setGhosts(0);
}

void BM_RebuildAll(benchmark::State& state) {
    const auto content = static_cast<Content>(state.range(0));
    const simd::Target fastest = simd::inUse();
    simd::use(state.range(1) != 0 ? fastest : simd::usable().front());
    LayerManager manager;
    fill(manager, content);
    const double painter = painterRebuild(manager, false, false);
    double least = 1e9;
    for (auto _ : state) {
        least = std::min(least, bench::seconds([&] {
                             manager.markCameraModified(bench::kCamera);
                             manager.compositeCamera(bench::kCamera);
                         }));
    }
    state.SetLabel(simd::name(simd::inUse()));
    state.counters["x_faster_than_QPainter"] = painter / least;
    simd::use(fastest);
}

/// Through the frames of the active layer with 9 + 9 ghosts; compared with decoding and painting
/// every ghost anew each time.
void BM_Scrub(benchmark::State& state) {
    const bool warm = state.range(0) != 0;
    setGhosts(9);
    LayerManager manager;
    fill(manager, Content::Sketch);
    const Layer& layer = *manager.layer(bench::kCamera, kActive);
    const double anew = leastSeconds(1, [&] {
        QImage canvas = blankCanvas();
        QPainter painter(&canvas);
        for (int i = kNow - 10; i < kNow + 9; ++i) {
            QImage image;
            pngToImage(layer.frameAt(i)->pngBytes(), image);
            painter.setOpacity(0.2);
            painter.drawImage(0, 0, image);
        }
    });
    const auto scrub = [&] {
        for (int frame = 1; frame <= kFrames; ++frame) {
            bench::goTo(manager, frame);
            manager.compositeCamera(bench::kCamera);
        }
    };
    scrub();
    double spent = 0.0;
    for (auto _ : state) {
        if (!warm) {
            state.PauseTiming();
            manager.markCameraModified(bench::kCamera);
            FrameCache::packAll();
            state.ResumeTiming();
        }
        spent += bench::seconds(scrub);
    }
    state.counters["x_faster_than_ghosts_anew"] =
        anew / (spent / static_cast<double>(state.iterations()) / kFrames);
    setGhosts(0);
}

/// A time change alone, with ten layers of a thousand frames each.
void BM_TimeChange(benchmark::State& state) {
    LayerManager manager;
    for (int i = 0; i < kLayers; ++i) {
        auto layer = std::make_unique<Layer>();
        for (int frame = 0; frame < 1000; ++frame)
            layer->addFrameAt(frame);
        manager.insertLayer(bench::kCamera, -1, std::move(layer));
    }
    int frame = 0;
    for (auto _ : state) {
        frame = (frame + 37) % 1000;
        manager.timeChanged(frame);
    }
}

} // namespace

BENCHMARK(BM_SampleToPicture)
    ->ArgName("ghosts")
    ->Arg(0)
    ->Arg(3)
    ->Arg(9)
    ->Unit(benchmark::kMillisecond)
    ->MinTime(2.0);
BENCHMARK(BM_RebuildAll)
    ->ArgNames({"noise", "fastest"})
    ->ArgsProduct({{0, 1}, {0, 1}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Scrub)->ArgName("warm")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TimeChange)->Unit(benchmark::kMicrosecond);

int main(int argc, char** argv) {
    const std::string tablet = bench::tabletFile(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    theStrokes = bench::strokes(tablet);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
