#include "scene/core/TimeState.h"

#include "foundation/Events.h"

#include <algorithm>

namespace host::timeline {
namespace {

struct State {
    MTime current{1.0, MTime::kFilm};
    Range range;
    PlaybackOptions options;
    bool playing = false;
    bool scrubbing = false;
    std::function<void(int)> player;
};

State& state() {
    static State only;
    return only;
}

} // namespace

MTime current() {
    return MTime(state().current.as(MTime::uiUnit()), MTime::uiUnit());
}

void setCurrent(const MTime& time) {
    if (time == state().current)
        return;
    state().current = time;
    events::emit("timeChanged");
}

Range range() {
    return state().range;
}

void setRange(const Range& wanted) {
    Range next = wanted;
    if (next.end < next.start)
        next.end = next.start;
    next.animationStart = std::min(next.animationStart, next.start);
    next.animationEnd = std::max(next.animationEnd, next.end);
    state().range = next;
    events::emit("playbackRangeChanged");
}

PlaybackOptions playbackOptions() {
    return state().options;
}

void setPlaybackOptions(const PlaybackOptions& options) {
    state().options = options;
}

bool isPlaying() {
    return state().playing;
}
bool isScrubbing() {
    return state().scrubbing;
}
void setPlaying(bool playing) {
    state().playing = playing;
}
void setScrubbing(bool scrubbing) {
    state().scrubbing = scrubbing;
}
void setPlayer(std::function<void(int)> player) {
    state().player = std::move(player);
}

void play(int direction) {
    if (state().player)
        state().player(direction);
}

void setUnit(MTime::Unit unit) {
    if (unit == MTime::uiUnit() || !MTime::setUIUnit(unit))
        return;
    events::emit("timeUnitChanged");
}

void reset() {
    state().current = MTime(1.0, MTime::kFilm);
    state().range = Range();
    state().scrubbing = false;
    MTime::setUIUnit(MTime::kFilm);
}

} // namespace host::timeline
