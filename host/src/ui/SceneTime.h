#pragma once

namespace host {

/// The scene's time in frames of the current unit, for the interface.
namespace sceneTime {

double current();
/// As a user does it: undoable is only what a script does, so this is not.
void setCurrent(double frame);

/// Playback range.
double first();
double last();
void setFirst(double frame);
void setLast(double frame);

} // namespace sceneTime

} // namespace host
