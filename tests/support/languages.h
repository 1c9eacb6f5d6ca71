#pragma once

namespace corma::testing {

// The numbers of languages in settings and in the table of texts.
inline constexpr int kGerman = 7;
inline constexpr int kFrench = 12;
inline constexpr int kDutch = 19;
inline constexpr int kRussian = 25;

} // namespace corma::testing
