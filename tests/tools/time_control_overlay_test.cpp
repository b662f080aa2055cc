// Where the markers stand and how they are painted, on a slider of any size.
#include "document/Changes.h"
#include "plugin/LinkedClasses.h"
#include "plugin/base/Settings.h"
#include "plugin/session/PluginState.h"
#include "tools/interaction/TimeControlOverlay.h"

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QWidget>

#include <limits>

namespace vellum::test {
namespace {

class Overlay : public LinkedClasses {
protected:
    void range(int first, int last) {
        ASSERT_TRUE(
            run(QStringLiteral("playbackOptions -minTime %1 -maxTime %2").arg(first).arg(last)));
    }
    QImage painted(QWidget& slider, const QList<int>& times) {
        auto* overlay = slider.findChild<QWidget*>();
        static_cast<TimeControlOverlay*>(overlay)->setFrameTimes(times);
        overlay->show();
        QImage image(slider.size(), QImage::Format_ARGB32);
        image.fill(Qt::white);
        overlay->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
        return image;
    }
};

TEST(MarkerBox, StandsOnItsFramesTick) {
    const QSize size(1000, 36);
    EXPECT_EQ(TimeControlOverlay::markerBox(1, 1, 100, size), QRect(5, 27, 9, 11));
    EXPECT_EQ(TimeControlOverlay::markerBox(100, 1, 100, size), QRect(985, 27, 9, 11));
    EXPECT_EQ(TimeControlOverlay::markerBox(-3, -3, -3, size).left(), 5) << "a single frame";
    EXPECT_EQ(TimeControlOverlay::markerBox(-3, -3, -3, size).width(), 990);
    EXPECT_TRUE(TimeControlOverlay::markerBox(5, 10, 9, size).isNull()) << "no frame is shown";
    EXPECT_EQ(TimeControlOverlay::markerBox(4000, 1, 5000, size).width(), 1)
        << "more frames than pixels: still to be seen";
    constexpr int kFar = std::numeric_limits<int>::max();
    for (const int frame : {-kFar - 1, -999999, kFar})
        EXPECT_FALSE(
            TimeControlOverlay::markerBox(frame, 1, 100, size).intersects(QRect(QPoint(), size)))
            << frame;
    // Boxes side by side neither overlap nor drift away from their frames.
    for (int frame = 1; frame < 100; ++frame) {
        SCOPED_TRACE("frame " + std::to_string(frame));
        const QRect box = TimeControlOverlay::markerBox(frame, 1, 100, size);
        EXPECT_LT(box.right(), TimeControlOverlay::markerBox(frame + 1, 1, 100, size).left());
        EXPECT_NEAR(box.left(), 5 + (frame - 1) * 9.9, 1.0);
    }
}

TEST_F(Overlay, PaintsItsBoxesInTheLowerThirdAndNothingElse) {
    QWidget slider;
    slider.resize(1000, 36);
    auto* overlay = new TimeControlOverlay(&slider);
    EXPECT_TRUE(overlay->isHidden());
    range(1, 100);
    settings().timelineFrameColor = QColor(200, 10, 20);
    const QImage image = painted(slider, {1, 50, 100, 400});
    QColor fill(200, 10, 20, 63);
    const auto over = [&](int channel, int white) { return (channel * 63 + white * 192) / 255; };
    const QColor mixed(over(200, 255), over(10, 255), over(20, 255));
    for (const int frame : {1, 50, 100}) {
        SCOPED_TRACE("frame " + std::to_string(frame));
        const QRect box = TimeControlOverlay::markerBox(frame, 1, 100, slider.size());
        EXPECT_EQ(image.pixelColor(box.left(), 30), QColor(200, 10, 20));
        EXPECT_EQ(image.pixelColor(box.right(), 30), QColor(200, 10, 20));
        EXPECT_EQ(image.pixelColor(box.center().x(), box.top()), QColor(200, 10, 20));
        const QColor inside = image.pixelColor(box.center().x(), 32);
        EXPECT_NEAR(inside.red(), mixed.red(), 1);
        EXPECT_NEAR(inside.green(), mixed.green(), 1);
        EXPECT_NEAR(inside.blue(), mixed.blue(), 1);
        EXPECT_EQ(image.pixelColor(box.left() - 1, 30), QColor(Qt::white));
        EXPECT_EQ(image.pixelColor(box.right() + 1, 30), QColor(Qt::white));
        EXPECT_EQ(image.pixelColor(box.left(), box.top() - 1), QColor(Qt::white));
    }
    int touched = 0;
    for (int x = 0; x < image.width(); ++x)
        touched += image.pixelColor(x, 33) != QColor(Qt::white);
    EXPECT_EQ(touched, 3 * 9);
    // The same frame twice is a collision only while a range is dragged towards later times.
    EXPECT_EQ(painted(slider, {50, 50}).pixelColor(494, 32).red() < 100, false);

    slider.resize(500, 60);
    painted(slider, {1});
    EXPECT_EQ(overlay->geometry(), slider.rect());
}

TEST_F(Overlay, OutlinesItsBoxesWithinThemOnScaledDisplays) {
    QWidget slider;
    slider.resize(1000, 36);
    auto* overlay = new TimeControlOverlay(&slider);
    const QColor outline(200, 10, 20);
    settings().timelineFrameColor = outline;
    range(1, 100);
    overlay->setFrameTimes({50});
    overlay->show();
    QImage image(slider.size() * 2, QImage::Format_ARGB32);
    image.setDevicePixelRatio(2);
    image.fill(Qt::white);
    overlay->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    const QRect box = TimeControlOverlay::markerBox(50, 1, 100, slider.size());
    const int left = 2 * box.left(), right = 2 * box.right() + 1, top = 2 * box.top(), middle = 64;
    for (const QPoint at : {QPoint(left, middle),
                            {left + 1, middle},
                            {right - 1, middle},
                            {right, middle},
                            {left, top},
                            {right, top},
                            {right, top + 1}})
        EXPECT_EQ(image.pixelColor(at), outline) << at.x() << ", " << at.y();
    for (const QPoint at : {QPoint(left - 1, middle), {right + 1, middle}, {left, top - 1}})
        EXPECT_EQ(image.pixelColor(at), QColor(Qt::white)) << at.x() << ", " << at.y();
    for (const QPoint at : {QPoint(left + 2, middle), {right - 2, middle}, {left + 2, top + 2}})
        EXPECT_NE(image.pixelColor(at), outline) << at.x() << ", " << at.y();

    // More frames than pixels: each is still a line.
    range(1, 5000);
    EXPECT_EQ(painted(slider, {2500}).pixelColor(500, 32), outline);
}

TEST_F(Overlay, LetsTheSliderSeeThePointerWithoutAButton) {
    class Slider : public QWidget {
    public:
        int hovered = 0;

    protected:
        void mouseMoveEvent(QMouseEvent*) override { ++hovered; }
    } slider;
    slider.setMouseTracking(true);
    auto* overlay = new TimeControlOverlay(&slider);
    QMouseEvent move(QEvent::MouseMove, QPointF(5, 5), QPointF(5, 5), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QApplication::sendEvent(overlay, &move);
    EXPECT_EQ(slider.hovered, 1);
}

TEST_F(Overlay, ClearsItsPlaceWhenTheSliderDiesFirst) {
    auto slider = std::make_unique<QWidget>();
    pluginState().timeline = new TimeControlOverlay(slider.get());
    slider.reset();
    EXPECT_EQ(pluginState().timeline, nullptr);
    tell(Change::TimelineAsked);
    setDrawToolActive(true);
    setDrawToolActive(false);
}

} // namespace
} // namespace vellum::test
