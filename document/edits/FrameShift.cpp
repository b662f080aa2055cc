#include "document/edits/FrameShift.h"

#include "document/LayerManager.h"
#include "plugin/base/Report.h"

#include <utility>

namespace vellum {

bool FrameShift::shift(LayerManager& document, const std::vector<Layer::Shift>& shifts) const {
    if (!document.shiftFrames(address_.camera(), address_.index(document), shifts)) {
        report::error(QStringLiteral("The frames of the layer have changed since."));
        return false;
    }
    return true;
}

const Layer* FrameShift::unlockedLayer(const LayerManager& document) const {
    const Layer* layer = address_.resolve(document);
    if (layer && layer->state() == LayerState::Locked) {
        report::error(lockedMessage());
        return nullptr;
    }
    return layer;
}

bool FrameShift::doExecute(LayerManager& document) {
    const Layer* layer = unlockedLayer(document);
    auto shifts = layer ? plan(*layer) : std::nullopt;
    if (!shifts || !shift(document, *shifts))
        return false;
    shifts_ = std::move(*shifts);
    address_.bind(document, address_.index(document));
    return true;
}

bool FrameShift::doRedo(LayerManager& document) {
    const Layer* layer = unlockedLayer(document);
    return layer && shift(document, shifts_);
}

bool FrameShift::doUndo(LayerManager& document) {
    const Layer* layer = address_.resolve(document);
    std::vector<Layer::Shift> back = shifts_;
    for (Layer::Shift& one : back)
        std::swap(one.from, one.to);
    return layer && shift(document, back);
}

} // namespace vellum
