#include "document/edits/TargetAdditions.h"

#include "document/LayerManager.h"

#include <utility>

namespace vellum {

TargetAdditions::TargetAdditions() = default;
TargetAdditions::TargetAdditions(const QString& camera) : layer_(camera) {
}
TargetAdditions::~TargetAdditions() = default;
TargetAdditions::TargetAdditions(TargetAdditions&& other) noexcept = default;
TargetAdditions& TargetAdditions::operator=(TargetAdditions&& other) noexcept = default;

void TargetAdditions::rememberCamera(const LayerManager& document) {
    before_ = {document.currentCamera(), document.previousCamera()};
}

void TargetAdditions::setCamera(const QString& camera) {
    const QString before = layer_.camera();
    if (before_) {
        for (QString* name : {&before_->current, &before_->previous}) {
            if (*name == before)
                *name = camera;
        }
    }
    layer_.setCamera(camera);
}

bool TargetAdditions::addLayer(LayerManager& document, int index) {
    rememberCamera(document);
    index_ = document.addLayer(layer_.camera(), index, QString());
    if (index_ < 0)
        return false;
    layer_.bind(document, index_);
    layerAdded_ = true;
    return true;
}

bool TargetAdditions::addFrame(LayerManager& document, const MTime& time) {
    const int index = document.addFrameAt(layer_.camera(), time);
    if (index < 0)
        return false;
    layer_.bindToActive(document);
    const Frame& frame = *document.activeLayer(layer_.camera())->frameAt(index);
    frame_ = {frame.time(), frame.revision()};
    return true;
}

void TargetAdditions::adoptLayer(const LayerManager& document, int index) {
    layer_.bind(document, index);
    layerAdded_ = true;
    index_ = index;
}

int TargetAdditions::layerIndex(const LayerManager& document) const {
    return layerAdded_ ? layer_.index(document) : -1;
}

void TargetAdditions::adoptFrame(const LayerManager& document, int layer, const MTime& time) {
    if (!layerAdded_)
        layer_.bind(document, layer);
    frame_ = {time, 0};
}

bool TargetAdditions::isThere(const LayerManager& document) const {
    if (isEmpty())
        return true;
    const Layer* layer = document.layer(layer_.camera(), layer_.index(document));
    return layer && (layerAdded_ || layer->frameAtMoment(frame_->time));
}

bool TargetAdditions::takeBack(LayerManager& document) {
    if (layerAdded_)
        return takeLayer(document);
    return !frame_ || document.exchangeFrames(layer_.camera(), layer_.index(document),
                                              {frame_->time}, keptFrame_);
}

bool TargetAdditions::takeLayer(LayerManager& document) {
    const QString& camera = layer_.camera();
    const int index = layer_.index(document);
    if (index < 0)
        return false;
    kept_ = document.takeLayer(camera, index);
    if (before_ && before_->current != camera && document.currentCamera() == camera)
        document.restoreCurrentCamera(before_->current, before_->previous);
    return true;
}

bool TargetAdditions::putAgain(LayerManager& document) {
    if (layerAdded_)
        return putLayer(document);
    return !frame_ ||
           document.exchangeFrames(layer_.camera(), layer_.index(document), {}, keptFrame_);
}

/// The very layer that was taken: later steps of the undo queue look for it.
bool TargetAdditions::putLayer(LayerManager& document) {
    if (!kept_)
        return false;
    if (before_)
        rememberCamera(document);
    const QString& camera = layer_.camera();
    kept_->setName(document.uniqueLayerName(kept_->name()));
    document.setActiveLayer(camera, document.insertLayer(camera, index_, std::move(kept_)), false);
    return true;
}

void TargetAdditions::takeBackUntouched(LayerManager& document) {
    const QString& camera = layer_.camera();
    const int index = isEmpty() ? -1 : layer_.index(document);
    if (index < 0)
        return;
    // Frames are taken from the active layer.
    if (document.activeLayerIndex(camera) != index)
        document.setActiveLayer(camera, index, false);
    const Layer& layer = *document.layer(camera, index);
    for (int i = 0; frame_ && i < layer.frameCount(); ++i) {
        const Frame* frame = layer.frameAt(i);
        if (frame->revision() == frame_->revision) {
            document.takeFrameAt(camera, frame->time());
            break;
        }
    }
    if (layerAdded_ && layer.frameCount() == 0)
        document.takeLayer(camera, index);
}

} // namespace vellum
