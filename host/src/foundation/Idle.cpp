#include "foundation/Idle.h"

#include <deque>

namespace host::idle {
namespace {

struct Queue {
    std::deque<std::function<void()>> work;
    std::function<void()> wakeUp;
    unsigned long long posted = 0, begun = 0; ///< since the start
    bool woken = false;                       ///< nothing was drained since the last wake-up
};

Queue& queue() {
    static Queue only;
    return only;
}

void wake() {
    if (queue().woken || !queue().wakeUp)
        return;
    queue().woken = true;
    queue().wakeUp();
}

} // namespace

void post(std::function<void()> work) {
    queue().work.push_back(std::move(work));
    ++queue().posted;
    wake();
}

bool drain() {
    queue().woken = false;
    const auto end = queue().posted;
    bool ran = false;
    while (!queue().work.empty() && queue().begun < end) {
        const std::function<void()> work = std::move(queue().work.front());
        queue().work.pop_front();
        ++queue().begun;
        // The work may open a dialog, whose event loop goes on with the rest.
        if (!queue().work.empty())
            wake();
        work();
        ran = true;
    }
    return ran;
}

void drainAll(int rounds) {
    while (rounds-- > 0 && drain()) {
    }
}

bool pending() {
    return !queue().work.empty();
}
void clear() {
    queue().begun = queue().posted;
    queue().work.clear();
}
void setWakeUp(std::function<void()> wakeUp) {
    queue().wakeUp = std::move(wakeUp);
    queue().woken = false;
    if (pending())
        wake();
}

} // namespace host::idle
