#pragma once

// How the fields, texts and handles of one piece of a file stand behind each other in its bits.

#include "host/dwg/fields.h"

#include <cstddef>

namespace corma::host::dwg {

// A length that does not fit into one word of 16 bits goes on in a second one.
inline constexpr unsigned kWordBits = 15; // of the length, in each word
inline constexpr unsigned kWordMask = 0x7FFF;
inline constexpr unsigned kMoreWords = 0x8000; // another word belongs to it

/// Finds where texts and handles begin: the bits of `streams.bytes` from `handlesBegin` up to `end`
/// are handles, and the texts of R2007 and later end right ahead of them. What is left is the data;
/// its reader, which stands behind what was read already, fails when the parts do not fit.
void partStreams(Streams& streams, std::size_t handlesBegin, std::size_t end, bool hasUnicode);

/// Puts the texts of R2007 and later behind the fields.
void appendTexts(const FieldsToBits& io, BitWriter& bits);

} // namespace corma::host::dwg
