// The brush's soft thick line against libmypaint's dabs: the same 900-pixel line at radius 3, 10
// and 50, along the rows and aslant. Each of ours measures the other in the same run and reports
//   vs_default      libmypaint at its own spacing, two dabs a radius
//   vs_dab_a_pixel  libmypaint at one dab a pixel, which is what our line places
// as the time of the other divided by ours: above 1 we are faster. Times are of the processor, all
// threads together, so a busy machine or a second thread of the other's changes nothing.
#include "tools/raster/FreehandRaster.h"
#include "tools/raster/Stroke.h"
#include "tools/raster/StrokeMerge.h"

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

void drawOurs(QImage& image, const Line& line, int radius) {
    StrokePoint from;
    from.width = 2 * radius;
    from.x = line.x0;
    from.y = line.y0;
    StrokePoint to = from;
    to.x = line.x1;
    to.y = line.y1;
    drawFreehandSegments(image, {from, to}, 0, tool::kBrush);
}

#ifdef HAVE_LIBMYPAINT

class OtherBrush {
public:
    OtherBrush(int radius, float dabsPerPixel) : radius_(radius) {
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

    void draw(const Line& line) {
        mypaint_brush_reset(brush_);
        mypaint_brush_new_stroke(brush_);
        mypaint_surface_begin_atomic(surface());
        to(line.x0, line.y0, 10.0);
        to(line.x1, line.y1, 1.0);
        MyPaintRectangle touched;
        mypaint_surface_end_atomic(surface(), &touched);
    }

private:
    MyPaintSurface* surface() { return reinterpret_cast<MyPaintSurface*>(surface_); }
    void to(int x, int y, double seconds) {
        mypaint_brush_stroke_to(brush_, surface(), static_cast<float>(x), static_cast<float>(y),
                                1.0F, 0.0F, 0.0F, seconds);
    }

    int radius_;
    MyPaintBrush* brush_;
    MyPaintFixedTiledSurface* surface_;
};

// Median seconds of a few runs.
template <typename Run> double secondsOf(const Run& run) {
    std::vector<double> all;
    for (int i = 0; i < 9; ++i) {
        const double start = processorSeconds();
        run();
        all.push_back(processorSeconds() - start);
    }
    std::nth_element(all.begin(), all.begin() + 4, all.end());
    return all[4];
}

#endif

void softLine(benchmark::State& state) {
    const int radius = static_cast<int>(state.range(0));
    const Line line = lineOf(static_cast<int>(state.range(1)));
    Stroke stroke;
    stroke.color = Qt::cyan;
    QImage image;
    prepareStrokeImage(image, stroke, {});
    const QImage blank = image.copy();
    double seconds = 0.0;
    for (auto _ : state) {
        image = blank.copy(); // not part of the drawing
        const double start = processorSeconds();
        drawOurs(image, line, radius);
        const double took = processorSeconds() - start;
        state.SetIterationTime(took);
        seconds += took;
    }
    seconds /= static_cast<double>(state.iterations());
#ifdef HAVE_LIBMYPAINT
    OtherBrush usual(radius, 0.0F);
    OtherBrush dense(radius, 1.0F);
    state.counters["vs_default"] = secondsOf([&] { usual.draw(line); }) / seconds;
    state.counters["vs_dab_a_pixel"] = secondsOf([&] { dense.draw(line); }) / seconds;
#endif
}
BENCHMARK(softLine)
    ->ArgsProduct({{3, 10, 50}, {0, 1}})
    ->ArgNames({"radius", "slanted"})
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
        drawFreehandSegments(image, points, 0, tool::kBrush);
    }
    state.counters["per_segment"] = benchmark::Counter(
        90, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(pressureLine)->Arg(3)->Arg(20)->Arg(50)->ArgName("radius")->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
