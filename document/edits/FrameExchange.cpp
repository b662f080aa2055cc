#include "document/edits/FrameExchange.h"

#include "document/Layer.h"
#include "document/LayerManager.h"
#include "plugin/base/Report.h"

namespace vellum {

std::vector<const Frame*> framesIn(const Layer& layer, const FrameRange& range) {
    int first = 0; // of the frames not before the range
    for (int behind = layer.frameCount(); first < behind;) {
        const int middle = first + (behind - first) / 2;
        if (layer.frameAt(middle)->intTime() < range.first) {
            first = middle + 1;
        } else {
            behind = middle;
        }
    }
    std::vector<const Frame*> frames;
    for (const Frame* frame = layer.frameAt(first); frame && range.contains(frame->intTime());) {
        frames.push_back(frame);
        frame = layer.frameAt(++first);
    }
    return frames;
}

QString FrameExchange::undoFailedMessage() const {
    return QStringLiteral("Failed to undo: the frames of the layer have changed since.");
}

bool FrameExchange::refuseLocked(const Layer& layer) const {
    if (layer.state() != LayerState::Locked)
        return false;
    report::error(lockedMessage());
    return true;
}

bool FrameExchange::exchange(LayerManager& document) {
    std::vector<MTime> back;
    back.reserve(entering_.size());
    for (const auto& frame : entering_)
        back.push_back(frame->time());
    if (!document.exchangeFrames(address_.camera(), address_.index(document), leaving_,
                                 entering_)) {
        return false;
    }
    leaving_ = std::move(back);
    return true;
}

bool FrameExchange::exchangeOrReport(LayerManager& document) {
    if (exchange(document))
        return true;
    report::error(QStringLiteral("The frames of the layer have changed since."));
    return false;
}

bool FrameExchange::doExecute(LayerManager& document) {
    const Layer* layer = address_.resolve(document);
    if (!layer || refuseLocked(*layer))
        return false;
    leaving_.clear();
    entering_.clear();
    if (!plan(*layer) || !exchangeOrReport(document))
        return false;
    address_.bind(document, address_.index(document));
    return true;
}

bool FrameExchange::doRedo(LayerManager& document) {
    const Layer* layer = address_.resolve(document);
    return layer && !refuseLocked(*layer) && exchangeOrReport(document);
}

bool FrameExchange::doUndo(LayerManager& document) {
    if (!address_.resolve(document))
        return false;
    if (!exchange(document)) {
        report::error(undoFailedMessage());
        return false;
    }
    return true;
}

} // namespace vellum
