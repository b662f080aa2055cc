// Options of each tool, kept in settings(). `tool` is a number of Tool.h; any other number reports
// "Unknown tool type: %1", answers with the pencil's value and changes nothing. Main thread only.
#pragma once

namespace vellum {

/// False, after reporting, for a number that is no tool.
bool isTool(int tool);

/// Image pixels: 1..100, for line, arrow, ellipse and rectangle 1..50. The setter clamps.
int toolSize(int tool);
void setToolSize(int tool, int size);

/// Percent, 1..100. The setter clamps.
int toolOpacity(int tool);
void setToolOpacity(int tool, int percent);

/// Whether tablet pressure drives the opacity. Only pencil, brush and eraser have the switch; it is
/// off for the others and setting it there does nothing.
bool toolTabletEnabled(int tool);
void setToolTabletEnabled(int tool, bool enabled);

/// Percent, 0..100. Only brush and eraser have it; 100 for the others, setting it there does
/// nothing. A negative value gives 10 for the brush and 0 for the eraser.
int toolHardness(int tool);
void setToolHardness(int tool, int percent);

} // namespace vellum
