#include "plugin/session/Cameras.h"

#include "node/NodeSearch.h"

#include <maya/M3dView.h>
#include <maya/MDagPath.h>
#include <maya/MItDependencyNodes.h>

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

} // namespace vellum
