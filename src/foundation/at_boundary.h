#pragma once

namespace corma {

/// Reports what is being handled by a catch; never throws.
void reportCaught(const wchar_t* sourceName, int line) noexcept;

/// Runs the body of an exported function: nothing that is thrown leaves the library. What is
/// thrown, in practice only for want of memory, is reported under the source name, and the result
/// is `failed`.
template<class Result, class Body>
Result atBoundary(const wchar_t* sourceName, int line, Result failed, Body body) noexcept
{
    try {
        return body();
    } catch (...) {
        reportCaught(sourceName, line);
        return failed;
    }
}

} // namespace corma
