// The alpha bytes of a Format_RGBA8888 image, as the freehand rules address them.
#pragma once

#include <QImage>

#include <cstddef>
#include <cstdint>

namespace vellum {

class AlphaPlane {
public:
    /// Borrows the image, which must outlive the plane and not be copied meanwhile.
    explicit AlphaPlane(QImage& image)
        : alpha_(image.bits() + 3), stride_(image.bytesPerLine()), width_(image.width()),
          height_(image.height()) {}

    int width() const { return width_; }
    int height() const { return height_; }
    bool contains(int x, int y) const { return x >= 0 && x < width_ && y >= 0 && y < height_; }

    /// Alpha of pixel (0, y); the next pixel's is kStep bytes on.
    static constexpr std::ptrdiff_t kStep = 4;
    std::uint8_t* row(int y) const { return alpha_ + static_cast<std::ptrdiff_t>(y) * stride_; }
    std::uint8_t& at(int x, int y) const { return row(y)[x * kStep]; }

    /// Raises a pixel to at least `value`; dropped outside the image.
    void raise(int x, int y, std::uint8_t value) const {
        if (contains(x, y) && at(x, y) < value)
            at(x, y) = value;
    }

private:
    std::uint8_t* alpha_;
    std::ptrdiff_t stride_;
    int width_;
    int height_;
};

} // namespace vellum
