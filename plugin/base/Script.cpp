#include "plugin/base/Script.h"

#include "plugin/base/MayaStrings.h"

#include <maya/MCommandResult.h>
#include <maya/MDoubleArray.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>

namespace vellum::script {

bool execute(const QString& command, bool display, bool undo) {
    return MGlobal::executeCommand(toMaya(command), display, undo) == MS::kSuccess;
}

std::optional<int> executeInt(const QString& command) {
    MCommandResult result;
    int value = 0;
    if (MGlobal::executeCommand(toMaya(command), result) != MS::kSuccess ||
        result.resultType() != MCommandResult::kInt || result.getResult(value) != MS::kSuccess)
        return std::nullopt;
    return value;
}

std::optional<QString> executeString(const QString& command) {
    MCommandResult result;
    MString value;
    if (MGlobal::executeCommand(toMaya(command), result) != MS::kSuccess ||
        result.resultType() != MCommandResult::kString || result.getResult(value) != MS::kSuccess)
        return std::nullopt;
    return fromMaya(value);
}

std::optional<std::pair<double, double>> executePair(const QString& command) {
    MCommandResult result;
    if (MGlobal::executeCommand(toMaya(command), result) != MS::kSuccess)
        return std::nullopt;
    if (result.resultType() == MCommandResult::kDoubleArray) {
        MDoubleArray values;
        if (result.getResult(values) == MS::kSuccess && values.length() >= 2)
            return std::pair(values[0], values[1]);
    } else if (result.resultType() == MCommandResult::kIntArray) {
        MIntArray values;
        if (result.getResult(values) == MS::kSuccess && values.length() >= 2)
            return std::pair<double, double>(values[0], values[1]);
    }
    return std::nullopt;
}

void executeOnIdle(const QString& command, bool display) {
    MGlobal::executeCommandOnIdle(toMaya(command), display);
}

} // namespace vellum::script
