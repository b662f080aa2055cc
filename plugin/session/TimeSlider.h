// Maya's own time slider. Main thread only.
#pragma once

#include <optional>
#include <utility>

class QWidget;

namespace vellum {

/// Looked up until found, then kept for as long as the widget lives. Null, with the report "Failed
/// to get time control name", when Maya does not name one.
QWidget* timeControlWidget();

/// Highlighted range as [start, end); with nothing highlighted the current frame and the next.
/// Empty without a time slider.
std::optional<std::pair<double, double>> timeRange();
bool isTimeRangeVisible();

} // namespace vellum
