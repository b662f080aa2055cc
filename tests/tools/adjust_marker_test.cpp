// What the drags for size and opacity show: a ring as large as the tool, and a number that can be
// read over whatever is below.
#include "plugin/base/Settings.h"
#include "plugin/base/ToolOptions.h"
#include "support/FrameChanges.h"
#include "tools/ToolSession.h"
#include "tools/gestures/AdjustMarker.h"
#include "tools/interaction/ViewMeasure.h"
#include "tools/raster/StrokeImage.h"
#include "ui/ViewWidget.h"

#include <QtMath>

#include <cmath>
#include <random>

namespace vellum::test {
namespace {

// Of a colour as the eye has it, 0 to 1.
double luminance(QRgb pixel) {
    const auto linear = [](int value) { return std::pow(value / 255.0, 2.2); };
    return 0.2126 * linear(qRed(pixel)) + 0.7152 * linear(qGreen(pixel)) +
           0.0722 * linear(qBlue(pixel));
}

class Adjusting : public ToolSession {
protected:
    void SetUp() override {
        ToolSession::SetUp();
        settings().activeTool = Tool::Brush;
        document()->addLayer(camera, 0, QString());
        document()->addFrameAtCurrentTime(camera);
        activateDrawTool();
    }

    void fill(const QString& background) {
        QImage image = blankCanvas();
        std::mt19937 random; // always the same noise
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                image.setPixelColor(x, y,
                                    background == QLatin1String("noise")
                                        ? QColor::fromRgb(QRgb(random()))
                                        : QColor(background));
            }
        }
        const QImage before = onScreen();
        putPicture(*document(), camera, image);
        ASSERT_TRUE(run(QStringLiteral("refresh")));
        ASSERT_TRUE(waitFor([&] { return onScreen() != before; }));
    }

    double radius() {
        ViewMapping mapping;
        EXPECT_TRUE(activeViewMapping(mapping));
        return toolSize(Tool::Brush) * 0.5 * viewPixelsPerImagePixel(mapping);
    }

    double fromAnchor(int x, int y) const { return std::hypot(x - kAnchor.x(), y - kAnchor.y()); }

    // Number and box are what has changed beyond the ring.
    QRect numberIn(const QImage& now, const QImage& before) {
        QRect found;
        for (int y = 0; y < now.height(); ++y) {
            for (int x = 0; x < now.width(); ++x) {
                if (now.pixel(x, y) != before.pixel(x, y) && fromAnchor(x, y) > radius() + 4)
                    found |= QRect(x, y, 1, 1);
            }
        }
        return found;
    }

    static void expectReadable(const QImage& box) {
        int light = 0;
        int dark = 0;
        for (int y = 0; y < box.height(); ++y) {
            for (int x = 0; x < box.width(); ++x) {
                const double value = luminance(box.pixel(x, y));
                light += value > 0.7 ? 1 : 0;
                dark += value < 0.1 ? 1 : 0; // five times less than the number, as print has it
            }
        }
        const double all = box.width() * box.height();
        EXPECT_GT(light / all, 0.04) << "the number";
        EXPECT_LT(light / all, 0.4);
        EXPECT_GT(dark / all, 0.5) << "what is behind it";
    }

    /// Whether there is a ring of the tool's size: light, and dark around it, as far as the
    /// background lets them be told. Sideways there may be the number.
    bool isRinged(const QImage& now, const QImage& before) {
        double light = 0.0; // farthest from what was there
        double dark = 0.0;
        double lightAt = -1.0;
        double darkAt = -1.0;
        for (double at = radius() - 8; at < radius() + 9; at += 0.5) {
            double change = 0.0;
            for (int degrees = 0; degrees < 360; ++degrees) {
                if (degrees % 180 < 30 || degrees % 180 > 150)
                    continue;
                const double angle = qDegreesToRadians(static_cast<double>(degrees));
                const QPoint place =
                    kAnchor + QPointF(at * std::cos(angle), at * std::sin(angle)).toPoint();
                change += (luminance(now.pixel(place)) - luminance(before.pixel(place))) / 240;
            }
            lightAt = change > light ? at : lightAt;
            darkAt = change < dark ? at : darkAt;
            light = std::max(light, change);
            dark = std::min(dark, change);
        }
        return light - dark > 0.2 && (light < 0.1 || std::abs(lightAt - radius()) <= 1.5) &&
               (dark > -0.1 || std::abs(darkAt - radius() - 1) <= 1.5);
    }

    const QPoint kAnchor{300, 220};
};

TEST_F(Adjusting, RingAndNumberAreSeenOverEverything) {
    for (const char* renderer : {"vp2Renderer", "base_OpenGL_Renderer"}) {
        ASSERT_TRUE(run(QStringLiteral("modelEditor -e -rendererName \"%1\" `getPanel -withFocus`")
                            .arg(QLatin1String(renderer))));
        for (const char* background : {"white", "black", "#808080", "noise"}) {
            fill(QLatin1String(background));
            for (const Qt::Key held : {Qt::Key_B, Qt::Key_M}) {
                SCOPED_TRACE(testing::Message() << renderer << ' ' << background << held);
                setToolSize(Tool::Brush, 50);
                setToolOpacity(Tool::Brush, 50);
                moveTo(kAnchor);
                support::settle();
                const QImage before = onScreen();
                key(held, true);
                press();
                moveTo(kAnchor + QPoint(100, 10));
                EXPECT_EQ(toolSize(Tool::Brush), held == Qt::Key_B ? 60 : 50);
                EXPECT_TRUE(waitFor([&] { return isRinged(onScreen(), before); }));
                const QImage now = onScreen();
                const QRect number = numberIn(now, before);
                EXPECT_LT(number.height(), 30);
                EXPECT_GT(number.width(), held == Qt::Key_M ? 30 : 15) << "a percent sign more";
                EXPECT_LT(number.width(), held == Qt::Key_M ? 60 : 35);
                expectReadable(now.copy(number));
                release();
                key(held, false);
                EXPECT_TRUE(waitFor([&] { return onScreen() == before; })) << "gone";
            }
        }
    }
}

// In the ring where there is room, beside it where not, and never out of the view.
TEST(AdjustMarkers, KeepTheirNumberInTheView) {
    const QSize view(400, 300);
    const auto box = [&](QPoint anchor, double radius, double scale) {
        AdjustDrag drag;
        drag.begin(AdjustDrag::Option::Opacity, 100, anchor);
        const AdjustMarker marker = adjustMarker(drag, 100, radius, view, scale);
        EXPECT_EQ(marker.number, QStringLiteral("100%"));
        EXPECT_TRUE(QRectF(QPointF(), view).contains(marker.box));
        return marker.box;
    };
    EXPECT_LT((box({200, 150}, 80, 1).center() - QPointF(200, 150)).manhattanLength(), 2);
    EXPECT_GT(box({200, 150}, 10, 1).left(), 211);
    EXPECT_LT(box({380, 150}, 10, 1).right(), 369);
    EXPECT_GT(box({20, 150}, 10, 1).left(), 31);
    box({395, 2}, 80, 1);
    box({1, 299}, 3000, 1);
    EXPECT_EQ(box({200, 150}, 10, 2).height(), 2 * box({200, 150}, 10, 1).height());
}

} // namespace
} // namespace vellum::test
