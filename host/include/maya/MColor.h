#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

#define kDefaultColor 0.0f

/// Red, green, blue and alpha, 0 to 1. Made as opaque black.
class MColor {
public:
    enum MColorType { kRGB, kHSV, kCMY, kCMYK };

    MColor();
    MColor(const MColor& other) = default;
    MColor(MColorType model, float c1, float c2, float c3, float alpha = 1.0f);
    MColor(float rr, float gg = 0.0f, float bb = 0.0f, float aa = 1.0f);
    MColor(const float c[4]);
    MColor(const double c[4]);
    ~MColor() = default;
    MColor& operator=(const MColor& other) = default;

    float operator()(unsigned int i) const { return (&r)[i]; }
    float& operator()(unsigned int i) { return (&r)[i]; }
    float operator[](unsigned int i) const { return (&r)[i]; }
    float& operator[](unsigned int i) { return (&r)[i]; }
    MStatus get(float c[4]) const;
    bool operator==(const MColor& other) const;
    bool operator!=(const MColor& other) const;

    static const MColor kOpaqueBlack;

    float r;
    float g;
    float b;
    float a;
};

std::ostream& operator<<(std::ostream& out, const MColor& color);
