#include "document/edits/CopyFrames.h"

#include "document/edits/FrameClipboard.h"
#include "document/edits/FrameExchange.h"
#include "plugin/base/Report.h"

#include <limits>
#include <utility>

namespace vellum {

CopyFrames::CopyFrames(const QString& camera, const FrameRange& range,
                       std::shared_ptr<FrameClipboard> clipboard)
    : address_(camera), range_(range), clipboard_(std::move(clipboard)) {
}

bool CopyFrames::doExecute(LayerManager& document) {
    const Layer* layer = address_.resolve(document);
    auto copies = layer ? copyFrames(*layer, range_) : std::nullopt;
    if (!copies)
        return false;
    clipboard_->replace(std::move(*copies));
    return true;
}

std::optional<std::vector<std::unique_ptr<Frame>>> copyFrames(const Layer& layer,
                                                              const FrameRange& range) {
    std::vector<std::unique_ptr<Frame>> copies;
    for (const Frame* frame : framesIn(layer, range)) {
        const qint64 time = static_cast<qint64>(frame->intTime()) - range.first;
        if (time > std::numeric_limits<int>::max()) {
            report::error(QStringLiteral("Time range is too long to be copied"));
            return std::nullopt;
        }
        auto copy = frame->copy();
        copy->setIntTime(static_cast<int>(time));
        // Of neighbours that fall together in a coarse time unit, the last is the one shown.
        if (!copies.empty() && copies.back()->time() == copy->time())
            copies.pop_back();
        copies.push_back(std::move(copy));
    }
    return copies;
}

} // namespace vellum
