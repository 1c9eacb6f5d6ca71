#pragma once

// Where the user of a drawing works: which space, which viewport, which coordinates.

#include <corma/geometry.h>

class AcDbDatabase;
class AcDbStub;

namespace corma::host {

enum class WorkPlace
{
    model, // the model's own view
    paper, // a layout
    floatingViewport // the model, through a viewport of a layout
};

/// A layout without any viewport that can be told has no view of its own: there it is the model,
/// and new entities go into it.
WorkPlace workPlaceOf(AcDbDatabase& database);

/// In the model's own view the active record of the viewport table, in a layout the VIEWPORT that
/// was last active. Null when there is none.
AcDbStub* currentViewportOf(AcDbDatabase& database);

/// From the user's coordinates to those of the world, in the space that is current.
AcGeMatrix3d userCoordinatesOf(AcDbDatabase& database);

/// From the target to the eye in the current viewport, in the world's coordinates.
AcGeVector3d viewDirectionOf(AcDbDatabase& database);

} // namespace corma::host
