#include "platform/platform.h"

#include <cstdio>
#include <cstdlib>

namespace corma::platform {

bool hasDebugOutput()
{
    const char* const wanted = std::getenv("CORMA_DEBUG");
    return wanted != nullptr && *wanted != '\0';
}

void debugOutput(std::wstring_view text)
{
    if (hasDebugOutput()) {
        const std::string bytes = toNative(text);
        std::fwrite(bytes.data(), 1, bytes.size(), stderr);
    }
}

} // namespace corma::platform
