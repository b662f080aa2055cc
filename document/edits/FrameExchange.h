// Edits that put some frames of a layer in the place of others. Their record is the frames on the
// other side: doing, undoing and redoing are the same exchange.
#pragma once

#include "document/Frame.h"
#include "document/FrameRange.h"
#include "document/LayerAddress.h"
#include "document/edits/Edit.h"

#include <maya/MTime.h>

#include <memory>
#include <vector>

namespace vellum {

class Layer;

class FrameExchange : public Edit {
protected:
    explicit FrameExchange(const QString& camera) : address_(camera) {}

    /// First execution: what to exchange. False, after reporting, when the edit is refused.
    virtual bool plan(const Layer& layer) = 0;

    /// Message when the layer is locked, and when the frames to take back are not there.
    virtual QString lockedMessage() const = 0;
    virtual QString undoFailedMessage() const;

    bool doExecute(LayerManager& document) override;
    bool doUndo(LayerManager& document) override;
    bool doRedo(LayerManager& document) override;

    /// To plan with: both in ascending order of time.
    void take(const Frame& frame) { leaving_.push_back(frame.time()); }
    void put(std::unique_ptr<Frame> frame) { entering_.push_back(std::move(frame)); }

    bool exchange(LayerManager& document);
    bool refuseLocked(const Layer& layer) const;

    LayerAddress address_;

private:
    bool exchangeOrReport(LayerManager& document);

    std::vector<MTime> leaving_;
    std::vector<std::unique_ptr<Frame>> entering_; ///< those out of the layer
};

/// The frames of a layer in a range, in order.
std::vector<const Frame*> framesIn(const Layer& layer, const FrameRange& range);

} // namespace vellum
