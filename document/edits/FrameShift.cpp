#include "document/edits/FrameShift.h"

#include "document/LayerManager.h"
#include "plugin/base/Report.h"

#include <utility>

namespace vellum {

namespace {

bool shift(Layer& layer, const std::vector<Layer::Shift>& shifts) {
    if (!layer.shiftFrames(shifts)) {
        report::error(QStringLiteral("The frames of the layer have changed since."));
        return false;
    }
    return true;
}

} // namespace

Layer* FrameShift::unlockedLayer(const LayerManager& document) const {
    Layer* layer = address_.resolve(document);
    if (layer && layer->state() == layer_state::kLocked) {
        report::error(lockedMessage());
        return nullptr;
    }
    return layer;
}

bool FrameShift::doExecute(LayerManager& document) {
    Layer* layer = unlockedLayer(document);
    auto shifts = layer ? plan(*layer) : std::nullopt;
    if (!shifts || !shift(*layer, *shifts)) {
        return false;
    }
    shifts_ = std::move(*shifts);
    address_.bind(document, address_.index(document));
    return true;
}

bool FrameShift::doRedo(LayerManager& document) {
    Layer* layer = unlockedLayer(document);
    return layer && shift(*layer, shifts_);
}

bool FrameShift::doUndo(LayerManager& document) {
    Layer* layer = address_.resolve(document);
    std::vector<Layer::Shift> back = shifts_;
    for (Layer::Shift& one : back) {
        std::swap(one.from, one.to);
    }
    return layer && shift(*layer, back);
}

} // namespace vellum
