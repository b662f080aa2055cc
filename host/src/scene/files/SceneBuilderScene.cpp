#include "foundation/Report.h"
#include "scene/core/TimeState.h"
#include "scene/files/BuilderState.h"
#include "scene/text/CurveText.h"
#include "scene/text/PlugText.h"
#include "scene/text/StatementText.h"
#include "scene/text/Words.h"

#include <maya/MDGModifier.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>

// The builder's part for statements that concern several nodes, or none, and for the file's end.
namespace host {

namespace {

bool isNextAvailable(const Token& flag) {
    return !flag.quoted && (flag.text == "-na" || flag.text == "-nextAvailable");
}

} // namespace

void SceneBuilder::connect(const std::string& source, const std::string& destination,
                           std::vector<Token> flags) {
    state_->reach(StatementPlace::Connections);
    const auto split = [this](const std::string& path, MObject& node, std::string& plug) {
        const std::size_t dot = path.find('.', path.rfind('|') + 1);
        if (dot == std::string::npos)
            return false;
        node = state_->resolve(path.substr(0, dot));
        plug = path.substr(dot);
        return !node.isNull();
    };
    MObject from, to;
    std::string fromPlug, toPlug;
    if (!split(source, from, fromPlug) || !split(destination, to, toPlug)) {
        warningOnce("connect", "Connections of nodes that are not there, such as " + source +
                                   " to " + destination + ", are kept as they stand in the file");
        std::vector<Token> tokens = {word("connectAttr"), quoted(source), quoted(destination)};
        tokens.insert(tokens.end(), flags.begin(), flags.end());
        keepStatement(statementText(tokens));
        return;
    }
    const std::vector<MPlug> sources = findPlugs(from, fromPlug);
    const std::vector<MPlug> destinations = findPlugs(to, toPlug);
    // Which element is the next one depends on those that are kept.
    const bool anyElement = std::any_of(flags.begin(), flags.end(), isNextAvailable);
    if (sources.size() == 1 && destinations.size() == 1 && !anyElement) {
        if (destinations.front().source() == sources.front())
            return;
        MDGModifier modifier;
        if (modifier.connect(sources.front(), destinations.front()) && modifier.doIt())
            return;
        error("Could not connect " + source + " to " + destination);
    }
    keptStatements().connect(
        {MObjectHandle(from), fromPlug, MObjectHandle(to), toPlug, std::move(flags)});
}

void SceneBuilder::rename(const std::string& newName) {
    if (!state_->current.isNull())
        MFnDependencyNode(state_->current).setName(newName.c_str());
}

void SceneBuilder::parent(const std::vector<std::string>& names) {
    if (names.size() < 2)
        return;
    const MObject parent = state_->resolve(names.back());
    for (std::size_t i = 0; i + 1 < names.size(); ++i) {
        MObject child = state_->resolve(names[i]);
        if (parent.isNull() || child.isNull() || !parent.hasFn(MFn::kDagNode) ||
            !child.hasFn(MFn::kDagNode) || !MFnDagNode(parent).addChild(child))
            error("Could not parent " + names[i] + " to " + names.back());
    }
}

void SceneBuilder::uuid(std::string statement) {
    if (state_->inSettings)
        state_->memory.settingsUuid = std::move(statement);
    else if (state_->orphaned)
        keepStatement("\t" + statement);
    else if (!state_->current.isNull() && state_->uuids.count(statement) == 0)
        keptStatements().of(state_->current).uuid = std::move(statement);
}

void SceneBuilder::lockNode(std::string statement, bool locked) {
    if (state_->orphaned)
        keepStatement(std::move(statement));
    if (state_->current.isNull())
        return;
    keptStatements().of(state_->current).lock = std::move(statement);
    if (locked)
        state_->locked.emplace_back(state_->current);
}

void SceneBuilder::keepStatement(std::string text) {
    keptStatements().add({std::move(text), state_->where, state_->lastMade});
}

void SceneBuilder::keepUnknown(std::string text) {
    keepStatement(std::move(text));
    loseNode();
    state_->orphaned = true;
}

// Statements about a node that is only text are text as well.
bool SceneBuilder::keepOrphan(const std::vector<Token>& statement) {
    if (!state_->orphaned)
        return false;
    keepStatement(statementText(statement));
    return true;
}

// The time unit and the playback range hold for the whole scene.
void SceneBuilder::applySettings() {
    State& state = *state_;
    const auto frame = [](double value) { return MTime(value, MTime::uiUnit()); };
    timeline::Range range = timeline::range();
    const std::pair<const char*, MTime*> ends[] = {{"-ast", &range.animationStart},
                                                   {"-aet", &range.animationEnd},
                                                   {"-min", &range.start},
                                                   {"-max", &range.end}};
    for (const auto& [flag, end] : ends)
        if (state.playback.count(flag) > 0)
            *end = frame(state.playback[flag]);
    timeline::setRange(range);
    if (state.currentFrame)
        timeline::setCurrent(frame(*state.currentFrame));
}

ReadResult SceneBuilder::finish() {
    State& state = *state_;
    if (state.shown > kMostMessages)
        report::warning(state.place.file + ": " + std::to_string(state.shown - kMostMessages) +
                        " further messages not shown");
    for (KeptNode* kept : keptStatements().all())
        if (!kept->tangents.empty() && kept->keys.empty())
            kept->keys = keysText(kept->node.object());
    for (const MObjectHandle& node : state.locked)
        if (node.isValid())
            MFnDependencyNode(node.object()).setLocked(true);
    if (state.sceneUnits) {
        const Units units = *state.sceneUnits;
        this->units(units);
    }
    if (!state.importing)
        applySettings();
    return state.result;
}

} // namespace host
