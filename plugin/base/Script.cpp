#include "plugin/base/Script.h"

#include "plugin/base/MayaStrings.h"

#include <maya/MCommandResult.h>
#include <maya/MDoubleArray.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>

#include <array>
#include <cstddef>

namespace vellum::script {

namespace {

template <std::size_t Count, class Values>
std::optional<std::array<double, Count>> firstOf(const MCommandResult& result) {
    Values values;
    if (result.getResult(values) != MS::kSuccess || values.length() < Count)
        return std::nullopt;
    std::array<double, Count> numbers;
    for (std::size_t i = 0; i < Count; ++i)
        numbers[i] = values[static_cast<unsigned>(i)];
    return numbers;
}

template <std::size_t Count>
std::optional<std::array<double, Count>> executeNumbers(const QString& command) {
    MCommandResult result;
    if (MGlobal::executeCommand(toMaya(command), result) != MS::kSuccess)
        return std::nullopt;
    if (result.resultType() == MCommandResult::kDoubleArray)
        return firstOf<Count, MDoubleArray>(result);
    if (result.resultType() == MCommandResult::kIntArray)
        return firstOf<Count, MIntArray>(result);
    return std::nullopt;
}

} // namespace

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
    const auto numbers = executeNumbers<2>(command);
    return numbers ? std::optional(std::pair((*numbers)[0], (*numbers)[1])) : std::nullopt;
}

std::optional<std::array<double, 3>> executeTriple(const QString& command) {
    return executeNumbers<3>(command);
}

void executeOnIdle(const QString& command, bool display) {
    MGlobal::executeCommandOnIdle(toMaya(command), display);
}

} // namespace vellum::script
