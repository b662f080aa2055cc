#include "render/ScenePainter.h"

#include "foundation/Report.h"
#include "render/CameraFit.h"
#include "render/DrawOverrides.h"
#include "render/GlState.h"
#include "render/PrimitiveMesh.h"

#include <QOpenGLFunctions>

#include <maya/MBoundingBox.h>
#include <maya/MFn.h>
#include <maya/MFnDagNode.h>
#include <maya/MGlobal.h>
#include <maya/MItDag.h>
#include <maya/MPlug.h>
#include <maya/MPxLocatorNode.h>

#include <algorithm>
#include <cmath>

namespace host {

namespace {

bool gradient = true;

constexpr float kSelectedColour[3] = {0.263f, 1.0f, 0.639f};
constexpr float kGridColour[3] = {0.42f, 0.42f, 0.42f};
constexpr float kWireColour[3] = {0.0f, 0.016f, 0.376f};
constexpr int kGridExtent = 12;

bool boolOf(const MObject& node, const char* name) {
    MStatus status;
    const MPlug plug = MFnDependencyNode(node).findPlug(name, true, &status);
    return status && !plug.isNull() && plug.asBool();
}

bool templated(const MDagPath& path) {
    MDagPath at(path);
    for (unsigned int left = at.length(); left > 0; --left, at.pop())
        if (boolOf(at.node(), "template"))
            return true;
    return false;
}

void loadCamera(const Frame& frame) {
    glMatrixMode(GL_PROJECTION);
    loadMatrix(frame.projection);
    glMatrixMode(GL_MODELVIEW);
    loadMatrix(frame.view);
}

void emitQuads(const PrimitiveMesh& mesh) {
    glBegin(GL_QUADS);
    for (const PrimitiveMesh::Vertex& v : mesh.quads) {
        glNormal3d(v.normal.x, v.normal.y, v.normal.z);
        glVertex3d(v.position.x, v.position.y, v.position.z);
    }
    glEnd();
}

/// The box around some faces, along the axes of the object.
PrimitiveMesh boxAround(const PrimitiveMesh& mesh) {
    MBoundingBox bounds;
    for (const PrimitiveMesh::Vertex& vertex : mesh.quads)
        bounds.expand(vertex.position);
    PrimitiveMesh box = boxMesh(bounds.width(), bounds.height(), bounds.depth());
    for (PrimitiveMesh::Vertex& vertex : box.quads)
        vertex.position = vertex.position + MVector(bounds.center());
    return box;
}

} // namespace

bool gradientShown() {
    return gradient;
}
void setGradientShown(bool shown) {
    gradient = shown;
}

ScenePainter::ScenePainter(View& view, std::shared_ptr<const Frame> frame)
    : view_(view), frame_(std::move(frame)) {
    MGlobal::getActiveSelectionList(selection_);
}

DrawList ScenePainter::paint() {
    const GlState state;
    glViewport(0, 0, frame_->width, frame_->height);
    glDisable(GL_SCISSOR_TEST);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDepthMask(GL_TRUE);
    glClearColor(0.36f, 0.36f, 0.36f, 1);
    glClearDepth(1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    // The picture stays opaque whatever is blended into it.
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_FALSE);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    background();
    loadCamera(*frame_);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    if (view_.gridShown())
        grid();
    if (frame_->camera.isValid()) {
        for (MItDag it(MItDag::kDepthFirst); !it.isDone(); it.next()) {
            MDagPath path;
            if (it.getPath(path) && path.length() > 0 && path.apiType() != MFn::kTransform)
                shape(path);
        }
        pluginLocators();
        if (view_.filmGateShown())
            filmGate();
    }
    return std::move(drawables_);
}

void ScenePainter::background() const {
    if (!gradient)
        return;
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glShadeModel(GL_SMOOTH);
    glBegin(GL_QUADS);
    glColor3f(0.052f, 0.052f, 0.052f);
    glVertex2f(-1, -1);
    glVertex2f(1, -1);
    glColor3f(0.535f, 0.617f, 0.702f);
    glVertex2f(1, 1);
    glVertex2f(-1, 1);
    glEnd();
}

void ScenePainter::grid() const {
    // An orthographic view along X or Z looks at the grid of its own plane.
    const MVector forward(frame_->view(0, 2), frame_->view(1, 2), frame_->view(2, 2));
    const bool flat = frame_->projection(3, 3) == 1;
    const int normal = flat && std::abs(forward.x) > 0.9   ? 0
                       : flat && std::abs(forward.z) > 0.9 ? 2
                                                           : 1;
    const auto vertex = [normal](double a, double b) {
        double p[3] = {};
        p[(normal + 1) % 3] = a;
        p[(normal + 2) % 3] = b;
        glVertex3dv(p);
    };
    glDisable(GL_LIGHTING);
    glLineWidth(1);
    glBegin(GL_LINES);
    for (int i = -kGridExtent; i <= kGridExtent; ++i) {
        if (i == 0)
            glColor3f(0, 0, 0);
        else
            glColor3fv(kGridColour);
        vertex(i, -kGridExtent);
        vertex(i, kGridExtent);
        vertex(-kGridExtent, i);
        vertex(kGridExtent, i);
    }
    glEnd();
}

void ScenePainter::filmGate() const {
    CameraLens lens = readLens(frame_->camera);
    const Frustum shown = viewFrustum(lens, double(frame_->width) / frame_->height);
    lens.panZoom = false;
    lens.overscan = 1;
    lens.filmFit = 1;
    const Frustum gate = viewFrustum(lens, lens.apertureWidth * lens.squeeze / lens.apertureHeight);
    const auto x = [&](double at) {
        return (at - shown.left) / (shown.right - shown.left) * 2 - 1;
    };
    const auto y = [&](double at) {
        return (at - shown.bottom) / (shown.top - shown.bottom) * 2 - 1;
    };
    const GlState state;
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glColor3f(0.15f, 0.15f, 0.15f);
    glBegin(GL_LINE_LOOP);
    glVertex2d(x(gate.left), y(gate.bottom));
    glVertex2d(x(gate.right), y(gate.bottom));
    glVertex2d(x(gate.right), y(gate.top));
    glVertex2d(x(gate.left), y(gate.top));
    glEnd();
}

bool ScenePainter::selected(const MDagPath& path) const {
    MDagPath at(path);
    for (unsigned int left = at.length(); left > 0; --left, at.pop())
        if (selection_.hasItem(at))
            return true;
    return false;
}

void ScenePainter::shape(const MDagPath& path) {
    if (!path.isVisible() || boolOf(path.node(), "intermediateObject"))
        return;
    const MFnDagNode node(path);
    auto* locator = dynamic_cast<MPxLocatorNode*>(node.userNode());
    if (locator && !view_.locatorsShown() && locator->excludeAsLocator())
        return;
    if (view_.renderer() == Renderer::Legacy && locator) {
        locators_.push_back({path, locator});
        return;
    }
    if (view_.renderer() == Renderer::Viewport2) {
        const MString classification = MFnDependencyNode::classification(node.typeName());
        if (DrawOverrides::instance().draw(path, classification.asChar(), view_, frame_,
                                           drawables_))
            return;
    }
    if (path.apiType() == MFn::kMesh)
        mesh(path, selected(path));
    else if (path.apiType() == MFn::kLocator && view_.locatorsShown())
        cross(path, selected(path));
}

void ScenePainter::meshFaces(const PrimitiveMesh& faces) const {
    const ViewDisplay& display = view_.display();
    // One light beside the eye, as views have until the scene has lights of its own.
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    const GLfloat position[4] = {0.15f, 0.3f, 1, 0};
    const GLfloat ambient[4] = {0.25f, 0.25f, 0.25f, 1};
    glLightfv(GL_LIGHT0, GL_POSITION, position);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, ambient);
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, display.twoSidedLighting ? GL_TRUE : GL_FALSE);
    glPopMatrix();
    glEnable(GL_LIGHTING);
    (display.lights == "default" ? glEnable : glDisable)(GL_LIGHT0);
    glEnable(GL_NORMALIZE);
    glEnable(GL_COLOR_MATERIAL);
    glShadeModel(display.style == M3dView::kFlatShaded ? GL_FLAT : GL_SMOOTH);
    glEnable(GL_POLYGON_OFFSET_FILL);
    glPolygonOffset(1, 1);
    (display.backfaceCulling ? glEnable : glDisable)(GL_CULL_FACE);
    if (display.xray) {
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glDepthMask(GL_FALSE);
    }
    glColor4f(0.5f, 0.5f, 0.5f, display.xray ? 0.3f : 1);
    emitQuads(faces);
    glDisable(GL_LIGHTING);
    glDisable(GL_POLYGON_OFFSET_FILL);
    glDisable(GL_CULL_FACE);
    glDisable(GL_BLEND);
    glDepthMask(GL_TRUE);
}

