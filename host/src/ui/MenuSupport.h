#pragma once

#include "script/Flags.h"
#include "ui/Elements.h"

#include <QMenu>

#include <string>

/// What the commands for menus and their items share.
namespace host::command {

/// A menu, the sub-menu that a menu item is, or the menu of an option menu; null when there is
/// none of that name.
QMenu* findMenu(const std::string& name);
/// ScriptError `Object 'NAME' not found.` when there is none.
QMenu& menuNamed(const std::string& name);

/// Where a new item or collection goes: -parent, or the current menu.
QMenu& menuParent(const script::ParsedFlags& flags, const std::string& commandName);

/// The element that the items of a menu stand below: the menu, or its option menu.
QObject* ownerOf(QMenu& menu);

/// -postMenuCommand and -postMenuCommandOnce.
void setPostCommand(QMenu& menu, const script::ParsedFlags& flags);

} // namespace host::command
