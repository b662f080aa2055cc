// The brush's soft thick line against libmypaint's dabs: the same 900-pixel line at radius 3, 10
// and 50, along the rows and aslant, whole or sample by sample. Both draw in turn, and the figures
// are the other's median time divided by ours: above 1 we are faster.
//   vs_default      libmypaint at its own spacing, two dabs a radius
//   vs_dab_a_pixel  libmypaint at one dab a pixel, which is what our line places
// Its hardness 0.5 is the profile nearest to our linear one. It blends colour into 16-bit tiles, we
// raise the alpha of 8-bit pixels: each what its kind of stroke needs. Times are of the processor,
// all threads together, so a busy machine or a second thread of the other's changes little.
#include "tools/raster/FreehandRaster.h"
#include "tools/raster/Stroke.h"
#include "tools/raster/StrokeImage.h"

#include <QImage>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <ctime>
#include <vector>

#ifdef HAVE_LIBMYPAINT
#include <mypaint-brush.h>
#include <mypaint-fixed-tiled-surface.h>
#endif

using namespace vellum;

namespace {

double processorSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

struct Line {
    int x0, y0, x1, y1;
};

// 900 pixels long, well inside the canvas.
Line lineOf(int slanted) {
    return slanted != 0 ? Line{190, 200, 190 + 637, 200 + 636} : Line{62, 512, 962, 512};
}

// The ends alone, or a sample every ten pixels.
std::vector<StrokePoint> samples(const Line& line, int radius, bool incremental) {
    const int count = incremental ? 90 : 1;
    std::vector<StrokePoint> points;
    for (int i = 0; i <= count; ++i)
        points.push_back({2 * radius, 1.0F, 1.0F, line.x0 + (line.x1 - line.x0) * i / count,
                          line.y0 + (line.y1 - line.y0) * i / count});
    return points;
}

// As while drawing: every sample is drawn as it comes.
void drawOurs(QImage& image, const std::vector<StrokePoint>& points) {
    std::vector<StrokePoint> sofar = {points[0]};
    for (std::size_t i = 1; i < points.size(); ++i) {
        sofar.push_back(points[i]);
        drawFreehandSegments(image, sofar, static_cast<int>(i) - 1, Tool::Brush);
    }
}

double median(std::vector<double> times) {
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

template <typename Run> double secondsOf(const Run& run) {
    const double start = processorSeconds();
    run();
    return processorSeconds() - start;
}

#ifdef HAVE_LIBMYPAINT

class OtherBrush {
public:
    OtherBrush(int radius, float dabsPerPixel) {
        brush_ = mypaint_brush_new();
        mypaint_brush_from_defaults(brush_);
        const auto set = [this](MyPaintBrushSetting setting, float value) {
            mypaint_brush_set_base_value(brush_, setting, value);
        };
        set(MYPAINT_BRUSH_SETTING_RADIUS_LOGARITHMIC, std::log(static_cast<float>(radius)));
        set(MYPAINT_BRUSH_SETTING_HARDNESS, 0.5F);
        set(MYPAINT_BRUSH_SETTING_OPAQUE, 1.0F);
        set(MYPAINT_BRUSH_SETTING_OPAQUE_MULTIPLY, 1.0F);
        set(MYPAINT_BRUSH_SETTING_DABS_PER_ACTUAL_RADIUS,
            dabsPerPixel > 0.0F ? dabsPerPixel * static_cast<float>(radius) : 2.0F);
        surface_ = mypaint_fixed_tiled_surface_new(kCanvasSize, kCanvasSize);
    }
    ~OtherBrush() {
        mypaint_surface_unref(surface());
        mypaint_brush_unref(brush_);
    }
    OtherBrush(const OtherBrush&) = delete;
    OtherBrush& operator=(const OtherBrush&) = delete;

    void draw(const std::vector<StrokePoint>& points) {
        mypaint_brush_reset(brush_);
        mypaint_brush_new_stroke(brush_);
        for (std::size_t i = 0; i < points.size(); ++i) {
            mypaint_surface_begin_atomic(surface());
            mypaint_brush_stroke_to(brush_, surface(), static_cast<float>(points[i].x),
                                    static_cast<float>(points[i].y), 1.0F, 0.0F, 0.0F,
                                    i == 0 ? 10.0 : 1.0);
            MyPaintRectangle touched;
            mypaint_surface_end_atomic(surface(), &touched);
        }
    }

    float alphaAt(const QPoint& point) {
        float r = 0.0F, g = 0.0F, b = 0.0F, alpha = 0.0F;
        mypaint_surface_get_color(surface(), static_cast<float>(point.x()),
                                  static_cast<float>(point.y()), 1.0F, &r, &g, &b, &alpha);
        return alpha;
    }

private:
    MyPaintSurface* surface() { return reinterpret_cast<MyPaintSurface*>(surface_); }
    MyPaintBrush* brush_;
    MyPaintFixedTiledSurface* surface_;
};

#endif

void softLine(benchmark::State& state) {
    const int radius = static_cast<int>(state.range(0));
    const std::vector<StrokePoint> points =
        samples(lineOf(static_cast<int>(state.range(1))), radius, state.range(2) != 0);
    Stroke stroke;
    stroke.color = Qt::cyan;
    QImage image;
    prepareStrokeImage(image, stroke, {});
    const QImage blank = image.copy();
    const QPoint middle((points.front().x + points.back().x) / 2,
                        (points.front().y + points.back().y) / 2);
    std::vector<double> ours;
#ifdef HAVE_LIBMYPAINT
    constexpr std::size_t kDenseRuns = 3; // they take long
    OtherBrush usual(radius, 0.0F);
    OtherBrush dense(radius, 1.0F);
    std::vector<double> usuals;
    std::vector<double> denses;
#endif
    for (auto _ : state) {
        image = blank.copy(); // not part of the drawing
        ours.push_back(secondsOf([&] { drawOurs(image, points); }));
        state.SetIterationTime(ours.back());
        if (image.pixelColor(middle).alpha() < 230)
            state.SkipWithError("our line is not there");
#ifdef HAVE_LIBMYPAINT
        usuals.push_back(secondsOf([&] { usual.draw(points); }));
        if (denses.size() < kDenseRuns)
            denses.push_back(secondsOf([&] { dense.draw(points); }));
        if (usual.alphaAt(middle) < 0.9F || dense.alphaAt(middle) < 0.9F)
            state.SkipWithError("the other's line is not there");
#endif
    }
#ifdef HAVE_LIBMYPAINT
    state.counters["vs_default"] = median(usuals) / median(ours);
    state.counters["vs_dab_a_pixel"] = median(denses) / median(ours);
#endif
}
BENCHMARK(softLine)
    ->ArgsProduct({{3, 10, 50}, {0, 1}, {0, 1}})
    ->ArgNames({"radius", "slanted", "by_sample"})
    ->Iterations(31)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

// The same line as an artist draws it: many short segments whose opacity follows the pressure.
void pressureLine(benchmark::State& state) {
    const int radius = static_cast<int>(state.range(0));
    std::vector<StrokePoint> points;
    for (int i = 0; i <= 90; ++i) {
        StrokePoint p;
        p.width = 2 * radius;
        p.x = 62 + 10 * i;
        p.y = 512 + static_cast<int>(60.0 * std::sin(i * 0.1));
        p.opacity = 0.55F + 0.4F * static_cast<float>(std::sin(i * 0.2));
        points.push_back(p);
    }
    Stroke stroke;
    QImage image;
    prepareStrokeImage(image, stroke, {});
    const QImage blank = image.copy();
    for (auto _ : state) {
        state.PauseTiming();
        image = blank.copy();
        state.ResumeTiming();
        drawFreehandSegments(image, points, 0, Tool::Brush);
    }
    state.counters["per_segment"] = benchmark::Counter(
        90, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(pressureLine)->Arg(3)->Arg(20)->Arg(50)->ArgName("radius")->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
