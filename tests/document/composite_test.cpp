// The picture of a camera: equal to what QPainter paints, and equal however little of it was
// painted anew.
#include "document/DocumentEnvironment.h"
#include "document/Drawing.h"
#include "document/IntTime.h"
#include "document/StrokeSession.h"
#include "plugin/base/Settings.h"
#include "support/FrameChanges.h"
#include "support/Seed.h"
#include "support/Sure.h"
#include "tools/raster/PixelKernels.h"
#include "tools/raster/PixelRows.h"
#include "tools/raster/Simd.h"
#include "tools/raster/StrokeImage.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <random>

using namespace vellum;
using drawing::CleanScene;
using support::sure;

namespace {

const QString kCamera = QStringLiteral("shotCam");

QImage painted(const QImage& below, const QImage& above, double opacity = 1.0) {
    QImage result = below;
    QPainter painter(&result);
    painter.setOpacity(opacity);
    painter.drawImage(0, 0, above);
    return result;
}

/// Ghosts of one side as QPainter paints them.
QImage ghosts(const Layer& layer, int count, int direction, const QColor& tint) {
    QImage canvas = blankCanvas();
    for (int k = count; k >= 1; --k) {
        const QImage image = test::pictureOf(layer, direction * k);
        if (!image.isNull()) {
            canvas = painted(canvas, image, 0.4 - (k - 1) * (0.4 / count));
        }
    }
    if (tint.isValid()) {
        LayerManager::tintImage(canvas, tint);
    }
    return canvas;
}

/// A document of `layers` layers with frames 1..9, the middle layer active, at frame 5.
void fill(LayerManager& manager, int layers, unsigned seed) {
    for (int i = 0; i < layers; ++i) {
        auto layer = std::make_unique<Layer>(QString::number(i));
        for (int time = 1; time <= 9; time += i + 1) {
            layer->addFrame(drawing::frameWith(
                time, drawing::scribble(seed + static_cast<unsigned>(10 * i + time))));
        }
        manager.insertLayer(kCamera, -1, std::move(layer));
    }
    manager.setActiveLayer(kCamera, layers / 2, true);
    drawing::goTo(manager, 5);
}

/// Every pixel of another colour and alpha.
QImage noise(unsigned seed) {
    std::mt19937 random(seed);
    QImage image(kCanvasSize, kCanvasSize, QImage::Format_RGBA8888);
    for (int y = 0; y < kCanvasSize; ++y) {
        std::generate_n(image.scanLine(y), 4 * kCanvasSize,
                        [&] { return static_cast<uchar>(random() >> 8); });
    }
    return image;
}

/// Lets a test choose the processor; the one in use before comes back when it ends.
class OtherProcessor {
public:
    ~OtherProcessor() { simd::use(before_); }

private:
    const simd::Target before_ = simd::inUse();
};

/// What a rebuild of everything gives; the picture must not change by it.
QImage rebuilt(LayerManager& manager) {
    manager.markCameraModified(kCamera);
    return sure(manager.compositeCamera(kCamera)).copy();
}

void addPoint(LayerManager& manager, int x, int y, int width, float opacity) {
    Stroke& stroke = *manager.currentStroke();
    stroke.points.push_back({width, opacity, 1.0F, x, y});
    stroke.dirty = true;
}

} // namespace

