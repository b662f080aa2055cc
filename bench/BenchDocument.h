// Documents for the benchmarks: frames drawn with recorded tablet strokes, through the document's
// own stroke operations. The recording is named by --tablet FILE or the variable VELLUM_TABLET (one
// sample a line: seconds, x, y, pressure; tab separated); without one strokes are generated.
#pragma once

#include "document/IntTime.h"
#include "document/LayerManager.h"
#include "document/StrokeSession.h"
#include "tools/raster/StrokePoint.h"

#include <QByteArray>
#include <QFile>
#include <QGuiApplication>

#include <maya/MAnimControl.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace bench {

using Points = std::vector<vellum::StrokePoint>;

inline const QString kCamera = QStringLiteral("shotCam");

/// Processor seconds that some work takes, the system's included: on a busy machine they say more
/// than the clock on the wall.
template <typename Work> double seconds(Work work) {
    const std::clock_t start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

/// Takes "--tablet FILE" out of the arguments.
inline std::string tabletFile(int& argc, char** argv) {
    std::string name;
    if (const char* variable = std::getenv("VELLUM_TABLET"))
        name = variable;
    for (int i = 1; i + 1 < argc; ++i) {
        if (std::strcmp(argv[i], "--tablet") == 0) {
            name = argv[i + 1];
            std::copy(argv + i + 2, argv + argc + 1, argv + i);
            argc -= 2;
            break;
        }
    }
    return name;
}

inline std::vector<Points> recordedStrokes(const std::string& file) {
    std::vector<Points> strokes;
    QFile source(QString::fromStdString(file));
    if (file.empty() || !source.open(QIODevice::ReadOnly))
        return strokes;
    bool down = false;
    while (!source.atEnd()) {
        const QByteArray line = source.readLine();
        double when = 0.0;
        double x = 0.0;
        double y = 0.0;
        double pressure = 0.0;
        if (std::sscanf(line.constData(), "%lf %lf %lf %lf", &when, &x, &y, &pressure) != 4)
            continue;
        if (pressure > 0.0) {
            if (!down)
                strokes.emplace_back();
            // Recorded in a window of about 800 x 610 pixels.
            strokes.back().push_back({6, static_cast<float>(pressure), 1.0F,
                                      static_cast<int>(x * 1.25), static_cast<int>(y * 1.6)});
        }
        down = pressure > 0.0;
    }
    return strokes;
}

inline std::vector<Points> generatedStrokes() {
    std::vector<Points> strokes;
    std::mt19937 random(7);
    const auto upTo = [&](int limit) { return static_cast<int>(random() % unsigned(limit)); };
    for (int stroke = 0; stroke < 30; ++stroke) {
        Points points;
        const double centreX = 100 + upTo(800);
        const double centreY = 100 + upTo(800);
        const double radius = 30 + upTo(250);
        for (int i = 0; i < 100; ++i) {
            const double angle = i * 0.06;
            points.push_back({6, 0.3F + 0.007F * static_cast<float>(i), 1.0F,
                              static_cast<int>(centreX + radius * std::cos(angle)),
                              static_cast<int>(centreY + radius * std::sin(1.3 * angle))});
        }
        strokes.push_back(std::move(points));
    }
    return strokes;
}

inline std::vector<Points> strokes(const std::string& file) {
    std::vector<Points> found = recordedStrokes(file);
    std::printf("strokes: %s\n", found.empty() ? "generated" : "recorded with a tablet");
    return found.empty() ? generatedStrokes() : found;
}

inline void goTo(vellum::LayerManager& manager, int frame) {
    MAnimControl::setCurrentTime(vellum::fromIntTime(frame));
    manager.timeChanged(frame);
}

/// A frame with the picture of the current one, to draw on.
inline std::unique_ptr<vellum::Frame> copyOfCurrent(const vellum::LayerManager& manager) {
    const vellum::Frame* frame = manager.currentFrame(kCamera);
    if (!frame) {
        std::fprintf(stderr, "no frame to draw on\n");
        std::exit(1);
    }
    auto copy = std::make_unique<vellum::Frame>(frame->time());
    copy->setImage(frame->image());
    return copy;
}

/// Puts a frame in the place of the one at its time; no undo bytes are made.
inline void put(vellum::LayerManager& manager, std::unique_ptr<vellum::Frame> frame) {
    const MTime moment = frame->time();
    std::vector<std::unique_ptr<vellum::Frame>> frames;
    frames.push_back(std::move(frame));
    manager.exchangeFrames(kCamera, manager.activeLayerIndex(kCamera), {moment}, frames);
}

/// Draws on a frame as a committed stroke does.
inline void draw(vellum::Frame& frame, Points points, vellum::Tool tool, int width,
                 const QColor& color) {
    for (vellum::StrokePoint& point : points)
        point.width = width;
    vellum::StrokeSession session(frame, tool, color, QImage());
    session.stroke().points = std::move(points);
    session.stroke().dirty = true;
    frame.setImage(session.merged(frame.image()));
}

/// Draws `count` strokes, beginning with number `first`, on the current frame.
inline void sketch(vellum::LayerManager& manager, const std::vector<Points>& strokes, int first,
                   int count) {
    auto frame = copyOfCurrent(manager);
    for (int i = 0; i < count; ++i) {
        const int number = first + i;
        const QColor color = QColor::fromHsv(number * 47 % 360, 200, 160);
        draw(*frame, strokes[static_cast<std::size_t>(number) % strokes.size()],
             number % 3 == 0 ? vellum::Tool::Pencil : vellum::Tool::Brush, 4 + number % 5 * 4,
             color);
    }
    put(manager, std::move(frame));
}

} // namespace bench
