#include "foundation/Report.h"
#include "script/CommandState.h"
#include "script/Interpreter.h"
#include "script/MayaValues.h"

#include <maya/MArgList.h>
#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MPxCommand.h>
#include <maya/MStringArray.h>

using host::script::CommandExecution;
using host::script::CommandState;
using host::script::Floats;
using host::script::Ints;
using host::script::Strings;
using host::script::Type;
using host::script::Value;

namespace {

void setCurrent(Value value) {
    if (CommandExecution* execution = CommandExecution::current())
        execution->result = std::move(value);
}

const Value& currentValue() {
    static const Value none;
    const CommandExecution* execution = CommandExecution::current();
    return execution ? execution->result : none;
}

// The result becomes an array of `List`; a result of another type stays as it is.
template <class List> void append(const List& items) {
    CommandExecution* execution = CommandExecution::current();
    if (!execution)
        return;
    Value& result = execution->result;
    if (result.isNone())
        result = List{};
    else if (const auto* scalar = result.getIf<typename List::value_type>())
        result = List{*scalar};
    if (auto* list = result.getIf<List>())
        list->insert(list->end(), items.begin(), items.end());
    else
        host::report::warning("A command's result cannot hold values of different types.");
}

std::string withLocation(const MString& text, bool showLineNumber) {
    if (!showLineNumber)
        return text.asUTF8();
    host::script::ScriptError message(text.asUTF8());
    host::script::currentLocation(&message.file, &message.line);
    return message.text();
}

template <class T> MStatus currentResult(T& out, Type type) {
    const Value& value = currentValue();
    return value.type() == type && host::script::toMaya(value, out) ? MS::kSuccess : MS::kFailure;
}

template <class T> T currentOr(T fallback, Type type, MStatus* status) {
    const MStatus found = currentResult(fallback, type);
    if (status)
        *status = found;
    return fallback;
}

} // namespace

MPxCommand::MPxCommand() : state_(std::make_unique<CommandState>()) {
}
MPxCommand::~MPxCommand() = default;

MStatus MPxCommand::doIt(const MArgList&) {
    return MS::kSuccess;
}
MStatus MPxCommand::undoIt() {
    return MS::kSuccess;
}
MStatus MPxCommand::redoIt() {
    return MS::kSuccess;
}
bool MPxCommand::isUndoable() const {
    return false;
}
bool MPxCommand::hasSyntax() const {
    return false;
}

MSyntax MPxCommand::syntax() const {
    return state_->syntax ? *state_->syntax : MSyntax();
}

bool MPxCommand::isHistoryOn() const {
    return state_->history;
}
MString MPxCommand::commandString() const {
    return state_->text.c_str();
}

MStatus MPxCommand::setHistoryOn(bool on) {
    state_->history = on;
    return MS::kSuccess;
}

MStatus MPxCommand::setCommandString(const MString& text) {
    state_->text = text.asUTF8();
    return MS::kSuccess;
}

void MPxCommand::displayInfo(const MString& theInfo) {
    host::report::info(theInfo.asUTF8());
}
void MPxCommand::displayWarning(const MString& theWarning, bool showLineNumber) {
    host::report::warning(withLocation(theWarning, showLineNumber));
}
void MPxCommand::displayError(const MString& theError, bool showLineNumber) {
    host::report::error(withLocation(theError, showLineNumber));
}

void MPxCommand::clearResult() {
    setCurrent({});
}

void MPxCommand::setResult(int val) {
    setCurrent(val);
}
void MPxCommand::setResult(double val) {
    setCurrent(val);
}
void MPxCommand::setResult(bool val) {
    setCurrent(val);
}
void MPxCommand::setResult(const char* val) {
    setCurrent(std::string(val ? val : ""));
}
void MPxCommand::setResult(const MString& val) {
    setCurrent(host::script::fromMaya(val));
}
void MPxCommand::setResult(const MIntArray& val) {
    setCurrent(host::script::fromMaya(val));
}
void MPxCommand::setResult(const MDoubleArray& val) {
    setCurrent(host::script::fromMaya(val));
}
void MPxCommand::setResult(const MStringArray& val) {
    setCurrent(host::script::fromMaya(val));
}

void MPxCommand::appendToResult(int val) {
    append(Ints{val});
}
void MPxCommand::appendToResult(double val) {
    append(Floats{val});
}
void MPxCommand::appendToResult(bool val) {
    append(Ints{val ? 1 : 0});
}
void MPxCommand::appendToResult(const char* val) {
    append(Strings{val ? val : ""});
}
void MPxCommand::appendToResult(const MString& val) {
    append(Strings{val.asUTF8()});
}
void MPxCommand::appendToResult(const MStringArray& val) {
    append(host::script::fromMaya(val).get<Strings>());
}

MPxCommand::MResultType MPxCommand::currentResultType() {
    switch (host::script::elementType(currentValue().type())) {
    case Type::Int:
        return kLong;
    case Type::Float:
        return kDouble;
    case Type::String:
        return kString;
    default:
        return kNoArg;
    }
}

bool MPxCommand::isCurrentResultArray() {
    return currentValue().isArray();
}

int MPxCommand::currentIntResult(MStatus* ReturnStatus) {
    return currentOr(0, Type::Int, ReturnStatus);
}
double MPxCommand::currentDoubleResult(MStatus* ReturnStatus) {
    return currentOr(0.0, Type::Float, ReturnStatus);
}
MString MPxCommand::currentStringResult(MStatus* ReturnStatus) {
    return currentOr(MString(), Type::String, ReturnStatus);
}

MStatus MPxCommand::getCurrentResult(int& val) {
    return currentResult(val, Type::Int);
}
MStatus MPxCommand::getCurrentResult(double& val) {
    return currentResult(val, Type::Float);
}
MStatus MPxCommand::getCurrentResult(MString& val) {
    return currentResult(val, Type::String);
}
MStatus MPxCommand::getCurrentResult(MIntArray& val) {
    return currentResult(val, Type::IntArray);
}
MStatus MPxCommand::getCurrentResult(MDoubleArray& val) {
    return currentResult(val, Type::FloatArray);
}
MStatus MPxCommand::getCurrentResult(MStringArray& val) {
    return currentResult(val, Type::StringArray);
}