TEST(PixelRows, ResultsDependNeitherOnNeighboursNorOnTheProcessor) {
    const OtherProcessor afterwards;
    const QImage images[] = {drawing::scribble(1), drawing::scribble(2), noise(3), noise(4)};
    const auto row = [&](int i, int y) { return images[i].constScanLine(y); };
    for (int y = 0; y < kCanvasSize; y += 7) {
        std::vector<std::vector<uchar>> results;
        for (const simd::Target target : simd::usable()) {
            simd::use(target);
            // Whole pieces take short cuts and lie elsewhere; one pixel at a time takes none.
            for (const int step : {kCanvasSize, 1, 37}) {
                std::vector<uchar>& result = results.emplace_back(4 * kCanvasSize);
                for (int x = 0; x < kCanvasSize; x += step) {
                    for (int i = 0; i < 4; ++i) {
                        rows::over(result.data() + 4 * x, row(i, y) + 4 * x,
                                   std::min(step, kCanvasSize - x));
                    }
                }
            }
            std::vector<uchar>& faded = results.emplace_back(4 * kCanvasSize);
            for (int x = 0; x < kCanvasSize; x += pixel::kPiece) {
                rows::Stack stack;
                for (int i = 0; i < 4; ++i) {
                    stack.overFaded(row(i, y) + 4 * x, 25 * i + 1);
                }
                stack.store(faded.data() + 4 * x);
            }
        }
        for (std::size_t i = 0; i < results.size(); ++i) {
            ASSERT_EQ(results[i], results[i % 4 == 3 ? 3 : 0]) << "row " << y << ", way " << i;
        }
        for (int x = 0; x < kCanvasSize; ++x) {
            for (const std::size_t way : {0, 3}) {
                const uchar* pixel = results[way].data() + 4 * x;
                ASSERT_TRUE(pixel[3] > 0 || pixel[0] + pixel[1] + pixel[2] == 0) << x << ' ' << y;
            }
        }
    }
}

TEST(PixelRows, WhatIsAloneOrOpaqueOrUnderNothingStaysAsItIs) {
    const OtherProcessor afterwards;
    using Row = std::vector<uchar>;
    const auto rowOf = [](auto pixelAt) {
        Row row;
        for (int i = 0; i < 256; ++i) {
            for (const int byte : pixelAt(i)) {
                row.push_back(static_cast<uchar>(byte));
            }
        }
        return row;
    };
    using Pixel = std::array<int, 4>;
    // Every other pixel is looked at; the ones between take every short cut away.
    const Row nothing = rowOf([](int i) {
        return i % 2 ? Pixel{9, 8, 7, 100} : Pixel{1, 2, 3, 0};
    });
    const auto expectKept = [](const Row& result, const Row& kept, const std::string& what) {
        for (std::size_t i = 0; i < kept.size(); i += 8) {
            ASSERT_TRUE(std::equal(&kept[i], &kept[i] + 4, &result[i])) << what << ", pixel " << i;
        }
    };
    for (const simd::Target target : simd::usable()) {
        simd::use(target);
        for (int alpha = 1; alpha < 256; ++alpha) {
            const std::string which = std::string(simd::name(target)) + " " + std::to_string(alpha);
            const Row colors = rowOf([&](int i) { return Pixel{i, 255 - i, i ^ 85, alpha}; });
            const Row opaque = rowOf([](int i) {
                return Pixel{255 - i, i, i ^ 170, i % 2 ? 100 : 255};
            });
            Row result = colors;
            rows::over(result.data(), nothing.data(), 256);
            expectKept(result, colors, which + " under nothing");
            result = nothing;
            rows::over(result.data(), colors.data(), 256);
            expectKept(result, colors, which + " over nothing");
            result = colors;
            rows::over(result.data(), opaque.data(), 256);
            expectKept(result, opaque, which + " under something opaque");
        }
    }
}

// Also where nothing is laid over them, and beside pixels that are painted.
TEST(Composite, PixelsThatCannotBeSeenHaveNoColor) {
    for (const int painted : {-1, 0, 40, 255}) {
        std::array<std::uint8_t, 1024> result{}, source{};
        for (std::size_t i = 0; i < 256; ++i) {
            result[4 * i] = static_cast<std::uint8_t>(i);
            result[4 * i + 3] = i % 3 == 0 ? 200 : 0;
            source[4 * i + 1] = 80;
            source[4 * i + 3] = static_cast<int>(i) == painted ? 9 : 0;
        }
        rows::over(result.data(), source.data(), 256);
        for (std::size_t i = 0; i < result.size(); i += 4) {
            if (result[i + 3] == 0) {
                EXPECT_EQ(result[i] | result[i + 1] | result[i + 2], 0) << i;
            }
        }
    }
    LayerManager manager;
    manager.addLayer(kCamera, 0, QString());
    manager.addFrameAtCurrentTime(kCamera);
    for (const Tool tool : {Tool::Pencil, Tool::Eraser}) {
        Stroke* stroke = manager.beginStroke(kCamera, tool, Qt::red);
        ASSERT_NE(stroke, nullptr);
        stroke->points = {{20, 1.0F, 1.0F, 100, 100}, {20, 1.0F, 1.0F, 200, 140}};
        stroke->dirty = true;
        QByteArray undo;
        ASSERT_TRUE(manager.commitStroke(kCamera, undo));
    }
    const QImage erased = sure(manager.currentFrame(kCamera)).image();
    EXPECT_EQ(std::count(erased.constBits(), erased.constBits() + erased.sizeInBytes(), 0),
              erased.sizeInBytes());
}

