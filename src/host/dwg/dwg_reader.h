#pragma once

#include "host/drawing_files.h"
#include "platform/platform.h"

#include <string>

namespace corma::host {
class Store;
}

namespace corma::host::dwg {

/// Reads a DWG file of R13 to R2018 into an empty store. Records are found and checked, and decoded
/// when they are asked for.
ReadResult readDwg(platform::FileContent content, const std::wstring& path, Store& store);

} // namespace corma::host::dwg
