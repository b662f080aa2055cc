#include "ui/Playback.h"

#include "scene/TimeState.h"
#include "script/Conditions.h"
#include "ui/SceneTime.h"

#include <maya/MTime.h>

#include <cmath>

namespace host {

namespace {

double framesPerSecond() {
    return MTime(1.0, MTime::kSeconds).as(MTime::uiUnit());
}

} // namespace

Playback& Playback::instance() {
    static Playback playback;
    return playback;
}

Playback::Playback() {
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &Playback::step);
    timeline::setPlayer([this](int direction) {
        if (direction == 0)
            stop();
        else
            start(direction > 0 ? Direction::forward : Direction::backward);
    });
}

void Playback::start(Direction direction) {
    direction_ = direction;
    if (isPlaying())
        return;
    const double now = sceneTime::current();
    if (now < sceneTime::first() || now > sceneTime::last())
        sceneTime::setCurrent(direction == Direction::forward ? sceneTime::first()
                                                              : sceneTime::last());
    clock_.start();
    timer_.start(std::max(1, int(1000.0 / framesPerSecond())));
    timeline::setPlaying(true);
    conditions::set("playingBack", true);
    Q_EMIT stateChanged(true);
}

void Playback::stop() {
    if (!isPlaying())
        return;
    timer_.stop();
    timeline::setPlaying(false);
    conditions::set("playingBack", false);
    Q_EMIT stateChanged(false);
}

void Playback::step() {
    const double first = sceneTime::first(), last = sceneTime::last();
    const double due = clock_.elapsed() / 1000.0 * framesPerSecond();
    const double frames = everyFrame_ ? 1.0 : std::max(1.0, std::floor(due));
    clock_.restart();
    double next = sceneTime::current() + frames * int(direction_);
    if (next > last || next < first) {
        const bool forward = direction_ == Direction::forward;
        if (once_) {
            sceneTime::setCurrent(forward ? last : first);
            stop();
            return;
        }
        const double length = last - first + 1;
        next = forward ? first + std::fmod(next - first, length)
                       : last - std::fmod(last - next, length);
    }
    sceneTime::setCurrent(next);
}

} // namespace host
