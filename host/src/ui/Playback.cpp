#include "ui/Playback.h"

#include "commands/Conditions.h"
#include "scene/core/TimeState.h"
#include "ui/SceneTime.h"

#include <maya/MTime.h>

#include <cmath>

namespace host {

namespace {

double framesPerSecond() {
    return MTime(1.0, MTime::kSeconds).as(MTime::uiUnit());
}

/// Share of real time at which frames are due; 0: as soon as the one before is done.
double rate() {
    const timeline::PlaybackOptions options = timeline::playbackOptions();
    return options.speed > 0 ? options.speed : options.maxSpeed;
}

int interval() {
    return rate() > 0 ? std::max(1, int(1000.0 / (framesPerSecond() * rate()))) : 0;
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
            start(direction > 0 ? Direction::Forward : Direction::Backward);
    });
}

void Playback::start(Direction direction) {
    direction_ = direction;
    if (isPlaying())
        return;
    const double now = sceneTime::current();
    if (now < sceneTime::first() || now > sceneTime::last())
        sceneTime::setCurrent(direction == Direction::Forward ? sceneTime::first()
                                                              : sceneTime::last());
    clock_.start();
    timer_.start(interval());
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

void Playback::setEveryFrame(bool every) {
    timeline::PlaybackOptions options = timeline::playbackOptions();
    options.speed = every ? 0.0 : 1.0;
    timeline::setPlaybackOptions(options);
}

void Playback::turnAround(double first, double last) {
    const bool forward = direction_ == Direction::Forward;
    direction_ = forward ? Direction::Backward : Direction::Forward;
    const double by = timeline::playbackOptions().by;
    sceneTime::setCurrent(forward ? std::max(first, last - by) : std::min(last, first + by));
}

void Playback::step() {
    const timeline::PlaybackOptions options = timeline::playbackOptions();
    const double first = sceneTime::first(), last = sceneTime::last();
    const double due = clock_.elapsed() / 1000.0 * framesPerSecond() * options.speed / options.by;
    const double steps = options.speed > 0 ? std::max(1.0, std::floor(due)) : 1.0;
    clock_.restart();
    const double now = sceneTime::current();
    double next = now + steps * options.by * int(direction_);
    if (next > last || next < first) {
        const bool forward = direction_ == Direction::Forward;
        const double end = forward ? last : first;
        if (once_ || options.loop == timeline::PlaybackOptions::Loop::Once) {
            sceneTime::setCurrent(end);
            stop();
            return;
        }
        if (options.loop == timeline::PlaybackOptions::Loop::Oscillate) {
            if (now != end)
                sceneTime::setCurrent(end);
            else
                turnAround(first, last);
            return;
        }
        const double length = last - first + 1;
        next = forward ? first + std::fmod(next - first, length)
                       : last - std::fmod(last - next, length);
    }
    sceneTime::setCurrent(next);
}

} // namespace host
