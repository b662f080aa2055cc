// MMessage, MEventMessage, MSceneMessage and MAnimControl.
#include "foundation/Events.h"
#include "foundation/Faults.h"
#include "scene/api/ApiStatus.h"
#include "scene/core/TimeState.h"

#include <maya/MAnimControl.h>
#include <maya/MEventMessage.h>
#include <maya/MSceneMessage.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <memory>
#include <set>

using host::setStatus;
namespace timeline = host::timeline;

namespace {

std::set<int>& installed() {
    static std::set<int> ids;
    return ids;
}

int running = 0;

// Calls a callback of a plug-in, whose id is known only after it is installed.
class Call {
public:
    explicit Call(const std::shared_ptr<int>& id) : before_(running) { running = *id; }
    ~Call() { running = before_; }
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

private:
    const int before_;
};

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

MCallbackId install(int id, MStatus* status) {
    installed().insert(id);
    setStatus(status, MS::kSuccess);
    return static_cast<MCallbackId>(id);
}

} // namespace

MStatus MMessage::removeCallback(MCallbackId id) {
    const int number = static_cast<int>(id);
    if (installed().erase(number) == 0)
        return MS::kFailure;
    host::events::removeListener(number);
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
    return static_cast<MCallbackId>(running);
}

MCallbackId MEventMessage::addEventCallback(const MString& event, MBasicFunction func,
                                            void* clientData, MStatus* status) {
    if (!func || !host::events::isKnown(event.asChar())) {
        setStatus(status, MS::kFailure);
        return 0;
    }
    const auto id = std::make_shared<int>(0);
    *id = host::events::listen(std::string(event.asChar()), [func, clientData, id] {
        const Call call(id);
        func(clientData);
    });
    return install(*id, status);
}

MCallbackId MSceneMessage::addCallback(Message message, MBasicFunction func, void* clientData,
                                       MStatus* status) {
    if (!setStatus(status, func && message < kLast && !isCheck(message)))
        return 0;
    const auto id = std::make_shared<int>(0);
    *id = host::messages::listen(message, [func, clientData, id] {
        const Call call(id);
        func(clientData);
    });
    return install(*id, status);
}
MCallbackId MSceneMessage::addCheckCallback(Message message, MCheckFunction func, void* clientData,
                                            MStatus* status) {
    if (!setStatus(status, func && isCheck(message)))
        return 0;
    const auto id = std::make_shared<int>(0);
    *id = host::messages::listenCheck(message, [func, clientData, id] {
        const Call call(id);
        bool allowed = true;
        func(&allowed, clientData);
        return allowed;
    });
    return install(*id, status);
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
