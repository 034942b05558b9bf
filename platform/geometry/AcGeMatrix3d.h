#pragma once

#include "geometry/AcGePoint3d.h"

// An affine map of space: four rows of four, points are columns on its right.
class VELDRIN_GEOMETRY_API AcGeMatrix3d {
public:
    double entry[4][4];

    AcGeMatrix3d(); // identity
    static const AcGeMatrix3d kIdentity;

    static AcGeMatrix3d translation(const AcGeVector3d& offset);
    // Counter-clockwise about the axis, radians.
    static AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis,
                                 const AcGePoint3d& center = AcGePoint3d::kOrigin);
    static AcGeMatrix3d scaling(double factor, const AcGePoint3d& center = AcGePoint3d::kOrigin);
    static AcGeMatrix3d scaling(const AcGeVector3d& factors,
                                const AcGePoint3d& center = AcGePoint3d::kOrigin);
    // Mirror at the plane through the point with the given unit normal.
    static AcGeMatrix3d mirroring(const AcGePoint3d& onPlane, const AcGeVector3d& normal);
    // Maps the world frame onto the given one.
    static AcGeMatrix3d coordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                    const AcGeVector3d& yAxis, const AcGeVector3d& zAxis);

    AcGeMatrix3d operator*(const AcGeMatrix3d& right) const;
    double det() const;
    // The inverse; the identity when the matrix is singular.
    AcGeMatrix3d inverse() const;
    bool isSingular() const;
    AcGeVector3d translation() const { return {entry[0][3], entry[1][3], entry[2][3]}; }
    // Length that a unit vector of each axis gets.
    AcGeVector3d axisScales() const;
    // True when all three axes scale alike, to one part in 1e9.
    bool isUniformScale() const;
    // By how much it scales a plane with that normal when figures in it keep their shape, to one part in 1e9;
    // 0 when they do not.
    double scaleInPlane(const AcGeVector3d& normal) const;
};
