#include "geometry/AcGeMatrix3d.h"

#include <algorithm>

AcGeTol AcGeContext::gTol{};

const AcGeVector3d AcGeVector3d::kXAxis{1.0, 0.0, 0.0};
const AcGeVector3d AcGeVector3d::kYAxis{0.0, 1.0, 0.0};
const AcGeVector3d AcGeVector3d::kZAxis{0.0, 0.0, 1.0};
const AcGePoint3d AcGePoint3d::kOrigin{};
const AcGeMatrix3d AcGeMatrix3d::kIdentity{};

AcGeVector3d AcGeVector3d::perpVector() const {
    // The arbitrary axis rule of exchange files: near the Z axis the Y axis gives X, else the Z axis does.
    constexpr double kNearZ = 1.0 / 64.0;
    const bool nearZ = std::abs(x) < kNearZ && std::abs(y) < kNearZ;
    return (nearZ ? kYAxis : kZAxis).crossProduct(*this).normal();
}

AcGeVector3d& AcGeVector3d::transformBy(const AcGeMatrix3d& m) {
    const auto& e = m.entry;
    return *this = {e[0][0] * x + e[0][1] * y + e[0][2] * z, e[1][0] * x + e[1][1] * y + e[1][2] * z,
                    e[2][0] * x + e[2][1] * y + e[2][2] * z};
}

AcGePoint3d& AcGePoint3d::transformBy(const AcGeMatrix3d& m) {
    AcGeVector3d v = asVector();
    v.transformBy(m);
    const AcGeVector3d moved = v + m.translation();
    return *this = {moved.x, moved.y, moved.z};
}

AcGeMatrix3d::AcGeMatrix3d() {
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column) entry[row][column] = row == column ? 1.0 : 0.0;
}

AcGeMatrix3d AcGeMatrix3d::translation(const AcGeVector3d& offset) {
    AcGeMatrix3d m;
    m.entry[0][3] = offset.x;
    m.entry[1][3] = offset.y;
    m.entry[2][3] = offset.z;
    return m;
}

namespace {

AcGeMatrix3d about(const AcGePoint3d& center, const AcGeMatrix3d& linear) {
    return AcGeMatrix3d::translation(center.asVector()) * linear *
           AcGeMatrix3d::translation(-center.asVector());
}

// The quarter turns are exact, so that a plan that is turned by 90 degrees keeps its round numbers.
void exactSinCos(double angle, double& sine, double& cosine) {
    sine = std::sin(angle);
    cosine = std::cos(angle);
    constexpr double kTiny = 1.0e-15;
    if (std::abs(sine) < kTiny) {
        sine = 0.0;
        cosine = cosine < 0.0 ? -1.0 : 1.0;
    } else if (std::abs(cosine) < kTiny) {
        cosine = 0.0;
        sine = sine < 0.0 ? -1.0 : 1.0;
    }
}

} // namespace

AcGeMatrix3d AcGeMatrix3d::rotation(double angle, const AcGeVector3d& axis, const AcGePoint3d& center) {
    const AcGeVector3d u = axis.normal();
    double s = 0.0;
    double c = 0.0;
    exactSinCos(angle, s, c);
    const double t = 1.0 - c;
    AcGeMatrix3d m;
    m.entry[0][0] = t * u.x * u.x + c;
    m.entry[0][1] = t * u.x * u.y - s * u.z;
    m.entry[0][2] = t * u.x * u.z + s * u.y;
    m.entry[1][0] = t * u.x * u.y + s * u.z;
    m.entry[1][1] = t * u.y * u.y + c;
    m.entry[1][2] = t * u.y * u.z - s * u.x;
    m.entry[2][0] = t * u.x * u.z - s * u.y;
    m.entry[2][1] = t * u.y * u.z + s * u.x;
    m.entry[2][2] = t * u.z * u.z + c;
    return about(center, m);
}

AcGeMatrix3d AcGeMatrix3d::scaling(double factor, const AcGePoint3d& center) {
    return scaling(AcGeVector3d(factor, factor, factor), center);
}

