#pragma once

// Objects of the drawing on the command line, and what stands there as numbers.

#include "output.h"
#include <corma/geometry.h>

#include <string>
#include <vector>

namespace cfgctl {

/// Throws UsageError when there is no drawing for a command that works on one.
void requireDrawing();

/// The object of a handle; a null id for a handle that names nothing. Throws UsageError for a text
/// that is no handle.
AcDbObjectId objectOf(const std::wstring& handle);
AcDbObjectIdArray objectsOf(const std::vector<std::wstring>& handles);

/// A handle, null for a null id.
Json asJson(AcDbObjectId id);
Json asJson(const AcDbObjectIdArray& ids);
Json asJson(const AcGePoint3d& point);
Json asJson(const AcGeVector3d& vector);

/// The matrix of 16 numbers, row by row, separated by commas. Throws UsageError.
AcGeMatrix3d matrixOf(const std::wstring& text);

} // namespace cfgctl
