#include "foundation/UndoQueue.h"

#include "foundation/Events.h"

#include <algorithm>

namespace host {
namespace {

class Chunk : public UndoStep {
public:
    Chunk(std::string label, std::vector<std::unique_ptr<UndoStep>> steps)
        : label_(std::move(label)), steps_(std::move(steps)) {}

    // A step that fails leaves the others as they were before.
    bool undo() override {
        std::size_t at = steps_.size();
        while (at > 0 && steps_[at - 1]->undo())
            --at;
        const bool ok = at == 0;
        while (!ok && at < steps_.size())
            steps_[at++]->redo();
        return ok;
    }

    bool redo() override {
        std::size_t at = 0;
        while (at < steps_.size() && steps_[at]->redo())
            ++at;
        const bool ok = at == steps_.size();
        while (!ok && at > 0)
            steps_[--at]->undo();
        return ok;
    }

    std::string label() const override { return label_; }

private:
    std::string label_;
    std::vector<std::unique_ptr<UndoStep>> steps_;
};

// Up while a step runs, also when it leaves by an exception.
class Raised {
public:
    explicit Raised(bool& flag) : flag_(flag) { flag_ = true; }
    ~Raised() { flag_ = false; }
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;

private:
    bool& flag_;
};

} // namespace

UndoStep::~UndoStep() = default;

UndoQueue& undoQueue() {
    static UndoQueue queue;
    return queue;
}

void UndoQueue::record(std::unique_ptr<UndoStep> step) {
    if (!step || !enabled_ || undoing_ || redoing_)
        return;
    if (chunkDepth_ > 0)
        chunk_.push_back(std::move(step));
    else
        push(std::move(step));
}

void UndoQueue::push(std::unique_ptr<UndoStep> step) {
    const Steps dropped = std::move(undone_); // deleted last: their destructors may look here
    undone_.clear();
    done_.push_back(std::move(step));
    if (limit_ > 0 && done_.size() > limit_)
        done_.erase(done_.begin(), done_.end() - static_cast<std::ptrdiff_t>(limit_));
    changed();
}

void UndoQueue::changed() const {
    if (listener_)
        listener_();
}

void UndoQueue::openChunk(const std::string& label) {
    if (chunkDepth_++ == 0)
        chunkLabel_ = label;
}

void UndoQueue::closeChunk() {
    if (chunkDepth_ == 0 || --chunkDepth_ > 0 || chunk_.empty())
        return;
    Steps steps = std::move(chunk_);
    chunk_.clear();
    if (steps.size() == 1)
        push(std::move(steps.front()));
    else
        push(std::make_unique<Chunk>(chunkLabel_, std::move(steps)));
}

bool UndoQueue::undo() {
    if (done_.empty() || undoing_ || redoing_)
        return false;
    std::unique_ptr<UndoStep> step = std::move(done_.back());
    done_.pop_back();
    bool ok = false;
    {
        const Raised raised(undoing_);
        ok = step->undo();
    }
    // What a step that fails holds may exist nowhere else.
    (ok ? undone_ : done_).push_back(std::move(step));
    changed();
    if (ok)
        events::emit("Undo");
    return ok;
}

bool UndoQueue::redo() {
    if (undone_.empty() || undoing_ || redoing_)
        return false;
    std::unique_ptr<UndoStep> step = std::move(undone_.back());
    undone_.pop_back();
    bool ok = false;
    {
        const Raised raised(redoing_);
        ok = step->redo();
    }
    (ok ? done_ : undone_).push_back(std::move(step));
    changed();
    if (ok)
        events::emit("Redo");
    return ok;
}

std::string UndoQueue::undoLabel() const {
    return done_.empty() ? "" : done_.back()->label();
}
std::string UndoQueue::redoLabel() const {
    return undone_.empty() ? "" : undone_.back()->label();
}

void UndoQueue::flush() {
    const Steps done = std::move(done_);
    const Steps undone = std::move(undone_);
    const Steps chunk = std::move(chunk_);
    done_.clear();
    undone_.clear();
    chunk_.clear();
    changed();
}

void UndoQueue::setLimit(std::size_t limit) {
    limit_ = limit;
    if (limit_ > 0 && done_.size() > limit_)
        done_.erase(done_.begin(), done_.end() - static_cast<std::ptrdiff_t>(limit_));
}

} // namespace host
