// The frame markers over Maya's time slider. A transparent child of the slider, which never takes
// the pointer from it: every mouse event is only looked at, to notice a highlighted range being
// dragged, and then goes on to the slider. Main thread only.
#pragma once

#include "plugin/session/Timeline.h"
#include "tools/gestures/RangeDrag.h"

#include <QList>
#include <QRect>
#include <QWidget>

#include <optional>

namespace vellum {

/// While the draw tool is current, dragging a highlighted range along the slider moves the drawings
/// in it when the button is let go.
class TimeControlOverlay : public QWidget, public TimelineMarkers {
public:
    /// Hidden at first. Deleted with the slider at the latest; pluginState() is then told.
    explicit TimeControlOverlay(QWidget* slider);
    ~TimeControlOverlay() override;

    void setFrameTimes(const QList<int>& times) override;
    void clearFrameTimes();
    void setMarkersVisible(bool visible) override;
    bool areMarkersVisible() const override;
    /// Whether the draw tool is current; the widget itself always stays enabled.
    void setEnabled(bool enabled) override;
    void timeChanged() override;
    std::optional<RangeMove> rangeMove() const override;

    /// The marker of a frame on a slider of `size` logical pixels that shows the frames
    /// `first`..`last`, in the slider's lower third. Null when the slider shows none.
    static QRect markerBox(int frame, int first, int last, QSize size);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    bool watchesRange() const;
    void followSlider();
    void restartDrag();
    void releaseRange();
    static void carryOut(const std::optional<RangeDrag::Move>& move);

    QList<int> frameTimes_;
    bool enabled_ = false;
    RangeDrag drag_;
};

} // namespace vellum