TEST(Composite, EqualsQPainterOnStraightAlpha) {
    const CleanScene scene;
    LayerManager manager;
    fill(manager, 10, 100);
    manager.setLayerVisible(kCamera, 3, false);
    manager.setLayerOpacity(kCamera, 4, 0.3F); // not part of the picture
    QImage expected = blankCanvas();
    for (int i = 0; i < 10; ++i) {
        const QImage image = test::pictureOf(*manager.layer(kCamera, i));
        expected = image.isNull() ? expected : painted(expected, image);
    }
    const QImage* picture = manager.compositeCamera(kCamera);
    ASSERT_EQ(picture->format(), QImage::Format_RGBA8888);
    EXPECT_LE(drawing::premultipliedDifference(*picture, expected), 1);
    EXPECT_EQ(manager.compositeCamera("nobody"), nullptr);

    // Nothing in it to be skipped.
    expected = blankCanvas();
    for (int i = 0; i < 10; ++i) {
        manager.setLayerVisible(kCamera, i, true);
        const QImage image = noise(static_cast<unsigned>(i));
        ASSERT_TRUE(test::putFrame(manager, kCamera, i, image));
        expected = painted(expected, image);
    }
    EXPECT_LE(drawing::premultipliedDifference(sure(manager.compositeCamera(kCamera)), expected),
              1);
}

TEST(Composite, GhostsEqualQPainterInEveryCombination) {
    const CleanScene scene;
    LayerManager manager;
    fill(manager, 2, 300);
    const Layer& active = *manager.activeLayer(kCamera);
    const QImage layers =
        painted(test::pictureOf(*manager.layer(kCamera, 0)), test::pictureOf(active));
    Settings& chosen = settings();
    for (int combination = 0; combination < 8; ++combination) {
        chosen.ghostPrev = combination & 1;
        chosen.ghostNext = combination & 2;
        chosen.ghostColorOverride = combination & 4;
        chosen.ghostPrevCount = 1 + combination;
        chosen.ghostNextCount = 2;
        const bool tint = chosen.ghostColorOverride;
        const QImage previous = ghosts(active, chosen.ghostPrev ? chosen.ghostPrevCount : 0, -1,
                                       tint ? chosen.ghostColorOverridePrev : QColor());
        const QImage next = ghosts(active, chosen.ghostNext ? 2 : 0, +1,
                                   tint ? chosen.ghostColorOverrideNext : QColor());
        QImage expected = painted(previous, next);
        for (int i = 0; i < 2; ++i) {
            expected = painted(expected, test::pictureOf(*manager.layer(kCamera, i)));
        }
        EXPECT_LE(drawing::premultipliedDifference(rebuilt(manager), expected), 2) << combination;
    }
    class Playing : public DocumentEnvironment {
        bool isPlaying() const override { return true; }
    } playing;
    setDocumentEnvironment(&playing);
    EXPECT_LE(drawing::premultipliedDifference(rebuilt(manager), layers), 1)
        << "no ghosts during playback";
    setDocumentEnvironment(nullptr);
    rebuilt(manager);
    ASSERT_TRUE(manager.beginStroke(kCamera, Tool::Brush, Qt::red));
    setDocumentEnvironment(&playing);
    EXPECT_LE(drawing::premultipliedDifference(rebuilt(manager), layers), 1)
        << "nor when it starts in the middle of a stroke";
    manager.discardStroke();
    chosen.disableGhostingDuringPlayback = false;
    EXPECT_GT(drawing::premultipliedDifference(rebuilt(manager), layers), 1);
    setDocumentEnvironment(nullptr);
}

