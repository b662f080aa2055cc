#pragma once

#include "script/Commands.h"
#include "script/Flags.h"
#include "ui/Elements.h"

#include <QString>

#include <optional>

class QWidget;

/// The flags that commands for controls and layouts share.
namespace host::command {

/// -annotation, -enable, -visible, -manage, -width, -height, -parent, -fullPathName, -isObscured
/// and -exists.
void addControlFlags(script::Flags& flags);

/// Answers a query of one of these; nothing when another flag is asked for.
std::optional<script::Value> queryControl(const QWidget& widget, const script::ParsedFlags& flags);
void setControl(QWidget& widget, const script::ParsedFlags& flags);

/// Where a new control, layout or panel goes: -parent, or the current layout. ScriptError when
/// there is none.
QWidget& layoutParent(const script::ParsedFlags& flags, const std::string& commandName);

/// Puts a new element into its parent and registers it: under `name`, or under `stem` and a
/// number when that is empty.
void place(QWidget& widget, QWidget& parent, const std::string& name, const QString& stem,
           ElementKind kind);

/// A script with the new value in place of every #1.
QString withValue(QString script, const QString& value);

} // namespace host::command
