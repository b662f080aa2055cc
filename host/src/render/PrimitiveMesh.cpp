#include "render/PrimitiveMesh.h"

#include <maya/MFn.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MPlug.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace host {

PrimitiveMesh sphereMesh(double radius, int around, int along) {
    constexpr double pi = 3.141592653589793;
    around = std::max(3, std::min(around, 500));
    along = std::max(2, std::min(along, 500));
    const auto vertex = [&](int i, int j) {
        const double turn = 2 * pi * i / around;
        const double rise = pi * j / along - pi / 2;
        const MVector normal(std::cos(rise) * std::sin(turn), std::sin(rise),
                             std::cos(rise) * std::cos(turn));
        return PrimitiveMesh::Vertex{MPoint(normal * radius), normal};
    };
    PrimitiveMesh mesh;
    mesh.quads.reserve(std::size_t(around) * std::size_t(along) * 4);
    for (int j = 0; j < along; ++j)
        for (int i = 0; i < around; ++i)
            for (const auto& v :
                 {vertex(i, j), vertex(i + 1, j), vertex(i + 1, j + 1), vertex(i, j + 1)})
                mesh.quads.push_back(v);
    return mesh;
}

PrimitiveMesh boxMesh(double width, double height, double depth) {
    const double half[3] = {width / 2, height / 2, depth / 2};
    PrimitiveMesh mesh;
    for (int axis = 0; axis < 3; ++axis) {
        for (const double side : {-1.0, 1.0}) {
            const int u = (axis + 1) % 3;
            const int v = (axis + 2) % 3;
            double n[3] = {};
            n[axis] = side;
            const double corners[4][2] = {{-1, -1}, {side, -side}, {1, 1}, {-side, side}};
            for (const auto& corner : corners) {
                double p[3];
                p[axis] = side * half[axis];
                p[u] = corner[0] * half[u];
                p[v] = corner[1] * half[v];
                mesh.quads.push_back({MPoint(p[0], p[1], p[2]), MVector(n[0], n[1], n[2])});
            }
        }
    }
    return mesh;
}

PrimitiveMesh planeMesh(double width, double depth) {
    const double x = width / 2;
    const double z = depth / 2;
    const MVector up(0, 1, 0);
    return {{{MPoint(-x, 0, z), up},
             {MPoint(x, 0, z), up},
             {MPoint(x, 0, -z), up},
             {MPoint(-x, 0, -z), up}}};
}

PrimitiveMesh meshOf(const MDagPath& shape) {
    if (shape.apiType() != MFn::kMesh)
        return {};
    MStatus status;
    const MPlug input = MFnDependencyNode(shape.node()).findPlug("inMesh", true, &status);
    if (!status || input.isNull())
        return {};
    const MPlug source = input.source();
    if (source.isNull())
        return {};
    const MFnDependencyNode maker(source.node());
    const auto number = [&maker](const char* name, double fallback) {
        MStatus found;
        const MPlug plug = maker.findPlug(name, true, &found);
        return found && !plug.isNull() ? plug.asDouble() : fallback;
    };
    const std::string type = maker.typeName().asChar();
    if (type == "polySphere")
        return sphereMesh(number("radius", 1), int(number("subdivisionsAxis", 20)),
                          int(number("subdivisionsHeight", 20)));
    if (type == "polyCube")
        return boxMesh(number("width", 1), number("height", 1), number("depth", 1));
    if (type == "polyPlane")
        return planeMesh(number("width", 1), number("height", 1));
    return {};
}

} // namespace host
