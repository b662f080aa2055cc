#pragma once

namespace host {

// Whether the scene has changes that no file has.
bool sceneModified();
void setSceneModified(bool modified);

// Deletes every node and makes those that every scene has; time, units and selection go back to
// their defaults. Sends no event. The undo queue is flushed.
void resetScene();

} // namespace host
