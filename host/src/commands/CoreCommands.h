#pragma once

namespace host::script {

/// Registers what every session has, with a scene or without: the commands of the language, of the
/// session, of undo and of script jobs. Safe to call again.
void registerCoreCommands();

// By topic, one source each; registerCoreCommands() calls them all.
void registerSessionCommands();   ///< about, internalVar, optionVar, getenv, quit, …
void registerUndoCommands();      ///< undo, redo, undoInfo, flushUndo
void registerScriptJobCommands(); ///< scriptJob, condition, isTrue

} // namespace host::script
