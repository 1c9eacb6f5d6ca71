#pragma once

// How the fields, texts and handles of one piece of a file stand behind each other in its bits.

#include "host/dwg/fields.h"

#include <cstddef>

namespace corma::host::dwg {

/// Finds where texts and handles begin: the bits of `streams.bytes` from `handlesBegin` up to `end`
/// are handles, and the texts of R2007 and later end right ahead of them. What is left is the data;
/// its reader, which stands behind what was read already, fails when the parts do not fit.
void partStreams(Streams& streams, std::size_t handlesBegin, std::size_t end, bool hasUnicode);

/// Puts the texts of R2007 and later behind the fields.
void appendTexts(const FieldsToBits& io, BitWriter& bits);

} // namespace corma::host::dwg
