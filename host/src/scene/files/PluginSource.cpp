#include "scene/files/PluginSource.h"

namespace host {

namespace {

class NoPlugins : public PluginSource {
public:
    bool provide(const std::string& plugin, std::string& problem) override {
        problem = pluginNotFound(plugin);
        return false;
    }
    std::optional<Plugin> ofNodeType(const std::string&) const override { return {}; }
    std::optional<Plugin> ofDataType(const std::string&) const override { return {}; }
};

PluginSource*& current() {
    static NoPlugins none;
    static PluginSource* source = &none;
    return source;
}

} // namespace

PluginSource& pluginSource() {
    return *current();
}

void setPluginSource(PluginSource& source) {
    current() = &source;
}

std::string pluginNotFound(const std::string& plugin) {
    return "Plug-in, \"" + plugin + "\", was not found on MAYA_PLUG_IN_PATH.";
}

} // namespace host
