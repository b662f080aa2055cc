#pragma once
#include "plugins/PluginLoader.h"

#include <maya/MObject.h>

// The object that stands for a loaded plug-in in the API: initializePlugin and MFnPlugin take it.
namespace host {

MObject pluginObject(PluginRecord& plugin);
// Null when the object is none, or of a plug-in that is no longer loaded.
PluginRecord* pluginOf(const MObject& object);

} // namespace host
