#pragma once

/// The commands of this folder by topic; all called by registerCoreCommands.
namespace host::script {

void registerLanguageCommands();  ///< print, error, eval, source, exists, size, …
void registerStringCommands();    ///< tokenize, substring, match, …
void registerArrayCommands();     ///< sort, stringArray…, clear, …
void registerMathCommands();      ///< abs, sin, rand, …
void registerSessionCommands();   ///< about, internalVar, optionVar, getenv, quit, …
void registerUndoCommands();      ///< undo, redo, undoInfo, flushUndo
void registerScriptJobCommands(); ///< scriptJob, condition, isTrue

/// Ends the program through the handler of setQuitHandler. ScriptError when there is none.
void requestQuit(int exitCode, bool force, bool abort);

} // namespace host::script
