#include "commands/SceneCommandSupport.h"
#include "commands/SceneCommands.h"
#include "scene/core/TimeState.h"
#include "scene/text/CurveText.h"
#include "scene/text/PlugText.h"
#include "scene/text/Words.h"

#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MTime.h>

#include <algorithm>
#include <iterator>

namespace host {

using script::ArgKind;
using script::CommandCall;
using script::Flags;
using script::ParsedFlags;
using script::ScriptError;
using script::Strings;
using script::Value;

namespace {

MTime atFrame(double frame) {
    return MTime(frame, MTime::uiUnit());
}

double frameOf(const MTime& time) {
    return time.as(MTime::uiUnit());
}

Value currentTime(const CommandCall& call) {
    static const Flags flags =
        Flags().flag("-u", "-update", {ArgKind::Boolean}).query().edit().objects(0, 1);
    const ParsedFlags parsed = flags.parse(call);
    if (parsed.isQuery() || parsed.objects().empty())
        return frameOf(timeline::current());
    // Not undoable, as the command's reference page says.
    timeline::setCurrent(atFrame(parsed.objects().front().toFloat()));
    return frameOf(timeline::current());
}

using timeline::PlaybackOptions;

constexpr const char* kLoopNames[] = {"once", "continuous", "oscillate"}; // as in the enumeration

Value queryPlayback(const ParsedFlags& parsed) {
    const timeline::Range range = timeline::range();
    const PlaybackOptions options = timeline::playbackOptions();
    if (parsed.isSet("-minTime"))
        return frameOf(range.start);
    if (parsed.isSet("-maxTime"))
        return frameOf(range.end);
    if (parsed.isSet("-animationStartTime"))
        return frameOf(range.animationStart);
    if (parsed.isSet("-animationEndTime"))
        return frameOf(range.animationEnd);
    if (parsed.isSet("-loop"))
        return kLoopNames[static_cast<int>(options.loop)];
    if (parsed.isSet("-playbackSpeed"))
        return options.speed;
    if (parsed.isSet("-maxPlaybackSpeed"))
        return options.maxSpeed;
    if (parsed.isSet("-by"))
        return options.by;
    if (parsed.isSet("-view"))
        return options.allViews ? "all" : "active";
    throw ScriptError("No query flag of 'playbackOptions' was specified.");
}

double notNegative(const ParsedFlags& parsed, const char* flag) {
    const double value = parsed.getFloat(flag);
    if (!(value >= 0))
        throw ScriptError("Invalid value for flag '" + std::string(flag) + "'.");
    return value;
}

/// Nothing is changed when one of the values is refused.
PlaybackOptions editedOptions(const ParsedFlags& parsed) {
    PlaybackOptions options = timeline::playbackOptions();
    if (parsed.isSet("-loop")) {
        const auto* const end = std::end(kLoopNames);
        const auto* const found = std::find(std::begin(kLoopNames), end, parsed.getString("-loop"));
        if (found == end)
            throw ScriptError("Invalid value for flag '-loop'.");
        options.loop = static_cast<PlaybackOptions::Loop>(found - kLoopNames);
    }
    if (parsed.isSet("-playbackSpeed"))
        options.speed = notNegative(parsed, "-playbackSpeed");
    if (parsed.isSet("-maxPlaybackSpeed"))
        options.maxSpeed = notNegative(parsed, "-maxPlaybackSpeed");
    if (parsed.isSet("-by") && notNegative(parsed, "-by") > 0)
        options.by = parsed.getFloat("-by");
    if (parsed.isSet("-view")) {
        const std::string view = parsed.getString("-view");
        if (view != "all" && view != "active")
            throw ScriptError("Invalid value for flag '-view'.");
        options.allViews = view == "all";
    }
    return options;
}

Value playbackOptions(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-min", "-minTime", {ArgKind::Time})
                                   .flag("-max", "-maxTime", {ArgKind::Time})
                                   .flag("-ast", "-animationStartTime", {ArgKind::Time})
                                   .flag("-aet", "-animationEndTime", {ArgKind::Time})
                                   .flag("-l", "-loop", {ArgKind::String})
                                   .flag("-ps", "-playbackSpeed", {ArgKind::Float})
                                   .flag("-mps", "-maxPlaybackSpeed", {ArgKind::Float})
                                   .flag("-by", "-by", {ArgKind::Float})
                                   .flag("-v", "-view", {ArgKind::String})
                                   .query()
                                   .edit();
    const ParsedFlags parsed = flags.parse(call);
    if (parsed.isQuery())
        return queryPlayback(parsed);
    const timeline::Range before = timeline::range();
    timeline::Range range = before;
    const PlaybackOptions options = editedOptions(parsed);
    // An outer end given alone never cuts the playback range short of it silently: the inner end
    // follows, as the real command does.
    if (parsed.isSet("-animationStartTime"))
        range.animationStart = atFrame(parsed.getFloat("-animationStartTime"));
    if (parsed.isSet("-animationEndTime"))
        range.animationEnd = atFrame(parsed.getFloat("-animationEndTime"));
    if (parsed.isSet("-minTime"))
        range.start = atFrame(parsed.getFloat("-minTime"));
    else if (range.start < range.animationStart)
        range.start = range.animationStart;
    if (parsed.isSet("-maxTime"))
        range.end = atFrame(parsed.getFloat("-maxTime"));
    else if (range.end > range.animationEnd)
        range.end = range.animationEnd;
    timeline::setPlaybackOptions(options);
    bool rangeGiven = false;
    for (const char* flag : {"-minTime", "-maxTime", "-animationStartTime", "-animationEndTime"})
        rangeGiven = rangeGiven || parsed.isSet(flag);
    if (!rangeGiven)
        return Value();
    timeline::setRange(range);
    // The range is the user's view of the scene, as the current time is: nothing to save.
    undoQueue().record(makeStep(
        "playbackOptions", [before] { timeline::setRange(before); },
        [range] { timeline::setRange(range); }));
    return Value();
}

MFnAnimCurve::TangentType tangentNamed(const std::string& name) {
    static const std::vector<std::pair<const char*, MFnAnimCurve::TangentType>> names = {
        {"auto", MFnAnimCurve::kTangentAuto},         {"linear", MFnAnimCurve::kTangentLinear},
        {"flat", MFnAnimCurve::kTangentFlat},         {"step", MFnAnimCurve::kTangentStep},
        {"stepnext", MFnAnimCurve::kTangentStepNext}, {"spline", MFnAnimCurve::kTangentSmooth},
        {"clamped", MFnAnimCurve::kTangentClamped},   {"plateau", MFnAnimCurve::kTangentPlateau},
        {"fixed", MFnAnimCurve::kTangentFixed},       {"global", MFnAnimCurve::kTangentGlobal},
    };
    for (const auto& [each, type] : names)
        if (name == each)
            return type;
    throw ScriptError("Invalid tangent type: " + name);
}

// Values of a curve are held in centimetres and radians whatever the interface shows.
double internalValue(const MPlug& plug, double value) {
    switch (plugKind(plug)) {
    case PlugKind::Angle:
        return MAngle(value, MAngle::uiUnit()).asRadians();
    case PlugKind::Linear:
        return MDistance(value, MDistance::uiUnit()).asCentimeters();
    default:
        return value;
    }
}

bool canBeKeyed(const MPlug& plug) {
    switch (plugKind(plug)) {
    case PlugKind::Real:
    case PlugKind::Linear:
    case PlugKind::Angle:
    case PlugKind::Integer:
    case PlugKind::Boolean:
        return !plug.isArray();
    default:
        return false;
    }
}

void addLeaves(const MPlug& plug, std::vector<MPlug>& leaves) {
    if (plug.isCompound() && !plug.isArray()) {
        for (unsigned i = 0; i < plug.numChildren(); ++i)
            addLeaves(plug.child(i), leaves);
    } else if (canBeKeyed(plug)) {
        leaves.push_back(plug);
    }
}

void addKeyable(const MObject& node, std::vector<MPlug>& leaves) {
    const MFnDependencyNode function(node);
    for (unsigned i = 0; i < function.attributeCount(); ++i) {
        const MPlug plug = function.findPlug(function.attribute(i), false);
        if (!plug.isNull() && !plug.isCompound() && plug.isKeyable() && !plug.isLocked() &&
            canBeKeyed(plug))
            leaves.push_back(plug);
    }
}

// The plugs that the names and -attribute flags of a call mean.
std::vector<MPlug> keyedPlugs(const ParsedFlags& parsed) {
    std::vector<MPlug> leaves;
    const Strings attributes = parsed.allStrings("-attribute");
    for (const std::string& name : namesOrSelection(parsed)) {
        if (name.find('.', name.rfind('|') + 1) != std::string::npos) {
            addLeaves(plugNamed(name), leaves);
            continue;
        }
        const MObject node = nodeNamed(name);
        if (attributes.empty())
            addKeyable(node, leaves);
        for (const std::string& attribute : attributes) {
            std::vector<MPlug> found = findPlugs(node, attribute);
            // An attribute of the shape may be named on its transform.
            if (found.empty() && node.hasFn(MFn::kTransform) && MFnDagNode(node).childCount() > 0)
                found = findPlugs(MFnDagNode(node).child(0), attribute);
            if (found.empty())
                throw ScriptError("No object matches name: " + name + "." + attribute);
            for (const MPlug& plug : found)
                addLeaves(plug, leaves);
        }
    }
    return leaves;
}

MObject curveOf(const MPlug& plug) {
    const MObject source = plug.isDestination() ? plug.source().node() : MObject();
    return !source.isNull() && isCurve(source) ? source : MObject();
}

void restoreCurve(const MObject& curve, const std::vector<AttrRecord>& keys) {
    MFnAnimCurve function(curve);
    while (function.numKeys() > 0)
        function.remove(function.numKeys() - 1);
    std::string ignored;
    for (const AttrRecord& record : keys)
        textToCurve(curve, record, ignored);
}

struct Tangents {
    MFnAnimCurve::TangentType in, out;
};

void setKey(MPlug plug, const ParsedFlags& parsed, const Tangents& tangents, double frame) {
    MObject curve = curveOf(plug);
    if (curve.isNull() && plug.isDestination())
        return; // driven by something else
    const double value =
        parsed.isSet("-value") ? internalValue(plug, parsed.getFloat("-value")) : plug.asDouble();
    const bool fresh = curve.isNull();
    const double unkeyed = plug.asDouble();
    std::vector<AttrRecord> before;
    if (fresh) {
        MFnAnimCurve function;
        curve = function.create(plug);
        if (curve.isNull())
            throw ScriptError("Could not key " + nameOf(plug.node()));
    } else {
        before = curveToText(curve);
    }
    MFnAnimCurve function(curve);
    function.addKey(atFrame(frame), value, tangents.in, tangents.out);
    if (fresh) {
        // A plug whose curve goes keeps the curve's last value; undone last, this one takes it
        // back.
        recordStep(
            "setKeyframe", [plug, unkeyed]() mutable { plug.setDouble(unkeyed); }, [] {});
        recordCreation("setKeyframe", {curve});
        return;
    }
    const std::vector<AttrRecord> after = curveToText(curve);
    recordStep(
        "setKeyframe", [=] { restoreCurve(curve, before); }, [=] { restoreCurve(curve, after); });
}

Flags keyFlags() {
    return Flags()
        .flag("-at", "-attribute", {ArgKind::String})
        .multiUse("-at")
        .flag("-t", "-time", {ArgKind::Time})
        .multiUse("-t")
        .flag("-v", "-value", {ArgKind::Float})
        .flag("-itt", "-inTangentType", {ArgKind::String})
        .flag("-ott", "-outTangentType", {ArgKind::String})
        .flag("-bd", "-breakdown", {ArgKind::Boolean})
        .query()
        .edit()
        .objects(0, -1);
}

std::vector<double> framesOf(const ParsedFlags& parsed) {
    std::vector<double> frames;
    for (int use = 0; use < parsed.uses("-time"); ++use)
        frames.push_back(parsed.getFloat("-time", 0, 0, use));
    return frames;
}

Value setKeyframe(const CommandCall& call) {
    static const Flags flags = keyFlags();
    const ParsedFlags parsed = flags.parse(call);
    std::vector<double> frames = framesOf(parsed);
    if (frames.empty())
        frames.push_back(frameOf(timeline::current()));
    const Tangents tangents = {tangentNamed(parsed.getString("-inTangentType", "auto")),
                               tangentNamed(parsed.getString("-outTangentType", "auto"))};
    int count = 0;
    for (const MPlug& plug : keyedPlugs(parsed)) {
        for (const double frame : frames) {
            setKey(plug, parsed, tangents, frame);
            ++count;
        }
    }
    return count;
}

Value keyTangent(const CommandCall& call) {
    static const Flags flags = keyFlags();
    const ParsedFlags parsed = flags.parse(call);
    const std::vector<double> frames = framesOf(parsed);
    const Tangents tangents = {tangentNamed(parsed.getString("-inTangentType", "auto")),
                               tangentNamed(parsed.getString("-outTangentType", "auto"))};
    for (const MPlug& plug : keyedPlugs(parsed)) {
        const MObject curve = curveOf(plug);
        if (curve.isNull())
            continue;
        const std::vector<AttrRecord> before = curveToText(curve);
        MFnAnimCurve function(curve);
        for (unsigned i = 0; i < function.numKeys(); ++i) {
            const double at = frameOf(function.time(i));
            bool meant = frames.empty();
            for (const double frame : frames)
                meant = meant || frame == at;
            if (meant && parsed.isSet("-inTangentType"))
                function.setInTangentType(i, tangents.in);
            if (meant && parsed.isSet("-outTangentType"))
                function.setOutTangentType(i, tangents.out);
        }
        const std::vector<AttrRecord> after = curveToText(curve);
        recordStep(
            "keyTangent", [=] { restoreCurve(curve, before); },
            [=] { restoreCurve(curve, after); });
    }
    return Value();
}

Value keyframe(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-at", "-attribute", {ArgKind::String})
                                   .multiUse("-at")
                                   .queryWithArguments("-at")
                                   .flag("-kc", "-keyframeCount")
                                   .flag("-tc", "-timeChange")
                                   .flag("-vc", "-valueChange")
                                   .query()
                                   .objects(0, -1);
    const ParsedFlags parsed = flags.parse(call);
    if (!parsed.isQuery())
        throw ScriptError("keyframe: only queries are supported here.");
    int count = 0;
    script::Floats numbers;
    for (const MPlug& plug : keyedPlugs(parsed)) {
        const MObject curve = curveOf(plug);
        if (curve.isNull())
            continue;
        const MFnAnimCurve function(curve);
        count += int(function.numKeys());
        for (const AttrRecord& record : curveToText(curve)) {
            if (record.plug.compare(0, 5, ".ktv[") != 0)
                continue;
            for (std::size_t i = parsed.isSet("-valueChange") ? 1 : 0; i < record.values.size();
                 i += 2) {
                double number = 0;
                parseNumber(record.values[i].text, number);
                numbers.push_back(number);
            }
        }
    }
    if (parsed.isSet("-keyframeCount"))
        return count;
    return numbers;
}

} // namespace

void registerTimeCommands() {
    script::registerCommand("currentTime", currentTime);
    script::registerCommand("playbackOptions", playbackOptions);
    script::registerCommand("setKeyframe", setKeyframe);
    script::registerCommand("keyTangent", keyTangent);
    script::registerCommand("keyframe", keyframe);
}

} // namespace host
