// Everything that shows the drawing or the session: time slider, panels, views, main menu. Here
// each change finds the surfaces it concerns, in one table; nobody else refreshes any of them. Main
// thread only.
#pragma once

#include "document/Changes.h"

#include <vector>

namespace vellum {

class Surfaces : public ChangeListener {
public:
    /// Each surface at most once, in the order: scene marked as modified, markers, layer manager,
    /// views, main menu, toolbox, tool options.
    void changed(Changes changes, const std::vector<LayerManager*>& drawings) override;

private:
    unsigned withoutShownByStep(unsigned surfaces, Changes changes, const LayerManager* shown);

    unsigned shownByStep_ = 0;                    ///< by the undo or redo that Maya is at
    const LayerManager* drawingOfStep_ = nullptr; ///< only compared
};

} // namespace vellum
