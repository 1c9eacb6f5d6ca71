#pragma once

// What a transformation means for the planes in which entities have coordinates of their own.

#include <corma/geometry.h>

#include <optional>

namespace corma::host {

struct PolylineFrame;

/// What becomes of a plane that is mirrored.
enum class Mirroring
{
    inPlane, // its normal follows, what is in it is mirrored: for types that have a form for it
    turnedOver // it is seen from behind, and nothing in it is mirrored
};

/// What becomes of letters where a matrix asks for a form that they cannot have.
enum class Letters
{
    refuse,
    approximate // they keep their shape, and slant no further than they can
};

/// An angle in degrees, from 0 up to 360.
double normalizedDegrees(double degrees);

double degreesOf(const AcGeVector3d& vector); // of a vector in the XY plane

/// Degrees that are whole but for what rounding left.
double degreesWithoutNoise(double degrees);

/// A unit vector without what rounding left where 0 or 1 is meant.
AcGeVector3d withoutNoise(const AcGeVector3d& unit);

/// How coordinates in a plane become those in the transformed plane. Angles are in degrees. A
/// mirrored plane is first mirrored at its Y axis, then turned.
class PlaneMotion
{
public:
    PlaneMotion(const AcGeMatrix3d& matrix, const AcGeVector3d& normal, Mirroring mirroring);

    /// Of length 1.
    [[nodiscard]] const AcGeVector3d& normalBefore() const { return m_normalBefore; }

    [[nodiscard]] const AcGeVector3d& normal() const { return m_normal; }

    [[nodiscard]] AcGePoint3d point(const AcGePoint3d& before) const { return m_matrix * before; }

    [[nodiscard]] AcGeVector3d vector(const AcGeVector3d& before) const
    {
        return m_matrix * before;
    }

    /// Height above the origin; the same for all points of a plane.
    [[nodiscard]] double elevation(double before) const { return point({0, 0, before}).z; }

    /// True when figures in the plane keep their shape.
    [[nodiscard]] bool isSimilar() const { return m_scale != 0.0; }

    /// The factor of lengths in the plane; 0 when it is not the same in all directions.
    [[nodiscard]] double scale() const { return m_scale; }

    [[nodiscard]] bool mirrors() const { return m_mirrors; }

    /// The angle of similar figures.
    [[nodiscard]] double turn() const { return m_turn; }

    /// The angle of the image of a direction.
    [[nodiscard]] double direction(double before) const;

    /// The factor of lengths along the normal, negative when the normal does not follow; nothing
    /// when what stands upright on the plane leans afterwards.
    [[nodiscard]] std::optional<double> upright() const;

private:
    AcGeVector3d m_normalBefore;
    AcGeVector3d m_normal;
    AcGeMatrix3d m_matrix;
    double m_scale = 0.0;
    double m_turn = 0.0;
    bool m_mirrors = false;
};

/// A transformation, and what a vertex must know of its polyline.
class Motion
{
public:
    explicit Motion(const AcGeMatrix3d& matrix, const PolylineFrame* owner = nullptr)
        : m_matrix(matrix)
        , m_owner(owner)
    {
    }

    Motion(const AcGeMatrix3d& matrix, Letters letters)
        : m_matrix(matrix)
        , m_letters(letters)
    {
    }

    [[nodiscard]] const PolylineFrame* owner() const { return m_owner; }

    [[nodiscard]] bool approximatesLetters() const { return m_letters == Letters::approximate; }

    [[nodiscard]] AcGePoint3d point(const AcGePoint3d& before) const { return m_matrix * before; }

    [[nodiscard]] AcGeVector3d vector(const AcGeVector3d& before) const
    {
        return m_matrix * before;
    }

    /// The image of a direction, with the length that it had.
    [[nodiscard]] AcGeVector3d direction(const AcGeVector3d& before) const;

    /// The same length in all directions.
    [[nodiscard]] bool isUniform() const;

    /// The factor of lengths; for one that differs by direction that of a cube of the same volume.
    [[nodiscard]] double lengthScale() const;

    [[nodiscard]] PlaneMotion ofPlane(const AcGeVector3d& normal, Mirroring mirroring) const
    {
        return {m_matrix, normal, mirroring};
    }

private:
    const AcGeMatrix3d& m_matrix;
    const PolylineFrame* m_owner = nullptr;
    Letters m_letters = Letters::refuse;
};

} // namespace corma::host
