// Puts blank frames in the place of those of a range.
#pragma once

#include "document/edits/RemoveFrames.h"

namespace vellum {

class ClearFrames : public RemoveFrames {
public:
    using RemoveFrames::RemoveFrames;

private:
    bool plan(const Layer& layer) override;
};

} // namespace vellum
