#include "plugin/session/PluginState.h"

#include <memory>

namespace vellum {

namespace {

std::unique_ptr<PluginState>& holder() {
    static std::unique_ptr<PluginState> state = std::make_unique<PluginState>();
    return state;
}

} // namespace

PluginState& pluginState() {
    return *holder();
}

void resetPluginState() {
    holder() = std::make_unique<PluginState>();
}

} // namespace vellum
