#pragma once

#include "inifile/Ident.h"

#include <optional>
#include <string>
#include <string_view>

namespace corma {

/// The bytes of a scrambled file in which an ident has another value, in Windows-1252. The ident is
/// told without regard to case: in its chapter, or where that lacks it in the first one behind it
/// that has it; without a chapter in the head and again in each later chapter. Every line is cut at
/// its first character below 32, and a last line without a carriage return is lost. Nothing when no
/// line has the ident.
std::optional<std::string> withScrambledValue(std::string_view bytes, int key, const Ident& ident,
                                              std::string_view value);

} // namespace corma
