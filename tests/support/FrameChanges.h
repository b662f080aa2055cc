// Changes of a document's frames as tests need them, made as an undoable step would make them.
#pragma once

#include "document/LayerManager.h"
#include "tools/raster/PngCodec.h"

#include <QImage>

#include <memory>
#include <utility>
#include <vector>

namespace vellum::test {

/// Puts the frame in the place of the one the layer has at that moment; false when it has none.
inline bool putFrame(LayerManager& document, const QString& camera, int index,
                     std::unique_ptr<Frame> frame) {
    const MTime moment = frame->time();
    std::vector<std::unique_ptr<Frame>> frames;
    frames.push_back(std::move(frame));
    return document.exchangeFrames(camera, index, {moment}, frames);
}

/// Puts a frame with this picture in the place of the one the layer shows; false when it shows
/// none.
inline bool putFrame(LayerManager& document, const QString& camera, int index,
                     const QImage& image) {
    const Layer* layer = document.layer(camera, index);
    if (!layer || !layer->currentFrame())
        return false;
    auto frame = std::make_unique<Frame>(layer->currentFrame()->time());
    return frame->setImage(image) && putFrame(document, camera, index, std::move(frame));
}

/// Gives the current frame of the active layer another picture; false when there is none.
inline bool putPicture(LayerManager& document, const QString& camera, const QImage& image) {
    QByteArray png;
    imageToPng(image, png);
    return document.replaceActiveImage(camera, png);
}

/// Takes every frame of the active layer away.
inline void takeFrames(LayerManager& document, const QString& camera) {
    for (const int time : document.activeLayer(camera)->frameTimes())
        document.takeFrameAt(camera, time);
}

/// What a layer shows, or a neighbour of that; null when it is hidden or has no such frame.
inline QImage pictureOf(const Layer& layer, int offset = 0) {
    const Frame* frame = layer.frameAt(layer.currentIndex() + offset);
    return layer.isVisible() && frame ? frame->image() : QImage();
}

} // namespace vellum::test
