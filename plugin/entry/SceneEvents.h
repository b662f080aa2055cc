// Callbacks for what happens in Maya's scene, and the teardown of everything on screen.
#pragma once

#include <maya/MStatus.h>

namespace vellum {

/// Installs every callback; ids go to pluginState().callbackIds.
void installSceneEvents();

/// Removes them. On failure the ids are kept.
MStatus removeSceneEvents();

/// At unload and when Maya quits: overlay and panels go, the settings are saved.
void tearDownInterface();

} // namespace vellum
