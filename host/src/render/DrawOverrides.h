#pragma once

#include "render/DrawManager.h"

#include <maya/MDrawRegistry.h>
#include <maya/MMatrix.h>
#include <maya/MObjectHandle.h>
#include <maya/MPxDrawOverride.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace host {

class View;

/// The registered creators and the overrides they made: one for each DAG object, made when it is
/// first drawn, deleted with the object (once it can no longer come back by undo) or with the
/// creator.
class DrawOverrides {
public:
    static DrawOverrides& instance();

    MStatus add(const std::string& classification, const std::string& registrant,
                MHWRender::MDrawRegistry::DrawOverrideCreator creator);
    MStatus remove(const std::string& classification, const std::string& registrant);

    /// Whether some creator draws nodes of this classification ("a:b" lists several).
    bool handles(const std::string& classification) const;

    /// Runs the override of the object for a refresh of the view, with the view's context
    /// current: culling, prepareForDraw, the draw callback; appends its UI drawables. False when
    /// the object has no override.
    bool draw(const MDagPath& path, const std::string& classification, const View& view,
              std::shared_ptr<const Frame> frame, DrawList& drawables);

    void setDirty(const MObject& object);
    /// Something in the scene changed: every override is prepared anew.
    void sceneChanged() { ++changes_; }
    /// Drops the creators whose code lies in a library that is about to go, with all they made.
    /// Returns their classifications.
    std::vector<std::string> removeFrom(const std::string& libraryFile);
    /// Deletes the overrides of objects that are gone. undoGone: those that are not in the scene
    /// cannot come back either, even if someone still keeps them in memory.
    void sweep(bool undoGone = false);
    /// Deletes what is kept for the view.
    void forget(const View& view);

    std::size_t count() const { return overrides_.size(); }

private:
    DrawOverrides() = default;

    struct Creator {
        std::string classification;
        std::string registrant;
        MHWRender::MDrawRegistry::DrawOverrideCreator create;
    };
    struct Panel {
        int viewId = 0;
        std::string path;
        std::unique_ptr<MUserData> data;
        std::string camera;
        MMatrix view, projection; ///< What prepareForDraw saw.
        unsigned long changes = 0;
        bool prepared = false;
        DrawList drawables; ///< Reused while the object stays clean.
    };
    struct Entry {
        MObjectHandle object;
        const Creator* creator = nullptr;
        std::unique_ptr<MHWRender::MPxDrawOverride> draw;
        std::vector<Panel> panels;
    };
    void remove(const Creator* creator);
    const Creator* creatorFor(const std::string& classification) const;
    Entry* entryFor(const MDagPath& path, const Creator& creator);
    Panel& panelFor(Entry& entry, const View& view, const MDagPath& path);

    std::vector<std::unique_ptr<Creator>> creators_;
    std::vector<std::unique_ptr<Entry>> overrides_;
    unsigned long changes_ = 0;
};

} // namespace host
