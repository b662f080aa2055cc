// A key that acts while it is held down.
#pragma once

namespace vellum {

class HeldKey {
public:
    /// `key`: Qt's number of it.
    explicit HeldKey(int key) : key_(key) {}

    bool is(int key) const { return key == key_; }
    bool isHeld() const { return held_; }

    // Both return whether it is this key.

    bool press(int key) {
        held_ = held_ || is(key);
        return is(key);
    }
    /// A held key repeats as releases and presses; it stays held.
    bool release(int key, bool repeats) {
        held_ = held_ && (!is(key) || repeats);
        return is(key);
    }

    /// Its release will go to something else.
    void letGo() { held_ = false; }

private:
    int key_;
    bool held_ = false;
};

} // namespace vellum
