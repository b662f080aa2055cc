#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <memory>

class MArgList;
class MDoubleArray;
class MIntArray;
class MStringArray;
class MSyntax;

namespace host::script {
struct CommandState;
}

/// Base class of commands that plug-ins add. The creator makes one object per call; the object is
/// deleted after doIt, or kept for undoIt and redoIt when doIt succeeded and isUndoable is true
/// then, until it falls off the undo queue.
///
/// setResult and appendToResult act on the command that is executing; outside of one they do
/// nothing.
class MPxCommand {
public:
    enum MResultType { kLong, kDouble, kString, kNoArg };

    MPxCommand();
    virtual ~MPxCommand();

    virtual MStatus doIt(const MArgList& args);
    virtual MStatus undoIt();
    virtual MStatus redoIt();
    virtual bool isUndoable() const;
    virtual bool hasSyntax() const;

    /// The syntax registered with the command.
    MSyntax syntax() const;
    bool isHistoryOn() const;
    MString commandString() const;
    MStatus setHistoryOn(bool state);
    MStatus setCommandString(const MString&);

    static void displayInfo(const MString& theInfo);
    static void displayWarning(const MString& theWarning, bool showLineNumber = false);
    static void displayError(const MString& theError, bool showLineNumber = false);

    static void clearResult();

    static void setResult(int val);
    static void setResult(double val);
    static void setResult(bool val);
    static void setResult(const char* val);
    static void setResult(const MString& val);
    static void setResult(const MIntArray& val);
    static void setResult(const MDoubleArray& val);
    static void setResult(const MStringArray& val);

    /// Turns the result into an array; a value of another type than the result so far is refused.
    static void appendToResult(int val);
    static void appendToResult(double val);
    static void appendToResult(bool val);
    static void appendToResult(const char* val);
    static void appendToResult(const MString& val);
    static void appendToResult(const MStringArray& val);

    static MResultType currentResultType();
    static bool isCurrentResultArray();
    static int currentIntResult(MStatus* ReturnStatus = nullptr);
    static double currentDoubleResult(MStatus* ReturnStatus = nullptr);
    static MString currentStringResult(MStatus* ReturnStatus = nullptr);
    static MStatus getCurrentResult(int& val);
    static MStatus getCurrentResult(double& val);
    static MStatus getCurrentResult(MString& val);
    static MStatus getCurrentResult(MIntArray& val);
    static MStatus getCurrentResult(MDoubleArray& val);
    static MStatus getCurrentResult(MStringArray& val);

private:
    MPxCommand(const MPxCommand&) = delete;
    MPxCommand& operator=(const MPxCommand&) = delete;

    friend struct host::script::CommandState;
    std::unique_ptr<host::script::CommandState> state_;
};
