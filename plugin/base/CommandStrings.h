// Every piece of script the plug-in runs, built here and nowhere else. Each argument that a user
// may have typed (names of cameras, layers, fonts, menus) is passed plain and leaves quoted, so it
// can never run as script.
#pragma once

#include "plugin/base/TimelineDisplay.h"
#include "plugin/base/Tool.h"

#include <QColor>
#include <QString>

namespace vellum {
struct ToolOptions;
}

namespace vellum::command {

/// A string literal of Maya's script language with quotes: backslash, quote and line controls are
/// escaped, NUL is dropped, everything else, Unicode included, stays as it is.
QString quote(const QString& plain);

/// The same without the surrounding quotes, for text that goes between quotes already there.
QString escape(const QString& plain);

/// "evalDeferred(...)" of any command.
QString deferred(const QString& command);

// rvVellumNode
QString createNode();           ///< all arguments left to their defaults
QString createNodeWithFrames(); ///< with a first layer and frames on it
/// Makes the drawing with a first layer, and takes the draw tool when that has worked. It may run
/// later: where the plug-in has been unloaded by then, it does nothing. Empty: the defaults.
QString createNodeAndDraw(const QString& camera, const QString& layerName, int layerState);
QString refreshGhosting();
QString playbackJob(); ///< scriptJob that refreshes the ghosts when playback starts or stops
QString killJob(int job);

// rvVellumStroke; addedLayer < 0 leaves the flag out
QString commitStroke(const QString& camera, int addedLayer, bool frameAdded);

// rvVellumFrame
QString frame(const QString& flag); ///< "-insert", "-duplicate", "-delete", "-cut", ...
QString retimeFrames(int count, bool relative, bool moveToNext);
QString moveFrames(int offset, int start, int end);

// rvVellumLayer
QString addLayer(const QString& camera, const QString& name, int state); ///< no name: its default
QString setActiveLayer(int index, const QString& camera);
QString deleteLayer(int index, const QString& camera);
QString moveLayer(int from, int to, const QString& camera);
QString moveLayerToCamera(const QString& target, int from, int to, const QString& camera);
QString moveAllLayers(const QString& target, const QString& camera);
QString renameLayer(const QString& name, int index, const QString& camera);
QString setLayerState(int state, int index, const QString& camera);
QString setLayerVisible(bool visible, int index, const QString& camera);

// rvVellumUtil
QString util(const QString& arguments); ///< `arguments` is script: fixed text, never typed text
QString chooseTool(Tool tool);          ///< empty for what is no tool to choose
QString drawDeferred();                 ///< activates the draw tool after the current event
QString transformDeferred();            ///< the transform tool in the same way
QString refreshLayerManagerDeferred();
QString drawColor(const QColor& color);
/// Sets all options the tool has; empty for what is no tool to choose.
QString setToolOptions(Tool tool, const ToolOptions& options);
QString ghostPrevious(int onOffToggle); ///< 1, 0, -1
QString ghostNext(int onOffToggle);
QString ghostPreviousCount(int count);
QString ghostNextCount(int count);
QString ghostColorOverride(bool on);
QString ghostColorPrevious(const QColor& color);
QString ghostColorNext(const QColor& color);
QString timelineFrameDisplay(TimelineDisplay mode);

// Maya's own commands
QString isBatch();
QString commandExists(const QString& name);
QString preferencesDirectory();
QString contextExists(const QString& name);
QString setToolTo(const QString& context);
QString chooseSelectionTool();
QString flushUndo();
QString focusPanelUnderPointer(); ///< fails where there is none
QString timeSliderName();
QString timeRangeArray();
QString timeRangeVisible();
QString markSceneModified(bool modified);
QString isSceneModified();
/// Makes a colour slider group of which the slider has no room, in a window of its own that is
/// never shown: groups are made in a layout, and a dialog of Qt's has none that Maya knows.
QString createColorSlider(const QString& control, const QString& window, int width);
QString deleteInterface(const QString& element); ///< nothing when there is no such element
QString colorSliderValue(const QString& control);
QString setColorSliderValue(const QString& control, const QColor& color);
QString setColorSliderCommand(const QString& control, const QString& command);
/// `command` runs while the user is still looking for a colour.
QString setColorSliderDragCommand(const QString& control, const QString& command);

// Procedures of the menu script
QString createMainMenu(bool inAnimationSet);
QString deleteMainMenu();
QString updateMainMenu(Tool tool, bool ghostPrev, bool ghostNext, TimelineDisplay mode);
QString createFloatingView(const QString& sourceCamera);
QString deleteActiveLayer();
QString deleteActiveCameraLayers();
QString deleteAllNodes();

} // namespace vellum::command
