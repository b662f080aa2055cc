#include "document/edits/PasteFrames.h"

#include "document/edits/FrameClipboard.h"
#include "plugin/base/Report.h"

#include <limits>
#include <map>
#include <utility>

namespace vellum {

PasteFrames::PasteFrames(const QString& camera, int start,
                         std::shared_ptr<FrameClipboard> clipboard)
    : FrameExchange(camera), start_(start), clipboard_(std::move(clipboard)) {
}

QString PasteFrames::lockedMessage() const {
    return QStringLiteral("Cannot paste frames to a locked layer");
}

bool PasteFrames::plan(const Layer& layer) {
    // The time unit may be coarser than it was at copying: of frames that fall together now, the
    // last is the one that would be seen.
    std::map<int, const Frame*> pasted;
    for (const auto& frame : clipboard_->frames()) {
        const qint64 time = static_cast<qint64>(frame->intTime()) + start_;
        if (time > std::numeric_limits<int>::max()) {
            report::error(QStringLiteral("Cannot paste frames at time %1").arg(time));
            return false;
        }
        pasted[static_cast<int>(time)] = frame.get();
    }
    for (const auto& [time, frame] : pasted) {
        for (const Frame* displaced : framesIn(layer, {time, time}))
            take(*displaced);
        auto copy = frame->copy();
        copy->setIntTime(time);
        put(std::move(copy));
    }
    return true;
}

} // namespace vellum
