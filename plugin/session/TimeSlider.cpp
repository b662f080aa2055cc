#include "plugin/session/TimeSlider.h"

#include "plugin/base/CommandStrings.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Report.h"
#include "plugin/base/Script.h"
#include "plugin/session/PluginState.h"

#include <QWidget>

#include <maya/MQtUtil.h>

namespace vellum {

QWidget* timeControlWidget() {
    QPointer<QWidget>& cache = pluginState().timeControl;
    if (cache)
        return cache;
    const auto name = script::executeString(command::timeSliderName());
    if (!name)
        report::error(QStringLiteral("Failed to get time control name"));
    else if (!name->isEmpty())
        cache = MQtUtil::findControl(toMaya(*name));
    return cache;
}

std::optional<std::pair<double, double>> timeRange() {
    return script::executePair(command::timeRangeArray());
}

bool isTimeRangeVisible() {
    return script::executeInt(command::timeRangeVisible()).value_or(0) != 0;
}

} // namespace vellum
