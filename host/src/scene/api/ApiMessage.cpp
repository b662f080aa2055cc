// MMessage, its kinds, and MAnimControl.
#include "foundation/Events.h"
#include "foundation/Faults.h"
#include "scene/api/ApiStatus.h"
#include "scene/core/Membership.h"
#include "scene/core/Scene.h"
#include "scene/core/TimeState.h"

#include <maya/MAnimControl.h>
#include <maya/MDGMessage.h>
#include <maya/MEventMessage.h>
#include <maya/MNodeMessage.h>
#include <maya/MObject.h>
#include <maya/MSceneMessage.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <functional>
#include <map>
#include <memory>
#include <utility>

using host::setStatus;
namespace timeline = host::timeline;

namespace {

/// How each callback is taken away again.
std::map<MCallbackId, std::function<void()>>& installed() {
    static std::map<MCallbackId, std::function<void()>> all;
    return all;
}

MCallbackId running = 0;

MCallbackId nextId() {
    static MCallbackId last = 0;
    return ++last;
}

template <class Call> void runAs(MCallbackId id, Call call) {
    const MCallbackId before = std::exchange(running, id);
    call();
    running = before;
}

bool isCheck(MSceneMessage::Message message) {
    switch (message) {
    case MSceneMessage::kBeforeNewCheck:
    case MSceneMessage::kBeforeOpenCheck:
    case MSceneMessage::kBeforeSaveCheck:
    case MSceneMessage::kBeforeImportCheck:
    case MSceneMessage::kBeforeExportCheck:
    case MSceneMessage::kBeforeLoadReferenceCheck:
    case MSceneMessage::kBeforeReferenceCheck:
        return true;
    default:
        return false;
    }
}

MCallbackId addMembershipCallback(host::membership::Change wanted, MMessage::MNodeFunction func,
                                  const MString& nodeType, void* clientData, MStatus* status) {
    const std::string type = nodeType.asChar();
    const bool all = type == kDefaultNodeType;
    if (!func || !(all || host::typeRegistry().node(type))) {
        setStatus(status, MS::kInvalidParameter);
        return 0;
    }
    const MCallbackId id = nextId();
    const int listener =
        host::membership::listen([=](const host::NodePtr& node, host::membership::Change change) {
            if (change != wanted || !(all || host::typeRegistry().inherits(node->typeName(), type)))
                return;
            MObject object = host::Access::make(node);
            runAs(id, [&] { func(object, clientData); });
        });
    installed().emplace(id, [listener] { host::membership::removeListener(listener); });
    setStatus(status, MS::kSuccess);
    return id;
}

} // namespace

MStatus MMessage::removeCallback(MCallbackId id) {
    const auto found = installed().find(id);
    if (found == installed().end())
        return MS::kFailure;
    const auto remove = std::move(found->second);
    installed().erase(found);
    remove();
    return MS::kSuccess;
}
MStatus MMessage::removeCallbacks(const MCallbackIdArray& ids) {
    if (host::faults::due("removeCallbacks"))
        return MS::kFailure;
    MStatus status = MS::kSuccess;
    for (unsigned int i = 0; i < ids.length(); ++i) {
        if (!removeCallback(ids[i]))
            status = MS::kFailure;
    }
    return status;
}
MCallbackId MMessage::currentCallbackId(MStatus* status) {
    setStatus(status, running != 0);
    return running;
}

MCallbackId MEventMessage::addEventCallback(const MString& event, MBasicFunction func,
                                            void* clientData, MStatus* status) {
    if (!func || !host::events::isKnown(event.asChar())) {
        setStatus(status, MS::kFailure);
        return 0;
    }
    const MCallbackId id = nextId();
    const int listener = host::events::listen(std::string(event.asChar()), [func, clientData, id] {
        runAs(id, [&] { func(clientData); });
    });
    installed().emplace(id, [listener] { host::events::removeListener(listener); });
    setStatus(status, MS::kSuccess);
    return id;
}

MCallbackId MSceneMessage::addCallback(Message message, MBasicFunction func, void* clientData,
                                       MStatus* status) {
    if (!setStatus(status, func && message < kLast && !isCheck(message)))
        return 0;
    const MCallbackId id = nextId();
    const int listener = host::messages::listen(
        message, [func, clientData, id] { runAs(id, [&] { func(clientData); }); });
    installed().emplace(id, [listener] { host::events::removeListener(listener); });
    return id;
}
MCallbackId MSceneMessage::addCheckCallback(Message message, MCheckFunction func, void* clientData,
                                            MStatus* status) {
    if (!setStatus(status, func && isCheck(message)))
        return 0;
    const MCallbackId id = nextId();
    const int listener = host::messages::listenCheck(message, [func, clientData, id] {
        bool allowed = true;
        runAs(id, [&] { func(&allowed, clientData); });
        return allowed;
    });
    installed().emplace(id, [listener] { host::events::removeListener(listener); });
    return id;
}

