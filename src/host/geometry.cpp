#include <corma/geometry.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

constinit const AcGePoint3d AcGePoint3d::kOrigin;
constinit const AcGeVector3d AcGeVector3d::kIdentity;
constinit const AcGeVector3d AcGeVector3d::kXAxis {1.0, 0.0, 0.0};
constinit const AcGeVector3d AcGeVector3d::kYAxis {0.0, 1.0, 0.0};
constinit const AcGeVector3d AcGeVector3d::kZAxis {0.0, 0.0, 1.0};
constinit const AcGeMatrix3d AcGeMatrix3d::kIdentity;

namespace {

// Nearer to the world's Z axis than this, a normal takes its X axis from the world's Y axis.
constexpr double kArbitraryAxisLimit = 1.0 / 64.0;

AcGeVector3d column(const AcGeMatrix3d& matrix, unsigned int index)
{
    return {matrix(0, index), matrix(1, index), matrix(2, index)};
}

double tripleProduct(const AcGeVector3d& a, const AcGeVector3d& b, const AcGeVector3d& c)
{
    return a.dotProduct(b.crossProduct(c));
}

AcGeVector3d xAxisOfPlane(const AcGeVector3d& unitNormal)
{
    const bool isNearZ = std::abs(unitNormal.x) < kArbitraryAxisLimit
        && std::abs(unitNormal.y) < kArbitraryAxisLimit;
    const AcGeVector3d& from = isNearZ ? AcGeVector3d::kYAxis : AcGeVector3d::kZAxis;
    return from.crossProduct(unitNormal).normal();
}

} // namespace

// --- points and vectors --------------------------------------------------------------------------

AcGePoint3d& AcGePoint3d::transformBy(const AcGeMatrix3d& matrix)
{
    return *this = matrix * *this;
}

AcGeVector3d AcGePoint3d::asVector() const
{
    return {x, y, z};
}

AcGeVector3d& AcGeVector3d::transformBy(const AcGeMatrix3d& matrix)
{
    return *this = matrix * *this;
}

double AcGeVector3d::length() const
{
    return std::hypot(x, y, z);
}

bool AcGeVector3d::isZeroLength() const
{
    return x == 0.0 && y == 0.0 && z == 0.0;
}

AcGeVector3d AcGeVector3d::normal() const
{
    const double largest = std::max({std::abs(x), std::abs(y), std::abs(z)});
    if (largest == 0.0) {
        return {};
    }
    // First to about length 1, so that squares of the smallest numbers do not vanish.
    const AcGeVector3d scaled {x / largest, y / largest, z / largest};
    const double scaledLength = scaled.length();
    return {scaled.x / scaledLength, scaled.y / scaledLength, scaled.z / scaledLength};
}

double AcGeVector3d::dotProduct(const AcGeVector3d& other) const
{
    return x * other.x + y * other.y + z * other.z;
}

AcGeVector3d AcGeVector3d::crossProduct(const AcGeVector3d& other) const
{
    return {y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x};
}

double AcGeVector3d::angleTo(const AcGeVector3d& other, const AcGeVector3d& axis) const
{
    const AcGeVector3d turn = crossProduct(other);
    const double angle = std::atan2(turn.length(), dotProduct(other));
    const bool isClockwise = turn.dotProduct(axis) < 0.0;
    return isClockwise ? 2.0 * std::numbers::pi - angle : angle;
}

AcGeVector3d AcGeVector3d::operator*(double factor) const
{
    return {x * factor, y * factor, z * factor};
}

AcGeVector3d AcGeVector3d::operator+(const AcGeVector3d& other) const
{
    return {x + other.x, y + other.y, z + other.z};
}

AcGeVector3d AcGeVector3d::operator-(const AcGeVector3d& other) const
{
    return {x - other.x, y - other.y, z - other.z};
}

AcGeVector3d AcGeVector3d::operator-() const
{
    return {-x, -y, -z};
}

AcGePoint3d operator+(const AcGePoint3d& point, const AcGeVector3d& vector)
{
    return {point.x + vector.x, point.y + vector.y, point.z + vector.z};
}

AcGePoint3d operator-(const AcGePoint3d& point, const AcGeVector3d& vector)
{
    return point + -vector;
}

AcGeVector3d operator-(const AcGePoint3d& to, const AcGePoint3d& from)
{
    return {to.x - from.x, to.y - from.y, to.z - from.z};
}

// --- matrices ------------------------------------------------------------------------------------

AcGeMatrix3d& AcGeMatrix3d::setToIdentity()
{
    return *this = AcGeMatrix3d();
}

AcGeMatrix3d& AcGeMatrix3d::postMultBy(const AcGeMatrix3d& right)
{
    return *this = *this * right;
}

AcGeMatrix3d& AcGeMatrix3d::preMultBy(const AcGeMatrix3d& left)
{
    return *this = left * *this;
}

AcGeMatrix3d AcGeMatrix3d::operator*(const AcGeMatrix3d& right) const
{
    AcGePoint3d origin;
    AcGeVector3d xAxis;
    AcGeVector3d yAxis;
    AcGeVector3d zAxis;
    right.getCoordSystem(origin, xAxis, yAxis, zAxis);
    AcGeMatrix3d product;
    product.setCoordSystem(*this * origin, *this * xAxis, *this * yAxis, *this * zAxis);
    return product;
}

AcGeMatrix3d& AcGeMatrix3d::setToTranslation(const AcGeVector3d& vector)
{
    return setCoordSystem(AcGePoint3d::kOrigin + vector, AcGeVector3d::kXAxis, AcGeVector3d::kYAxis,
                          AcGeVector3d::kZAxis);
}

