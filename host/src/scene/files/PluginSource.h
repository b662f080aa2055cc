#pragma once
#include <optional>
#include <string>
#include <vector>

// What scene files ask about plug-ins. Loading them is a matter of a room above, which answers
// here; without an answer there are no plug-ins.
namespace host {

class PluginSource {
public:
    struct Plugin {
        std::string name;
        std::string version;
        std::vector<std::string> nodeTypes;
    };

    virtual ~PluginSource() = default;
    // Loads the plug-in a scene requires, unless it is there. On failure `problem` is for the user.
    virtual bool provide(const std::string& plugin, std::string& problem) = 0;
    // The plug-in that brought a type; none for the host's own types.
    virtual std::optional<Plugin> ofNodeType(const std::string& type) const = 0;
    virtual std::optional<Plugin> ofDataType(const std::string& type) const = 0;
};

PluginSource& pluginSource();
// The source stays the caller's and must outlive the files' work.
void setPluginSource(PluginSource& source);

// For `problem`: the plug-in is on no folder of the search path.
std::string pluginNotFound(const std::string& plugin);

} // namespace host