AcGeMatrix3d AcGeMatrix3d::scaling(const AcGeVector3d& factors, const AcGePoint3d& center) {
    AcGeMatrix3d m;
    m.entry[0][0] = factors.x;
    m.entry[1][1] = factors.y;
    m.entry[2][2] = factors.z;
    return about(center, m);
}

AcGeMatrix3d AcGeMatrix3d::mirroring(const AcGePoint3d& onPlane, const AcGeVector3d& normal) {
    const AcGeVector3d n = normal.normal();
    const double c[3] = {n.x, n.y, n.z};
    AcGeMatrix3d m;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column) m.entry[row][column] -= 2.0 * c[row] * c[column];
    return about(onPlane, m);
}

AcGeMatrix3d AcGeMatrix3d::coordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                       const AcGeVector3d& yAxis, const AcGeVector3d& zAxis) {
    AcGeMatrix3d m;
    const AcGeVector3d* axes[3] = {&xAxis, &yAxis, &zAxis};
    for (int column = 0; column < 3; ++column) {
        m.entry[0][column] = axes[column]->x;
        m.entry[1][column] = axes[column]->y;
        m.entry[2][column] = axes[column]->z;
    }
    m.entry[0][3] = origin.x;
    m.entry[1][3] = origin.y;
    m.entry[2][3] = origin.z;
    return m;
}

AcGeMatrix3d AcGeMatrix3d::operator*(const AcGeMatrix3d& right) const {
    AcGeMatrix3d product;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column) {
            double sum = 0.0;
            for (int k = 0; k < 4; ++k) sum += entry[row][k] * right.entry[k][column];
            product.entry[row][column] = sum;
        }
    return product;
}

double AcGeMatrix3d::det() const {
    const auto& e = entry;
    return e[0][0] * (e[1][1] * e[2][2] - e[1][2] * e[2][1]) -
           e[0][1] * (e[1][0] * e[2][2] - e[1][2] * e[2][0]) +
           e[0][2] * (e[1][0] * e[2][1] - e[1][1] * e[2][0]);
}

bool AcGeMatrix3d::isSingular() const {
    const AcGeVector3d scales = axisScales();
    const double volume = scales.x * scales.y * scales.z;
    constexpr double kFlat = 1.0e-12;
    return !(std::abs(det()) > kFlat * volume);
}

AcGeMatrix3d AcGeMatrix3d::inverse() const {
    if (isSingular()) return AcGeMatrix3d();
    const auto& e = entry;
    const double d = 1.0 / det();
    AcGeMatrix3d m;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column) {
            const int r1 = (column + 1) % 3, r2 = (column + 2) % 3, c1 = (row + 1) % 3, c2 = (row + 2) % 3;
            m.entry[row][column] = d * (e[r1][c1] * e[r2][c2] - e[r1][c2] * e[r2][c1]);
        }
    const AcGeVector3d back = translation();
    for (int row = 0; row < 3; ++row)
        m.entry[row][3] = -(m.entry[row][0] * back.x + m.entry[row][1] * back.y + m.entry[row][2] * back.z);
    return m;
}

AcGeVector3d AcGeMatrix3d::axisScales() const {
    return {AcGeVector3d(entry[0][0], entry[1][0], entry[2][0]).length(),
            AcGeVector3d(entry[0][1], entry[1][1], entry[2][1]).length(),
            AcGeVector3d(entry[0][2], entry[1][2], entry[2][2]).length()};
}

bool AcGeMatrix3d::isUniformScale() const {
    const AcGeVector3d scales = axisScales();
    const double largest = std::max({scales.x, scales.y, scales.z});
    const double smallest = std::min({scales.x, scales.y, scales.z});
    constexpr double kRelative = 1.0e-9;
    return largest - smallest <= kRelative * largest;
}

double AcGeMatrix3d::scaleInPlane(const AcGeVector3d& normal) const {
    AcGeVector3d x = normal.perpVector();
    AcGeVector3d y = normal.normal().crossProduct(x);
    x.transformBy(*this);
    y.transformBy(*this);
    constexpr double kRelative = 1.0e-9;
    const double size = x.length();
    const bool keepsShape = std::abs(size - y.length()) <= kRelative * size &&
                            std::abs(x.dotProduct(y)) <= kRelative * size * size;
    return keepsShape ? size : 0.0;
}
