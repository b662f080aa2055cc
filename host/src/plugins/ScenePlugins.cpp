// Answers what scene files ask about plug-ins.
#include "plugins/PluginLoader.h"
#include "scene/files/PluginSource.h"

namespace host {

namespace {

std::optional<PluginSource::Plugin> described(const PluginRecord* plugin) {
    if (!plugin)
        return {};
    return PluginSource::Plugin{plugin->name, plugin->version, plugin->nodeTypes};
}

class ScenePlugins : public PluginSource {
public:
    ScenePlugins() { setPluginSource(*this); }

    bool provide(const std::string& plugin, std::string& problem) override {
        PluginLoader& loader = pluginLoader();
        if (loader.find(plugin))
            return true;
        // A scene names a plug-in; it must not point at a library of its own choosing.
        const bool plainName = plugin.find_first_of("/\\") == std::string::npos;
        if (plainName && loader.isOnPath(plugin))
            return !loader.load(plugin, problem, true).empty();
        problem = pluginNotFound(plugin);
        return false;
    }
    std::optional<Plugin> ofNodeType(const std::string& type) const override {
        return described(pluginLoader().findByNodeType(type));
    }
    std::optional<Plugin> ofDataType(const std::string& type) const override {
        return described(pluginLoader().findByDataType(type));
    }
};

// Scenes may be read before anything else speaks of plug-ins, so it answers from the start.
ScenePlugins scenePlugins;

} // namespace

} // namespace host
