// Everything the user chose: preferences, tool options, panel geometry. One set of values for the
// process, read directly by its users, changed by panels and commands. Main thread only.
#pragma once

#include "plugin/base/TimelineDisplay.h"
#include "plugin/base/Tool.h"

#include <QByteArray>
#include <QColor>
#include <QString>

#include <array>
#include <cstddef>

namespace vellum {

/// Factory colour of the frame markers on the time slider.
inline const QColor& factoryTimelineFrameColor() {
    static const QColor color(143, 193, 207);
    return color;
}

/// What can be set of one tool. Which tool has which of these, how far they go and which are in the
/// file is told by ToolTable.h; ToolOptions.h sets them within their ranges.
struct ToolOptions {
    int size = 1;      ///< image pixels
    int opacity = 100; ///< percent
    bool tabletEnabled = false;
    int hardness = 100; ///< percent
    QString fontFamily;
};

std::array<ToolOptions, kDrawToolCount> factoryToolOptions();

/// Fields carry the names of the keys in the file, those of a tool's options beginning with the
/// tool's key. Initialisers are the defaults.
struct Settings {
    // group "main"
    QString mainMenuName = QStringLiteral("VL2");
    QByteArray toolboxGeometry; // geometries: QWidget::saveGeometry(), empty = never placed
    QByteArray toolOptionsGeometry;
    QByteArray layerManagerGeometry;
    QByteArray colorPaletteGeometry;
    QByteArray retimingToolGeometry;

    // group "tools"
    Tool activeTool = Tool::Brush; // files may hold Tool::Transform, which selects none
    QColor activeColor = QColor(0, 255, 255);
    std::array<ToolOptions, kDrawToolCount> toolOptions = factoryToolOptions();
    bool ghostPrev = false;
    bool ghostNext = false;
    int ghostPrevCount = 3; // 1..9
    int ghostNextCount = 3;
    bool ghostColorOverride = false;
    QColor ghostColorOverridePrev = QColor(0, 128, 0);
    QColor ghostColorOverrideNext = QColor(128, 0, 0);
    bool retimeMoveToNextFrame = false;

    // group "preferences"
    bool drawToolContextMenu = true;
    bool transformToolContextMenu = true;
    bool timelineContextMenu = true;
    bool toolboxDrawToolContextMenu = true;
    bool toolboxGhostingContextMenu = true;
    bool showMainMenuInAnimationSet = false;
    bool disableGhostingDuringPlayback = true;
    bool timeControlRangeMoveEnabled = true;
    bool ignore2dPanZoom = false;
    int defaultLayerState = 0; // 0 animated, 1 static, 2 locked
    bool automaticallyAddFirstLayer = true;
    bool alwaysDisplayNewLayerDialog = false;
    bool insertDefaultStaticFrame = true;
    int defaultStaticFrameTime = -999; // frame, far before any time worked at
    TimelineDisplay timelineFrameDisplay = TimelineDisplay::Always;
    QColor timelineFrameColor = factoryTimelineFrameColor();
    bool undoReturnsToFrame = false; // of strokes: the frame drawn on, not the one shown

    ToolOptions& of(Tool tool) { return toolOptions[static_cast<std::size_t>(tool)]; }
    const ToolOptions& of(Tool tool) const { return toolOptions[static_cast<std::size_t>(tool)]; }
};

Settings& settings();

/// Back to the defaults; done at load, so that a second load starts like the first.
void resetSettings();

/// Absolute path of "vellum2.ini" in Maya's preferences directory. Empty, after reporting
/// "Failed to retrieve Maya prefs directory", when Maya names none.
QString settingsPath();

/// Reads every key; a missing, mistyped or refused value leaves the field as it is.
void loadSettings();

/// Writes every key; keys this version does not know stay. Returns false when the file could not
/// be written; the previous file is then still whole.
bool saveSettings();

// The same on a given file, for tests and tools.
void loadSettingsFrom(const QString& path);
bool saveSettingsTo(const QString& path);

} // namespace vellum
