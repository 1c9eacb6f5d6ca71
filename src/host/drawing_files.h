#pragma once

// The formats of drawing files: which one a content is in, and how it is read.

#include "host/error_status.h"
#include "host/model/DrawingFormat.h"
#include "platform/platform.h"

#include <string>
#include <string_view>

namespace corma::host {

class Store;

struct ReadResult
{
    Acad::ErrorStatus status = Acad::eOk;
    std::wstring message; // what is wrong, where, and what to do; empty when nothing is
};

/// Reads a drawing into an empty store; the content tells the format. path is for the message.
ReadResult readDrawing(platform::FileContent content, const std::wstring& path, Store& store);

/// Writes a drawing in its own format or, under a name that ends in ".dwg" and is not the one that
/// it was read from, a drawing of another format as a DWG file.
WriteResult writeDrawing(const Store& store, const std::wstring& path,
                         const std::wstring& formerPath);

/// Puts a written file into its place.
WriteResult committed(platform::FileReplacement& file);

/// A text as the content of a file.
platform::FileContent textContent(std::string_view text);

} // namespace corma::host
