#pragma once

// Entities of the working drawing: copying and erasing them, and the view and space that the user
// works in.

#include <corma/export.h>
#include <corma/geometry.h>
#include <corma/host.h>

/// Copies an entity into the current space of the working drawing, with all that it needs: layers,
/// linetypes, styles, blocks. It is moved by the user's coordinate system and then by `matrix`, so
/// that the identity under a turned coordinate system gives a turned copy. *newId (null: not
/// wanted) becomes the copy.
/// RTNORM; RTERROR when the entity cannot be opened or copied; RTCAN when the copy cannot be told.
/// *newId is then null. What goes wrong with the copying is told to the user.
CORMA_EXPORT int xx_copy_entity_arx(AcDbObjectId entity, const AcGeMatrix3d& matrix,
                                    AcDbObjectId* newId);

/// The same for some entities of one drawing. *newIds (null: not wanted) becomes the copies, the
/// newest first, and is empty unless the status is RTNORM.
CORMA_EXPORT int xx_copy_entities(const AcDbObjectIdArray& ids, const AcGeMatrix3d& matrix,
                                  AcDbObjectIdArray* newIds);

/// The same into the current space of any drawing.
CORMA_EXPORT int xx_copy_ent(const AcDbObjectIdArray& ids, const AcGeMatrix3d& matrix,
                             AcDbDatabase* destination);

/// Erases objects in turn. RTNORM; RTCAN, which the user is told, at the first that cannot be
/// opened for write: those before it are erased, those behind it are not.
CORMA_EXPORT int xx_erase_ids(const AcDbObjectIdArray& ids);

/// The direction from the target to the eye in the current view, in world coordinates. The zero
/// vector, which the user is told, without a drawing.
CORMA_EXPORT AcGeVector3d xx_getCurrentViewDir_arx();

/// The viewport that the user works in: in the model's own view the record of the viewport table,
/// in a layout the entity. Null when there is none.
CORMA_EXPORT AcDbObjectId xx_getCurViewportObjectId_arx();

/// Where entities go: "*Model_Space", or "*Paper_Space" in a layout unless the user works in one of
/// its windows. For another drawing than the working one (null) always "*Model_Space".
CORMA_EXPORT const wchar_t* xx_current_space_name(AcDbDatabase* database = nullptr);