TEST(Composite, PaintedInPartsEqualsPaintedWhole) {
    const unsigned seed = support::seed();
    SCOPED_TRACE("seed " + std::to_string(seed));
    const CleanScene scene;
    std::mt19937 random(seed);
    const auto upTo = [&](int limit) { return static_cast<int>(random() % unsigned(limit)); };
    LayerManager manager;
    fill(manager, 4, seed);
    settings().ghostPrev = true;
    QByteArray undo;
    manager.compositeCamera(kCamera);
    for (int round = 0; round < 40; ++round) {
        QImage mirror = sure(manager.compositeCamera(kCamera)).copy();
        const quint64 version = manager.compositeVersion(kCamera);
        switch (upTo(10)) {
        case 0:
            drawing::goTo(manager, upTo(10));
            break;
        case 1:
            manager.setLayerVisible(kCamera, upTo(4), upTo(4) > 0);
            break;
        case 2:
            manager.setActiveLayer(kCamera, upTo(4), false);
            break;
        case 3:
            manager.discardStroke();
            break;
        case 4:
            manager.moveLayer(kCamera, upTo(4), upTo(4));
            break;
        case 5:
            manager.commitStroke(kCamera, undo);
            break;
        case 6: { // a picture changes, beneath the stroke, above it or its own
            const QRect part(upTo(1000), upTo(1000), 1 + upTo(300), 1 + upTo(300));
            const int index = upTo(4);
            QImage image = test::pictureOf(*manager.layer(kCamera, index));
            if (!image.isNull()) {
                QPainter(&image).fillRect(part, QColor(upTo(256), 0, 99, upTo(256)));
                test::putFrame(manager, kCamera, index, image);
            }
            break;
        }
        default:
            if (manager.currentStroke() ||
                manager.beginStroke(kCamera, static_cast<Tool>(upTo(kDrawToolCount)), Qt::red)) {
                for (int i = upTo(4); i >= 0; --i) {
                    addPoint(manager, upTo(1200) - 90, upTo(1200) - 90, 1 + upTo(50), 0.7F);
                }
            }
        }
        const bool announced = manager.needsRedraw(kCamera);
        const QImage inParts = sure(manager.compositeCamera(kCamera)).copy();
        EXPECT_FALSE(manager.needsRedraw(kCamera));
        EXPECT_TRUE(announced || inParts == mirror) << "round " << round;
        // A texture that copies what is said to have changed has the same picture.
        const QRect changed = manager.compositeChangedSince(kCamera, version);
        for (int y = changed.top(); y <= changed.bottom(); ++y) {
            std::copy_n(inParts.constScanLine(y) + 4 * changed.left(), 4 * changed.width(),
                        mirror.scanLine(y) + 4 * changed.left());
        }
        ASSERT_EQ(mirror, inParts) << "round " << round;
        ASSERT_EQ(rebuilt(manager), inParts) << "round " << round;
    }
}

TEST(Composite, GhostsComeUpWithAStrokeThatLeftNoPixel) {
    const CleanScene scene;
    LayerManager manager;
    fill(manager, 2, 800);
    settings().ghostPrev = true;
    manager.compositeCamera(kCamera);
    ASSERT_TRUE(manager.beginStroke(kCamera, Tool::Brush, Qt::blue));
    manager.setActiveLayer(kCamera, 0, false);
    manager.compositeCamera(kCamera);
    QByteArray undo;
    ASSERT_TRUE(manager.commitStroke(kCamera, undo));
    const QImage picture = sure(manager.compositeCamera(kCamera)).copy();
    EXPECT_EQ(rebuilt(manager), picture);
}

