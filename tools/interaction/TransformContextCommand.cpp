#include "tools/interaction/TransformContextCommand.h"

#include "tools/interaction/TransformContext.h"

namespace vellum {

void* TransformContextCommand::creator() {
    return new TransformContextCommand;
}

MPxContext* TransformContextCommand::makeObj() {
    return new TransformContext;
}

} // namespace vellum
