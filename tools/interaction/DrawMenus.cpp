// The context menus of the drawing tool and what their entries run.
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/Names.h"
#include "plugin/base/Script.h"
#include "plugin/base/Settings.h"
#include "plugin/base/ToolTable.h"
#include "plugin/session/Cameras.h"
#include "tools/interaction/DrawContextInputHandler.h"

#include <QAction>
#include <QByteArray>
#include <QMenu>
#include <QMetaMethod>
#include <QWidget>

#include <cassert>
#include <initializer_list>

namespace vellum {

namespace {

using Handler = DrawContextInputHandler;
using Slot = void (Handler::*)();

struct Entry {
    const char* label; ///< null: a separator
    Slot slot;
};
constexpr Entry kSeparator{nullptr, nullptr};

QAction* add(QMenu& menu, Handler* handler, const char* label, Slot slot) {
    return menu.addAction(QString::fromLatin1(label), handler, slot);
}

void addAll(QMenu& menu, Handler* handler, std::initializer_list<Entry> entries) {
    for (const Entry& entry : entries) {
        if (entry.label)
            add(menu, handler, entry.label, entry.slot);
        else
            menu.addSeparator();
    }
}

QMenu& subMenu(QMenu& menu, const char* label) {
    return *menu.addMenu(QString::fromLatin1(label));
}

// Entries of which one is checked.
void addChoice(QMenu& menu, Handler* handler, std::initializer_list<Entry> entries, int chosen) {
    int index = 0;
    for (const Entry& entry : entries) {
        QAction* action = add(menu, handler, entry.label, entry.slot);
        action->setCheckable(true);
        action->setChecked(index++ == chosen);
    }
}

void addCheck(QMenu& menu, Handler* handler, const char* label, Slot slot, bool checked) {
    QAction* action = add(menu, handler, label, slot);
    action->setCheckable(true);
    action->setChecked(checked);
}

// The camera's layers, the topmost first.
void addLayers(QMenu& menu, Handler* handler) {
    BaseNode* node = activeNode();
    const auto document = node ? node->layerManager() : nullptr;
    if (!document)
        return;
    const QString camera = currentCamera();
    const int active = document->activeLayerIndex(camera);
    const int count = document->cameraLayerCount(camera);
    for (int index = count - 1; index >= 0; --index) {
        // A menu takes a single ampersand for the mark of a shortcut.
        QString label = document->layerName(camera, index);
        label.replace(QLatin1Char('&'), QStringLiteral("&&"));
        if (index == active)
            label += QStringLiteral(" (active)");
        QAction* action = menu.addAction(label, handler, &Handler::SetActiveLayer);
        action->setData(index);
    }
    if (count > 0)
        menu.addSeparator();
}

void addFrameEntries(QMenu& menu, Handler* handler) {
    addAll(menu, handler,
           {{"Insert Frame(s)", &Handler::InsertFrame},
            {"Duplicate Frame", &Handler::DuplicateFrame},
            {"Delete Frame(s)", &Handler::DeleteFrame},
            kSeparator,
            {"Cut Frame(s)", &Handler::CutFrame},
            {"Copy Frame(s)", &Handler::CopyFrame},
            {"Paste Frame(s)", &Handler::PasteFrame},
            kSeparator,
            {"Clear Frame(s)", &Handler::ClearFrame}});
}

void runUtil(const char* flag) {
    script::execute(command::util(QString::fromLatin1(flag)), true, true);
}

void runFrame(const char* flag) {
    script::execute(command::frame(QString::fromLatin1(flag)), true, true);
}

void run(const QString& command) {
    script::execute(command, true, true);
}

// Each to the slot that has its name.
void addTools(QMenu& menu, Handler* handler) {
    for (const ToolInfo& info : kTools) {
        const QString name = QString::fromLatin1(info.name);
        const QByteArray slot = "Set" + QByteArray(info.name) + "Tool()";
        QAction* action = menu.addAction(name);
        const QMetaObject& meta = Handler::staticMetaObject;
        const QMetaMethod method = meta.method(meta.indexOfSlot(slot.constData()));
        assert(method.isValid());
        QObject::connect(action, QMetaMethod::fromSignal(&QAction::triggered), handler, method);
        action->setCheckable(true);
        action->setChecked(info.tool == settings().activeTool);
    }
}

} // namespace

void Handler::choose(Tool tool) {
    run(command::chooseTool(tool));
}

QMenu* Handler::makeDrawMenu(QWidget* parent) {
    auto* menu = new QMenu(parent);
    addLayers(*menu, this);
    add(*menu, this, "Transform", &Handler::TransformTool);
    menu->addSeparator();
    addTools(subMenu(*menu, "Draw Tool"), this);
    menu->addSeparator();
    addAll(
        subMenu(*menu, "Layer"), this,
        {{"New Layer...", &Handler::NewLayer}, {"Layer Properties...", &Handler::LayerProperties}});
    QMenu& frame = subMenu(*menu, "Frame");
    addFrameEntries(frame, this);
    addAll(
        frame, this,
        {kSeparator, {"Step Forward", &Handler::StepForward}, {"Step Back", &Handler::StepBack}});
    QMenu& ghosting = subMenu(*menu, "Ghosting");
    addCheck(ghosting, this, "Ghost Previous", &Handler::ToggleGhostPrevious, settings().ghostPrev);
    addCheck(ghosting, this, "Ghost Next", &Handler::ToggleGhostNext, settings().ghostNext);
    addAll(ghosting, this, {kSeparator, {"Settings...", &Handler::GhostingSettings}});
    addAll(*menu, this,
           {kSeparator,
            {"Toolbox...", &Handler::ShowToolbox},
            {"Tool Options...", &Handler::ShowToolOptions},
            {"Layer Manager...", &Handler::ShowLayerManager},
            {"Retiming Tool...", &Handler::ShowRetimingTool},
            kSeparator});
    addChoice(subMenu(*menu, "Display Timeline Frames"), this,
              {{"Always", &Handler::SetTimelineDisplayOn},
               {"Selection/Context Active", &Handler::SetTimelineDisplaySelectionContext},
               {"Off", &Handler::SetTimelineDisplayOff}},
              numberOf(settings().timelineFrameDisplay));
    menu->addSeparator();
    addAll(subMenu(*menu, "Cleanup"), this,
           {{"Delete Active Layer", &Handler::DeleteActiveLayer},
            {"Delete Active Camera Layers", &Handler::DeleteActiveCameraLayers},
            kSeparator,
            {"Clear All", &Handler::ClearAll}});
    return menu;
}

QMenu* Handler::makeTimelineMenu(QWidget* parent) {
    auto* menu = new QMenu(parent);
    menu->addAction(QString::fromLatin1(kProductName))->setEnabled(false);
    menu->addSeparator();
    addFrameEntries(*menu, this);
    return menu;
}

void Handler::SetActiveLayer() {
    const auto* action = qobject_cast<const QAction*>(sender());
    BaseNode* node = activeNode();
    const auto document = node ? node->layerManager() : nullptr;
    if (!action || !document)
        return;
    document->setActiveLayer(currentCamera(), action->data().toInt(), true);
}

// clang-format off
void Handler::TransformTool() { runUtil("-transform"); }
void Handler::NewLayer() { runUtil("-newLayer"); }
void Handler::LayerProperties() { runUtil("-layerProperties"); }
void Handler::InsertFrame() { runFrame("-insert"); }
void Handler::DuplicateFrame() { runFrame("-duplicate"); }
void Handler::DeleteFrame() { runFrame("-delete"); }
void Handler::CutFrame() { runFrame("-cut"); }
void Handler::CopyFrame() { runFrame("-copy"); }
void Handler::PasteFrame() { runFrame("-paste"); }
void Handler::ClearFrame() { runFrame("-clear"); }
void Handler::StepForward() { runFrame("-stepForward"); }
void Handler::StepBack() { runFrame("-stepBack"); }
void Handler::ToggleGhostPrevious() { run(command::ghostPrevious(-1)); }
void Handler::ToggleGhostNext() { run(command::ghostNext(-1)); }
void Handler::GhostingSettings() { runUtil("-ghostingSettings"); }
void Handler::ShowToolbox() { runUtil("-toolbox"); }
void Handler::ShowToolOptions() { runUtil("-toolOptions"); }
void Handler::ShowLayerManager() { runUtil("-layerManager"); }
void Handler::ShowRetimingTool() { runUtil("-retimingTool"); }
void Handler::SetTimelineDisplayOn() { run(command::timelineFrameDisplay(TimelineDisplay::Always)); }
void Handler::SetTimelineDisplaySelectionContext() { run(command::timelineFrameDisplay(TimelineDisplay::WhileInUse)); }
void Handler::SetTimelineDisplayOff() { run(command::timelineFrameDisplay(TimelineDisplay::Never)); }
void Handler::DeleteActiveLayer() { run(command::deleteActiveLayer()); }
void Handler::DeleteActiveCameraLayers() { run(command::deleteActiveCameraLayers()); }
void Handler::ClearAll() { run(command::deleteAllNodes()); }
// clang-format on

} // namespace vellum
