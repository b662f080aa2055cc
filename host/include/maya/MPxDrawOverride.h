#pragma once

#include <maya/MBoundingBox.h>
#include <maya/MDagPath.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MUserData.h>
#include <maya/MViewport2Renderer.h>

class MSelectionContext;

namespace host {
class DrawOverrides;
} // namespace host

namespace MHWRender {

class MDrawContext;
class MFrameContext;
class MUIDrawManager;

/// Draws one DAG object in Viewport 2.0; one instance for each object, made when it is first
/// drawn. Only one thread calls it.
class MPxDrawOverride {
public:
    typedef void (*GeometryDrawOverrideCb)(const MDrawContext&, const MUserData*);

    /// callback may be null when hasUIDrawables does all of the drawing. isAlwaysDirty:
    /// prepareForDraw runs at every refresh instead of when the object changed.
    MPxDrawOverride(const MObject& obj, GeometryDrawOverrideCb callback, bool isAlwaysDirty = true);
    virtual ~MPxDrawOverride();

    virtual DrawAPI supportedDrawAPIs() const; ///< kOpenGL
    virtual MMatrix transform(const MDagPath& objPath, const MDagPath& cameraPath) const;
    virtual MBoundingBox boundingBox(const MDagPath& objPath, const MDagPath& cameraPath) const;
    virtual bool isBounded(const MDagPath& objPath, const MDagPath& cameraPath) const; ///< true
    virtual bool disableInternalBoundingBoxDraw() const;                               ///< false
    virtual bool hasUIDrawables() const;                                               ///< false
    virtual bool isTransparent() const;                                                ///< false
    virtual bool excludedFromPostEffects() const;                                      ///< true
    virtual void updateSelectionGranularity(const MDagPath& path,
                                            MSelectionContext& selectionContext);

    /// Reads the object for one refresh of one view. Returns the data to keep until the next
    /// refresh of that view, which may be oldData; the renderer owns what is returned and deletes
    /// what it replaces. Null keeps nothing.
    virtual MUserData* prepareForDraw(const MDagPath& objPath, const MDagPath& cameraPath,
                                      const MFrameContext& frameContext, MUserData* oldData) = 0;
    /// Called after prepareForDraw when hasUIDrawables is true.
    virtual void addUIDrawables(const MDagPath& objPath, MUIDrawManager& drawManager,
                                const MFrameContext& frameContext, const MUserData* data);

    static const char* className();

private:
    MPxDrawOverride(const MPxDrawOverride&) = delete;
    MPxDrawOverride& operator=(const MPxDrawOverride&) = delete;

    GeometryDrawOverrideCb callback_;
    bool isAlwaysDirty_;
    friend class host::DrawOverrides;
};

} // namespace MHWRender
