// Moves the scene's time to the next or previous frame of the current camera, around the ends.
#pragma once

#include "document/edits/Edit.h"

#include <maya/MTime.h>

#include <optional>

namespace vellum {

class StepToFrame : public Edit {
public:
    /// Forward, there must be another frame to go to.
    enum class Direction { Forward, Back };

    explicit StepToFrame(Direction direction) : direction_(direction) {}

private:
    bool doExecute(LayerManager& document) override;
    bool doUndo(LayerManager& document) override;
    bool doRedo(LayerManager& document) override;

    Direction direction_;
    std::optional<MTime> target_; ///< empty: nowhere to go
    MTime before_;
};

} // namespace vellum
