#include "commands/SceneCommandSupport.h"
#include "commands/SceneCommands.h"
#include "scene/core/SceneState.h"
#include "scene/text/NodeText.h"
#include "scene/text/PlugText.h"
#include "scene/text/Words.h"

#include <maya/MAngle.h>
#include <maya/MDGContext.h>
#include <maya/MDGModifier.h>
#include <maya/MDistance.h>
#include <maya/MFnAttribute.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnPluginData.h>
#include <maya/MPxData.h>
#include <maya/MTime.h>

namespace host {

using script::ArgKind;
using script::CommandCall;
using script::Flags;
using script::ParsedFlags;
using script::ScriptError;
using script::Strings;
using script::Value;

namespace {

std::string plugName(const MPlug& plug) {
    return nameOf(plug.node()) + "." +
           plug.partialName(false, false, false, false, false, true).asChar();
}

bool isSettable(const MPlug& plug) {
    if (plug.isLocked() || (plug.isDestination() && !plug.isCompound()))
        return false;
    if (plug.isCompound())
        for (unsigned i = 0; i < plug.numChildren(); ++i)
            if (!isSettable(plug.child(i)))
                return false;
    return true;
}

// Values as the words the text forms use.
Token tokenOf(const Value& value) {
    if (value.isString())
        return quoted(value.toString());
    return word(value.type() == script::Type::Int ? std::to_string(value.toInt())
                                                  : formatNumber(value.toFloat()));
}

struct Switches {
    bool keyable, channelBox, locked;
};

Switches switchesOf(const MPlug& plug) {
    return {plug.isKeyable(), plug.isChannelBoxFlagSet(), plug.isLocked()};
}

void apply(MPlug plug, const Switches& switches) {
    plug.setKeyable(switches.keyable);
    plug.setChannelBox(switches.channelBox);
    plug.setLocked(switches.locked);
}

void setSwitches(const MPlug& plug, const ParsedFlags& parsed) {
    const Switches before = switchesOf(plug);
    Switches after = before;
    if (parsed.isSet("-keyable"))
        after.keyable = parsed.getBool("-keyable");
    if (parsed.isSet("-channelBox"))
        after.channelBox = parsed.getBool("-channelBox");
    if (parsed.isSet("-lock"))
        after.locked = parsed.getBool("-lock");
    apply(plug, after);
    recordStep(
        "setAttr", [plug, before] { apply(plug, before); }, [plug, after] { apply(plug, after); });
}

AttrRecord currentValue(const std::vector<MPlug>& plugs) {
    AttrRecord record;
    for (const MPlug& plug : plugs) {
        AttrRecord one;
        valueToText(plug, one);
        record.values.insert(record.values.end(), one.values.begin(), one.values.end());
    }
    record.hasValue = true;
    return record;
}

void setValues(const std::vector<MPlug>& plugs, const std::vector<Value>& values,
               const std::string& name) {
    for (const MPlug& plug : plugs) {
        if (!isSettable(plug))
            throw ScriptError("setAttr: The attribute '" + plugName(plug) +
                              "' is locked or connected and cannot be modified.");
        if (plugKind(plug) == PlugKind::Plugin || plugKind(plug) == PlugKind::None)
            throw ScriptError("setAttr: Cannot set the attribute '" + name +
                              "' to a value from the script.");
    }
    const bool isText =
        plugKind(plugs.front()) == PlugKind::Text || plugKind(plugs.front()) == PlugKind::Texts;
    AttrRecord after;
    for (const Value& value : values) {
        if (value.isString() && !isText)
            throw ScriptError("setAttr: '" + name + "' takes a number, not \"" + value.toString() +
                              "\".");
        after.values.push_back(tokenOf(value));
    }
    const AttrRecord before = currentValue(plugs);
    std::string error;
    const auto restore = [plugs](const AttrRecord& record) {
        std::string ignored;
        textToValue(plugs, record, ignored);
    };
    const bool modified = sceneModified();
    if (!textToValue(plugs, after, error)) {
        restore(before);
        setSceneModified(modified);
        throw ScriptError("setAttr: " + error);
    }
    recordStep(
        "setAttr", [=] { restore(before); }, [=] { restore(after); });
}

Value setAttr(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-typ", "-type", {ArgKind::String})
                                   .flag("-l", "-lock", {ArgKind::Boolean})
                                   .flag("-k", "-keyable", {ArgKind::Boolean})
                                   .flag("-cb", "-channelBox", {ArgKind::Boolean})
                                   .flag("-ca", "-caching", {ArgKind::Boolean})
                                   .flag("-s", "-size", {ArgKind::Int})
                                   .flag("-c", "-clamp")
                                   .objects(1, -1);
    const ParsedFlags parsed = flags.parse(call);
    const std::string name = parsed.object();
    const std::vector<MPlug> plugs = plugsNamed(name);
    const std::vector<Value> values(parsed.objects().begin() + 1, parsed.objects().end());
    const bool switched =
        parsed.isSet("-lock") || parsed.isSet("-keyable") || parsed.isSet("-channelBox");
    if (values.empty() && !switched)
        throw ScriptError("setAttr: No value was specified for '" + name + "'.");
    // Unlocking comes before the value it allows, locking after.
    const bool unlock = parsed.isSet("-lock") && !parsed.getBool("-lock");
    if (switched && (values.empty() || unlock))
        for (const MPlug& plug : plugs)
            setSwitches(plug, parsed);
    if (!values.empty())
        setValues(plugs, values, name);
    if (switched && !values.empty() && !unlock)
        for (const MPlug& plug : plugs)
            setSwitches(plug, parsed);
    return Value();
}

Value numberValue(const MPlug& plug) {
    AttrRecord record;
    valueToText(plug, record);
    switch (plugKind(plug)) {
    case PlugKind::Boolean:
        return plug.asBool();
    case PlugKind::Integer:
        return plug.asInt();
    default:
        return record.values.empty() ? 0.0 : Value(record.values[0].text).toFloat();
    }
}

Value valueOf(const MPlug& plug) {
    AttrRecord record;
    const PlugKind kind = plugKind(plug);
    if (kind == PlugKind::None || kind == PlugKind::Plugin || !valueToText(plug, record))
        throw ScriptError("The data is not a numeric or string attribute, and cannot be "
                          "displayed: " +
                          plugName(plug));
    switch (kind) {
    case PlugKind::Text:
        return record.values[0].text;
    case PlugKind::Texts: {
        Strings texts;
        for (std::size_t i = 1; i < record.values.size(); ++i)
            texts.push_back(record.values[i].text);
        return texts;
    }
    case PlugKind::Integers: {
        script::Ints numbers;
        for (std::size_t i = 1; i < record.values.size(); ++i)
            numbers.push_back(Value(record.values[i].text).toInt());
        return numbers;
    }
    case PlugKind::Numbers:
    case PlugKind::Matrix:
    case PlugKind::Compound: {
        script::Floats numbers;
        for (std::size_t i = kind == PlugKind::Numbers ? 1 : 0; i < record.values.size(); ++i)
            numbers.push_back(Value(record.values[i].text).toFloat());
        return numbers;
    }
    default:
        return numberValue(plug);
    }
}

std::string numericTypeName(const MPlug& plug) {
    switch (MFnNumericAttribute(plug.attribute()).unitType()) {
    case MFnNumericData::kByte:
        return "byte";
    case MFnNumericData::kShort:
        return "short";
    case MFnNumericData::kInt:
        return "long";
    case MFnNumericData::kFloat:
        return "float";
    default:
        return "double";
    }
}

std::string typeOf(const MPlug& plug) {
    switch (plugKind(plug)) {
    case PlugKind::Boolean:
        return "bool";
    case PlugKind::Integer:
        return plug.attribute().hasFn(MFn::kEnumAttribute) ? "enum" : numericTypeName(plug);
    case PlugKind::Real:
        return numericTypeName(plug);
    case PlugKind::Linear:
        return "doubleLinear";
    case PlugKind::Angle:
        return "doubleAngle";
    case PlugKind::Time:
        return "time";
    case PlugKind::Text:
        return "string";
    case PlugKind::Matrix:
        return "matrix";
    case PlugKind::Numbers:
        return "doubleArray";
    case PlugKind::Integers:
        return "Int32Array";
    case PlugKind::Texts:
        return "stringArray";
    case PlugKind::Compound:
        return isTuple(plug) ? tupleType(plug) : "TdataCompound";
    case PlugKind::Plugin: {
        MFnPluginData data(plug.asMObject());
        const MPxData* const content = data.constData();
        return content ? content->name().asChar() : "";
    }
    case PlugKind::None:
        break;
    }
    return "message";
}

double numberAt(const MPlug& plug, const MDGContext& context) {
    const double value = plug.asDouble(context);
    switch (plugKind(plug)) {
    case PlugKind::Angle:
        return MAngle(value).as(MAngle::uiUnit());
    case PlugKind::Linear:
        return MDistance(value).as(MDistance::uiUnit());
    default:
        return value;
    }
}

Value valueAt(const MPlug& plug, const MTime& time) {
    const MDGContext context(time);
    if (isTuple(plug)) {
        script::Floats numbers;
        for (unsigned i = 0; i < plug.numChildren(); ++i)
            numbers.push_back(numberAt(plug.child(i), context));
        return numbers;
    }
    switch (plugKind(plug)) {
    case PlugKind::Boolean:
        return plug.asBool(context);
    case PlugKind::Integer:
        return int(plug.asDouble(context));
    case PlugKind::Real:
    case PlugKind::Linear:
    case PlugKind::Angle:
        return numberAt(plug, context);
    default:
        return valueOf(plug);
    }
}

Value getAttr(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-typ", "-type")
                                   .flag("-l", "-lock")
                                   .flag("-k", "-keyable")
                                   .flag("-cb", "-channelBox")
                                   .flag("-se", "-settable")
                                   .flag("-s", "-size")
                                   .flag("-t", "-time", {ArgKind::Time})
                                   .objects(1, 1);
    const ParsedFlags parsed = flags.parse(call);
    const std::vector<MPlug> plugs = plugsNamed(parsed.object());
    const MPlug& plug = plugs.front();
    if (parsed.isSet("-size"))
        return plug.isArray() ? int(plug.numElements()) : 1;
    if (parsed.isSet("-type"))
        return typeOf(plug);
    if (parsed.isSet("-lock"))
        return plug.isLocked();
    if (parsed.isSet("-keyable"))
        return plug.isKeyable();
    if (parsed.isSet("-channelBox"))
        return plug.isChannelBoxFlagSet();
    if (parsed.isSet("-settable"))
        return isSettable(plug);
    if (parsed.isSet("-time"))
        return valueAt(plug, MTime(parsed.getFloat("-time"), MTime::uiUnit()));
    if (plugs.size() == 1)
        return valueOf(plug);
    script::Floats all;
    for (const MPlug& each : plugs)
        for (const double number : valueOf(each).toFloats())
            all.push_back(number);
    return all;
}

Value addAttr(const CommandCall& call) {
    // The flags are those of scene files; what is left at the end names the nodes.
    std::vector<Token> tokens;
    Strings names;
    const std::vector<Value> arguments = call.flattened();
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string text = arguments[i].toString();
        if (text.size() < 2 || text[0] != '-' ||
            !std::isalpha(static_cast<unsigned char>(text[1]))) {
            names.push_back(text);
            continue;
        }
        tokens.push_back(word(text));
        if (i + 1 < arguments.size())
            tokens.push_back(tokenOf(arguments[++i]));
    }
    if (names.empty())
        names = selectedNames();
    if (names.empty())
        throw ScriptError("No objects were specified to add an attribute to.");
    for (const std::string& name : names) {
        const MObject node = nodeNamed(name);
        std::string error;
        const MObject attribute = makeAttribute(tokens, node, error);
        if (attribute.isNull())
            throw ScriptError("addAttr: " + error);
        MFnDependencyNode(node).addAttribute(attribute);
        recordStep(
            "addAttr", [node, attribute] { MFnDependencyNode(node).removeAttribute(attribute); },
            [node, attribute] { MFnDependencyNode(node).addAttribute(attribute); });
    }
    return Value();
}

Value deleteAttr(const CommandCall& call) {
    static const Flags flags = Flags().flag("-at", "-attribute", {ArgKind::String}).objects(1, 1);
    const ParsedFlags parsed = flags.parse(call);
    std::string name = parsed.object();
    if (parsed.isSet("-attribute"))
        name += "." + parsed.getString("-attribute");
    const MPlug plug = plugNamed(name);
    if (!plug.isDynamic())
        throw ScriptError("Cannot delete static attribute '" + name + "'.");
    const auto modifier = std::make_shared<MDagModifier>();
    modifier->removeAttribute(plug.node(), plug.attribute());
    doAndRecord("deleteAttr", modifier, "Could not delete attribute '" + name + "'.");
    return Value();
}

Value attributeExists(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-ex", "-exists")
                                   .flag("-n", "-node", {ArgKind::String})
                                   .flag("-typ", "-type", {ArgKind::String})
                                   .query()
                                   .objects(1, 1);
    const ParsedFlags parsed = flags.parse(call);
    if (!parsed.isSet("-exists"))
        throw ScriptError("attributeQuery: only -exists is supported here.");
    return !findPlugs(nodeNamed(parsed.getString("-node")), parsed.object()).empty();
}

Value connectAttr(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-f", "-force")
                                   .flag("-na", "-nextAvailable")
                                   .flag("-l", "-lock", {ArgKind::Boolean})
                                   .objects(2, 2);
    const ParsedFlags parsed = flags.parse(call);
    const Strings names = parsed.objectNames();
    const MPlug source = plugNamed(names[0]);
    MPlug destination = plugNamed(names[1]);
    if (parsed.isSet("-nextAvailable") && destination.isArray()) {
        unsigned index = 0;
        while (destination.elementByLogicalIndex(index).isDestination())
            ++index;
        destination = destination.elementByLogicalIndex(index);
    }
    const auto modifier = std::make_shared<MDagModifier>();
    if (destination.isDestination()) {
        if (destination.source() == source)
            return Value();
        if (!parsed.isSet("-force"))
            throw ScriptError("'" + names[1] + "' already has an incoming connection from '" +
                              plugName(destination.source()) + "'.");
        modifier->disconnect(destination.source(), destination);
    }
    if (destination.isLocked())
        throw ScriptError("Destination attribute is locked: " + names[1]);
    const std::string failure =
        "The attribute '" + names[0] + "' cannot be connected to '" + names[1] + "'.";
    if (!modifier->connect(source, destination))
        throw ScriptError(failure);
    doAndRecord("connectAttr", modifier, failure);
    return "Connected " + plugName(source) + " to " + plugName(destination) + ".";
}

Value disconnectAttr(const CommandCall& call) {
    static const Flags flags = Flags().flag("-na", "-nextAvailable").objects(2, 2);
    const Strings names = flags.parse(call).objectNames();
    const MPlug source = plugNamed(names[0]);
    const MPlug destination = plugNamed(names[1]);
    if (!destination.isDestination() || destination.source() != source)
        throw ScriptError("There is no connection from '" + names[0] + "' to '" + names[1] +
                          "' to disconnect.");
    const auto modifier = std::make_shared<MDagModifier>();
    modifier->disconnect(source, destination);
    doAndRecord("disconnectAttr", modifier, "Could not disconnect " + names[1]);
    return Value();
}

Value lockNode(const CommandCall& call) {
    static const Flags flags =
        Flags().flag("-l", "-lock", {ArgKind::Boolean}).query().objects(0, -1);
    const ParsedFlags parsed = flags.parse(call);
    script::Ints states;
    for (const std::string& name : namesOrSelection(parsed)) {
        const MObject node = nodeNamed(name);
        const bool before = MFnDependencyNode(node).isLocked();
        states.push_back(before ? 1 : 0);
        if (parsed.isQuery())
            continue;
        const bool after = parsed.getBool("-lock", true);
        MFnDependencyNode(node).setLocked(after);
        recordStep(
            "lockNode", [=] { MFnDependencyNode(node).setLocked(before); },
            [=] { MFnDependencyNode(node).setLocked(after); });
    }
    return parsed.isQuery() ? Value(states) : Value();
}

} // namespace

void registerAttributeCommands() {
    script::registerCommand("setAttr", setAttr);
    script::registerCommand("getAttr", getAttr);
    script::registerCommand("addAttr", addAttr);
    script::registerCommand("deleteAttr", deleteAttr);
    script::registerCommand("attributeQuery", attributeExists);
    script::registerCommand("connectAttr", connectAttr);
    script::registerCommand("disconnectAttr", disconnectAttr);
    script::registerCommand("lockNode", lockNode);
}

} // namespace host
