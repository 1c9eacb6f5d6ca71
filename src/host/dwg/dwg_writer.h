#pragma once

#include "host/dwg/Container.h"
#include "host/model/DrawingFormat.h"
#include "host/model/Store.h"

#include <string>

namespace corma::host::dwg {

/// Writes a drawing into a file with the container that it was read from, or with a new one when
/// it comes from another format. A record that was not changed is written as the bits that it was.
/// Fails, and the file is what it was, when a record has something that the release has no place
/// for or that is not understood.
WriteResult writeDwg(const Store& store, const Container& container, const std::wstring& path);

/// True for a drawing that was read from a DWG file.
bool isDwgDrawing(const Store& store);

/// Writes a drawing of another format as a DWG file of its version; eInvalidDwgVersion and
/// eNotImplementedYet for one that cannot be written.
WriteResult writeNewDwg(const Store& store, const std::wstring& path);

} // namespace corma::host::dwg
