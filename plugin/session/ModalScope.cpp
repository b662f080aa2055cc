#include "plugin/session/ModalScope.h"

#include "plugin/session/PluginState.h"

namespace vellum {

ModalScope::ModalScope() {
    ++pluginState().modalDialogs;
}

ModalScope::~ModalScope() {
    --pluginState().modalDialogs;
}

bool ModalScope::anyOpen() {
    return pluginState().modalDialogs > 0;
}

} // namespace vellum
