#pragma once

#include <maya/MStatus.h>
#include <maya/MTime.h>
#include <maya/MTypes.h>

class MAnimControl {
public:
    enum PlaybackMode { kPlaybackOnce, kPlaybackLoop, kPlaybackOscillate };
    enum PlaybackViewMode { kPlaybackViewAll, kPlaybackViewActive };

    MAnimControl();
    virtual ~MAnimControl();

    static MTime currentTime();
    static MStatus setCurrentTime(const MTime& time);
    static MTime animationStartTime();
    static MTime animationEndTime();
    static MStatus setAnimationStartTime(MTime newStartTime);
    static MStatus setAnimationEndTime(MTime newEndTime);
    static MStatus setAnimationStartEndTime(MTime newStartTime, MTime newEndTime);
    static MTime minTime();
    static MTime maxTime();
    static MStatus setMinTime(MTime newMinTime);
    static MStatus setMaxTime(MTime newMaxTime);
    static MStatus setMinMaxTime(MTime min, MTime max);
    static bool isPlaying();
    static bool isScrubbing();
    static MStatus playForward();
    static MStatus playBackward();
    static MStatus stop();
};
