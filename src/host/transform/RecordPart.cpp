#include "host/transform/RecordPart.h"

#include <optional>
#include <utility>

namespace corma::host {

namespace {

GroupRange rangeOf(const Groups& groups, std::wstring_view marker)
{
    const GroupRange range = groups.subclass(marker);
    return range.begin < range.end ? range : groups.body();
}

bool hasCodeAt(const Groups& groups, std::size_t at, int code)
{
    return at < groups.size() && groups[at].code == code;
}

std::optional<std::size_t> placeOfZ(const Groups& groups, std::size_t at)
{
    const int xCode = groups[at].code;
    const std::size_t behindY
        = hasCodeAt(groups, at + 1, xCode + kCoordinateStep) ? at + 2 : at + 1;
    return hasCodeAt(groups, behindY, xCode + 2 * kCoordinateStep) ? std::optional(behindY)
                                                                   : std::nullopt;
}

} // namespace

AcGePoint3d pointAt(const Groups& groups, std::size_t at, double absentZ)
{
    const bool hasY = hasCodeAt(groups, at + 1, groups[at].code + kCoordinateStep);
    const auto z = placeOfZ(groups, at);
    return {groups[at].real(), hasY ? groups[at + 1].real() : 0.0, z ? groups[*z].real() : absentZ};
}

void setPointAt(Groups& groups, std::size_t at, const AcGePoint3d& value)
{
    setRealAt(groups, at, value.x);
    if (hasCodeAt(groups, at + 1, groups[at].code + kCoordinateStep)) {
        setRealAt(groups, at + 1, value.y);
    }
    if (const auto z = placeOfZ(groups, at)) {
        setRealAt(groups, *z, value.z);
    }
}

void setRealAt(Groups& groups, std::size_t at, double value)
{
    if (groups[at].real() != value) {
        groups[at].set(value);
    }
}

GroupRange embeddedObject(const Groups& groups)
{
    const std::size_t begin = groups.body().end;
    std::size_t end = begin;
    while (end < groups.size() && groups[end].code < code::firstExtended) {
        ++end;
    }
    return {begin, end};
}

GroupRange extendedData(const Groups& groups)
{
    return {embeddedObject(groups).end, groups.size()};
}

RecordPart::RecordPart(Groups& groups, std::wstring_view marker)
    : RecordPart(groups, rangeOf(groups, marker))
{
}

RecordPart::RecordPart(Groups& groups, GroupRange range)
    : m_groups(groups)
    , m_range(range)
{
}

bool RecordPart::has(int code) const
{
    return m_groups.find(code, m_range).has_value();
}

double RecordPart::real(int code, double absent) const
{
    return m_groups.real(code, m_range, absent);
}

std::int64_t RecordPart::integer(int code, std::int64_t absent) const
{
    return m_groups.integer(code, m_range, absent);
}

AcGePoint3d RecordPart::point(int code) const
{
    return AcGePoint3d::kOrigin + vector(code);
}

AcGeVector3d RecordPart::vector(int code, const AcGeVector3d& absent) const
{
    const Point found = m_groups.point(code, m_range, {absent.x, absent.y, absent.z});
    return {found.x, found.y, found.z};
}

AcGeVector3d RecordPart::normal() const
{
    const AcGeVector3d found = vector(code::normal, AcGeVector3d::kZAxis);
    return found.isZeroLength() ? AcGeVector3d::kZAxis : found.normal();
}

void RecordPart::set(int code, GroupValue value)
{
    const std::size_t sizeBefore = m_groups.size();
    m_groups.set(code, m_range, std::move(value));
    m_range.end += m_groups.size() - sizeBefore;
}

void RecordPart::setReal(int code, double value, double absent)
{
    if (real(code, absent) != value) {
        set(code, value);
    }
}

void RecordPart::setInteger(int code, std::int64_t value, std::int64_t absent)
{
    if (integer(code, absent) != value) {
        set(code, value);
    }
}

void RecordPart::setPoint(int code, const AcGePoint3d& value)
{
    setVector(code, value.asVector());
}

void RecordPart::setVector(int code, const AcGeVector3d& value, const AcGeVector3d& absent)
{
    if (vector(code, absent) == value) {
        return;
    }
    const std::size_t sizeBefore = m_groups.size();
    m_groups.setPoint(code, m_range, {value.x, value.y, value.z});
    m_range.end += m_groups.size() - sizeBefore;
}

void RecordPart::scale(int code, double factor)
{
    if (const auto at = m_groups.find(code, m_range)) {
        setRealAt(m_groups, *at, m_groups[*at].real() * factor);
    }
}

template<class Moved> void RecordPart::changePoints(int code, const Moved& moved)
{
    for (std::size_t at = m_range.begin; at < m_range.end; ++at) {
        if (m_groups[at].code != code) {
            continue;
        }
        const AcGePoint3d after = moved(pointAt(m_groups, at));
        setPointAt(m_groups, at, after);
        if (!placeOfZ(m_groups, at) && after.z != 0.0) {
            const std::size_t behindY
                = hasCodeAt(m_groups, at + 1, code + kCoordinateStep) ? at + 2 : at + 1;
            m_groups.insert(behindY, Group(code + 2 * kCoordinateStep, after.z));
            ++m_range.end;
        }
    }
}

void RecordPart::movePoints(int code, const Motion& motion)
{
    changePoints(code, [&](const AcGePoint3d& before) { return motion.point(before); });
}

void RecordPart::movePoints(int code, const PlaneMotion& plane)
{
    changePoints(code, [&](const AcGePoint3d& before) { return plane.point(before); });
}

void RecordPart::movePlane(const PlaneMotion& plane)
{
    if (plane.normal() != plane.normalBefore()) {
        setVector(code::normal, plane.normal(), AcGeVector3d::kZAxis);
    }
}

bool RecordPart::moveThickness(const PlaneMotion& plane)
{
    const double thickness = real(code::thickness);
    if (thickness == 0.0) {
        return true;
    }
    const auto factor = plane.upright();
    if (factor) {
        setReal(code::thickness, thickness * *factor);
    }
    return factor.has_value();
}

} // namespace corma::host
