#pragma once

#include <maya/M3dView.h>
#include <maya/MBoundingBox.h>
#include <maya/MColor.h>
#include <maya/MFrameContext.h>
#include <maya/MPxDrawOverride.h>
#include <maya/MPxLocatorNode.h>
#include <maya/MUIDrawManager.h>
#include <maya/MUserData.h>

#include <string>
#include <vector>

namespace render_test {

/// What the probe node and its override do, and what happened to them. Reset for every test.
struct ProbeState {
    bool uiDrawables = true;
    bool bounded = false;
    MBoundingBox box;
    bool alwaysDirty = true;
    bool freshData = false; ///< prepareForDraw returns new data every time
    bool excluded = false;
    bool transparent = false;
    bool last = false;
    bool unbalanced = false; ///< draw leaves matrices and attributes behind

    int created = 0, destroyed = 0;
    int prepared = 0, drawn = 0, callbacks = 0;
    int dataAlive = 0;
    std::vector<std::string> cameras; ///< of every prepareForDraw
    std::vector<MUserData*> oldData;  ///< likewise
    std::vector<std::string> order;   ///< nodes drawn by the legacy renderer
    int width = 0, height = 0;        ///< of the last prepareForDraw
};
ProbeState& probe();

/// The square both ways of drawing show: opaque red, its half side, about the port's centre.
constexpr int squareHalf = 30;

class ProbeNode : public MPxLocatorNode {
public:
    static void* creator() { return new ProbeNode; }
    static MStatus initialize() { return MS::kSuccess; }

    void draw(M3dView& view, const MDagPath& path, M3dView::DisplayStyle style,
              M3dView::DisplayStatus status) override;
    bool isBounded() const override { return false; }
    bool excludeAsLocator() const override { return probe().excluded; }
    bool isTransparent() const override { return probe().transparent; }
    bool drawLast() const override;
};

class ProbeOverride : public MHWRender::MPxDrawOverride {
public:
    static MHWRender::MPxDrawOverride* creator(const MObject& object);
    explicit ProbeOverride(const MObject& object);
    ~ProbeOverride() override;

    bool hasUIDrawables() const override { return probe().uiDrawables; }
    bool isBounded(const MDagPath&, const MDagPath&) const override { return probe().bounded; }
    MBoundingBox boundingBox(const MDagPath&, const MDagPath&) const override {
        return probe().box;
    }
    MUserData* prepareForDraw(const MDagPath& objPath, const MDagPath& cameraPath,
                              const MHWRender::MFrameContext& frameContext,
                              MUserData* oldData) override;
    void addUIDrawables(const MDagPath& objPath, MHWRender::MUIDrawManager& drawManager,
                        const MHWRender::MFrameContext& frameContext,
                        const MUserData* data) override;
};

/// Registers the node type "renderProbe" and its override, for the life of the object.
class ProbePlugin {
public:
    ProbePlugin();
    ~ProbePlugin();
    /// Before the node type goes: the override's creator alone.
    void deregisterOverride();

private:
    bool overrideRegistered_ = true;
};

} // namespace render_test
