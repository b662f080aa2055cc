#include "foundation/Idle.h"

#include <deque>

namespace host::idle {
namespace {

struct Queue {
    std::deque<std::function<void()>> work;
    std::function<void()> wakeUp;
};

Queue& queue() {
    static Queue only;
    return only;
}

} // namespace

void post(std::function<void()> work) {
    const bool wasEmpty = queue().work.empty();
    queue().work.push_back(std::move(work));
    if (wasEmpty && queue().wakeUp)
        queue().wakeUp();
}

bool drain() {
    std::deque<std::function<void()>> now;
    now.swap(queue().work);
    if (now.empty())
        return false;
    while (!now.empty()) {
        const std::function<void()> work = std::move(now.front());
        now.pop_front();
        work();
    }
    return true;
}

void drainAll(int rounds) {
    while (rounds-- > 0 && drain()) {
    }
}

bool pending() {
    return !queue().work.empty();
}
void clear() {
    queue().work.clear();
}
void setWakeUp(std::function<void()> wakeUp) {
    queue().wakeUp = std::move(wakeUp);
}

} // namespace host::idle