void ScenePainter::mesh(const MDagPath& path, bool isSelected) const {
    const ViewDisplay& display = view_.display();
    PrimitiveMesh faces = meshOf(path);
    if (faces.quads.empty() || !display.shows("polymeshes"))
        return;
    if (display.style == M3dView::kBoundingBox)
        faces = boxAround(faces);
    const GlState state;
    glMatrixMode(GL_MODELVIEW);
    loadMatrix(path.inclusiveMatrix() * frame_->view);
    glLineWidth(static_cast<GLfloat>(display.lineWidth));
    glDisable(GL_LIGHTING);
    const bool isTemplate = templated(path);
    const bool shaded = !isTemplate && (display.style == M3dView::kGouraudShaded ||
                                        display.style == M3dView::kFlatShaded);
    if (shaded)
        meshFaces(faces);
    const bool highlighted = isSelected && display.selectionHighlight;
    if (shaded && !highlighted && !display.wireframeOnShaded)
        return;
    if (display.smoothLines) {
        glEnable(GL_LINE_SMOOTH);
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    }
    glPolygonMode(GL_FRONT_AND_BACK, display.style == M3dView::kPoints ? GL_POINT : GL_LINE);
    if (isTemplate)
        glColor3f(0.47f, 0.47f, 0.47f);
    else if (highlighted)
        glColor3fv(kSelectedColour);
    else
        glColor3fv(kWireColour);
    emitQuads(faces);
}