AcGeMatrix3d& AcGeMatrix3d::setToRotation(double angle, const AcGeVector3d& axis,
                                          const AcGePoint3d& center)
{
    if (axis.isZeroLength()) {
        return setToIdentity();
    }
    const AcGeVector3d unit = axis.normal();
    const double cosine = std::cos(angle);
    const double sine = std::sin(angle);
    const auto turned = [&](const AcGeVector3d& vector) {
        return vector * cosine + unit.crossProduct(vector) * sine
            + unit * (unit.dotProduct(vector) * (1.0 - cosine));
    };
    return setCoordSystem(center - turned(center.asVector()), turned(AcGeVector3d::kXAxis),
                          turned(AcGeVector3d::kYAxis), turned(AcGeVector3d::kZAxis));
}

AcGeMatrix3d& AcGeMatrix3d::setToScaling(double factor, const AcGePoint3d& center)
{
    return setCoordSystem(center - center.asVector() * factor, AcGeVector3d::kXAxis * factor,
                          AcGeVector3d::kYAxis * factor, AcGeVector3d::kZAxis * factor);
}

AcGeMatrix3d& AcGeMatrix3d::setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                           const AcGeVector3d& yAxis, const AcGeVector3d& zAxis)
{
    for (unsigned int row = 0; row < 3; ++row) {
        entry[row][0] = xAxis[row];
        entry[row][1] = yAxis[row];
        entry[row][2] = zAxis[row];
        entry[row][3] = origin[row];
        entry[3][row] = 0.0;
    }
    entry[3][3] = 1.0;
    return *this;
}

void AcGeMatrix3d::getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis,
                                  AcGeVector3d& zAxis) const
{
    origin = AcGePoint3d::kOrigin + column(*this, 3);
    xAxis = column(*this, 0);
    yAxis = column(*this, 1);
    zAxis = column(*this, 2);
}

AcGeMatrix3d& AcGeMatrix3d::setToPlaneToWorld(const AcGeVector3d& normal)
{
    const AcGeVector3d zAxis = normal.isZeroLength() ? AcGeVector3d::kZAxis : normal.normal();
    const AcGeVector3d xAxis = xAxisOfPlane(zAxis);
    return setCoordSystem(AcGePoint3d::kOrigin, xAxis, zAxis.crossProduct(xAxis).normal(), zAxis);
}

AcGeMatrix3d& AcGeMatrix3d::setToWorldToPlane(const AcGeVector3d& normal)
{
    setToPlaneToWorld(normal);
    for (unsigned int row = 0; row < 3; ++row) {
        for (unsigned int col = 0; col < row; ++col) {
            std::swap(entry[row][col], entry[col][row]); // the inverse, as the axes are orthonormal
        }
    }
    return *this;
}

double AcGeMatrix3d::det() const
{
    return tripleProduct(column(*this, 0), column(*this, 1), column(*this, 2));
}

bool AcGeMatrix3d::isSingular(double tolerance) const
{
    const double volume = tripleProduct(column(*this, 0).normal(), column(*this, 1).normal(),
                                        column(*this, 2).normal());
    return !(std::abs(volume) > tolerance); // so written, NaN is singular
}

AcGeMatrix3d AcGeMatrix3d::inverse() const
{
    if (isSingular(0.0)) {
        return {};
    }
    // Worked out for columns of length 1: neither very small nor very large scales overflow.
    const AcGeVector3d units[]
        = {column(*this, 0).normal(), column(*this, 1).normal(), column(*this, 2).normal()};
    const double volume = tripleProduct(units[0], units[1], units[2]);
    const AcGeVector3d origin = column(*this, 3);
    AcGeMatrix3d result;
    for (unsigned int row = 0; row < 3; ++row) {
        const AcGeVector3d across = units[(row + 1) % 3].crossProduct(units[(row + 2) % 3]);
        const double divisor = volume * column(*this, row).length();
        const AcGeVector3d line {across.x / divisor, across.y / divisor, across.z / divisor};
        for (unsigned int col = 0; col < 3; ++col) {
            result.entry[row][col] = line[col];
        }
        result.entry[row][3] = -line.dotProduct(origin);
    }
    return result;
}

double AcGeMatrix3d::uniformScale(double tolerance) const
{
    const AcGeVector3d axes[] = {column(*this, 0), column(*this, 1), column(*this, 2)};
    const double scale = axes[0].length();
    if (!std::isfinite(scale) || scale == 0.0) {
        return 0.0;
    }
    for (unsigned int i = 0; i < 3; ++i) {
        const AcGeVector3d& next = axes[(i + 1) % 3];
        const bool isSameLength = std::abs(next.length() / scale - 1.0) <= tolerance;
        const bool isAtRightAngle
            = std::abs(axes[i].normal().dotProduct(next.normal())) <= tolerance;
        if (!isSameLength || !isAtRightAngle) {
            return 0.0;
        }
    }
    return scale;
}

bool AcGeMatrix3d::operator==(const AcGeMatrix3d& other) const
{
    return std::equal(&entry[0][0], &entry[0][0] + 16, &other.entry[0][0]);
}

AcGePoint3d operator*(const AcGeMatrix3d& matrix, const AcGePoint3d& point)
{
    return AcGePoint3d::kOrigin + (matrix * point.asVector() + column(matrix, 3));
}

AcGeVector3d operator*(const AcGeMatrix3d& matrix, const AcGeVector3d& vector)
{
    return column(matrix, 0) * vector.x + column(matrix, 1) * vector.y
        + column(matrix, 2) * vector.z;
}
