#pragma once

#include "geometry/AcGeTol.h"

#include <cmath>
#include <numbers>

// A direction and length in the plane.
class AcGeVector2d {
public:
    double x = 0.0;
    double y = 0.0;

    AcGeVector2d() = default;
    AcGeVector2d(double xx, double yy) : x(xx), y(yy) {}

    double lengthSqrd() const { return x * x + y * y; }
    double length() const { return std::hypot(x, y); }

    // Angle from the X axis, radians, from 0 up to but not including a full turn; 0 for no length.
    double angle() const {
        const double fullTurn = 2.0 * std::numbers::pi;
        double a = std::atan2(y, x);
        if (a < 0.0) a += fullTurn;
        return a >= fullTurn ? 0.0 : a + 0.0;
    }

    double dotProduct(const AcGeVector2d& v) const { return x * v.x + y * v.y; }
    double crossProduct(const AcGeVector2d& v) const { return x * v.y - y * v.x; }
    AcGeVector2d perpVector() const { return {-y, x}; }
    // Unit vector; a vector of no length stays as it is.
    AcGeVector2d normal() const {
        const double len = length();
        return len == 0.0 ? *this : AcGeVector2d{x / len, y / len};
    }
    bool isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const { return length() <= tol.equalVector; }

    AcGeVector2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
    AcGeVector2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
    AcGeVector2d operator-() const { return {-x, -y}; }
    AcGeVector2d operator*(double s) const { return {x * s, y * s}; }
    friend AcGeVector2d operator*(double s, const AcGeVector2d& v) { return v * s; }
};

// A place in the plane.
class AcGePoint2d {
public:
    double x = 0.0;
    double y = 0.0;

    AcGePoint2d() = default;
    AcGePoint2d(double xx, double yy) : x(xx), y(yy) {}

    AcGeVector2d asVector() const { return {x, y}; }
    double distanceTo(const AcGePoint2d& p) const { return std::hypot(p.x - x, p.y - y); }
    bool isEqualTo(const AcGePoint2d& p, const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(p) <= tol.equalPoint;
    }

    AcGePoint2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
    AcGePoint2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
    AcGeVector2d operator-(const AcGePoint2d& p) const { return {x - p.x, y - p.y}; }
};
