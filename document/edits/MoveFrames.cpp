#include "document/edits/MoveFrames.h"

#include "document/IntTime.h"
#include "document/edits/FrameExchange.h"
#include "document/edits/TimeMoves.h"
#include "plugin/base/Report.h"

namespace vellum {

namespace {

std::nullopt_t refuse(const QString& message) {
    report::error(message);
    return std::nullopt;
}

} // namespace

QString MoveFrames::lockedMessage() const {
    return QStringLiteral("Cannot move frames on a locked layer");
}

std::optional<std::vector<Layer::Shift>> MoveFrames::plan(const Layer& layer) {
    if (offset_ == 0)
        return refuse(QStringLiteral("Move Failed. The offset is 0"));
    if (first_ > last_) {
        return refuse(
            QStringLiteral("Move Failed. The range is empty: %1 to %2").arg(first_).arg(last_));
    }
    std::vector<Layer::Shift> shifts;
    std::optional<qint64> latest;
    for (const Frame* frame : framesIn(layer, {first_, last_})) {
        const qint64 target = static_cast<qint64>(frame->intTime()) + offset_;
        if (!fitsFrames(target))
            return refuse(QStringLiteral("Move Failed. Time %1 is out of bounds").arg(target));
        // Frames that fell together in a coarse time unit would meet at their new time.
        if (layer.hasFrameAtIntTime(static_cast<int>(target)) || latest == target) {
            return refuse(
                QStringLiteral("Move Failed. A frame already exists at time %1").arg(target));
        }
        latest = target;
        shifts.push_back({frame->time(), fromIntTime(static_cast<int>(target))});
    }
    return shifts;
}

} // namespace vellum
