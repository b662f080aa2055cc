#include "document/edits/TimeMoves.h"

#include "document/IntTime.h"
#include "document/LayerManager.h"

#include <maya/MAnimControl.h>

namespace vellum {

void goTo(LayerManager& document, const MTime& time) {
    MAnimControl::setCurrentTime(time);
    document.timeChanged(currentIntTime());
}

} // namespace vellum
