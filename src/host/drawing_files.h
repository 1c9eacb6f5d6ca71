#pragma once

// The formats of drawing files: which one a content is in, and how it is read.

#include "host/error_status.h"
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

/// A text as the content of a file.
platform::FileContent textContent(std::string_view text);

} // namespace corma::host
