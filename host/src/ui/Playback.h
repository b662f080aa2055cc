#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

namespace host {

/// Plays the playback range as the playback options say, at the frame rate of the time unit times
/// the playback speed. A slow scene skips frames rather than slowing down, unless every frame is
/// asked for. Stops with "playingBack" cleared, wherever the time is then.
class Playback : public QObject {
    Q_OBJECT
public:
    static Playback& instance();

    enum class Direction { Backward = -1, Forward = 1 };

    void start(Direction direction);
    void stop();
    bool isPlaying() const { return timer_.isActive(); }
    Direction direction() const { return direction_; }

    /// When set, playback ends here instead of looping.
    void setOnce(bool once) { once_ = once; }
    /// The playback speed that shows every frame, and back to real time.
    void setEveryFrame(bool every);

Q_SIGNALS:
    void stateChanged(bool playing);

private:
    Playback();
    void step();
    void turnAround(double first, double last);

    QTimer timer_;
    QElapsedTimer clock_; ///< since the last frame shown
    Direction direction_ = Direction::Forward;
    bool once_ = false;
};

} // namespace host
