#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace corma::host::dwg {

inline constexpr std::int64_t kWeightByLayer = -1;
inline constexpr std::int64_t kWeightByBlock = -2;
inline constexpr std::int64_t kWeightDefault = -3;

// The weights by their numbers in a file, in hundredths of a millimetre.
inline constexpr std::array<std::int16_t, 24> kWeights
    = {0,  5,  9,  13, 15, 18,  20,  25,  30,  35,  40,  50,
       53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};

inline constexpr std::uint8_t kByLayerCode = 29;
inline constexpr std::uint8_t kByBlockCode = 30;
inline constexpr std::uint8_t kDefaultCode = 31;

constexpr std::int64_t weightFromCode(std::uint8_t code)
{
    switch (code) {
    case kByLayerCode:
        return kWeightByLayer;
    case kByBlockCode:
        return kWeightByBlock;
    case kDefaultCode:
        return kWeightDefault;
    default:
        return code < kWeights.size() ? kWeights[code] : kWeightByLayer;
    }
}

/// The number of the next greater weight that there is.
constexpr std::uint8_t codeFromWeight(std::int64_t weight)
{
    if (weight < 0) {
        return weight == kWeightByLayer ? kByLayerCode
            : weight == kWeightByBlock  ? kByBlockCode
                                        : kDefaultCode;
    }
    std::size_t code = 0;
    while (code + 1 < kWeights.size() && kWeights[code] < weight) {
        ++code;
    }
    return static_cast<std::uint8_t>(code);
}

} // namespace corma::host::dwg
