#include "render/DrawOverrides.h"

#include "foundation/Report.h"
#include "render/Frame.h"
#include "render/GlState.h"
#include "render/View.h"

#include <QFileInfo>
#include <QOpenGLFunctions>

#include <maya/MBoundingBox.h>
#include <maya/MDrawContext.h>
#include <maya/MFnDagNode.h>

#include <algorithm>
#include <dlfcn.h>
#include <sstream>

namespace host {

namespace {

const char* const geometryPrefix = "drawdb/geometry";

/// "drawdb/geometry/a:texture/b" lists classifications; one that continues a registered one with
/// a slash belongs to it too.
bool satisfies(const std::string& nodeClassification, const std::string& registered) {
    std::istringstream list(nodeClassification);
    for (std::string one; std::getline(list, one, ':');) {
        if (one == registered || one.compare(0, registered.size() + 1, registered + "/") == 0)
            return true;
    }
    return false;
}

/// Whether the box may be seen: not all of its corners are beyond the same side of the view.
bool mayBeSeen(const MBoundingBox& box, const MMatrix& toWorld, const Frame& frame) {
    const MMatrix toClip = toWorld * frame.view * frame.projection;
    const MPoint low = box.min();
    const MPoint high = box.max();
    int outside[6] = {};
    for (int corner = 0; corner < 8; ++corner) {
        const MPoint p = MPoint(corner & 1 ? high.x : low.x, corner & 2 ? high.y : low.y,
                                corner & 4 ? high.z : low.z) *
                         toClip;
        outside[0] += p.x < -p.w;
        outside[1] += p.x > p.w;
        outside[2] += p.y < -p.w;
        outside[3] += p.y > p.w;
        outside[4] += p.z < -p.w;
        outside[5] += p.z > p.w;
    }
    return std::none_of(std::begin(outside), std::end(outside), [](int n) { return n == 8; });
}

std::string nameOf(const MDagPath& path) {
    return path.partialPathName().asChar();
}

} // namespace

DrawOverrides& DrawOverrides::instance() {
    // Never destroyed: at exit the code of the overrides may be gone already.
    static DrawOverrides& overrides = *new DrawOverrides;
    return overrides;
}

MStatus DrawOverrides::add(const std::string& classification, const std::string& registrant,
                           MHWRender::MDrawRegistry::DrawOverrideCreator creator) {
    if (!creator || classification.compare(0, std::char_traits<char>::length(geometryPrefix),
                                           geometryPrefix) != 0)
        return MS::kInvalidParameter;
    for (const auto& known : creators_)
        if (known->classification == classification)
            return MS::kFailure;
    creators_.push_back(std::make_unique<Creator>(Creator{classification, registrant, creator}));
    return MS::kSuccess;
}

MStatus DrawOverrides::remove(const std::string& classification, const std::string& registrant) {
    const auto found = std::find_if(creators_.begin(), creators_.end(), [&](const auto& creator) {
        return creator->classification == classification && creator->registrant == registrant;
    });
    if (found == creators_.end())
        return MS::kFailure;
    remove(found->get());
    return MS::kSuccess;
}

void DrawOverrides::remove(const Creator* creator) {
    overrides_.erase(
        std::remove_if(overrides_.begin(), overrides_.end(),
                       [creator](const auto& entry) { return entry->creator == creator; }),
        overrides_.end());
    creators_.erase(std::find_if(creators_.begin(), creators_.end(),
                                 [creator](const auto& c) { return c.get() == creator; }));
}

std::vector<std::string> DrawOverrides::removeFrom(const std::string& libraryFile) {
    const QFileInfo library(QString::fromStdString(libraryFile));
    std::vector<const Creator*> own;
    std::vector<std::string> classifications;
    for (const auto& creator : creators_) {
        Dl_info info;
        if (dladdr(reinterpret_cast<void*>(creator->create), &info) && info.dli_fname &&
            QFileInfo(QString::fromLocal8Bit(info.dli_fname)) == library) {
            own.push_back(creator.get());
            classifications.push_back(creator->classification);
        }
    }
    for (const Creator* creator : own)
        remove(creator);
    return classifications;
}

bool DrawOverrides::handles(const std::string& classification) const {
    return creatorFor(classification) != nullptr;
}

const DrawOverrides::Creator* DrawOverrides::creatorFor(const std::string& classification) const {
    for (const auto& creator : creators_)
        if (satisfies(classification, creator->classification))
            return creator.get();
    return nullptr;
}

DrawOverrides::Entry* DrawOverrides::entryFor(const MDagPath& path, const Creator& creator) {
    const MObject node = path.node();
    for (const auto& entry : overrides_)
        if (entry->creator == &creator && entry->object.object() == node)
            return entry.get();
    auto entry = std::make_unique<Entry>();
    entry->object = MObjectHandle(node);
    entry->creator = &creator;
    entry->draw.reset(creator.create(node));
    if (!entry->draw)
        report::error("No draw override was made for " + nameOf(path));
    overrides_.push_back(std::move(entry));
    return overrides_.back().get();
}

DrawOverrides::Panel& DrawOverrides::panelFor(Entry& entry, const View& view,
                                              const MDagPath& path) {
    const std::string name = path.fullPathName().asChar();
    for (Panel& panel : entry.panels)
        if (panel.viewId == view.id() && panel.path == name)
            return panel;
    entry.panels.emplace_back();
    entry.panels.back().viewId = view.id();
    entry.panels.back().path = name;
    return entry.panels.back();
}

bool DrawOverrides::draw(const MDagPath& path, const std::string& classification, const View& view,
                         std::shared_ptr<const Frame> frame, DrawList& drawables) {
    const Creator* creator = creatorFor(classification);
    if (!creator)
        return false;
    Entry& entry = *entryFor(path, *creator);
    MHWRender::MPxDrawOverride* override = entry.draw.get();
    if (!override || !(override->supportedDrawAPIs() & MHWRender::kOpenGL))
        return true;

    const MDagPath& camera = frame->camera;
    const MMatrix toWorld = override->transform(path, camera);
    if (override->isBounded(path, camera) &&
        !mayBeSeen(override->boundingBox(path, camera), toWorld, *frame))
        return true;

    Panel& panel = panelFor(entry, view, path);
    const std::string cameraName = camera.isValid() ? camera.fullPathName().asChar() : "";
    const bool changed = panel.camera != cameraName || panel.changes != changes_ ||
                         !panel.view.isEquivalent(frame->view) ||
                         !panel.projection.isEquivalent(frame->projection);
    if (override->isAlwaysDirty_ || !panel.prepared || changed) {
        const auto context = FrameAccess::context(frame);
        MUserData* kept = panel.data.release();
        MUserData* data = override->prepareForDraw(path, camera, *context, kept);
        if (data != kept)
            delete kept;
        panel.data.reset(data);
        panel.camera = cameraName;
        panel.view = frame->view;
        panel.projection = frame->projection;
        panel.changes = changes_;
        panel.prepared = true;
        panel.drawables.clear();
        if (override->hasUIDrawables()) {
            DrawManager manager("draw override of " + nameOf(path), &toWorld);
            override->addUIDrawables(path, manager.api(), *context, data);
            panel.drawables = manager.take();
        }
    }
    if (override->callback_) {
        GlState state;
        const auto context = FrameAccess::drawContext(frame);
        glMatrixMode(GL_PROJECTION);
        loadMatrix(frame->projection);
        glMatrixMode(GL_MODELVIEW);
        loadMatrix(toWorld * frame->view);
        override->callback_(*context, panel.data.get());
        if (!state.restore())
            report::warning("The draw callback of " + nameOf(path) +
                            " left the OpenGL stacks unbalanced.");
    }
    drawables.insert(drawables.end(), panel.drawables.begin(), panel.drawables.end());
    if (panel.data && panel.data->deleteAfterUse_) {
        panel.data.reset();
        panel.prepared = false;
    }
    return true;
}

void DrawOverrides::setDirty(const MObject& object) {
    for (const auto& entry : overrides_)
        if (entry->object.object() == object)
            for (Panel& panel : entry->panels)
                panel.prepared = false;
}

void DrawOverrides::sweep(bool undoGone) {
    const auto gone = [undoGone](const auto& entry) {
        return undoGone ? !entry->object.isValid() : !entry->object.isAlive();
    };
    overrides_.erase(std::remove_if(overrides_.begin(), overrides_.end(), gone), overrides_.end());
}

void DrawOverrides::forget(const View& view) {
    for (const auto& entry : overrides_) {
        auto& panels = entry->panels;
        panels.erase(std::remove_if(panels.begin(), panels.end(),
                                    [&view](const Panel& p) { return p.viewId == view.id(); }),
                     panels.end());
    }
}

} // namespace host
