#include "document/edits/MoveAllLayers.h"

#include "document/DocumentEnvironment.h"
#include "document/LayerManager.h"
#include "plugin/base/Report.h"

#include <algorithm>
#include <utility>

namespace vellum {

MoveAllLayers::MoveAllLayers(QString camera, QString target)
    : camera_(std::move(camera)), target_(std::move(target)) {
}

bool MoveAllLayers::change(LayerManager& document) {
    if (!documentEnvironment().cameraExists(target_)) {
        report::error(QStringLiteral("Camera does not exist: %1").arg(target_));
        return false;
    }
    before_.remember(document, {camera_, target_});
    moved_.clear();
    const int active = document.activeLayerIndex(camera_);
    // On its own camera every layer is where it shall be.
    const bool stay = camera_ == target_;
    const int first = stay ? 0 : document.cameraLayerCount(target_);
    for (int i = stay ? -1 : document.cameraLayerCount(camera_) - 1; i >= 0; --i) {
        if (document.moveLayerToCamera(camera_, i, target_, first) < 0) {
            putAllBack(document);
            return false;
        }
        moved_.emplace_front(target_);
        moved_.front().bind(document, first);
    }
    if (active >= 0)
        document.setActiveLayer(target_, first + active, true);
    return true;
}

bool MoveAllLayers::takeBack(LayerManager& document) {
    if (std::any_of(moved_.begin(), moved_.end(),
                    [&document](const LayerAddress& layer) { return layer.index(document) < 0; })) {
        return false;
    }
    putAllBack(document);
    return true;
}

/// On top of those that did not move: the top ones went first.
void MoveAllLayers::putAllBack(LayerManager& document) {
    for (const LayerAddress& layer : moved_)
        putBack(document, camera_, -1, document.takeLayer(target_, layer.index(document)));
    before_.restore(document);
}

} // namespace vellum
