#pragma once

#include "host/drawing_files.h"

#include <string>

namespace corma::host::dxf {

/// Reads a DXF file into an empty store: one pass over its bytes, which the store's format keeps.
/// Damage that leaves the groups readable is taken as it stands. eBadDxfFile, with a message that
/// names the path and the place, when it does not, or when the file ends within a section; the
/// store is of no use then.
ReadResult readDxf(platform::FileContent content, const std::wstring& path, Store& store);

} // namespace corma::host::dxf
