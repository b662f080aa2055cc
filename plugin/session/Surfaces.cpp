#include "plugin/session/Surfaces.h"

#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/Script.h"
#include "plugin/session/Panels.h"
#include "plugin/session/Timeline.h"

#include <maya/M3dView.h>
#include <maya/MFileIO.h>
#include <maya/MGlobal.h>

#include <algorithm>
#include <memory>

namespace vellum {

namespace {

enum Surface : unsigned {
    Markers = 1U << 0,
    LayerList = 1U << 1,
    EmptyLayerList = 1U << 2, ///< only when there is no drawing to list
    Nodes = 1U << 3,          ///< of the drawings that changed
    AllViews = 1U << 4,
    ActiveView = 1U << 5, ///< at once: the user draws in it
    Menu = 1U << 6,
    Toolbox = 1U << 7,
    Options = 1U << 8,
};

struct Row {
    Change change;
    unsigned surfaces;
};

constexpr Row kTable[] = {
    {Change::Layers, Markers | LayerList | Nodes},
    {Change::Frames, Markers | Nodes},
    {Change::Pixels, Nodes | ActiveView},
    {Change::Opacity, Nodes},
    {Change::ActiveOpacity, Options},
    {Change::View, Nodes},
    {Change::Text, Nodes},
    {Change::Drawings, Markers | LayerList | AllViews},
    {Change::Stepped, Markers | LayerList | AllViews},
    {Change::Time, Markers},
    {Change::Selection, Markers | EmptyLayerList},
    {Change::Tool, Menu | Toolbox | Options},
    {Change::Color, Toolbox},
    {Change::ToolOptions, Toolbox | Options},
    {Change::Ghosting, Nodes | Menu | Toolbox},
    {Change::TimelineDisplay, Markers | Menu},
    {Change::DrawToolInUse, Markers},
    {Change::TimelineAsked, Markers},
    {Change::LayersAsked, LayerList},
};

constexpr unsigned kOfTheSession = Menu | Toolbox | Options;
constexpr unsigned kOfTheDrawing = Markers | LayerList | EmptyLayerList | AllViews;

unsigned surfacesOf(Changes changes) {
    unsigned surfaces = 0;
    for (const Row& row : kTable) {
        if (changes.testFlag(row.change))
            surfaces |= row.surfaces;
    }
    return surfaces;
}

std::shared_ptr<LayerManager> drawingToShow(Changes changes,
                                            const std::vector<LayerManager*>& drawings) {
    auto known = lastActiveDrawing();
    // Who tells these has just looked.
    if (changes & (Change::Time | Change::Drawings | Change::Stepped))
        return known;
    // That of a command: it has looked, or the step it belongs to is about it.
    if (known && std::find(drawings.begin(), drawings.end(), known.get()) != drawings.end())
        return known;
    const BaseNode* active = activeNode();
    return active ? active->layerManager() : nullptr;
}

void showDrawing(unsigned surfaces, LayerManager* shown) {
    if (surfaces & Markers)
        refreshTimeline(shown);
    if (shown && (surfaces & LayerList))
        panels().refreshLayerManager(*shown);
    else if (!shown && (surfaces & (LayerList | EmptyLayerList)))
        panels().clearLayerManager();
    if (shown && (surfaces & AllViews))
        M3dView::scheduleRefreshAllViews();
}

void redrawNodes(const std::vector<LayerManager*>& drawings) {
    for (const LayerManager* drawing : drawings) {
        if (BaseNode* node = nodeWith(drawing))
            node->redraw();
    }
}

void refreshActiveView() {
    MStatus status;
    M3dView view = M3dView::active3dView(&status);
    if (status == MS::kSuccess)
        view.refresh();
}

} // namespace

/// A step that told what it changed has its surfaces shown already when Maya tells that there was
/// one: only those that are left are refreshed then.
unsigned Surfaces::withoutShownByStep(unsigned surfaces, Changes changes,
                                      const LayerManager* shown) {
    const unsigned before = shown == drawingOfStep_ ? shownByStep_ : 0;
    shownByStep_ = 0;
    if (changes.testFlag(Change::Stepped))
        return surfaces & ~before;
    if (MGlobal::isUndoing() || MGlobal::isRedoing()) {
        shownByStep_ = before | surfaces | (surfaces & Nodes ? AllViews : 0U);
        drawingOfStep_ = shown;
    }
    return surfaces;
}

void Surfaces::changed(Changes changes, const std::vector<LayerManager*>& drawings) {
    // While a file is read, nodes stand without their data; once it is open, all of it is shown.
    // What scripts in the file do to the session shows at once.
    const bool reading =
        MFileIO::isReadingFile() && !(changes & (Change::Drawings | Change::Stepped));
    if (!reading && (changes & (Change::Layers | Change::Frames | Change::Pixels | Change::Opacity |
                                Change::Text)))
        script::execute(command::markSceneModified(true));
    unsigned surfaces = surfacesOf(changes);
    if (reading)
        surfaces &= kOfTheSession;
    const auto shown =
        surfaces & kOfTheDrawing ? drawingToShow(changes, drawings) : lastActiveDrawing();
    surfaces = withoutShownByStep(surfaces, changes, shown.get());
    showDrawing(surfaces, shown.get());
    if (surfaces & Nodes)
        redrawNodes(drawings);
    if (surfaces & ActiveView)
        refreshActiveView();
    if (surfaces & Menu)
        updateMainMenu();
    if (surfaces & Toolbox)
        panels().refreshToolbox();
    if (surfaces & Options)
        panels().refreshToolOptions();
}

} // namespace vellum
