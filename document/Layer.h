// One layer of a camera: drawings in time and how they are shown. Main thread only.
#pragma once

#include "document/Frame.h"

#include <QImage>
#include <QList>
#include <QRect>
#include <QString>

#include <maya/MTime.h>

#include <memory>
#include <optional>
#include <vector>

namespace vellum {

/// Scene files, settings and commands have the numbers.
enum class LayerState : int {
    Animated = 0, ///< one drawing per keyed frame
    Static = 1,   ///< can be drawn on at any time from its first frame on
    Locked = 2,   ///< refuses changes; shown like an animated layer
};

constexpr int numberOf(LayerState state) {
    return static_cast<int>(state);
}

/// Empty for a number that is none of a state.
std::optional<LayerState> layerStateOf(int number);

/// Invariants:
/// 1. Frames are in ascending whole frames (see toIntTime()), no two the same when added; changing
///    the time unit keeps the order but may let neighbours fall together.
/// 2. The current frame is the last one at or before the time last given to updateCurrentIndex().
/// 3. A change of what the layer shows makes it dirty.
class Layer {
public:
    Layer();
    explicit Layer(const QString& name);
    ~Layer();

    Layer(const Layer&) = delete;
    Layer& operator=(const Layer&) = delete;

    /// Identifies the layer for as long as it lives, whatever it is called and wherever it is
    /// moved; never 0, and never given to another layer of the process.
    quint64 id() const { return id_; }

    const QString& name() const { return name_; }
    void setName(const QString& name) { name_ = name; }
    bool isActive() const { return active_; }
    void setActive(bool active) { active_ = active; }
    bool isVisible() const { return visible_; }
    void setVisible(bool visible);
    float opacity() const { return opacity_; } ///< 0..1
    void setOpacity(float opacity);            ///< pulled into 0..1
    LayerState state() const { return state_; }
    void setState(LayerState state) { state_ = state; }

    /// Takes the frame over and returns its index; -1, destroying it, when there is one at its
    /// time.
    int addFrame(std::unique_ptr<Frame> frame);
    int addFrameAt(const MTime& time); ///< a blank one
    int addFrameAt(int intTime);
    int addFrameAtCurrentTime();

    bool hasFrameAt(const MTime& time) const;
    bool hasFrameAtIntTime(int intTime) const;

    /// Whether the layer can be drawn on when the scene is at this time: with a frame at exactly
    /// that time, a static layer with any current frame.
    bool isDrawableAt(int intTime) const;
    bool hasFrameAtCurrentTime() const; ///< the same at the current time

    /// The frame of exactly that moment, or null.
    const Frame* frameAtMoment(const MTime& moment) const;

    int frameCount() const { return static_cast<int>(frames_.size()); }
    const Frame* frameAt(int index) const;             ///< null outside 0..count-1
    int currentIndex() const { return currentIndex_; } ///< -1: nothing is shown
    const Frame* currentFrame() const { return frameAt(currentIndex_); }

    /// A packed copy of the frame at that time, or null.
    std::unique_ptr<Frame> copyFrameAt(const MTime& time) const;
    std::unique_ptr<Frame> copyFrameAt(int intTime) const;

    /// Removes the frame at that time and hands it over; null when there is none.
    /// Afterwards the current frame is the one at the removed frame's time; whoever shows the layer
    /// at another moment gives it that with updateCurrentIndex().
    std::unique_ptr<Frame> takeFrameAt(const MTime& time);
    std::unique_ptr<Frame> takeFrameAt(int intTime);
    std::unique_ptr<Frame> takeFrameAtCurrentTime();

    /// First frame after, last frame before the current time; with `wrap` the first or last one
    /// when there is none. Null otherwise. Owned by the layer.
    const Frame* nextFrame(bool wrap) const;
    const Frame* previousFrame(bool wrap) const;

    /// Last frame before a time, or null.
    const Frame* frameBefore(int intTime) const;

    /// Picture of the frame `offset` places from the current one; null when the layer is hidden or
    /// there is no such frame. Clears the dirty mark.
    QImage displayImage(int offset = 0);

    /// Replaces the picture of the current frame; nothing without one. `changed` limits what has to
    /// be shown anew when the caller knows it.
    void setCurrentImage(const QImage& image, const QRect& changed = wholeCanvas());
    void setCurrentPng(const QByteArray& png); ///< bytes that canvasPng() gave

    /// Retiming: the i-th frame gets the i-th time, as far as both go. The times are ascending.
    void setFrameTimes(const QList<int>& times);
    QList<int> frameTimes() const;
    void collectFrameTimes(QList<int>& times) const;

    /// Records of changes name frames by their exact moments, which a change of the time unit does
    /// not alter, and bring frames back to where they were even if the unit now lets neighbours
    /// fall together. Each of the two does everything or, returning false, nothing.

    /// Takes the frames of these moments out (ascending) and puts those of `frames` in; `frames`
    /// gets the ones taken, ascending and packed. Refused when a moment to take has no frame or
    /// one to put in has another frame.
    bool exchangeFrames(const std::vector<MTime>& leaving,
                        std::vector<std::unique_ptr<Frame>>& frames);

    struct Shift {
        MTime from;
        MTime to;
    };
    /// Gives frames other moments. Refused when there is no frame to shift or two would meet.
    bool shiftFrames(const std::vector<Shift>& shifts);

    /// Finds the current frame for a time.
    void updateCurrentIndex(int intTime);

    void clearFrames();

    bool isDirty() const { return dirty_; }
    void markDirty(const QRect& changed = wholeCanvas());

    /// For the composite, which keeps its own account of what it has not shown yet: the rectangle
    /// changed since the last take, empty when none.
    const QRect& undisplayed() const { return undisplayed_; }
    QRect takeUndisplayed();

    static QRect wholeCanvas();

private:
    int insert(std::unique_ptr<Frame> frame, int currentTime); ///< as addFrame()
    int firstAfter(int intTime) const; ///< index of the first frame later than that
    int indexOf(int intTime) const;    ///< -1 when there is none
    Frame* shownFrame();               ///< the current one, to change it
    void framesReplaced();             ///< frames_ was rebuilt

    const quint64 id_;
    QString name_;
    bool active_ = false;
    bool visible_ = true;
    float opacity_ = 1.0F;
    LayerState state_ = LayerState::Animated;
    std::vector<std::unique_ptr<Frame>> frames_;
    int currentIndex_ = -1;
    bool ascending_ = true; ///< setFrameTimes() was not given nonsense
    bool dirty_ = true;
    QRect undisplayed_;
};

/// The layers of a camera, bottom first; none is null.
using LayerStack = std::vector<std::unique_ptr<Layer>>;

/// The first active one, which drawing goes to; null when there is none.
Layer* activeOf(const LayerStack& layers);

} // namespace vellum
