#pragma once

#include <QWidget>

#include <optional>

namespace host {

/// The time slider. Shows the frames of the playback range as ticks, the current time, and a
/// highlighted range. The left button scrubs; with Shift it highlights a range, whose inside then
/// moves it and whose ends resize it; the middle button moves the current time's mark the same
/// way as the left.
///
/// Frame f of the range [first, last] begins at W * 0.005 + (f - first) * W * 0.99 / frames.
class TimeSlider : public QWidget {
    Q_OBJECT
public:
    explicit TimeSlider(QWidget* parent = nullptr);
    ~TimeSlider() override;

    /// Half open: [start, end). With nothing highlighted the current frame and the next.
    struct Range {
        double start = 0, end = 0;
    };
    Range range() const;
    bool rangeVisible() const { return range_.has_value(); }
    void setRange(std::optional<Range> range);

    /// Visible whole frames, from the playback options.
    int firstFrame() const;
    int lastFrame() const;

    /// The frame under a column, limited to the visible ones.
    int frameAt(double x) const;
    /// Column where a frame begins.
    double xOf(double frame) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void rangeChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    enum class Drag { None, Scrub, Select, MoveRange, RangeStart, RangeEnd };

    void endDrag();
    void scrubTo(double x);
    void dragRange(double x);
    Drag dragAt(double x, bool shift) const;

    std::optional<Range> range_;
    Drag drag_ = Drag::None;
    Range rangeAtPress_;
    int frameAtPress_ = 0;
    int listener_ = 0;
};

} // namespace host