TEST(Composite, WhatLiesBeneathAStrokeIsKeptForItsLengthOnly) {
    CompositeLayer layers[3];
    for (int i = 0; i < 3; ++i) {
        layers[i].image = noise(static_cast<unsigned>(i));
        layers[i].revision = static_cast<quint64>(i) + 1;
    }
    const auto stacked = [&](int drawnOn, bool beneath = true) {
        std::vector<CompositeLayer> result(layers + (beneath ? 0 : 2), layers + 3);
        for (CompositeLayer& layer : result) {
            layer.drawnOn = drawnOn == static_cast<int>(&layer - result.data());
        }
        return result;
    };
    CameraComposite drawn;
    CameraComposite plain;
    const auto equal = [&](int drawnOn) {
        drawn.paint(Layer::wholeCanvas(), stacked(drawnOn));
        plain.paint(Layer::wholeCanvas(), stacked(-1));
        return drawn.image() == plain.image();
    };
    EXPECT_TRUE(equal(2));
    EXPECT_EQ(drawn.strokeBytes(), 4U * kCanvasSize * kCanvasSize);
    layers[0].image = noise(50); // as what was kept says nothing of it, it is still seen
    EXPECT_FALSE(equal(2));
    layers[0].revision = 50;
    EXPECT_TRUE(equal(2));
    std::swap(layers[0], layers[1]);
    EXPECT_TRUE(equal(2));
    EXPECT_EQ(plain.strokeBytes(), 0U) << "nothing is drawn on";
    drawn.endStroke();
    EXPECT_EQ(drawn.strokeBytes(), 0U);
    EXPECT_TRUE(equal(2)) << "the next stroke begins anew";
    drawn.paint(Layer::wholeCanvas(), stacked(-1));
    EXPECT_EQ(drawn.strokeBytes(), 0U);
    drawn.paint(Layer::wholeCanvas(), stacked(0, false));
    EXPECT_EQ(drawn.strokeBytes(), 0U) << "nothing lies beneath";
}

TEST(Composite, DrawingTouchesOnlyWhatTheStrokeTouches) {
    const CleanScene scene;
    LayerManager manager;
    fill(manager, 3, 700);
    settings().ghostPrev = true;
    manager.compositeCamera(kCamera);
    ASSERT_TRUE(manager.beginStroke(kCamera, Tool::Brush, Qt::blue));
    addPoint(manager, 500, 500, 40, 1.0F);
    addPoint(manager, 520, 500, 40, 1.0F);
    manager.compositeCamera(kCamera);
    const quint64 version = manager.compositeVersion(kCamera);
    EXPECT_TRUE(manager.compositeChangedSince(kCamera, version).isEmpty());
    settings().ghostPrevCount = 1; // ghosts stay as they are until the stroke ends
    addPoint(manager, 540, 500, 40, 1.0F);
    manager.compositeCamera(kCamera);
    const QRect changed = manager.compositeChangedSince(kCamera, version);
    EXPECT_TRUE(QRect(472, 462, 116, 76).contains(changed)) << changed.width();
    EXPECT_EQ(manager.compositeChangedSince(kCamera, version + 1000), Layer::wholeCanvas());
    EXPECT_EQ(manager.compositeChangedSince(kCamera, 0), Layer::wholeCanvas());
}

TEST(Composite, CommittingChangesNoPixelAndUndoRestoresAll) {
    for (const Tool tool : {Tool::Pencil, Tool::Brush, Tool::Eraser, Tool::Line}) {
        SCOPED_TRACE("tool " + std::to_string(numberOf(tool)));
        const CleanScene scene;
        LayerManager manager;
        fill(manager, 3, 900);
        const QImage before = sure(manager.compositeCamera(kCamera)).copy();
        const QImage frameBefore = sure(manager.currentFrame(kCamera)).image();
        ASSERT_TRUE(manager.beginStroke(kCamera, tool, QColor(200, 10, 90)));
        for (int i = 0; i < 20; ++i) {
            addPoint(manager, 100 + 40 * i, 300 + 20 * (i % 5), 30, 0.5F + 0.02F * i);
            manager.compositeCamera(kCamera);
        }
        const QImage drawing = sure(manager.compositeCamera(kCamera)).copy();
        EXPECT_NE(drawing, before);
        QByteArray undo;
        ASSERT_TRUE(manager.commitStroke(kCamera, undo));
        EXPECT_FALSE(manager.currentStroke());
        EXPECT_EQ(sure(manager.compositeCamera(kCamera)), drawing);
        EXPECT_EQ(rebuilt(manager), sure(manager.compositeCamera(kCamera)));
        ASSERT_TRUE(manager.replaceActiveImage(kCamera, undo));
        EXPECT_EQ(sure(manager.currentFrame(kCamera)).image(), frameBefore);
        EXPECT_EQ(sure(manager.compositeCamera(kCamera)), before);
    }
}