void ScenePainter::cross(const MDagPath& path, bool isSelected) const {
    const GlState state;
    glMatrixMode(GL_MODELVIEW);
    loadMatrix(path.inclusiveMatrix() * frame_->view);
    glDisable(GL_LIGHTING);
    if (isSelected && view_.display().selectionHighlight)
        glColor3fv(kSelectedColour);
    else
        glColor3f(0, 0, 0);
    glBegin(GL_LINES);
    for (int axis = 0; axis < 3; ++axis) {
        double p[3] = {};
        p[axis] = -1;
        glVertex3dv(p);
        p[axis] = 1;
        glVertex3dv(p);
    }
    glEnd();
}

void ScenePainter::pluginLocators() {
    // Opaque ones first, then transparent ones, and those that ask for it after all others.
    const auto rank = [](const Locator& locator) {
        return (locator.node->drawLast() ? 2 : 0) + (locator.node->isTransparent() ? 1 : 0);
    };
    std::stable_sort(locators_.begin(), locators_.end(),
                     [&rank](const Locator& a, const Locator& b) { return rank(a) < rank(b); });
    for (const Locator& locator : locators_)
        drawLocator(locator);
}

void ScenePainter::drawLocator(const Locator& locator) {
    M3dView::DisplayStatus status = M3dView::kDormant;
    if (templated(locator.path))
        status = selected(locator.path) ? M3dView::kActiveTemplate : M3dView::kTemplate;
    else if (selected(locator.path))
        status = M3dView::kActive;
    M3dView handle = view_.handle();
    GlState state;
    glMatrixMode(GL_MODELVIEW);
    loadMatrix(locator.path.inclusiveMatrix() * frame_->view);
    glDisable(GL_LIGHTING);
    locator.node->draw(handle, locator.path, view_.display().style, status);
    if (!state.restore())
        report::warning(std::string(locator.path.partialPathName().asChar()) +
                        ": draw left the OpenGL stacks unbalanced.");
}

} // namespace host
