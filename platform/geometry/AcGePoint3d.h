#pragma once

#include "geometry/AcGePoint2d.h"

class AcGeMatrix3d;

// A direction and length in space.
class VELDRIN_GEOMETRY_API AcGeVector3d {
public:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    static const AcGeVector3d kXAxis;
    static const AcGeVector3d kYAxis;
    static const AcGeVector3d kZAxis;

    AcGeVector3d() = default;
    AcGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

    double lengthSqrd() const { return x * x + y * y + z * z; }
    double length() const { return std::sqrt(lengthSqrd()); }
    double dotProduct(const AcGeVector3d& v) const { return x * v.x + y * v.y + z * v.z; }
    AcGeVector3d crossProduct(const AcGeVector3d& v) const {
        return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
    }
    // Unit vector; a vector of no length stays as it is.
    AcGeVector3d normal() const {
        const double len = length();
        return len == 0.0 ? *this : AcGeVector3d{x / len, y / len, z / len};
    }
    AcGeVector3d& normalize() { return *this = normal(); }
    bool isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const { return length() <= tol.equalVector; }
    bool isEqualTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const {
        return AcGeVector3d(x - v.x, y - v.y, z - v.z).length() <= tol.equalVector;
    }
    // A unit vector square to this one, the X axis of the arbitrary plane that has this as its normal.
    AcGeVector3d perpVector() const;
    AcGeVector3d& transformBy(const AcGeMatrix3d& matrix);
    AcGeVector2d convert2d() const { return {x, y}; }

    AcGeVector3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    AcGeVector3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    AcGeVector3d operator-() const { return {-x, -y, -z}; }
    AcGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
    AcGeVector3d operator/(double s) const { return {x / s, y / s, z / s}; }
    AcGeVector3d& operator+=(const AcGeVector3d& v) { return *this = *this + v; }
    friend AcGeVector3d operator*(double s, const AcGeVector3d& v) { return v * s; }
};

// A place in space, drawing units.
class VELDRIN_GEOMETRY_API AcGePoint3d {
public:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    static const AcGePoint3d kOrigin;

    AcGePoint3d() = default;
    AcGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

    void set(double xx, double yy, double zz) { *this = AcGePoint3d(xx, yy, zz); }
    AcGeVector3d asVector() const { return {x, y, z}; }
    AcGePoint2d convert2d() const { return {x, y}; }
    double distanceTo(const AcGePoint3d& p) const { return AcGeVector3d(p.x - x, p.y - y, p.z - z).length(); }
    bool isEqualTo(const AcGePoint3d& p, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(p) <= tol.equalPoint;
    }
    AcGePoint3d& transformBy(const AcGeMatrix3d& matrix);

    AcGePoint3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    AcGePoint3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    AcGeVector3d operator-(const AcGePoint3d& p) const { return {x - p.x, y - p.y, z - p.z}; }
    AcGePoint3d& operator+=(const AcGeVector3d& v) { return *this = *this + v; }
    bool operator==(const AcGePoint3d& p) const { return isEqualTo(p); }
    bool operator!=(const AcGePoint3d& p) const { return !isEqualTo(p); }
};
