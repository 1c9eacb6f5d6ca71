#pragma once

#include "platform/platform.h"

#include <filesystem>

namespace corma::platform {

/// What an error number means for a file.
FileError errorOf(int number);

/// What the last call that failed means for a file of that path.
FileError lastError(const std::filesystem::path& path);

} // namespace corma::platform
