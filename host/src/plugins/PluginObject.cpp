#include "plugins/PluginObject.h"

#include "scene/core/Object.h"

namespace host {

namespace {

class PluginObject : public Object {
public:
    explicit PluginObject(std::string fileName) : fileName_(std::move(fileName)) {}
    MFn::Type apiType() const override { return MFn::kPlugin; }
    const std::string& fileName() const { return fileName_; }

private:
    std::string fileName_; // found again by it: the record may be gone
};

} // namespace

MObject pluginObject(PluginRecord& plugin) {
    return Access::make(std::make_shared<PluginObject>(plugin.fileName));
}

PluginRecord* pluginOf(const MObject& object) {
    const auto plugin = Access::as<PluginObject>(object);
    if (!plugin)
        return nullptr;
    for (PluginRecord* each : pluginLoader().all())
        if (each->fileName == plugin->fileName())
            return each;
    return nullptr;
}

} // namespace host
