#pragma once

namespace host {

/// Registers the commands and procedures of this room: tools, windows, menus, panels, time
/// control. Safe without an interface: what needs one fails by name then.
void registerUiCommands();

// The parts of it, by subject.
void registerToolCommands();
void registerWindowCommands();
void registerControlCommands();
void registerMenuCommands();
void registerMenuItemCommands();
void registerMenuSetCommands();
void registerPanelCommands();
void registerModelEditorCommand();
void registerTimeControlCommands();
void registerDialogCommands();

} // namespace host
