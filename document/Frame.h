// One drawing at one time: a canvas of 1024 x 1024 pixels, Format_RGBA8888, straight alpha.
//
// A frame holds its picture decoded, as PNG bytes, or both. The bytes stay valid until the picture
// changes, so copying, undo and saving reuse them; the decoded picture can be given back at any
// time (FrameCache.h) and is decoded again when asked for. Main thread only.
#pragma once

#include "tools/raster/PieceMap.h"

#include <QByteArray>
#include <QImage>

#include <maya/MTime.h>

#include <memory>

namespace vellum {

class Frame {
public:
    /// A blank (transparent) frame.
    explicit Frame(const MTime& time);
    ~Frame();

    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;

    /// A packed frame of bytes that canvasPng() gave (PngCheck.h); nothing is decoded.
    static std::unique_ptr<Frame> fromPng(const MTime& time, const QByteArray& png);

    /// An independent frame with the same time and picture; packed, unless encoding fails.
    std::unique_ptr<Frame> copy() const;

    const MTime& time() const { return time_; }
    void setTime(const MTime& time) { time_ = time; }
    int intTime() const; ///< see toIntTime()
    void setIntTime(int frame);

    /// The decoded picture, never null: a share of the pixels, which stay as they are whatever
    /// happens to the frame. When the bytes do not decode, this says so once, shows nothing and
    /// keeps the bytes.
    QImage image() const;

    /// Replaces the picture. Images of another format are converted, of another size refused (the
    /// frame then keeps its picture; false).
    bool setImage(const QImage& image);

    /// Where image() is not transparent.
    std::shared_ptr<const PieceMap> pieces() const;

    /// The picture as PNG. Valid bytes are returned as they are, a changed picture is encoded
    /// first. Empty only when encoding fails.
    QByteArray pngBytes() const;

    /// Replaces the picture by bytes that canvasPng() gave.
    void setPng(const QByteArray& png);

    /// Gives the decoded picture back, encoding it first if it changed. Keeps it when encoding
    /// fails.
    void pack() const;

    bool isDecoded() const { return !image_.isNull(); }

    /// Changes whenever the picture does; no two pictures of the process share one.
    quint64 revision() const { return revision_; }

    /// While any copy of the token lives, the frame is not packed by the cache: it is on display or
    /// being edited. Tokens may outlive the frame.
    using Hold = std::shared_ptr<const char>;
    Hold hold() const { return hold_; }
    bool isHeld() const { return hold_.use_count() > 1; }

private:
    friend class FrameCache;

    void decode() const;
    void changed();

    MTime time_;
    // The picture does not change when its form does: packed and decoded are two sides of a cache.
    mutable QImage image_;                           ///< null: not decoded
    mutable std::shared_ptr<const PieceMap> pieces_; ///< of image_, made when first asked for
    mutable QByteArray png_;                         ///< with pngValid_ and empty: blank
    mutable bool pngValid_ = true;
    mutable bool decodeFailed_ = false; ///< png_ does not load and that was reported
    quint64 revision_;
    Hold hold_ = std::make_shared<const char>('\0');

    mutable const Frame* newer_ = nullptr; ///< neighbours in the cache's order of use
    mutable const Frame* older_ = nullptr;
    mutable bool cached_ = false;
};

} // namespace vellum
