#include "tools/interaction/TimeControlOverlay.h"

#include "plugin/base/CommandStrings.h"
#include "plugin/base/Script.h"
#include "plugin/base/Settings.h"
#include "plugin/session/PluginState.h"
#include "plugin/session/TimeSlider.h"

#include <QHash>
#include <QMouseEvent>
#include <QPainter>

#include <maya/MAnimControl.h>
#include <maya/MTime.h>

#include <algorithm>
#include <cmath>

namespace vellum {

namespace {

// Where Maya's slider draws the ticks of its frames, as parts of its size.
constexpr float kMargin = 0.005F;
constexpr float kFramesWidth = 0.99F;
constexpr float kBoxHeight = 0.333F;
constexpr int kFillAlpha = 63;

/// First and last frame on the slider: of a fractional range the frames it begins and ends in.
int shownFrame(const MTime& time) {
    return static_cast<int>(std::floor(time.asUnits(MTime::uiUnit())));
}

std::optional<RangeDrag::Range> highlightedRange() {
    return isTimeRangeVisible() ? timeRange() : std::nullopt;
}

/// Fill, and within it an outline of one logical pixel. Not with the pen, which stands between the
/// pixels of a scaled display.
void paintBox(QPainter& painter, const QRect& box, const QColor& fill, const QColor& outline) {
    const QRect inside = box.adjusted(1, 1, -1, -1);
    painter.fillRect(box, fill);
    painter.fillRect(QRect(box.topLeft(), QSize(box.width(), 1)), outline);
    if (box.height() > 1)
        painter.fillRect(QRect(box.bottomLeft(), QSize(box.width(), 1)), outline);
    painter.fillRect(QRect(box.left(), inside.top(), 1, inside.height()), outline);
    if (box.width() > 1)
        painter.fillRect(QRect(box.right(), inside.top(), 1, inside.height()), outline);
}

} // namespace

TimeControlOverlay::TimeControlOverlay(QWidget* slider) : QWidget(slider) {
    followSlider();
    setMouseTracking(true); // else the slider would not see the pointer without a button
    hide();
}

TimeControlOverlay::~TimeControlOverlay() {
    if (pluginState().timeline == this)
        pluginState().timeline = nullptr;
}

void TimeControlOverlay::setFrameTimes(const QList<int>& times) {
    if (frameTimes_ != times)
        frameTimes_ = times;
    update(); // colour and offset may have changed where the times have not
}

void TimeControlOverlay::clearFrameTimes() {
    frameTimes_.clear();
    update();
}

void TimeControlOverlay::setMarkersVisible(bool visible) {
    setVisible(visible);
}

bool TimeControlOverlay::areMarkersVisible() const {
    return isVisible();
}

void TimeControlOverlay::setEnabled(bool enabled) {
    enabled_ = enabled;
    restartDrag();
}

std::optional<TimelineMarkers::RangeMove> TimeControlOverlay::rangeMove() const {
    const std::optional<RangeDrag::Range>& before = drag_.before();
    if (!watchesRange() || !drag_.isDragging() || !before)
        return std::nullopt;
    return RangeMove{drag_.offset(), before->first, before->second};
}

bool TimeControlOverlay::watchesRange() const {
    return settings().timeControlRangeMoveEnabled && enabled_;
}

void TimeControlOverlay::followSlider() {
    const QWidget* slider = parentWidget();
    if (slider && geometry() != slider->rect())
        setGeometry(slider->rect());
}

// What is highlighted now is where the next drag starts.
void TimeControlOverlay::restartDrag() {
    if (watchesRange())
        drag_.restart(highlightedRange());
    else
        drag_.forget();
}

void TimeControlOverlay::timeChanged() {
    if (watchesRange() && drag_.isDragging())
        drag_.follow(highlightedRange());
}

void TimeControlOverlay::releaseRange() {
    if (watchesRange())
        carryOut(drag_.release(highlightedRange()));
}

void TimeControlOverlay::carryOut(const std::optional<RangeDrag::Move>& move) {
    if (!move)
        return;
    // The markers stand where the drawings would have gone: a refused move has to bring them back.
    if (move->offset == 0 ||
        !script::execute(command::moveFrames(move->offset, move->start, move->end), true, true))
        script::execute(command::util(QStringLiteral("-refreshTimelineDisplay")));
}

QRect TimeControlOverlay::markerBox(int frame, int first, int last, QSize size) {
    const double frames = static_cast<double>(last) - first + 1.0;
    if (frames < 1.0)
        return {};
    const auto width = static_cast<float>(size.width());
    const float margin = width * kMargin;
    const float step = width * kFramesWidth / static_cast<float>(frames);
    const int height = static_cast<int>(static_cast<float>(size.height()) * kBoxHeight);
    // A frame far outside is as good as one just beyond the edge.
    const float place = static_cast<float>(static_cast<double>(frame) - first) * step + margin;
    const float limit = 4.0F * width;
    const int x = static_cast<int>(std::clamp(place, -limit, limit) + 0.5F);
    return {x, size.height() - height + 2, std::max(1, static_cast<int>(step)), height};
}

void TimeControlOverlay::paintEvent(QPaintEvent*) {
    const QWidget* slider = parentWidget();
    if (!slider)
        return;
    followSlider();
    const int first = shownFrame(MAnimControl::minTime());
    const int last = shownFrame(MAnimControl::maxTime());
    QHash<int, int> timesSeen;
    for (const int time : frameTimes_)
        ++timesSeen[time];

    const QColor color = settings().timelineFrameColor;
    QColor fill = color;
    fill.setAlpha(kFillAlpha);
    QPainter painter(this);
    for (const int time : frameTimes_) {
        const QRect box = markerBox(time, first, last, slider->size());
        if (!box.intersects(rect()))
            continue;
        // A frame dragged onto another one. Only towards later times.
        const bool collides = drag_.offset() >= 1 && timesSeen.value(time) >= 2;
        paintBox(painter, box, collides ? QColor(Qt::black) : fill, color);
    }
}

void TimeControlOverlay::mousePressEvent(QMouseEvent* event) {
    event->ignore();
    // A second button in the middle of a drag begins nothing.
    if (watchesRange() && event->buttons() == event->button())
        carryOut(drag_.press(highlightedRange()));
}

void TimeControlOverlay::mouseMoveEvent(QMouseEvent* event) {
    event->ignore();
    if (!watchesRange())
        return;
    if (event->buttons() != Qt::NoButton)
        drag_.move();
    else if (drag_.isDragging())
        releaseRange(); // its release went to a menu, say
}

void TimeControlOverlay::mouseReleaseEvent(QMouseEvent* event) {
    event->ignore();
    if (event->buttons() == Qt::NoButton)
        releaseRange();
}

void TimeControlOverlay::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    followSlider();
    restartDrag();
}

void TimeControlOverlay::hideEvent(QHideEvent* event) {
    drag_.forget();
    QWidget::hideEvent(event);
}

} // namespace vellum
