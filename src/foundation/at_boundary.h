#pragma once

#include "foundation/messages.h"
#include "host/host.h"
#include "platform/text.h"

#include <exception>
#include <new>

namespace corma {

/// Runs the body of an exported function: nothing that is thrown leaves the library. What is
/// thrown, in practice only for want of memory, is reported under the source name, and the result
/// is `failed`.
template<class Result, class Body>
Result atBoundary(const wchar_t* sourceName, int line, Result failed, Body body) noexcept
{
    try {
        return body();
    } catch (const std::bad_alloc&) {
        xx_reportError(sourceName, line, L"not enough memory", 0);
        return failed;
    } catch (const std::exception& error) {
        xx_reportError(sourceName, line, fromUtf8(error.what()).c_str(), 0);
        return failed;
    }
}

} // namespace corma
