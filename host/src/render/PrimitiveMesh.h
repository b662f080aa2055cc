#pragma once

#include <maya/MDagPath.h>
#include <maya/MPoint.h>
#include <maya/MVector.h>

#include <vector>

namespace host {

/// Faces of a simple solid in object space; quadrilaterals, counter-clockwise from outside.
struct PrimitiveMesh {
    struct Vertex {
        MPoint position;
        MVector normal;
    };
    std::vector<Vertex> quads; ///< Four for each face.
};

PrimitiveMesh sphereMesh(double radius, int around, int along);
PrimitiveMesh boxMesh(double width, double height, double depth);
PrimitiveMesh planeMesh(double width, double depth);

/// The faces of a mesh shape, from the polySphere, polyCube or polyPlane that feeds it; without
/// faces for any other shape.
PrimitiveMesh meshOf(const MDagPath& shape);

} // namespace host