MCallbackId MNodeMessage::addNameChangedCallback(MObject& node, MNodeStringFunction func,
                                                 void* clientData, MStatus* status) {
    const host::NodePtr only = host::Access::as<host::Node>(node);
    if (!func || (!node.isNull() && !only)) {
        setStatus(status, MS::kInvalidParameter);
        return 0;
    }
    const MCallbackId id = nextId();
    const std::weak_ptr<host::Node> watched = only;
    const bool all = !only;
    const int listener =
        host::renames::listen([=](const host::NodePtr& renamed, const std::string& before) {
            if (!all && watched.lock() != renamed)
                return;
            MObject object = host::Access::make(renamed);
            runAs(id, [&] { func(object, before.c_str(), clientData); });
        });
    installed().emplace(id, [listener] { host::renames::removeListener(listener); });
    setStatus(status, MS::kSuccess);
    return id;
}

MCallbackId MDGMessage::addNodeAddedCallback(MNodeFunction func, const MString& nodeType,
                                             void* clientData, MStatus* status) {
    return addMembershipCallback(host::membership::Change::Joined, func, nodeType, clientData,
                                 status);
}
MCallbackId MDGMessage::addNodeRemovedCallback(MNodeFunction func, const MString& nodeType,
                                               void* clientData, MStatus* status) {
    return addMembershipCallback(host::membership::Change::Left, func, nodeType, clientData,
                                 status);
}

MCallbackId MSceneMessage::addNamespaceRenamedCallback(MTwoStringFunction func, void*,
                                                       MStatus* status) {
    if (!setStatus(status, func != nullptr))
        return 0;
    const MCallbackId id = nextId();
    installed().emplace(id, [] {}); // no namespace is ever renamed here
    return id;
}

MStatus MEventMessage::getEventNames(MStringArray& names) {
    names.clear();
    for (const std::string& name : host::events::names())
        names.append(name.c_str());
    return MS::kSuccess;
}

MAnimControl::MAnimControl() = default;
MAnimControl::~MAnimControl() = default;

namespace {

MTime inUi(const MTime& time) {
    return {time.as(MTime::uiUnit()), MTime::uiUnit()};
}

MStatus change(MTime timeline::Range::*member, const MTime& value) {
    timeline::Range range = timeline::range();
    range.*member = value;
    timeline::setRange(range);
    return MS::kSuccess;
}

// The playback range stays within the animation range.
MStatus changeOuter(const MTime& start, const MTime& end) {
    timeline::Range range = timeline::range();
    range.animationStart = start;
    range.animationEnd = end < start ? start : end;
    const auto within = [&range](const MTime& time) {
        return time < range.animationStart ? range.animationStart
               : time > range.animationEnd ? range.animationEnd
                                           : time;
    };
    range.start = within(range.start);
    range.end = within(range.end);
    timeline::setRange(range);
    return MS::kSuccess;
}

} // namespace

MTime MAnimControl::currentTime() {
    return timeline::current();
}
MStatus MAnimControl::setCurrentTime(const MTime& time) {
    timeline::setCurrent(time);
    return MS::kSuccess;
}
MTime MAnimControl::animationStartTime() {
    return inUi(timeline::range().animationStart);
}
MTime MAnimControl::animationEndTime() {
    return inUi(timeline::range().animationEnd);
}
MTime MAnimControl::minTime() {
    return inUi(timeline::range().start);
}
MTime MAnimControl::maxTime() {
    return inUi(timeline::range().end);
}
MStatus MAnimControl::setAnimationStartTime(MTime time) {
    return changeOuter(time, timeline::range().animationEnd);
}
MStatus MAnimControl::setAnimationEndTime(MTime time) {
    const MTime start = timeline::range().animationStart;
    return changeOuter(time < start ? time : start, time);
}
MStatus MAnimControl::setAnimationStartEndTime(MTime start, MTime end) {
    return changeOuter(start, end);
}
MStatus MAnimControl::setMinTime(MTime time) {
    return change(&timeline::Range::start, time);
}
MStatus MAnimControl::setMaxTime(MTime time) {
    return change(&timeline::Range::end, time);
}
MStatus MAnimControl::setMinMaxTime(MTime min, MTime max) {
    timeline::Range range = timeline::range();
    range.start = min;
    range.end = max;
    timeline::setRange(range);
    return MS::kSuccess;
}
bool MAnimControl::isPlaying() {
    return timeline::isPlaying();
}
bool MAnimControl::isScrubbing() {
    return timeline::isScrubbing();
}
MStatus MAnimControl::playForward() {
    timeline::play(1);
    return MS::kSuccess;
}
MStatus MAnimControl::playBackward() {
    timeline::play(-1);
    return MS::kSuccess;
}
MStatus MAnimControl::stop() {
    timeline::play(0);
    return MS::kSuccess;
}
