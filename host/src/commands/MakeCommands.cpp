#include "commands/SceneCommandSupport.h"
#include "commands/SceneCommands.h"
#include "scene/text/PlugText.h"
#include "scene/text/Words.h"

#include <maya/MDGModifier.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>

#include <vector>

namespace host {

using script::ArgKind;
using script::CommandCall;
using script::Flags;
using script::ParsedFlags;
using script::ScriptError;
using script::Strings;
using script::Value;

namespace {

// A flag that sets one attribute of what is made.
struct AttributeFlag {
    const char* shortName;
    const char* longName;
    const char* attribute;
    ArgKind kind;
};

void setWords(const MObject& node, const std::string& attribute, std::vector<Token> words) {
    const std::vector<MPlug> plugs = findPlugs(node, attribute);
    if (plugs.empty())
        throw ScriptError("No attribute " + attribute + " on " + nameOf(node));
    AttrRecord record;
    record.values = std::move(words);
    std::string error;
    if (!textToValue(plugs, record, error))
        throw ScriptError(error);
}

Token flagWord(const ParsedFlags& parsed, const AttributeFlag& flag) {
    if (flag.kind == ArgKind::String)
        return quoted(parsed.getString(flag.longName));
    if (flag.kind == ArgKind::Boolean)
        return word(parsed.getBool(flag.longName) ? "yes" : "no");
    return word(formatNumber(parsed.getFloat(flag.longName)));
}

void declare(Flags& flags, const std::vector<AttributeFlag>& table) {
    for (const AttributeFlag& flag : table)
        flags.flag(flag.shortName, flag.longName, {flag.kind});
}

struct Made {
    MObject transform;
    MObject shape;
};

Made makeShape(const char* type, const std::string& name) {
    Made made;
    made.transform = MFnDagNode().create("transform", freeName(name).c_str());
    const std::string unique = MFnDependencyNode(made.transform).name().asChar();
    made.shape = MFnDagNode().create(type, shapeName(unique).c_str(), made.transform);
    if (made.shape.isNull())
        throw ScriptError(std::string("Could not create a shape of type ") + type);
    return made;
}

const std::vector<AttributeFlag>& cameraTable() {
    static const std::vector<AttributeFlag> table = {
        {"-coi", "-centerOfInterest", "centerOfInterest", ArgKind::Float},
        {"-fl", "-focalLength", "focalLength", ArgKind::Float},
        {"-lsr", "-lensSqueezeRatio", "lensSqueezeRatio", ArgKind::Float},
        {"-cs", "-cameraScale", "cameraScale", ArgKind::Float},
        {"-hfa", "-horizontalFilmAperture", "horizontalFilmAperture", ArgKind::Float},
        {"-vfa", "-verticalFilmAperture", "verticalFilmAperture", ArgKind::Float},
        {"-hfo", "-horizontalFilmOffset", "horizontalFilmOffset", ArgKind::Float},
        {"-vfo", "-verticalFilmOffset", "verticalFilmOffset", ArgKind::Float},
        {"-ov", "-overscan", "overscan", ArgKind::Float},
        {"-ncp", "-nearClipPlane", "nearClipPlane", ArgKind::Float},
        {"-fcp", "-farClipPlane", "farClipPlane", ArgKind::Float},
        {"-o", "-orthographic", "orthographic", ArgKind::Boolean},
        {"-ow", "-orthographicWidth", "orthographicWidth", ArgKind::Float},
        {"-pze", "-panZoomEnabled", "panZoomEnabled", ArgKind::Boolean},
        {"-hpn", "-horizontalPan", "horizontalPan", ArgKind::Float},
        {"-vpn", "-verticalPan", "verticalPan", ArgKind::Float},
        {"-zom", "-zoom", "zoom", ArgKind::Float},
    };
    return table;
}

Flags cameraFlags() {
    constexpr ArgKind number = ArgKind::Float;
    Flags flags;
    declare(flags, cameraTable());
    flags.flag("-n", "-name", {ArgKind::String})
        .flag("-ff", "-filmFit", {ArgKind::String})
        .flag("-p", "-position", {number, number, number})
        .flag("-rot", "-rotation", {number, number, number})
        .query()
        .edit()
        .objects(0, 1);
    return flags;
}

std::vector<Token> tripleWords(const ParsedFlags& parsed, const char* flag) {
    std::vector<Token> words;
    for (int i = 0; i < 3; ++i)
        words.push_back(word(formatNumber(parsed.getFloat(flag, 0, i))));
    return words;
}

int filmFitNumber(const std::string& name) {
    static const std::vector<std::string> names = {"fill", "horizontal", "vertical", "overscan"};
    for (std::size_t i = 0; i < names.size(); ++i)
        if (names[i] == name)
            return int(i);
    throw ScriptError("Invalid film fit: " + name);
}

void applyCameraFlags(const ParsedFlags& parsed, const Made& camera) {
    for (const AttributeFlag& flag : cameraTable())
        if (parsed.isSet(flag.longName))
            setWords(camera.shape, flag.attribute, {flagWord(parsed, flag)});
    if (parsed.isSet("-filmFit"))
        setWords(camera.shape, "filmFit",
                 {word(std::to_string(filmFitNumber(parsed.getString("-filmFit"))))});
    if (parsed.isSet("-position"))
        setWords(camera.transform, "translate", tripleWords(parsed, "-position"));
    if (parsed.isSet("-rotation"))
        setWords(camera.transform, "rotate", tripleWords(parsed, "-rotation"));
}

Made existingCamera(const ParsedFlags& parsed) {
    const std::vector<std::string> names = namesOrSelection(parsed);
    MDagPath path = pathNamed(names.front());
    if (path.hasFn(MFn::kTransform))
        path.extendToShape();
    if (!path.hasFn(MFn::kCamera))
        throw ScriptError("No camera matches name: " + names.front());
    return {path.transform(), path.node()};
}

Value cameraValue(const MObject& shape, const AttributeFlag& flag) {
    AttrRecord record;
    const std::vector<MPlug> plugs = findPlugs(shape, flag.attribute);
    if (plugs.empty() || !valueToText(plugs.front(), record) || record.values.empty())
        throw ScriptError(std::string("No attribute ") + flag.attribute);
    double number = 0;
    parseNumber(record.values[0].text, number);
    return flag.kind == ArgKind::Boolean ? Value(number != 0) : Value(number);
}

Value camera(const CommandCall& call) {
    static const Flags flags = cameraFlags();
    const ParsedFlags parsed = flags.parse(call);
    if (parsed.isQuery()) {
        const Made found = existingCamera(parsed);
        for (const AttributeFlag& flag : cameraTable())
            if (parsed.isSet(flag.longName))
                return cameraValue(found.shape, flag);
        throw ScriptError("No query flag of 'camera' was specified.");
    }
    if (parsed.isEdit()) {
        const Made found = existingCamera(parsed);
        for (const AttributeFlag& flag : cameraTable()) {
            if (!parsed.isSet(flag.longName))
                continue;
            const std::vector<MPlug> plugs = findPlugs(found.shape, flag.attribute);
            AttrRecord before;
            AttrRecord after;
            valueToText(plugs.front(), before);
            after.values = {flagWord(parsed, flag)};
            const auto put = [plugs](const AttrRecord& record) {
                std::string error;
                if (!textToValue(plugs, record, error))
                    throw ScriptError(error);
            };
            put(after);
            recordStep(
                "camera", [=] { put(before); }, [=] { put(after); });
        }
        return Value();
    }
    std::string name = parsed.getString("-name", "camera");
    if (name.empty() || !std::isdigit(static_cast<unsigned char>(name.back())))
        name += "#";
    const Made made = makeShape("camera", name);
    applyCameraFlags(parsed, made);
    recordCreation("camera", {made.transform});
    selectNodes({made.transform});
    return Strings{nameOf(made.transform), nameOf(made.shape)};
}

// A primitive: the transform and mesh, and the node that makes the mesh's shape.
struct Primitive {
    const char* command;
    const char* transform; // "pSphere#"
    std::vector<AttributeFlag> table;
};

Value makePrimitive(const Primitive& primitive, const Flags& flags, const CommandCall& call) {
    const ParsedFlags parsed = flags.parse(call);
    const Made made =
        makeShape("mesh", parsed.isSet("-name") ? parsed.getString("-name") : primitive.transform);
    const MObject history = MFnDependencyNode().create(
        primitive.command, freeName(std::string(primitive.command) + "#").c_str());
    for (const AttributeFlag& flag : primitive.table)
        if (parsed.isSet(flag.longName))
            setWords(history, flag.attribute, {flagWord(parsed, flag)});
    const std::vector<MPlug> output = findPlugs(history, "output");
    const std::vector<MPlug> input = findPlugs(made.shape, "inMesh");
    MDGModifier modifier;
    if (output.empty() || input.empty() || !modifier.connect(output[0], input[0]) ||
        !modifier.doIt())
        throw ScriptError(std::string("Could not connect the mesh of ") + primitive.command);
    recordCreation(primitive.command, {made.transform, history});
    selectNodes({made.transform});
    return Strings{nameOf(made.transform), nameOf(history)};
}

void registerPrimitive(Primitive primitive) {
    Flags flags;
    declare(flags, primitive.table);
    constexpr ArgKind number = ArgKind::Float;
    flags.flag("-n", "-name", {ArgKind::String})
        .flag("-ch", "-constructionHistory", {ArgKind::Boolean})
        .flag("-ax", "-axis", {number, number, number})
        .flag("-cuv", "-createUVs", {ArgKind::Int})
        .flag("-o", "-object", {ArgKind::Boolean});
    script::registerCommand(primitive.command, [primitive, flags](const CommandCall& call) {
        return makePrimitive(primitive, flags, call);
    });
}

Value spaceLocator(const CommandCall& call) {
    constexpr ArgKind number = ArgKind::Float;
    static const Flags flags = Flags()
                                   .flag("-n", "-name", {ArgKind::String})
                                   .flag("-p", "-position", {number, number, number});
    const ParsedFlags parsed = flags.parse(call);
    const Made made = makeShape("locator", parsed.getString("-name", "locator#"));
    if (parsed.isSet("-position"))
        setWords(made.shape, "localPosition", tripleWords(parsed, "-position"));
    recordCreation("spaceLocator", {made.transform});
    selectNodes({made.transform});
    return Strings{nameOf(made.transform)};
}

Value group(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-n", "-name", {ArgKind::String})
                                   .flag("-em", "-empty")
                                   .flag("-w", "-world")
                                   .flag("-p", "-parent", {ArgKind::String})
                                   .objects(0, -1);
    const ParsedFlags parsed = flags.parse(call);
    MObject above;
    if (parsed.isSet("-parent"))
        above = nodeNamed(parsed.getString("-parent"));
    const Strings names = parsed.isSet("-empty") ? Strings() : namesOrSelection(parsed);
    for (const std::string& name : names)
        nodeToParent(name, above); // all of them, before anything is made
    const MObject made = MFnDagNode().create(
        "transform", freeName(parsed.getString("-name", "group#")).c_str(), above);
    recordCreation("group", {made});
    for (const std::string& name : names) {
        CommandCall move;
        move.name = "parent";
        move.arguments = {Value(name), Value(nameOf(made, true))};
        script::callCommand(move);
    }
    selectNodes({made});
    return nameOf(made);
}

} // namespace

void registerMakeCommands() {
    constexpr ArgKind number = ArgKind::Float;
    constexpr ArgKind integer = ArgKind::Int;
    script::registerCommand("camera", camera);
    script::registerCommand("spaceLocator", spaceLocator);
    script::registerCommand("group", group);
    registerPrimitive({"polySphere",
                       "pSphere#",
                       {{"-r", "-radius", "radius", number},
                        {"-sx", "-subdivisionsX", "subdivisionsAxis", integer},
                        {"-sy", "-subdivisionsY", "subdivisionsHeight", integer}}});
    registerPrimitive({"polyCube",
                       "pCube#",
                       {{"-w", "-width", "width", number},
                        {"-h", "-height", "height", number},
                        {"-d", "-depth", "depth", number},
                        {"-sx", "-subdivisionsX", "subdivisionsWidth", integer},
                        {"-sy", "-subdivisionsY", "subdivisionsHeight", integer},
                        {"-sz", "-subdivisionsZ", "subdivisionsDepth", integer}}});
    registerPrimitive({"polyPlane",
                       "pPlane#",
                       {{"-w", "-width", "width", number},
                        {"-h", "-height", "height", number},
                        {"-sx", "-subdivisionsX", "subdivisionsWidth", integer},
                        {"-sy", "-subdivisionsY", "subdivisionsHeight", integer}}});
}

} // namespace host
