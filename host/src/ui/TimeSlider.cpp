#include "ui/TimeSlider.h"

#include "foundation/Events.h"
#include "scene/core/TimeState.h"
#include "ui/QtCompat.h"
#include "ui/SceneTime.h"
#include "ui/Theme.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace host {

namespace {

constexpr double kMarginShare = 0.005;
constexpr double kFramesShare = 0.99;
constexpr double kHandleReach = 6; ///< logical pixels about a range's end that grab it

/// Frames between labelled ticks so that labels do not touch.
int labelStep(double pixelsPerFrame, int labelWidth) {
    for (const int step : {1, 2, 5, 10, 20, 25, 50, 100, 200, 250, 500, 1000, 2000, 5000}) {
        if (step * pixelsPerFrame >= labelWidth)
            return step;
    }
    return 10000;
}

} // namespace

TimeSlider::TimeSlider(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setToolTip(tr("Drag to scrub; Shift-drag to highlight a range, then drag the range"));
    listener_ = events::listen([this](const std::string& event) {
        if (event == "timeChanged" || event == "playbackRangeChanged" || event == "timeUnitChanged")
            update();
    });
}

TimeSlider::~TimeSlider() {
    events::removeListener(listener_);
}

QSize TimeSlider::sizeHint() const {
    return {600, 36};
}

QSize TimeSlider::minimumSizeHint() const {
    return {100, 30};
}

int TimeSlider::firstFrame() const {
    return int(std::floor(sceneTime::first()));
}

int TimeSlider::lastFrame() const {
    return std::max(firstFrame(), int(std::floor(sceneTime::last())));
}

double TimeSlider::xOf(double frame) const {
    const int frames = lastFrame() - firstFrame() + 1;
    return width() * kMarginShare + (frame - firstFrame()) * width() * kFramesShare / frames;
}

int TimeSlider::frameAt(double x) const {
    const double step = xOf(firstFrame() + 1) - xOf(firstFrame());
    const int frame = firstFrame() + int(std::floor((x - xOf(firstFrame())) / step));
    return std::clamp(frame, firstFrame(), lastFrame());
}

TimeSlider::Range TimeSlider::range() const {
    if (range_)
        return *range_;
    const double now = sceneTime::current();
    return {now, now + 1};
}

void TimeSlider::setRange(std::optional<Range> range) {
    if (range && range->end <= range->start)
        range.reset();
    const bool same = range.has_value() == range_.has_value() &&
                      (!range || (range->start == range_->start && range->end == range_->end));
    if (same)
        return;
    range_ = range;
    update();
    Q_EMIT rangeChanged();
}

void TimeSlider::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), theme::field);
    const int first = firstFrame(), last = lastFrame();
    const double step = xOf(first + 1) - xOf(first);
    const int height = this->height();
    const double now = sceneTime::current();

    if (range_)
        painter.fillRect(
            QRectF(xOf(range_->start), 0, xOf(range_->end) - xOf(range_->start), height),
            theme::highlightedRange);
    painter.fillRect(QRectF(xOf(std::floor(now)), 0, std::max(step, 2.0), height),
                     theme::currentFrame);

    const QFontMetrics metrics(font());
    const int labelled = labelStep(step, metrics.horizontalAdvance(QString::number(last)) + 10);
    const int ticked = std::max(1, int(std::ceil(3.0 / step)));
    for (int frame = first; frame <= last; ++frame) {
        const bool label = frame == first || frame % labelled == 0;
        if (!label && (frame - first) % ticked != 0)
            continue;
        const double x = xOf(frame);
        painter.setPen(label ? theme::text : theme::tick);
        painter.drawLine(QPointF(x, 0), QPointF(x, label ? height * 0.4 : height * 0.2));
        if (label)
            painter.drawText(QPointF(x + 3, height * 0.4 + metrics.ascent() / 2.0),
                             QString::number(frame));
    }
    if (range_) {
        painter.setPen(QPen(theme::rangeEnd, 2));
        for (const double end : {range_->start, range_->end})
            painter.drawLine(QPointF(xOf(end), 0), QPointF(xOf(end), height));
    }
    painter.setPen(theme::border);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

