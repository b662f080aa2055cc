#include "document/FrameCache.h"

#include "document/Frame.h"

#include <algorithm>

namespace vellum {

namespace {

// Without a destructor: frames may be destroyed later than any object of this library.
struct Order {
    const Frame* newest = nullptr;
    const Frame* oldest = nullptr;
    int count = 0;
    int budget = FrameCache::kDefaultBudget;
};
Order order;

} // namespace

void FrameCache::setBudget(int frames) {
    order.budget = std::max(frames, 1);
    trim(nullptr);
}

int FrameCache::decodedCount() {
    return order.count;
}

void FrameCache::packAll() {
    const int budget = order.budget;
    order.budget = 0;
    trim(nullptr);
    order.budget = budget;
}

void FrameCache::touch(const Frame& frame) {
    if (order.newest == &frame)
        return;
    forget(frame);
    frame.cached_ = true;
    frame.newer_ = nullptr;
    frame.older_ = order.newest;
    if (order.newest) {
        order.newest->newer_ = &frame;
    } else {
        order.oldest = &frame;
    }
    order.newest = &frame;
    ++order.count;
    trim(&frame);
}

void FrameCache::forget(const Frame& frame) {
    if (!frame.cached_)
        return;
    (frame.newer_ ? frame.newer_->older_ : order.newest) = frame.older_;
    (frame.older_ ? frame.older_->newer_ : order.oldest) = frame.newer_;
    frame.newer_ = nullptr;
    frame.older_ = nullptr;
    frame.cached_ = false;
    --order.count;
}

void FrameCache::trim(const Frame* keep) {
    const Frame* frame = order.oldest;
    while (frame && order.count > order.budget) {
        const Frame* newer = frame->newer_;
        if (frame != keep && !frame->isHeld())
            frame->pack();
        frame = newer;
    }
}

} // namespace vellum
