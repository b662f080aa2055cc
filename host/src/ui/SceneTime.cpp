#include "ui/SceneTime.h"

#include "scene/core/TimeState.h"

namespace host::sceneTime {

namespace {

MTime frames(double frame) {
    return MTime(frame, MTime::uiUnit());
}

double number(const MTime& time) {
    return time.as(MTime::uiUnit());
}

} // namespace

double current() {
    return number(timeline::current());
}

void setCurrent(double frame) {
    timeline::setCurrent(frames(frame));
}

double first() {
    return number(timeline::range().start);
}

double last() {
    return number(timeline::range().end);
}

void setFirst(double frame) {
    timeline::Range range = timeline::range();
    range.start = frames(frame);
    timeline::setRange(range);
}

void setLast(double frame) {
    timeline::Range range = timeline::range();
    range.end = frames(frame);
    timeline::setRange(range);
}

} // namespace host::sceneTime
