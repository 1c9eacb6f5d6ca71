#pragma once

// Moving, turning, scaling and mirroring the records of entities.

#include "host/error_status.h"
#include "host/model/Group.h"
#include <corma/geometry.h>

#include <span>

namespace corma::host {

/// Where the vertices of a polyline lie, as its POLYLINE tells it.
struct PolylineFrame
{
    bool isFlat = true; // in a plane of its own; a 3D polyline or a mesh is in world coordinates
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    double elevation = 0.0;

    /// Of a POLYLINE that has not been transformed yet.
    static PolylineFrame of(const Groups& polyline);
};

/// Transforms the geometry of one record of an entity or sub-entity, with the positions, distances
/// and scale factors in its extended data and the MTEXT or the columns in its embedded object.
/// Sizes that a style, a view or a control code inside a text gives are left as they are. A group
/// whose value does not change keeps its bytes.
///
/// A VERTEX needs the frame that its POLYLINE had before; without one it tells itself whether it is
/// in the plane of the world or in space. The picture of a DIMENSION, its block, is not here: its
/// insertion point follows, so that a moved dimension is complete; what turns or scales has to be
/// done to the block, too.
///
/// eOk; eNotImplementedYet for a type that is not understood; eCannotScaleNonUniformly where the
/// type has no form for the result; eInvalidInput for a matrix that is singular or not finite.
/// Nothing is changed then.
Acad::ErrorStatus transformRecord(Groups& groups, const AcGeMatrix3d& matrix,
                                  const PolylineFrame* owner = nullptr);

/// The same for an attribute that a reference gets, which has to have some form for every matrix:
/// where the exact one does not exist, several lines keep the shape of their letters, at the height
/// and width that the matrix makes of them, and a single line slants as far as letters can.
/// What is left of the attribute when it fails is of no use.
Acad::ErrorStatus transformPrescribed(Groups& attribute, const AcGeMatrix3d& matrix);

/// The same for an entity with its sub-entities: all or nothing.
Acad::ErrorStatus transformRecords(Groups& entity, std::span<Groups> subEntities,
                                   const AcGeMatrix3d& matrix);

} // namespace corma::host
