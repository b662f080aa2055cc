// The undo queue of the process: steps that were done, and those undone that may be redone.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace host {

class UndoStep {
public:
    virtual ~UndoStep();
    virtual bool undo() = 0; ///< false: could not; the step is dropped
    virtual bool redo() = 0;
    virtual std::string label() const { return {}; }
};

/// Recording deletes what could be redone. While the queue is disabled, and while a step is being
/// undone or redone, recorded steps are deleted at once.
class UndoQueue {
public:
    void record(std::unique_ptr<UndoStep> step);

    /// Steps recorded between the outermost pair become one. Empty chunks leave nothing.
    void openChunk(const std::string& label);
    void closeChunk();

    /// False when there is nothing, or the step fails; it then stays where it is and can be tried
    /// again. "Undo" or "Redo" is sent after success.
    bool undo();
    bool redo();

    bool canUndo() const { return !done_.empty(); }
    bool canRedo() const { return !undone_.empty(); }
    std::string undoLabel() const;
    std::string redoLabel() const;
    std::size_t undoCount() const { return done_.size(); }
    std::size_t redoCount() const { return undone_.size(); }
    bool isUndoing() const { return undoing_; }
    bool isRedoing() const { return redoing_; }

    void flush(); ///< deletes every step
    bool enabled() const { return enabled_; }
    void setEnabled(bool enabled) { enabled_ = enabled; }

    /// How many steps are kept; 0 is without limit.
    void setLimit(std::size_t limit);
    std::size_t limit() const { return limit_; }

    /// One listener, called after anything that may change canUndo or canRedo.
    void setListener(std::function<void()> listener) { listener_ = std::move(listener); }

private:
    using Steps = std::vector<std::unique_ptr<UndoStep>>;

    void push(std::unique_ptr<UndoStep> step);
    void changed() const;

    Steps done_;
    Steps undone_;
    Steps chunk_;
    std::string chunkLabel_;
    int chunkDepth_ = 0;
    std::size_t limit_ = 0;
    bool enabled_ = true;
    bool undoing_ = false;
    bool redoing_ = false;
    std::function<void()> listener_;
};

UndoQueue& undoQueue();

/// Nothing is recorded while one of these lives.
class UndoSuspender {
public:
    UndoSuspender() : before_(undoQueue().enabled()) { undoQueue().setEnabled(false); }
    ~UndoSuspender() { undoQueue().setEnabled(before_); }
    UndoSuspender(const UndoSuspender&) = delete;
    UndoSuspender& operator=(const UndoSuspender&) = delete;

private:
    bool before_;
};

} // namespace host
