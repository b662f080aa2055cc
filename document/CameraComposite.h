// The picture of one camera, kept between refreshes and made anew only where it changed. Made anew
// in parts, it equals one made whole. Main thread only.
#pragma once

#include "document/Frame.h"
#include "document/GhostCanvas.h"
#include "document/StrokeBackdrop.h"

#include <QImage>
#include <QRect>

#include <deque>
#include <memory>
#include <utility>
#include <vector>

namespace vellum {

/// One layer's contribution. Images are canvases, Format_RGBA8888, straight alpha.
struct CompositeLayer {
    QImage image;
    quint64 revision = 0;                   ///< of image, see Frame; of no use with drawnOn
    std::shared_ptr<const PieceMap> pieces; ///< of image; null: anywhere
    QImage overlay;       ///< painted over image before both are painted; may be null
    bool drawnOn = false; ///< a stroke is in progress here
};

class CameraComposite {
public:
    /// 1024 x 1024, Format_RGBA8888, straight alpha, transparent pixels coloured as ColorFringe.h
    /// says; null before the first paint(): a document may name more cameras than are ever looked
    /// through.
    const QImage& image() const { return image_; }
    GhostCanvas& ghosts() { return ghosts_; }

    /// Makes a part of the picture anew: ghosts, then the layers, bottom first. While one of them
    /// is drawn on, what lies beneath it is kept flattened.
    void paint(const QRect& rectangle, const std::vector<CompositeLayer>& layers);

    /// No layer is drawn on any more.
    void endStroke() { backdrop_.release(); }

    /// Memory kept only for the stroke in progress: one canvas or nothing.
    std::size_t strokeBytes() const { return backdrop_.bytes(); }

    /// Number of times the picture was painted, counted over the process so that the picture of a
    /// camera that vanished and came back is not taken for the old one; 0 before the first.
    quint64 version() const { return version_; }

    /// Union of what was painted after that version; the whole canvas when that is not known.
    QRect changedSince(quint64 version) const;

    /// Frames to keep decoded while this picture is on display.
    void setHolds(std::vector<Frame::Hold> holds) { holds_ = std::move(holds); }

private:
    class Painter;

    struct Change {
        quint64 version;
        QRect rectangle;
    };

    QImage image_;
    GhostCanvas ghosts_;
    StrokeBackdrop backdrop_;
    quint64 version_ = 0;
    std::deque<Change> history_;
    std::vector<Frame::Hold> holds_;
};

} // namespace vellum
