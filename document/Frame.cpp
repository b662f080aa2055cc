#include "document/Frame.h"

#include "document/FrameCache.h"
#include "document/IntTime.h"
#include "plugin/base/Report.h"
#include "tools/raster/PngCodec.h"
#include "tools/raster/StrokeImage.h"

namespace vellum {

namespace {

quint64 nextRevision() {
    static quint64 last = 0;
    return ++last;
}

const QImage& sharedBlank() {
    static const QImage blank = blankCanvas();
    return blank;
}

const QByteArray& blankPng() {
    static const QByteArray bytes = [] {
        QByteArray png;
        imageToPng(sharedBlank(), png);
        return png;
    }();
    return bytes;
}

} // namespace

Frame::Frame(const MTime& time) : time_(time), revision_(nextRevision()) {
}

Frame::~Frame() {
    FrameCache::forget(*this);
}

std::unique_ptr<Frame> Frame::fromPng(const MTime& time, const QByteArray& png) {
    auto frame = std::make_unique<Frame>(time);
    frame->setPng(png);
    return frame;
}

std::unique_ptr<Frame> Frame::copy() const {
    const QByteArray png = pngBytes();
    if (!png.isEmpty())
        return fromPng(time_, png);
    auto frame = std::make_unique<Frame>(time_);
    frame->setImage(image_);
    return frame;
}

int Frame::intTime() const {
    return toIntTime(time_);
}

void Frame::setIntTime(int frame) {
    time_ = fromIntTime(frame);
}

QImage Frame::image() const {
    if (image_.isNull())
        decode();
    // Packing another frame to make room can not touch what is returned.
    QImage result = image_;
    FrameCache::touch(*this);
    return result;
}

void Frame::decode() const {
    if (png_.isEmpty()) {
        image_ = sharedBlank();
        return;
    }
    if (!pngToImage(png_, image_)) {
        image_ = sharedBlank();
        if (!decodeFailed_) {
            decodeFailed_ = true;
            report::error(
                QStringLiteral("Failed to decode the drawing at frame %1").arg(intTime()));
        }
    }
}

bool Frame::setImage(const QImage& image) {
    if (image.width() != kCanvasSize || image.height() != kCanvasSize)
        return false;
    image_ = image.convertToFormat(QImage::Format_RGBA8888);
    if (image_.isNull())
        return false;
    png_.clear();
    pngValid_ = false;
    changed();
    FrameCache::touch(*this);
    return true;
}

std::shared_ptr<const PieceMap> Frame::pieces() const {
    if (!pieces_)
        pieces_ = std::make_shared<const PieceMap>(PieceMap::of(image()));
    return pieces_;
}

QByteArray Frame::pngBytes() const {
    if (!pngValid_) {
        imageToPng(image_, png_);
        pngValid_ = !png_.isEmpty();
        return png_;
    }
    return png_.isEmpty() ? blankPng() : png_;
}

void Frame::setPng(const QByteArray& png) {
    // Blank frames are many: they share nothing but the knowledge that they are blank.
    png_ = png == blankPng() ? QByteArray() : png;
    pngValid_ = true;
    image_ = QImage();
    FrameCache::forget(*this);
    changed();
}

void Frame::pack() const {
    if (image_.isNull())
        return;
    if (!pngValid_)
        pngBytes();
    if (!pngValid_)
        return;
    image_ = QImage();
    pieces_.reset();
    FrameCache::forget(*this);
}

void Frame::changed() {
    revision_ = nextRevision();
    pieces_.reset();
    decodeFailed_ = false;
}

} // namespace vellum
