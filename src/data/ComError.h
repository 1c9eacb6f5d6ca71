#pragma once

#include <cstdint>
#include <string>

namespace corma {

/// What goes wrong in a database provider, which throws it.
struct ComError
{
    std::uint32_t code = 0; // the provider's
    std::wstring source {}; // who tells
    std::wstring description {};
};

/// Codes that this library gives itself.
inline constexpr std::uint32_t kUnspecified = 0x80004005;
inline constexpr std::uint32_t kClassNotRegistered = 0x80040154; // no such provider

/// Meaning of a code: the system's text, "IDispatch error #N" in the range of those, else "Unknown
/// error 0xN".
std::wstring meaningOf(std::uint32_t code);

} // namespace corma

/// Shows code, meaning, source and description to the user, each as a message of its own, cut to
/// 256 characters.
void xx_dump_com_error(const corma::ComError& error);