TimeSlider::Drag TimeSlider::dragAt(double x, bool shift) const {
    if (range_ && !shift) {
        if (std::abs(x - xOf(range_->start)) <= kHandleReach)
            return Drag::RangeStart;
        if (std::abs(x - xOf(range_->end)) <= kHandleReach)
            return Drag::RangeEnd;
        if (x > xOf(range_->start) && x < xOf(range_->end))
            return Drag::MoveRange;
    }
    return shift ? Drag::Select : Drag::Scrub;
}

void TimeSlider::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton && event->button() != Qt::MiddleButton)
        return;
    const double x = qt::localPosition(*event).x();
    drag_ = event->button() == Qt::MiddleButton ? Drag::Scrub
                                                : dragAt(x, event->modifiers() & Qt::ShiftModifier);
    frameAtPress_ = frameAt(x);
    rangeAtPress_ = range();
    if (drag_ == Drag::Scrub) {
        if (event->button() == Qt::LeftButton)
            setRange({});
        timeline::setScrubbing(true);
        scrubTo(x);
    } else if (drag_ == Drag::Select) {
        setRange(Range{double(frameAtPress_), double(frameAtPress_ + 1)});
    }
}

void TimeSlider::mouseMoveEvent(QMouseEvent* event) {
    if (!(event->buttons() & (Qt::LeftButton | Qt::MiddleButton)))
        endDrag(); // the release went elsewhere, e.g. to a menu
    const double x = qt::localPosition(*event).x();
    if (drag_ == Drag::Scrub)
        scrubTo(x);
    else if (drag_ != Drag::None)
        dragRange(x);
}

void TimeSlider::mouseReleaseEvent(QMouseEvent* event) {
    if (event->buttons() != Qt::NoButton)
        return;
    endDrag();
}

void TimeSlider::endDrag() {
    if (drag_ == Drag::Scrub)
        timeline::setScrubbing(false);
    drag_ = Drag::None;
}

void TimeSlider::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && (event->modifiers() & Qt::ShiftModifier))
        setRange(Range{double(firstFrame()), double(lastFrame() + 1)});
    else
        mousePressEvent(event);
}

void TimeSlider::scrubTo(double x) {
    const int frame = frameAt(x);
    if (frame != sceneTime::current())
        sceneTime::setCurrent(frame);
}

void TimeSlider::dragRange(double x) {
    const double first = firstFrame(), end = lastFrame() + 1;
    const int frame = frameAt(x);
    const int moved = frame - frameAtPress_;
    // An end lies between two frames: where it goes is the nearest such place.
    const double boundary = first + std::round((x - xOf(first)) / (xOf(first + 1) - xOf(first)));
    Range range = rangeAtPress_;
    switch (drag_) {
    case Drag::Select:
        range = {double(std::min(frame, frameAtPress_)),
                 double(std::max(frame, frameAtPress_) + 1)};
        break;
    case Drag::MoveRange: {
        const double offset = std::clamp(double(moved), first - range.start, end - range.end);
        range = {range.start + offset, range.end + offset};
        break;
    }
    case Drag::RangeStart:
        range.start = std::clamp(boundary, first, range.end - 1);
        break;
    case Drag::RangeEnd:
        range.end = std::clamp(boundary, range.start + 1, end);
        break;
    default:
        return;
    }
    const double shift = range.start - this->range().start;
    setRange(range);
    // Moving a range brings the time along, as whoever watches the time must learn of it. The
    // frame under the pointer is always one of those shown.
    if (drag_ == Drag::MoveRange && shift != 0)
        sceneTime::setCurrent(frame);
}

} // namespace host
