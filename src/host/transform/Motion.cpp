#include "host/transform/Motion.h"

#include <cmath>
#include <numbers>

namespace corma::host {

namespace {

// Beyond this a difference is meant; below it the way to the world and back made it.
constexpr double kScaleNoise = 1e-12;
constexpr double kTurnNoise = 1e-12; // degrees
constexpr double kAxisNoise = 1e-15;
constexpr double kSameShape = 1e-9;

double roundedWithin(double noise, double value)
{
    const double whole = std::round(value);
    return std::abs(value - whole) < noise ? whole + 0.0 : value; // without the sign of -0
}

/// Scales that stand for "the same" are exactly 1, so that lengths keep their digits.
double scaleWithoutNoise(double scale)
{
    return std::abs(std::abs(scale) - 1.0) < kScaleNoise ? std::copysign(1.0, scale) : scale;
}

} // namespace

double normalizedDegrees(double degrees)
{
    const double rest = std::fmod(degrees, 360.0);
    const double positive = rest < 0.0 ? rest + 360.0 : rest;
    return positive >= 360.0 ? 0.0 : positive; // the tiniest negative angle rounds to a full turn
}

double degreesOf(const AcGeVector3d& vector)
{
    return normalizedDegrees(std::atan2(vector.y, vector.x) * 180.0 / std::numbers::pi);
}

double degreesWithoutNoise(double degrees)
{
    return roundedWithin(kTurnNoise, degrees);
}

AcGeVector3d withoutNoise(const AcGeVector3d& unit)
{
    return {roundedWithin(kAxisNoise, unit.x), roundedWithin(kAxisNoise, unit.y),
            roundedWithin(kAxisNoise, unit.z)};
}

PlaneMotion::PlaneMotion(const AcGeMatrix3d& matrix, const AcGeVector3d& normal,
                         Mirroring mirroring)
    : m_normalBefore(normal.isZeroLength() ? AcGeVector3d::kZAxis : normal.normal())
{
    AcGeMatrix3d toWorld;
    toWorld.setToPlaneToWorld(m_normalBefore);
    const AcGeVector3d xAxis = matrix * (toWorld * AcGeVector3d::kXAxis);
    const AcGeVector3d yAxis = matrix * (toWorld * AcGeVector3d::kYAxis);
    const AcGeVector3d upright = xAxis.normal().crossProduct(yAxis.normal()).normal();
    const bool isMirrored = upright.dotProduct(matrix * m_normalBefore) < 0.0;
    m_mirrors = isMirrored && mirroring == Mirroring::inPlane;
    m_normal = withoutNoise(m_mirrors ? -upright : upright);
    if ((m_normal - m_normalBefore).length() < kScaleNoise) {
        m_normal = m_normalBefore;
    }

    m_matrix = AcGeMatrix3d().setToWorldToPlane(m_normal) * matrix * toWorld;
    for (unsigned int row = 0; row < 3; ++row) {
        for (unsigned int column = 0; column < 3; ++column) {
            m_matrix(row, column) = roundedWithin(kAxisNoise, m_matrix(row, column));
        }
    }

    const AcGeMatrix3d inPlane = AcGeMatrix3d().setCoordSystem(
        {}, {m_matrix(0, 0), m_matrix(1, 0), 0.0}, {m_matrix(0, 1), m_matrix(1, 1), 0.0},
        AcGeVector3d::kZAxis * std::hypot(m_matrix(0, 0), m_matrix(1, 0)));
    m_scale = scaleWithoutNoise(inPlane.uniformScale(kSameShape));
    const AcGeVector3d turned {m_matrix(1, 1), -m_matrix(0, 1), 0.0};
    m_turn = degreesOf(turned);
    if (m_turn < kTurnNoise || m_turn > 360.0 - kTurnNoise) {
        m_turn = 0.0;
    }
}

double PlaneMotion::direction(double before) const
{
    if (isSimilar()) {
        if (m_turn == 0.0 && !m_mirrors) {
            return before;
        }
        return normalizedDegrees(m_mirrors ? 180.0 + m_turn - before : before + m_turn);
    }
    const double angle = before * std::numbers::pi / 180.0;
    return degreesOf(vector({std::cos(angle), std::sin(angle), 0.0}));
}

std::optional<double> PlaneMotion::upright() const
{
    const double sideways = std::hypot(m_matrix(0, 2), m_matrix(1, 2));
    if (sideways > kSameShape * std::abs(m_matrix(2, 2))) {
        return std::nullopt;
    }
    return scaleWithoutNoise(m_matrix(2, 2));
}

AcGeVector3d Motion::direction(const AcGeVector3d& before) const
{
    const AcGeVector3d after = vector(before);
    const double factor = scaleWithoutNoise(after.length() / before.length());
    return before.isZeroLength() || factor == 1.0 ? after : after.normal() * before.length();
}

bool Motion::isUniform() const
{
    return m_matrix.uniformScale(kSameShape) != 0.0;
}

double Motion::lengthScale() const
{
    const double uniform = m_matrix.uniformScale(kSameShape);
    return scaleWithoutNoise(uniform != 0.0 ? uniform : std::cbrt(std::abs(m_matrix.det())));
}

} // namespace corma::host
