#pragma once

namespace host {

// Registers the script commands of scenes: files, plug-ins, nodes, attributes, transforms,
// cameras and primitives, keys and time. Safe to call again.
void registerSceneCommands();

// By topic, one source each; registerSceneCommands() calls them all.
void registerFileCommands();
void registerPluginInfoCommands();
void registerNodeCommands();
void registerListCommands();
void registerAttributeCommands();
void registerTransformCommands();
void registerMakeCommands();
void registerTimeCommands();

} // namespace host
