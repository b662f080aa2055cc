#pragma once

namespace host {

struct StartUpOptions {
    bool batch = false; ///< no window will be made; scripts learn it from `about -batch`
};

/// Brings the host up: registers the commands and procedures of every room, connects rooms that
/// know each other through hooks only, and makes the default scene. A QCoreApplication must exist;
/// a QApplication as well when a window is wanted later. Calling it again changes nothing.
void startUp(const StartUpOptions& options = {});
bool isStarted();

/// The way back: sends "quitApplication", leaves the current tool, deletes the contexts and the
/// main window. Plug-ins are not told, as at the real program's exit. Does nothing when not
/// started.
void shutDown();

/// To be called before the QApplication is made: shared OpenGL contexts, unrounded scale factors.
void prepareApplication();

} // namespace host
