#include "document/edits/ClearFrames.h"

namespace vellum {

bool ClearFrames::plan(const Layer& layer) {
    for (const Frame* frame : framesIn(layer, range()))
        put(std::make_unique<Frame>(frame->time()));
    return RemoveFrames::plan(layer);
}

} // namespace vellum
