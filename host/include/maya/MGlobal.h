#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

class MCommandResult;
class MDagPath;
class MDoubleArray;
class MIntArray;
class MObject;
class MSelectionList;
class MStringArray;
class MTime;

/// Global functions: messages, the active selection, running scripts.
class MGlobal {
public:
    enum MMayaState { kInteractive, kBatch, kLibraryApp, kBaseUIMode };
    enum ListAdjustment {
        kReplaceList,
        kXORWithList,
        kAddToList,
        kRemoveFromList,
        kAddToHeadOfList
    };

    static MString mayaVersion();
    static int apiVersion();
    static MMayaState mayaState(MStatus* ReturnStatus = nullptr);

    static void displayInfo(const MString& theMessage);
    static void displayWarning(const MString& theWarning);
    static void displayError(const MString& theError);

    /// Runs a script at global scope. kFailure when it ends with an error, which has been shown
    /// then. With `displayEnabled` the command and its results are shown; with `undoEnabled` what
    /// it does can be undone.
    static MStatus executeCommand(const MString& command, bool displayEnabled = false,
                                  bool undoEnabled = false);
    /// With a result: kFailure also when the script's result is of another type.
    static MStatus executeCommand(const MString& command, int& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MIntArray& result,
                                  bool displayEnabled = false, bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, double& result,
                                  bool displayEnabled = false, bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MDoubleArray& result,
                                  bool displayEnabled = false, bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MString& result,
                                  bool displayEnabled = false, bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MStringArray& result,
                                  bool displayEnabled = false, bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MCommandResult& result,
                                  bool displayEnabled = false, bool undoEnabled = false);
    static MString executeCommandStringResult(const MString& command, bool displayEnabled = false,
                                              bool undoEnabled = false,
                                              MStatus* ReturnStatus = nullptr);
    /// Runs it when the event loop is idle.
    static MStatus executeCommandOnIdle(const MString& command, bool displayEnabled = false);
    static MStatus sourceFile(const MString& fileName);

    static MStatus getActiveSelectionList(MSelectionList& dest,
                                          bool orderedSelectionIfAvailable = false);
    static MStatus setActiveSelectionList(const MSelectionList& src,
                                          ListAdjustment listAdjustment = kReplaceList);
    static MStatus clearSelectionList();
    static MStatus getSelectionListByName(const MString& name, MSelectionList& list);
    static MStatus selectByName(const MString& name, ListAdjustment listAdjustment = kAddToList);
    static MStatus select(MObject& object, ListAdjustment listAdjustment = kAddToList);
    static MStatus unselect(MObject& object);
    static MStatus unselectByName(const MString& name);
    static bool isSelected(MObject& object);

    static MStatus deleteNode(MObject& object);

    static MStatus viewFrame(double time);
    static MStatus viewFrame(const MTime& time);

    static bool isUndoing();
    static bool isRedoing();

    static const char* className();
};
