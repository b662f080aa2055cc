// The decoded pictures of the process, in order of use. When there are more than the budget, the
// least recently used ones are packed; frames on display or being edited never are. Main thread
// only.
#pragma once

namespace vellum {

class Frame;

class FrameCache {
public:
    static constexpr int kDefaultBudget = 64; ///< decoded frames, 4 MiB each

    /// Decoded frames to keep, at least 1. Packs what is above a smaller budget at once.
    static void setBudget(int frames);

    static int decodedCount();

    /// Packs every frame that is not held.
    static void packAll();

private:
    friend class Frame;

    static void touch(const Frame& frame);  ///< used now; may pack others
    static void forget(const Frame& frame); ///< no longer decoded
    static void trim(const Frame* keep);
};

} // namespace vellum
