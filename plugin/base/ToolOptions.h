// Options of each tool, kept in settings(). What is no tool an artist can choose reports
// "Unknown tool type: %1", answers with the pencil's value and changes nothing. Main thread only.
#pragma once

#include "plugin/base/Tool.h"

namespace vellum {

/// False, after reporting, for what is no tool to choose.
bool isTool(Tool tool);

/// Image pixels, from 1 to the largest of the table. The setter clamps.
int toolSize(Tool tool);
void setToolSize(Tool tool, int size);

/// Percent, 1..100. The setter clamps.
int toolOpacity(Tool tool);
void setToolOpacity(Tool tool, int percent);

/// Whether tablet pressure drives the opacity. Off for tools that have no such switch; setting it
/// there does nothing.
bool toolTabletEnabled(Tool tool);
void setToolTabletEnabled(Tool tool, bool enabled);

/// Percent, 0..100. 100 for tools that have no such option; setting it there does nothing. For a
/// negative value see the table.
int toolHardness(Tool tool);
void setToolHardness(Tool tool, int percent);

} // namespace vellum
