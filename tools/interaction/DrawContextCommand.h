// rvVlDrawCtx: makes draw contexts.
#pragma once

#include <maya/MPxContextCommand.h>

namespace vellum {

class DrawContextCommand : public MPxContextCommand {
public:
    static void* creator();
    MPxContext* makeObj() override;
};

} // namespace vellum
