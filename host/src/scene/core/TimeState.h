// The scene's time: current moment, ranges and playback. Ranges and current time are moments; the
// interface unit only decides how they are shown.
#pragma once

#include <maya/MTime.h>

#include <functional>

namespace host::timeline {

MTime current();
/// Sends "timeChanged" when the moment differs from the one before.
void setCurrent(const MTime& time);

struct Range {
    MTime animationStart{1.0, MTime::kFilm};
    MTime start{1.0, MTime::kFilm};
    MTime end{120.0, MTime::kFilm};
    MTime animationEnd{200.0, MTime::kFilm};
};

Range range();
/// Sends "playbackRangeChanged". Keeps animationStart <= start < end <= animationEnd by moving the
/// outer ones.
void setRange(const Range& range);

/// How the range is played. Kept from scene to scene, as it is the user's choice.
struct PlaybackOptions {
    enum class Loop { Once, Continuous, Oscillate };
    Loop loop = Loop::Continuous;
    double speed = 1.0;    ///< share of real time; 0 shows every frame
    double maxSpeed = 1.0; ///< no faster than this share while every frame is shown; 0: free
    double by = 1.0;       ///< frames from one shown time to the next
    bool allViews = false; ///< state only: every view always shows the current time here
};

PlaybackOptions playbackOptions();
void setPlaybackOptions(const PlaybackOptions& options);

bool isPlaying();
bool isScrubbing();
/// State only, kept by whoever plays; listeners of setPlayer start and stop the timer.
void setPlaying(bool playing);
void setScrubbing(bool scrubbing);

/// Called by the API's play and stop with 1, -1 or 0 (stop).
void setPlayer(std::function<void(int direction)> player);
void play(int direction);

/// Changes the interface unit and sends "timeUnitChanged". Moments stay.
void setUnit(MTime::Unit unit);

/// Back to the defaults of a new scene; sends nothing.
void reset();

} // namespace host::timeline
