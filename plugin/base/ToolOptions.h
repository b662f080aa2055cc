// Options of each tool, kept in settings(). What is no tool an artist can choose reports
// "Unknown tool type: %1", answers with the pencil's value and changes nothing. Main thread only.
#pragma once

#include "plugin/base/Tool.h"

namespace vellum {

/// False, after reporting, for what is no tool to choose.
bool isTool(Tool tool);

/// Image pixels: 1..100, for line, arrow, ellipse and rectangle 1..50. The setter clamps.
int toolSize(Tool tool);
void setToolSize(Tool tool, int size);

/// Percent, 1..100. The setter clamps.
int toolOpacity(Tool tool);
void setToolOpacity(Tool tool, int percent);

/// Whether tablet pressure drives the opacity. Only pencil, brush and eraser have the switch; it is
/// off for the others and setting it there does nothing.
bool toolTabletEnabled(Tool tool);
void setToolTabletEnabled(Tool tool, bool enabled);

/// Percent, 0..100. Only brush and eraser have it; 100 for the others, setting it there does
/// nothing. A negative value gives 10 for the brush and 0 for the eraser.
int toolHardness(Tool tool);
void setToolHardness(Tool tool, int percent);

} // namespace vellum
