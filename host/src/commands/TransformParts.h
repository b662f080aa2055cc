#pragma once
#include <maya/MDagPath.h>
#include <maya/MMatrix.h>

#include <array>

// A transform as its channels hold it: centimetres, radians with the order x, y, z, factors.
namespace host {

struct TransformParts {
    std::array<double, 3> translate{};
    std::array<double, 3> rotate{};
    std::array<double, 3> scale{{1, 1, 1}};
};

// The parts that make up the matrix; shear is lost, a mirroring becomes a negative x scale.
TransformParts decompose(const MMatrix& matrix);

TransformParts partsOf(const MDagPath& path);
// Writes the three channels. What is locked or connected stays.
void setParts(const MDagPath& path, const TransformParts& parts);

std::array<double, 3> channel(const MDagPath& path, const char* attribute);
void setChannel(const MDagPath& path, const char* attribute, const std::array<double, 3>& values);

} // namespace host
