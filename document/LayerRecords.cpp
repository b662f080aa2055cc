// The part of Layer that undo and redo of frame operations use.
#include "document/IntTime.h"
#include "document/Layer.h"

#include <algorithm>
#include <utility>

namespace vellum {

namespace {

using Frames = std::vector<std::unique_ptr<Frame>>;

bool isEarlier(const std::unique_ptr<Frame>& a, const std::unique_ptr<Frame>& b) {
    return a->time() < b->time();
}

bool holds(const std::vector<MTime>& ascending, const MTime& moment) {
    return std::binary_search(ascending.begin(), ascending.end(), moment);
}

bool isStrictlyAscending(const std::vector<MTime>& moments) {
    return std::adjacent_find(moments.begin(), moments.end(), [](const auto& a, const auto& b) {
               return !(a < b);
           }) == moments.end();
}

std::vector<MTime> momentsOf(const Frames& frames) {
    std::vector<MTime> moments;
    moments.reserve(frames.size());
    for (const auto& frame : frames)
        moments.push_back(frame->time());
    return moments;
}

} // namespace

const Frame* Layer::frameAtMoment(const MTime& moment) const {
    const auto found = std::find_if(frames_.begin(), frames_.end(), [&moment](const auto& frame) {
        return frame->time() == moment;
    });
    return found == frames_.end() ? nullptr : found->get();
}

bool Layer::exchangeFrames(const std::vector<MTime>& leaving, Frames& frames) {
    const std::vector<MTime> entering = momentsOf(frames);
    if (!isStrictlyAscending(leaving) || !isStrictlyAscending(entering))
        return false;
    std::size_t found = 0;
    for (const auto& frame : frames_) {
        if (holds(leaving, frame->time())) {
            ++found;
        } else if (holds(entering, frame->time())) {
            return false;
        }
    }
    if (found != leaving.size())
        return false;
    const auto kept =
        std::stable_partition(frames_.begin(), frames_.end(), [&leaving](const auto& frame) {
            return !holds(leaving, frame->time());
        });
    Frames taken(std::make_move_iterator(kept), std::make_move_iterator(frames_.end()));
    frames_.erase(kept, frames_.end());
    std::move(frames.begin(), frames.end(), std::back_inserter(frames_));
    framesReplaced();
    for (const auto& frame : taken)
        frame->pack();
    frames = std::move(taken);
    return true;
}

bool Layer::shiftFrames(const std::vector<Shift>& shifts) {
    std::vector<Shift> byMoment = shifts;
    std::sort(byMoment.begin(), byMoment.end(),
              [](const Shift& a, const Shift& b) { return a.from < b.from; });
    std::vector<MTime> moments = momentsOf(frames_);
    std::size_t found = 0;
    for (MTime& moment : moments) {
        const auto shift =
            std::lower_bound(byMoment.begin(), byMoment.end(), moment,
                             [](const Shift& one, const MTime& at) { return one.from < at; });
        if (shift != byMoment.end() && shift->from == moment) {
            moment = shift->to;
            ++found;
        }
    }
    std::vector<MTime> sorted = moments;
    std::sort(sorted.begin(), sorted.end());
    if (found != shifts.size() || !isStrictlyAscending(sorted))
        return false;
    for (std::size_t i = 0; i < frames_.size(); ++i)
        frames_[i]->setTime(moments[i]);
    framesReplaced();
    return true;
}

void Layer::framesReplaced() {
    std::stable_sort(frames_.begin(), frames_.end(), isEarlier);
    ascending_ = true;
    markDirty();
    updateCurrentIndex(currentIntTime());
}

} // namespace vellum
