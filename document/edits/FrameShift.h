// Edits that give frames other times. Their record is both times of each frame.
#pragma once

#include "document/Layer.h"
#include "document/LayerAddress.h"
#include "document/edits/Edit.h"

#include <optional>
#include <vector>

namespace vellum {

class FrameShift : public Edit {
protected:
    explicit FrameShift(const QString& camera) : address_(camera) {}

    /// First execution: the shifts. Empty after reporting a refusal.
    virtual std::optional<std::vector<Layer::Shift>> plan(const Layer& layer) = 0;
    virtual QString lockedMessage() const = 0;

    bool doExecute(LayerManager& document) override;
    bool doUndo(LayerManager& document) override;
    bool doRedo(LayerManager& document) override;

    LayerAddress address_;

private:
    const Layer* unlockedLayer(const LayerManager& document) const;
    bool shift(LayerManager& document, const std::vector<Layer::Shift>& shifts) const;

    std::vector<Layer::Shift> shifts_;
};

} // namespace vellum
