#pragma once

#include <memory>

namespace host {
struct CursorShape;
} // namespace host

/// The look of the pointer while a tool is current.
class MCursor {
public:
    /// One bit a pixel, rows padded to whole bytes, lowest bit leftmost (the X bitmap format). The
    /// bits are copied.
    MCursor(short width, short height, short hotSpotX, short hotSpotY, unsigned char* bits,
            unsigned char* mask);
    MCursor(const MCursor& other);
    ~MCursor();

    MCursor& operator=(const MCursor& other);
    bool operator==(const MCursor& other) const;
    bool operator!=(const MCursor& other) const;

    static const MCursor defaultCursor;
    static const MCursor crossHairCursor;
    static const MCursor doubleCrossHairCursor;
    static const MCursor editCursor;
    static const MCursor pencilCursor;
    static const MCursor handCursor;

private:
    explicit MCursor(int standardShape);

    std::shared_ptr<const host::CursorShape> shape_;
    friend struct host::CursorShape;
};
