#pragma once

#include "script/Value.h"
#include "ui/Elements.h"

#include <QString>

#include <string>

namespace host {

/// What the script commands of this room share.
namespace command {

/// Throws ScriptError naming the command when there is no window.
void requireInterface(const std::string& name);

inline QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

/// Full path of an element as a script result.
script::Value path(const QObject* object);

/// The element, or ScriptError `Object 'NAME' not found.` / `Object's name 'NAME' is not unique.`
QObject* find(const std::string& name, ElementKind kind);
template <class T> T* findAs(const std::string& name, ElementKind kind) {
    T* object = qobject_cast<T*>(find(name, kind));
    if (!object)
        throw script::ScriptError("Object '" + name + "' is of another type.");
    return object;
}

/// Throws ScriptError `Object's name 'NAME' is not unique.` when the name is taken.
void requireNewName(const std::string& name, ElementKind kind);

/// Runs a script given to an interface element, as the top level does; `echo` shows it.
void runElementScript(const QString& text, bool echo = true);

/// Deletes an element and what is in it: now, or when the script of an element that is running
/// has returned, as that may be the element's own.
void destroy(QObject* object);

} // namespace command

} // namespace host
