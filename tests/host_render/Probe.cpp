#include "host_render/Probe.h"

#define MNoPluginEntry
#define MNoVersionString
#include "scene/api/PluginTypes.h"

#include <QOpenGLFunctions>

#include <maya/MDrawRegistry.h>
#include <maya/MFnDependencyNode.h>

#include <gtest/gtest.h>

namespace render_test {

namespace {
const MTypeId probeId(0x0007f001);
const char* const classification = "drawdb/geometry/renderProbe";

struct ProbeData : MUserData {
    ProbeData() { ++probe().dataAlive; }
    ~ProbeData() override { --probe().dataAlive; }
};

void callback(const MHWRender::MDrawContext&, const MUserData* data) {
    ++probe().callbacks;
    EXPECT_NE(data, nullptr);
}
} // namespace

ProbeState& probe() {
    static ProbeState state;
    return state;
}

bool ProbeNode::drawLast() const {
    // The first node made asks to be drawn last, whatever the order of the scene.
    return probe().last && MFnDependencyNode(thisMObject()).name() == MString("firstShape");
}

void ProbeNode::draw(M3dView& view, const MDagPath&, M3dView::DisplayStyle,
                     M3dView::DisplayStatus) {
    probe().order.push_back(MFnDependencyNode(thisMObject()).name().asChar());
    ASSERT_TRUE(view.beginGL());
    const int width = view.portWidth();
    const int height = view.portHeight();
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glOrtho(0, width, 0, height, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    glDisable(GL_DEPTH_TEST);
    glColor3f(1, 0, 0);
    glRectf(GLfloat(width) / 2 - squareHalf, GLfloat(height) / 2 - squareHalf,
            GLfloat(width) / 2 + squareHalf, GLfloat(height) / 2 + squareHalf);
    glPopMatrix();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    if (probe().unbalanced) {
        glPushAttrib(GL_ENABLE_BIT);
        glPushMatrix();
    }
    EXPECT_TRUE(view.endGL());
}

MHWRender::MPxDrawOverride* ProbeOverride::creator(const MObject& object) {
    return new ProbeOverride(object);
}

ProbeOverride::ProbeOverride(const MObject& object)
    : MPxDrawOverride(object, callback, probe().alwaysDirty) {
    ++probe().created;
}

ProbeOverride::~ProbeOverride() {
    ++probe().destroyed;
}

MUserData* ProbeOverride::prepareForDraw(const MDagPath&, const MDagPath& cameraPath,
                                         const MHWRender::MFrameContext& frameContext,
                                         MUserData* oldData) {
    ++probe().prepared;
    probe().cameras.push_back(cameraPath.partialPathName().asChar());
    probe().oldData.push_back(oldData);
    int x = 0;
    int y = 0;
    frameContext.getViewportDimensions(x, y, probe().width, probe().height);
    return oldData && !probe().freshData ? oldData : new ProbeData;
}

void ProbeOverride::addUIDrawables(const MDagPath&, MHWRender::MUIDrawManager& drawManager,
                                   const MHWRender::MFrameContext&, const MUserData* data) {
    ++probe().drawn;
    EXPECT_NE(data, nullptr);
    drawManager.beginDrawable();
    drawManager.setColor(MColor(1, 0, 0));
    drawManager.rect2d(MPoint(probe().width / 2.0, probe().height / 2.0), MVector(0, 1, 0),
                       squareHalf, squareHalf, true);
    drawManager.endDrawable();
}

ProbePlugin::ProbePlugin() {
    EXPECT_TRUE(host::addNodeType("renderProbe", probeId, ProbeNode::creator, ProbeNode::initialize,
                                  MPxNode::kLocatorNode, classification, "renderProbe"));
    EXPECT_TRUE(MHWRender::MDrawRegistry::registerDrawOverrideCreator(
        classification, "renderProbePlugin", ProbeOverride::creator));
}

ProbePlugin::~ProbePlugin() {
    if (overrideRegistered_)
        deregisterOverride();
    host::removeNodeType("renderProbe");
}

void ProbePlugin::deregisterOverride() {
    EXPECT_TRUE(MHWRender::MDrawRegistry::deregisterDrawOverrideCreator(classification,
                                                                        "renderProbePlugin"));
    overrideRegistered_ = false;
}

} // namespace render_test
