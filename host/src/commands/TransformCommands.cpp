#include "commands/SceneCommandSupport.h"
#include "commands/SceneCommands.h"
#include "commands/TransformParts.h"
#include "scene/text/PlugText.h"

#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>

#include <array>

namespace host {

using script::ArgKind;
using script::CommandCall;
using script::Flags;
using script::ParsedFlags;
using script::ScriptError;
using script::Strings;
using script::Value;

namespace {

using Triple = std::array<double, 3>;

constexpr const char* kTranslateName = "translate";
constexpr const char* kRotateName = "rotate";
constexpr const char* kScaleName = "scale";

// Shapes stand for their transform.
MDagPath transformPath(const std::string& name) {
    MDagPath path = pathNamed(name);
    if (!path.hasFn(MFn::kTransform))
        path.pop();
    if (!path.hasFn(MFn::kTransform))
        throw ScriptError("No transform matches name: " + name);
    return path;
}

void change(const char* label, const MDagPath& path, const char* name, const Triple& after) {
    const Triple before = channel(path, name);
    const MPlug plug = MFnDependencyNode(path.node()).findPlug(name, false);
    for (unsigned i = 0; i < 3; ++i) {
        const MPlug child = plug.child(i);
        if (before[i] != after[i] && (child.isLocked() || child.isDestination()))
            throw ScriptError(std::string(label) + ": The attribute '" + nameOf(path.node()) + "." +
                              child.partialName().asChar() +
                              "' is locked or connected and cannot be modified.");
    }
    setChannel(path, name, after);
    recordStep(
        label, [=] { setChannel(path, name, before); }, [=] { setChannel(path, name, after); });
}

Triple toWorld(const MDagPath& path, const Triple& local) {
    const MPoint point = MPoint(local[0], local[1], local[2]) * path.exclusiveMatrix();
    return {point.x, point.y, point.z};
}

Triple toLocal(const MDagPath& path, const Triple& world) {
    const MPoint point = MPoint(world[0], world[1], world[2]) * path.exclusiveMatrixInverse();
    return {point.x, point.y, point.z};
}

// The numbers at the front of the objects and the names behind them.
struct NumbersAndNames {
    std::vector<double> numbers;
    Strings names;
};

NumbersAndNames split(const ParsedFlags& parsed) {
    NumbersAndNames result;
    for (const Value& value : parsed.objects()) {
        double number = 0;
        if (result.names.empty() && value.isNumber())
            result.numbers.push_back(value.toFloat());
        else if (result.names.empty() && script::parseNumber(value.toString(), &number))
            result.numbers.push_back(number);
        else
            result.names.push_back(value.toString());
    }
    if (result.names.empty())
        result.names = selectedNames();
    if (result.names.empty())
        throw ScriptError("Nothing is selected. Select objects or specify their names.");
    return result;
}

// Which of the three are given: all with three numbers, else those of -x, -y, -z with one each.
std::array<bool, 3> axesOf(const ParsedFlags& parsed, NumbersAndNames& given) {
    std::array<bool, 3> axes = {parsed.isSet("-x"), parsed.isSet("-y"), parsed.isSet("-z")};
    const bool some = axes[0] || axes[1] || axes[2];
    std::vector<double> spread(3, given.numbers.empty() ? 0.0 : given.numbers[0]);
    if (!some) {
        if (given.numbers.size() != 3)
            throw ScriptError("Three values are needed.");
        return {true, true, true};
    }
    std::size_t next = 0;
    for (std::size_t i = 0; i < 3; ++i)
        if (axes[i] && given.numbers.size() > 1 && next < given.numbers.size())
            spread[i] = given.numbers[next++];
    if (given.numbers.empty())
        throw ScriptError("A value is needed.");
    given.numbers = spread;
    return axes;
}

Flags axisFlags() {
    return Flags()
        .flag("-r", "-relative")
        .flag("-a", "-absolute")
        .flag("-x", "-moveX")
        .flag("-y", "-moveY")
        .flag("-z", "-moveZ")
        .flag("-ws", "-worldSpace")
        .flag("-os", "-objectSpace")
        .flag("-ls", "-localSpace")
        .objects(0, -1);
}

Value move(const CommandCall& call) {
    static const Flags flags = axisFlags();
    const ParsedFlags parsed = flags.parse(call);
    NumbersAndNames given = split(parsed);
    const std::array<bool, 3> axes = axesOf(parsed, given);
    const bool relative = parsed.isSet("-relative");
    const bool local = parsed.isSet("-localSpace") || parsed.isSet("-objectSpace");
    for (const std::string& name : given.names) {
        const MDagPath path = transformPath(name);
        Triple place = channel(path, kTranslateName);
        if (!local)
            place = toWorld(path, place);
        for (std::size_t i = 0; i < 3; ++i) {
            const double value = MDistance(given.numbers[i], MDistance::uiUnit()).asCentimeters();
            if (axes[i])
                place[i] = relative ? place[i] + value : value;
        }
        change("move", path, kTranslateName, local ? place : toLocal(path, place));
    }
    return Value();
}

Value rotate(const CommandCall& call) {
    static const Flags flags = axisFlags();
    const ParsedFlags parsed = flags.parse(call);
    NumbersAndNames given = split(parsed);
    const std::array<bool, 3> axes = axesOf(parsed, given);
    for (const std::string& name : given.names) {
        const MDagPath path = transformPath(name);
        Triple angles = channel(path, kRotateName);
        for (std::size_t i = 0; i < 3; ++i) {
            const double value = MAngle(given.numbers[i], MAngle::uiUnit()).asRadians();
            if (axes[i])
                angles[i] = parsed.isSet("-relative") ? angles[i] + value : value;
        }
        change("rotate", path, kRotateName, angles);
    }
    return Value();
}

Value scale(const CommandCall& call) {
    static const Flags flags = axisFlags();
    const ParsedFlags parsed = flags.parse(call);
    NumbersAndNames given = split(parsed);
    const std::array<bool, 3> axes = axesOf(parsed, given);
    for (const std::string& name : given.names) {
        const MDagPath path = transformPath(name);
        Triple factors = channel(path, kScaleName);
        for (std::size_t i = 0; i < 3; ++i)
            if (axes[i])
                factors[i] =
                    parsed.isSet("-absolute") ? given.numbers[i] : factors[i] * given.numbers[i];
        change("scale", path, kScaleName, factors);
    }
    return Value();
}

script::Floats asFloats(const Triple& values) {
    return {values[0], values[1], values[2]};
}

Triple inUiUnits(const char* name, Triple values) {
    for (double& value : values) {
        if (name == kTranslateName)
            value = MDistance(value).as(MDistance::uiUnit());
        else if (name == kRotateName)
            value = MAngle(value).as(MAngle::uiUnit());
    }
    return values;
}

script::Floats matrixFloats(const MMatrix& matrix) {
    script::Floats cells;
    for (unsigned row = 0; row < 4; ++row)
        for (unsigned column = 0; column < 4; ++column)
            cells.push_back(matrix(row, column));
    return cells;
}

Value queryXform(const ParsedFlags& parsed) {
    const Strings names = namesOrSelection(parsed);
    const MDagPath path = transformPath(names.front());
    const bool world = parsed.isSet("-worldSpace");
    if (parsed.isSet("-matrix")) {
        const MMatrix local = path.inclusiveMatrix() * path.exclusiveMatrixInverse();
        return matrixFloats(world ? path.inclusiveMatrix() : local);
    }
    if (parsed.isSet("-translation")) {
        const Triple local = channel(path, kTranslateName);
        return asFloats(inUiUnits(kTranslateName, world ? toWorld(path, local) : local));
    }
    if (parsed.isSet("-rotation")) {
        Triple angles = channel(path, kRotateName);
        if (world)
            angles = decompose(path.inclusiveMatrix()).rotate;
        return asFloats(inUiUnits(kRotateName, angles));
    }
    if (parsed.isSet("-scale"))
        return asFloats(channel(path, kScaleName));
    throw ScriptError("No query flag of 'xform' was specified.");
}

Triple flagTriple(const ParsedFlags& parsed, const char* flag) {
    return {parsed.getFloat(flag, 0, 0), parsed.getFloat(flag, 0, 1), parsed.getFloat(flag, 0, 2)};
}

void setMatrix(const MDagPath& path, const ParsedFlags& parsed) {
    double cells[4][4];
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            cells[row][column] = parsed.getFloat("-matrix", 0, row * 4 + column);
    MMatrix matrix(cells);
    if (parsed.isSet("-worldSpace"))
        matrix = matrix * path.exclusiveMatrixInverse();
    const TransformParts before = partsOf(path);
    const TransformParts after = decompose(matrix);
    setParts(path, after);
    recordStep(
        "xform", [=] { setParts(path, before); }, [=] { setParts(path, after); });
}

Value xform(const CommandCall& call) {
    constexpr ArgKind number = ArgKind::Float;
    static const Flags flags =
        Flags()
            .flag("-t", "-translation", {number, number, number})
            .flag("-ro", "-rotation", {number, number, number})
            .flag("-s", "-scale", {number, number, number})
            .flag("-m", "-matrix",
                  {number, number, number, number, number, number, number, number, number, number,
                   number, number, number, number, number, number})
            .flag("-ws", "-worldSpace")
            .flag("-os", "-objectSpace")
            .flag("-r", "-relative")
            .flag("-a", "-absolute")
            .query()
            .objects(0, -1);
    const ParsedFlags parsed = flags.parse(call);
    if (parsed.isQuery())
        return queryXform(parsed);
    const bool relative = parsed.isSet("-relative");
    for (const std::string& name : namesOrSelection(parsed)) {
        const MDagPath path = transformPath(name);
        if (parsed.isSet("-matrix"))
            setMatrix(path, parsed);
        if (parsed.isSet("-translation")) {
            Triple place = channel(path, kTranslateName);
            const bool world = parsed.isSet("-worldSpace");
            if (world)
                place = toWorld(path, place);
            const Triple values = flagTriple(parsed, "-translation");
            for (std::size_t i = 0; i < 3; ++i) {
                const double value = MDistance(values[i], MDistance::uiUnit()).asCentimeters();
                place[i] = relative ? place[i] + value : value;
            }
            change("xform", path, kTranslateName, world ? toLocal(path, place) : place);
        }
        if (parsed.isSet("-rotation")) {
            Triple angles = channel(path, kRotateName);
            const Triple values = flagTriple(parsed, "-rotation");
            for (std::size_t i = 0; i < 3; ++i) {
                const double value = MAngle(values[i], MAngle::uiUnit()).asRadians();
                angles[i] = relative ? angles[i] + value : value;
            }
            change("xform", path, kRotateName, angles);
        }
        if (parsed.isSet("-scale")) {
            Triple factors = channel(path, kScaleName);
            const Triple values = flagTriple(parsed, "-scale");
            for (std::size_t i = 0; i < 3; ++i)
                factors[i] = relative ? factors[i] * values[i] : values[i];
            change("xform", path, kScaleName, factors);
        }
    }
    return Value();
}

} // namespace

void registerTransformCommands() {
    script::registerCommand("move", move);
    script::registerCommand("rotate", rotate);
    script::registerCommand("scale", scale);
    script::registerCommand("xform", xform);
}

} // namespace host
