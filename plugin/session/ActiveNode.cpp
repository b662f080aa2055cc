#include "plugin/session/ActiveNode.h"

#include "document/IntTime.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Report.h"
#include "plugin/base/Script.h"
#include "plugin/base/Settings.h"
#include "plugin/session/PluginState.h"
#include "plugin/session/Timeline.h"

#include <QWidget>
#include <maya/M3dView.h>
#include <maya/MAnimControl.h>
#include <maya/MGlobal.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MQtUtil.h>
#include <maya/MSelectionList.h>

namespace vellum {

namespace {

template <typename Visitor> void forEachCameraName(Visitor visit) {
    for (MItDependencyNodes it(MFn::kCamera); !it.isDone(); it.next()) {
        MDagPath path;
        if (MDagPath::getAPathTo(it.thisNode(), path) == MS::kSuccess &&
            !visit(cameraNameOfPath(path)))
            return;
    }
}

} // namespace

BaseNode* selectedNode() {
    MSelectionList selection;
    MGlobal::getActiveSelectionList(selection);
    if (selection.length() != 1)
        return nullptr;
    MObject object;
    selection.getDependNode(0, object);
    if (BaseNode* node = BaseNode::fromObject(object))
        return node;
    MDagPath path;
    if (selection.getDagPath(0, path) != MS::kSuccess)
        return nullptr;
    const unsigned count = path.childCount();
    for (unsigned i = 0; i < count; ++i) {
        if (BaseNode* node = BaseNode::fromObject(path.child(i)))
            return node;
    }
    return nullptr;
}

BaseNode* nodeForUndo(const LayerManager* document, const QString& camera) {
    BaseNode* node = nodeWith(document);
    if (!node)
        report::error(QStringLiteral("Node not found"));
    else if (!cameraExists(camera))
        report::error(QStringLiteral("Camera does not exist: %1").arg(camera));
    else
        return node;
    return nullptr;
}

QString currentCamera() {
    MStatus status;
    const M3dView view = M3dView::active3dView(&status);
    MDagPath camera;
    if (status != MS::kSuccess || view.getCamera(camera) != MS::kSuccess)
        return {};
    return cameraNameOfPath(camera);
}

bool cameraExists(const QString& name) {
    bool found = false;
    forEachCameraName([&](const QString& camera) {
        found = camera == name;
        return !found;
    });
    return found;
}

QStringList cameraNames() {
    QStringList names;
    forEachCameraName([&](const QString& camera) {
        names.append(camera);
        return true;
    });
    return names;
}

QWidget* timeControlWidget() {
    QPointer<QWidget>& cache = pluginState().timeControl;
    if (cache)
        return cache;
    const auto name = script::executeString(command::timeSliderName());
    if (!name)
        report::error(QStringLiteral("Failed to get time control name"));
    else if (!name->isEmpty())
        cache = MQtUtil::findControl(toMaya(*name));
    return cache;
}

std::optional<std::pair<double, double>> timeRange() {
    return script::executePair(command::timeRangeArray());
}

bool isTimeRangeVisible() {
    return script::executeInt(command::timeRangeVisible()).value_or(0) != 0;
}

int currentFrame() {
    return currentIntTime();
}

namespace {

void handTimeOn(Changes before) {
    const std::vector<BaseNode*> nodes = allNodes();
    const BaseNode* active = activeAmong(nodes);
    if (before)
        tell(before);
    const int frame = currentFrame();
    for (const BaseNode* node : nodes) {
        // The markers have brought the active layer up to date, where there are any.
        if (const auto document = node->layerManager())
            document->timeChanged(frame, node == active);
    }
    PluginState& state = pluginState();
    if (!nodes.empty() && state.transformContext && !MAnimControl::isPlaying())
        state.transformContext->timeChanged();
}

} // namespace

void propagateCurrentTime() {
    TimelineMarkers* timeline = pluginState().timeline;
    if (timeline)
        timeline->timeChanged();
    handTimeOn(timeline && timeline->areMarkersVisible() ? Change::Time : Changes());
}

void drawingsChanged(Change happened) {
    if (TimelineMarkers* timeline = pluginState().timeline)
        timeline->timeChanged();
    handTimeOn({});
    tell(happened);
}

} // namespace vellum
