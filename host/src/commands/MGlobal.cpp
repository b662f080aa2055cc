#include "foundation/Idle.h"
#include "foundation/Report.h"
#include "foundation/UndoQueue.h"
#include "scene/core/Selection.h"
#include "script/Interpreter.h"
#include "script/MayaValues.h"

#include <maya/MAnimControl.h>
#include <maya/MCommandResult.h>
#include <maya/MDGModifier.h>
#include <maya/MDoubleArray.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>
#include <maya/MTime.h>

using host::script::RunOptions;
using host::script::Value;

namespace {

bool run(const MString& command, Value* result, bool displayEnabled, bool undoEnabled) {
    RunOptions options;
    options.echo = displayEnabled;
    options.undo = undoEnabled;
    return host::script::run(command.asUTF8(), result, options);
}

template <class T>
MStatus runFor(const MString& command, T& result, bool displayEnabled, bool undoEnabled) {
    Value value;
    if (!run(command, &value, displayEnabled, undoEnabled))
        return MS::kFailure;
    return host::script::toMaya(value, result) ? MS::kSuccess : MS::kFailure;
}

} // namespace

MString MGlobal::mayaVersion() {
    return "2024";
}
int MGlobal::apiVersion() {
    return MAYA_API_VERSION;
}

MGlobal::MMayaState MGlobal::mayaState(MStatus* ReturnStatus) {
    if (ReturnStatus)
        *ReturnStatus = MS::kSuccess;
    return host::script::batchMode() ? kBatch : kInteractive;
}

void MGlobal::displayInfo(const MString& theMessage) {
    host::report::info(theMessage.asUTF8());
}
void MGlobal::displayWarning(const MString& theWarning) {
    host::report::warning(theWarning.asUTF8());
}
void MGlobal::displayError(const MString& theError) {
    host::report::error(theError.asUTF8());
}

MStatus MGlobal::executeCommand(const MString& command, bool displayEnabled, bool undoEnabled) {
    return run(command, nullptr, displayEnabled, undoEnabled) ? MS::kSuccess : MS::kFailure;
}
MStatus MGlobal::executeCommand(const MString& command, int& result, bool displayEnabled,
                                bool undoEnabled) {
    return runFor(command, result, displayEnabled, undoEnabled);
}
MStatus MGlobal::executeCommand(const MString& command, MIntArray& result, bool displayEnabled,
                                bool undoEnabled) {
    return runFor(command, result, displayEnabled, undoEnabled);
}
MStatus MGlobal::executeCommand(const MString& command, double& result, bool displayEnabled,
                                bool undoEnabled) {
    return runFor(command, result, displayEnabled, undoEnabled);
}
MStatus MGlobal::executeCommand(const MString& command, MDoubleArray& result, bool displayEnabled,
                                bool undoEnabled) {
    return runFor(command, result, displayEnabled, undoEnabled);
}
MStatus MGlobal::executeCommand(const MString& command, MString& result, bool displayEnabled,
                                bool undoEnabled) {
    return runFor(command, result, displayEnabled, undoEnabled);
}
MStatus MGlobal::executeCommand(const MString& command, MStringArray& result, bool displayEnabled,
                                bool undoEnabled) {
    return runFor(command, result, displayEnabled, undoEnabled);
}
MStatus MGlobal::executeCommand(const MString& command, MCommandResult& result, bool displayEnabled,
                                bool undoEnabled) {
    *result.value_ = Value();
    return run(command, result.value_.get(), displayEnabled, undoEnabled) ? MS::kSuccess
                                                                          : MS::kFailure;
}

MString MGlobal::executeCommandStringResult(const MString& command, bool displayEnabled,
                                            bool undoEnabled, MStatus* ReturnStatus) {
    MString result;
    const MStatus status = executeCommand(command, result, displayEnabled, undoEnabled);
    if (ReturnStatus)
        *ReturnStatus = status;
    return result;
}

MStatus MGlobal::executeCommandOnIdle(const MString& command, bool displayEnabled) {
    const std::string text = command.asUTF8();
    host::idle::post([text, displayEnabled] {
        RunOptions options;
        options.echo = displayEnabled;
        host::script::run(text, nullptr, options);
    });
    return MS::kSuccess;
}

MStatus MGlobal::sourceFile(const MString& fileName) {
    return host::script::run("source " + host::script::quoted(fileName.asUTF8())) ? MS::kSuccess
                                                                                  : MS::kFailure;
}

MStatus MGlobal::getActiveSelectionList(MSelectionList& dest, bool) {
    dest = host::activeSelection(); // always in the order of selecting
    return MS::kSuccess;
}

MStatus MGlobal::setActiveSelectionList(const MSelectionList& src, ListAdjustment listAdjustment) {
    MSelectionList list = host::activeSelection();
    switch (listAdjustment) {
    case kReplaceList:
        list = src;
        break;
    case kAddToList:
        list.merge(src);
        break;
    case kXORWithList:
        list.merge(src, MSelectionList::kXORWithList);
        break;
    case kRemoveFromList:
        list.merge(src, MSelectionList::kRemoveFromList);
        break;
    case kAddToHeadOfList: {
        const MSelectionList before = list;
        list = src;
        list.merge(before);
        break;
    }
    }
    host::setActiveSelection(list);
    return MS::kSuccess;
}

MStatus MGlobal::clearSelectionList() {
    return setActiveSelectionList(MSelectionList());
}

MStatus MGlobal::getSelectionListByName(const MString& name, MSelectionList& list) {
    MSelectionList found;
    const MStatus status = found.add(name);
    if (status == MS::kSuccess)
        list.merge(found);
    return status;
}

MStatus MGlobal::selectByName(const MString& name, ListAdjustment listAdjustment) {
    MSelectionList found;
    const MStatus status = found.add(name);
    return status == MS::kSuccess ? setActiveSelectionList(found, listAdjustment) : status;
}

MStatus MGlobal::select(MObject& object, ListAdjustment listAdjustment) {
    MSelectionList found;
    const MStatus status = found.add(object);
    return status == MS::kSuccess ? setActiveSelectionList(found, listAdjustment) : status;
}

MStatus MGlobal::unselect(MObject& object) {
    return select(object, kRemoveFromList);
}
MStatus MGlobal::unselectByName(const MString& name) {
    return selectByName(name, kRemoveFromList);
}
bool MGlobal::isSelected(MObject& object) {
    return host::activeSelection().hasItem(object);
}

MStatus MGlobal::deleteNode(MObject& object) {
    MDGModifier modifier;
    const MStatus status = modifier.deleteNode(object);
    return status == MS::kSuccess ? modifier.doIt() : status;
}

MStatus MGlobal::viewFrame(double time) {
    return MAnimControl::setCurrentTime(MTime(time, MTime::uiUnit()));
}
MStatus MGlobal::viewFrame(const MTime& time) {
    return MAnimControl::setCurrentTime(time);
}

bool MGlobal::isUndoing() {
    return host::undoQueue().isUndoing();
}
bool MGlobal::isRedoing() {
    return host::undoQueue().isRedoing();
}

const char* MGlobal::className() {
    return "MGlobal";
}
