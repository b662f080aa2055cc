#pragma once

#include <memory>

namespace host {

/// A connection of its own to the X server, on which the server's pointer and keyboard are
/// driven. Every call has reached the server when it returns.
class XTestInput {
public:
    /// Null when there is no X server or it lacks the XTEST extension.
    static std::unique_ptr<XTestInput> open();
    /// Whether an X server answers at all, with the extension or without.
    static bool serverAnswers();
    ~XTestInput();
    XTestInput(const XTestInput&) = delete;
    XTestInput& operator=(const XTestInput&) = delete;

    void move(int x, int y);            ///< pixels of the screen
    void button(int number, bool down); ///< X's numbers: 1 left, 2 middle, 3 right, 4, 5 wheel
    bool key(int qtKey, bool down);     ///< a Qt::Key; false when the keyboard has none
    bool needsShift(int qtKey) const;   ///< whether it is the upper one on its key
    void pointer(int& x, int& y) const;

    /// Whether the server repeats a key that is held.
    bool keyRepeats() const;
    /// From now on it does not, until this object goes: on a slow machine a key would come more
    /// often than it was pressed. It is the server's own setting, for all its programs.
    void stopKeyRepeat();

private:
    explicit XTestInput(void* display) : display_(display) {}
    bool repeatStopped_ = false;
    void* display_; ///< Display*, whose header clashes with Qt's
};

} // namespace host
