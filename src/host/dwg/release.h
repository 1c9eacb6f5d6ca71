#pragma once

#include "host/drawing_files.h"
#include "host/model/DrawingFormat.h"

#include <string>
#include <string_view>

namespace corma::host::dwg {

/// True for what begins as a DWG file of any release.
bool isDwg(std::string_view bytes);

/// The release of a file that can be read; unknown for any other.
DrawingVersion releaseOf(std::string_view bytes);

/// Why a file of another release is not read.
ReadResult refusal(std::string_view bytes, const std::wstring& path);

/// Why a damaged file is not read: eFileInternalErr, with the byte at which the trouble is.
/// `what` is a part of a sentence, such as L"the object map has a wrong checksum".
ReadResult damage(const std::wstring& path, std::size_t at, std::wstring_view what);

} // namespace corma::host::dwg
