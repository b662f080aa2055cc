// Operations that put some frames of a layer in the place of others. Their record is the frames on
// the other side: doing, undoing and redoing are the same exchange.
#pragma once

#include "document/Frame.h"
#include "document/LayerAddress.h"
#include "document/edits/FrameOperation.h"

#include <maya/MTime.h>
#include <memory>
#include <vector>

namespace vellum {

class Layer;

class ExchangeOperation : public FrameOperation {
protected:
    explicit ExchangeOperation(const QString& camera) : address_(camera) {}

    /// First execution: plans the exchange. False, after reporting, when the operation is refused.
    virtual bool plan(const Layer& layer, const FrameClipboard& clipboard) = 0;

    /// Message when the layer is locked, and when the frames to take back are not there.
    virtual QString lockedMessage() const = 0;
    virtual QString undoFailedMessage() const;

    bool apply(LayerManager& document, FrameClipboard& clipboard) override;
    bool revert(LayerManager& document) override;

    /// To plan with: both in ascending order of time.
    void take(const Frame& frame) { leaving_.push_back(frame.time()); }
    void put(std::unique_ptr<Frame> frame) { entering_.push_back(std::move(frame)); }

    bool isPlanned() const { return planned_; }
    bool exchange(LayerManager& document, int index); ///< with the layer of that index
    bool refuseLocked(const Layer& layer) const;

    LayerAddress address_;

private:
    std::vector<MTime> leaving_;
    std::vector<std::unique_ptr<Frame>> entering_; ///< those out of the layer
    bool planned_ = false;
};

/// The frames of a layer in a range, in order.
std::vector<const Frame*> framesIn(const Layer& layer, const FrameRange& range);

} // namespace vellum
