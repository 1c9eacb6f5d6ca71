#pragma once

// Reading and changing the geometry in one part of a record.

#include "host/model/Group.h"
#include "host/transform/Motion.h"
#include <corma/geometry.h>

#include <string_view>

namespace corma::host {

/// The point whose x stands at a position; its other coordinates follow it or are absent.
AcGePoint3d pointAt(const Groups& groups, std::size_t at, double absentZ = 0.0);

/// Gives it those coordinates that it has.
void setPointAt(Groups& groups, std::size_t at, const AcGePoint3d& value);

/// A number at a position, left as it is when it is the same.
void setRealAt(Groups& groups, std::size_t at, double value);

/// An embedded object with its code, up to the extended data; empty when there is none.
GroupRange embeddedObject(const Groups& groups);

/// The extended data of a record.
GroupRange extendedData(const Groups& groups);

/// The groups of a record behind one of its subclass markers, or its whole body where it lacks that
/// marker. Setters touch a group only when its value changes, and add one only for a value other
/// than that of its absence; new ones go to the end of the part.
class RecordPart
{
public:
    RecordPart(Groups& groups, std::wstring_view marker);
    RecordPart(Groups& groups, GroupRange range);

    [[nodiscard]] GroupRange range() const { return m_range; }

    [[nodiscard]] bool has(int code) const;
    [[nodiscard]] double real(int code, double absent = 0.0) const;
    [[nodiscard]] std::int64_t integer(int code, std::int64_t absent = 0) const;
    [[nodiscard]] AcGePoint3d point(int code) const;
    [[nodiscard]] AcGeVector3d vector(int code, const AcGeVector3d& absent = {}) const;
    [[nodiscard]] AcGeVector3d normal() const; // of length 1

    void setReal(int code, double value, double absent = 0.0);
    void setInteger(int code, std::int64_t value, std::int64_t absent = 0);
    void setPoint(int code, const AcGePoint3d& value);
    void setVector(int code, const AcGeVector3d& value, const AcGeVector3d& absent = {});

    /// The first value with that code, where there is one.
    void scale(int code, double factor);

    /// Of all points with that code that are there, in world coordinates.
    void movePoints(int code, const Motion& motion);

    /// The same in the coordinates of a plane.
    void movePoints(int code, const PlaneMotion& plane);

    void movePlane(const PlaneMotion& plane); // its normal

    /// The thickness of a plane figure. False, and nothing changed, when its sides would lean.
    [[nodiscard]] bool moveThickness(const PlaneMotion& plane);

private:
    template<class Moved> void changePoints(int code, const Moved& moved);
    void set(int code, GroupValue value);

    Groups& m_groups;
    GroupRange m_range;
};

} // namespace corma::host
