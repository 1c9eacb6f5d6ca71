#pragma once

// The host's geometry, as far as the library needs it. Coordinates and lengths are in drawing
// units, angles in radians.

#include <corma/export.h>

class AcGeMatrix3d;
class AcGeVector3d;

class CORMA_EXPORT AcGePoint3d
{
public:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    static const AcGePoint3d kOrigin;

    AcGePoint3d() = default;

    constexpr AcGePoint3d(double xx, double yy, double zz)
        : x(xx)
        , y(yy)
        , z(zz)
    {
    }

    AcGePoint3d& transformBy(const AcGeMatrix3d& matrix);
    [[nodiscard]] AcGeVector3d asVector() const;
    bool operator==(const AcGePoint3d&) const = default;

    double operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : z; }
};

class CORMA_EXPORT AcGeVector3d
{
public:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    static const AcGeVector3d kIdentity; // the zero vector
    static const AcGeVector3d kXAxis;
    static const AcGeVector3d kYAxis;
    static const AcGeVector3d kZAxis;

    AcGeVector3d() = default;

    constexpr AcGeVector3d(double xx, double yy, double zz)
        : x(xx)
        , y(yy)
        , z(zz)
    {
    }

    /// Turned and scaled, but not moved.
    AcGeVector3d& transformBy(const AcGeMatrix3d& matrix);
    [[nodiscard]] double length() const;
    [[nodiscard]] bool isZeroLength() const;

    /// Of length 1; a zero vector stays one.
    [[nodiscard]] AcGeVector3d normal() const;
    [[nodiscard]] double dotProduct(const AcGeVector3d& other) const;
    [[nodiscard]] AcGeVector3d crossProduct(const AcGeVector3d& other) const;

    /// The angle from this one to other, counter-clockwise as seen against the direction of axis,
    /// from 0 up to 2 pi. Only the side to which axis points counts.
    [[nodiscard]] double angleTo(const AcGeVector3d& other, const AcGeVector3d& axis) const;

    AcGeVector3d operator*(double factor) const;
    AcGeVector3d operator+(const AcGeVector3d& other) const;
    AcGeVector3d operator-(const AcGeVector3d& other) const;
    AcGeVector3d operator-() const;
    bool operator==(const AcGeVector3d&) const = default;

    double operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : z; }
};

CORMA_EXPORT AcGePoint3d operator+(const AcGePoint3d& point, const AcGeVector3d& vector);
CORMA_EXPORT AcGePoint3d operator-(const AcGePoint3d& point, const AcGeVector3d& vector);
CORMA_EXPORT AcGeVector3d operator-(const AcGePoint3d& to, const AcGePoint3d& from);

class CORMA_EXPORT AcGeScale3d
{
public:
    double sx = 1.0;
    double sy = 1.0;
    double sz = 1.0;

    AcGeScale3d() = default;

    constexpr AcGeScale3d(double x, double y, double z)
        : sx(x)
        , sy(y)
        , sz(z)
    {
    }

    bool operator==(const AcGeScale3d&) const = default;
};

/// An affine transformation: the columns are the images of the axes and of the origin; the last row
/// is 0 0 0 1 and is not looked at.
class CORMA_EXPORT AcGeMatrix3d
{
public:
    // [row][column]; at first the identity
    double entry[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};

    static const AcGeMatrix3d kIdentity;

    AcGeMatrix3d() = default;

    AcGeMatrix3d& setToIdentity();

    /// this = this * right: right is done first.
    AcGeMatrix3d& postMultBy(const AcGeMatrix3d& right);

    /// this = left * this: left is done last.
    AcGeMatrix3d& preMultBy(const AcGeMatrix3d& left);
    AcGeMatrix3d operator*(const AcGeMatrix3d& right) const;

    AcGeMatrix3d& operator*=(const AcGeMatrix3d& right) { return postMultBy(right); }

    AcGeMatrix3d& setToTranslation(const AcGeVector3d& vector);

    /// Turned by an angle, counter-clockwise about an axis through a center; the identity when the
    /// axis has no length.
    AcGeMatrix3d& setToRotation(double angle, const AcGeVector3d& axis,
                                const AcGePoint3d& center = AcGePoint3d::kOrigin);
    AcGeMatrix3d& setToScaling(double factor, const AcGePoint3d& center = AcGePoint3d::kOrigin);
    AcGeMatrix3d& setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                 const AcGeVector3d& yAxis, const AcGeVector3d& zAxis);
    void getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis,
                        AcGeVector3d& zAxis) const;

    /// From the plane through the origin with that normal (an object's own coordinates, by the
    /// arbitrary axis rule) to world coordinates, and back. The normal may have any length; without
    /// one it is the Z axis.
    AcGeMatrix3d& setToPlaneToWorld(const AcGeVector3d& normal);
    AcGeMatrix3d& setToWorldToPlane(const AcGeVector3d& normal);

    [[nodiscard]] double det() const; // negative when it mirrors

    /// True when the images of the axes lie in a plane: the volume that they span is at most the
    /// tolerance, each taken with length 1. So a small scale is not singular, but a NaN is.
    [[nodiscard]] bool isSingular(double tolerance = 1e-10) const;

    /// The inverse; the identity for a matrix that has none, singular with tolerance 0.
    [[nodiscard]] AcGeMatrix3d inverse() const;

    /// The factor by which all lengths grow, when it is the same in every direction and axes stay
    /// at right angles; a mirroring counts. 0 when it is not the same.
    [[nodiscard]] double uniformScale(double tolerance = 1e-9) const;

    double operator()(unsigned int row, unsigned int column) const { return entry[row][column]; }

    double& operator()(unsigned int row, unsigned int column) { return entry[row][column]; }

    bool operator==(const AcGeMatrix3d& other) const; // bit for bit, but for -0
};

CORMA_EXPORT AcGePoint3d operator*(const AcGeMatrix3d& matrix, const AcGePoint3d& point);
CORMA_EXPORT AcGeVector3d operator*(const AcGeMatrix3d& matrix, const AcGeVector3d& vector);
