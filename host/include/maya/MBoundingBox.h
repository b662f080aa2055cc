#pragma once

#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

class MMatrix;

/// An axis-aligned box; made empty.
class MBoundingBox {
public:
    MBoundingBox();
    MBoundingBox(const MBoundingBox& other) = default;
    MBoundingBox(const MPoint& corner1, const MPoint& corner2);
    ~MBoundingBox() = default;
    MBoundingBox& operator=(const MBoundingBox& other) = default;

    void clear();
    void transformUsing(const MMatrix& matrix);
    void expand(const MPoint& point);
    void expand(const MBoundingBox& box);
    bool contains(const MPoint& point) const;
    bool intersects(const MBoundingBox& box, double tolerance = 0.0) const;
    double width() const;  ///< along x
    double height() const; ///< along y
    double depth() const;  ///< along z
    MPoint center() const;
    MPoint min() const;
    MPoint max() const;

private:
    MPoint min_;
    MPoint max_;
    bool empty_;
};
