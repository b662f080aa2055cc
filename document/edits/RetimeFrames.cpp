#include "document/edits/RetimeFrames.h"

#include "document/IntTime.h"
#include "document/LayerManager.h"
#include "document/edits/TimeMoves.h"
#include "plugin/base/Report.h"

#include <maya/MAnimControl.h>

namespace vellum {

QString RetimeFrames::lockedMessage() const {
    return QStringLiteral("Cannot retime frames on a locked layer");
}

std::optional<std::vector<Layer::Shift>> RetimeFrames::plan(const Layer& layer) {
    const QList<int> times = layer.frameTimes();
    if (times.isEmpty()) {
        report::error(QStringLiteral("There are no frames to retime"));
        return std::nullopt;
    }
    const RetimeSpan span = retimeSpan(times, range_);
    const auto result = retimed(times, span, gap_);
    std::vector<Layer::Shift> shifts;
    for (int i = 0; i < times.size(); ++i) {
        const qint64 time = result[static_cast<std::size_t>(i)];
        if (!fitsFrames(time)) {
            report::error(QStringLiteral("Retime Failed. Time %1 is out of bounds").arg(time));
            return std::nullopt;
        }
        // Frames that stay keep their exact moment, which need not be a whole frame now.
        if (time != times[i])
            shifts.push_back({layer.frameAt(i)->time(), fromIntTime(static_cast<int>(time))});
    }
    const int shown = frameToShow(times, span, moveToNext_);
    target_ = result[static_cast<std::size_t>(shown)] == times[shown]
                  ? layer.frameAt(shown)->time()
                  : fromIntTime(static_cast<int>(result[static_cast<std::size_t>(shown)]));
    return shifts;
}

void RetimeFrames::showTarget(LayerManager& document) {
    before_ = MAnimControl::currentTime();
    goTo(document, target_);
}

bool RetimeFrames::doExecute(LayerManager& document) {
    address_ = LayerAddress(document.currentCamera());
    if (!FrameShift::doExecute(document))
        return false;
    showTarget(document);
    return true;
}

bool RetimeFrames::doRedo(LayerManager& document) {
    if (!FrameShift::doRedo(document))
        return false;
    showTarget(document);
    return true;
}

bool RetimeFrames::doUndo(LayerManager& document) {
    if (!FrameShift::doUndo(document))
        return false;
    goTo(document, before_);
    return true;
}

} // namespace vellum
