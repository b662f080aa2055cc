#include "commands/TransformParts.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MPlug.h>

#include <cmath>

namespace host {

TransformParts decompose(const MMatrix& matrix) {
    TransformParts parts;
    double rows[3][3];
    for (unsigned i = 0; i < 3; ++i) {
        parts.translate[i] = matrix(3, i);
        parts.scale[i] = std::sqrt(matrix(i, 0) * matrix(i, 0) + matrix(i, 1) * matrix(i, 1) +
                                   matrix(i, 2) * matrix(i, 2));
    }
    if (matrix.det3x3() < 0)
        parts.scale[0] = -parts.scale[0];
    for (unsigned i = 0; i < 3; ++i)
        for (unsigned j = 0; j < 3; ++j)
            rows[i][j] = parts.scale[i] != 0 ? matrix(i, j) / parts.scale[i] : double(i == j);
    const double sine = std::fmin(1.0, std::fmax(-1.0, -rows[0][2]));
    parts.rotate[1] = std::asin(sine);
    constexpr double gimbal = 1.0 - 1e-12;
    if (std::abs(sine) < gimbal) {
        parts.rotate[0] = std::atan2(rows[1][2], rows[2][2]);
        parts.rotate[2] = std::atan2(rows[0][1], rows[0][0]);
    } else { // x and z turn about the same axis; x takes it all
        parts.rotate[0] = std::atan2(-rows[2][1], rows[1][1]);
    }
    return parts;
}

std::array<double, 3> channel(const MDagPath& path, const char* attribute) {
    const MPlug plug = MFnDependencyNode(path.node()).findPlug(attribute, false);
    return {plug.child(0).asDouble(), plug.child(1).asDouble(), plug.child(2).asDouble()};
}

void setChannel(const MDagPath& path, const char* attribute, const std::array<double, 3>& values) {
    const MPlug plug = MFnDependencyNode(path.node()).findPlug(attribute, false);
    for (unsigned i = 0; i < 3; ++i) {
        MPlug child = plug.child(i);
        if (!child.isLocked() && !child.isDestination() && child.asDouble() != values[i])
            child.setDouble(values[i]);
    }
}

TransformParts partsOf(const MDagPath& path) {
    return {channel(path, "translate"), channel(path, "rotate"), channel(path, "scale")};
}

void setParts(const MDagPath& path, const TransformParts& parts) {
    setChannel(path, "translate", parts.translate);
    setChannel(path, "rotate", parts.rotate);
    setChannel(path, "scale", parts.scale);
}

} // namespace host
