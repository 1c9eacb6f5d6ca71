#pragma once

// Parts of DWG files around the bits of an input: with the lengths and checksums that they need, so
// that none of those keeps a fuzzer from the bits.

#include "Input.h"
#include "host/dwg/TypeTable.h"
#include "host/dwg/section_frame.h"

#include <string>
#include <vector>

namespace corma::fuzzing {

/// The number of the first class in a file.
inline constexpr unsigned kFirstClass = 500;

/// Classes with numbers in a row: one for each type that is understood and that drawings describe
/// by a class, and two that are not understood.
std::vector<host::dwg::ClassInfo> knownClasses();

/// A record of all bytes that are left: its type in a byte (from 128 on those of classes), how many
/// bits stand ahead of the stream of handles, and the bits behind the type. Between the two R2000
/// to R2007 have a number that is not in the input.
std::string recordFrom(Input input, const host::dwg::FileForm& form);

/// The header variables or the classes of all bytes that are left: how many bits stand ahead of the
/// stream of handles, which there is from R2007 on, and the bits.
std::string sectionFrom(Input input, const host::dwg::Sentinels& sentinels,
                        const host::dwg::FileForm& form);

} // namespace corma::fuzzing
