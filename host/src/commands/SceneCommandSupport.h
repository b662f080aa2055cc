#pragma once
#include "foundation/UndoQueue.h"
#include "script/Commands.h"
#include "script/Flags.h"

#include <maya/MDagModifier.h>
#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MSelectionList.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

// What the scene commands share: finding what a script names, and being undone.
namespace host {

// Throws ScriptError `No object matches name: NAME` or, for several, `More than one object
// matches name: NAME`.
MObject nodeNamed(const std::string& name);
MDagPath pathNamed(const std::string& name);
// "node.attribute".
MPlug plugNamed(const std::string& name);
std::vector<MPlug> plugsNamed(const std::string& name);

// The names given beside the flags, else those of the selection; ScriptError when both are empty.
std::vector<std::string> namesOrSelection(const script::ParsedFlags& parsed);
std::vector<std::string> selectedNames(bool fullPaths = false);

// The node of that name, after making sure that it can go below the target, or below the world when
// that is null.
MObject nodeToParent(const std::string& name, const MObject& target);

// The shortest unique name of a node, or its full path.
std::string nameOf(const MObject& node, bool fullPath = false);
// The name a shape gets under a transform: "pSphere1" → "pSphereShape1".
std::string shapeName(const std::string& transform);
// A number sign at the end stands for the first number that makes the name unique.
std::string freeName(const std::string& pattern);
bool isShape(const MObject& node);

// A step made of two functions.
std::unique_ptr<UndoStep> makeStep(const std::string& label, std::function<void()> undo,
                                   std::function<void()> redo);
// Hands a step that has just been done to the undo queue and marks the scene as modified.
void recordStep(const std::string& label, std::function<void()> undo, std::function<void()> redo);
// Does what the modifier has collected and records it. ScriptError with `failure` when it cannot.
void doAndRecord(const std::string& label, const std::shared_ptr<MDagModifier>& modifier,
                 const std::string& failure);
// Records nodes that have just been made: undoing deletes them, redoing brings them back.
void recordCreation(const std::string& label, const std::vector<MObject>& nodes);

// Records a change of the selection that has just been made.
void recordSelection(const MSelectionList& before);
// Selects and records it as part of the running command.
void selectNodes(const std::vector<MObject>& nodes);

} // namespace host
