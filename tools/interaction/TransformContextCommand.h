// rvVlTransformCtx: makes transform contexts.
#pragma once

#include <maya/MPxContextCommand.h>

namespace vellum {

class TransformContextCommand : public MPxContextCommand {
public:
    static void* creator();
    MPxContext* makeObj() override;
};

} // namespace vellum
