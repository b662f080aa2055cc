#include "tools/interaction/DrawContextCommand.h"

#include "tools/interaction/DrawContext.h"

namespace vellum {

void* DrawContextCommand::creator() {
    return new DrawContextCommand;
}

MPxContext* DrawContextCommand::makeObj() {
    return new DrawContext;
}

} // namespace vellum