TEST(Composite, StrokesAreRefusedWhereNothingCanBeDrawn) {
    const CleanScene scene;
    LayerManager manager;
    QByteArray undo;
    EXPECT_EQ(manager.beginStroke(kCamera, Tool::Brush, Qt::red), nullptr);
    manager.insertLayer(kCamera, -1, drawing::layerWith("A", {3, 5}, 1));
    const struct {
        int time, state;
        Tool tool;
        bool begins;
    } cases[] = {{1, 0, Tool::Brush, false},     {4, 0, Tool::Brush, false},
                 {5, 0, Tool::Brush, true},      {4, 1, Tool::Brush, true},
                 {2, 1, Tool::Brush, false},     {5, 2, Tool::Brush, false},
                 {5, 0, Tool::Transform, false}, {5, 0, static_cast<Tool>(-1), false}};
    for (const auto& one : cases) {
        manager.setLayerState(kCamera, 0, LayerState(one.state));
        drawing::goTo(manager, one.time);
        EXPECT_EQ(manager.beginStroke(kCamera, one.tool, Qt::red) != nullptr, one.begins)
            << one.time << ' ' << one.state << ' ' << numberOf(one.tool);
        EXPECT_EQ(manager.currentStroke() != nullptr, one.begins);
    }
    EXPECT_FALSE(manager.commitStroke(kCamera, undo)) << "there is no stroke";

    // An eraser works on a whole picture: on another one it erases, and does not replace it.
    manager.setLayerState(kCamera, 0, LayerState::Animated);
    drawing::goTo(manager, 3);
    Stroke* stroke = manager.beginStroke(kCamera, Tool::Eraser, Qt::red);
    ASSERT_TRUE(stroke);
    EXPECT_FALSE(manager.commitStroke("other", undo));
    stroke->points = {{20, 1.0F, 1.0F, 100, 650}, {20, 1.0F, 1.0F, 900, 650}};
    stroke->dirty = true;
    manager.compositeCamera(kCamera);
    drawing::goTo(manager, 5);
    QImage other = sure(manager.currentFrame(kCamera)).image();
    QPainter(&other).fillRect(0, 600, kCanvasSize, 100, Qt::red);
    test::putPicture(manager, kCamera, other);
    EXPECT_TRUE(manager.commitStroke(kCamera, undo));
    for (const QImage& image :
         {sure(manager.currentFrame(kCamera)).image(), sure(manager.compositeCamera(kCamera))}) {
        EXPECT_EQ(image.pixel(2, 0), other.pixel(2, 0));
        EXPECT_EQ(image.pixelColor(500, 610), QColor(Qt::red));
        EXPECT_EQ(qAlpha(image.pixel(500, 650)), 0);
    }
}

TEST(StrokeSession, MergesPointsNeverShownAndKeepsTheRest) {
    QImage picture = blankCanvas();
    QPainter(&picture).fillRect(0, 600, kCanvasSize, 100, QColor(9, 99, 199));
    Frame frame(MTime(1, MTime::uiUnit()));
    frame.setImage(picture);
    for (const Tool tool : {Tool::Pencil, Tool::Eraser}) {
        SCOPED_TRACE("tool " + std::to_string(numberOf(tool)));
        StrokeSession session(frame, tool, QColor(200, 40, 10), QImage());
        session.stroke().points = {{20, 1.0F, 1.0F, 100, 650}, {20, 1.0F, 1.0F, 900, 650}};
        session.stroke().dirty = true;
        const QImage merged = session.merged(picture);
        const QColor drawn = merged.pixelColor(500, 650);
        EXPECT_TRUE(tool == Tool::Eraser ? drawn.alpha() == 0 : drawn == QColor(200, 40, 10));
        EXPECT_EQ(merged.copy(0, 680, 1024, 20), picture.copy(0, 680, 1024, 20));
        EXPECT_EQ(merged.copy(0, 0, 1024, 600), picture.copy(0, 0, 1024, 600));
    }
}
