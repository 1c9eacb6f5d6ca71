#pragma once

// What stands around the header variables and around the classes of a file: a sentinel, the size,
// the fields, their checksum, and another sentinel.

#include "host/dwg/fields.h"

#include <optional>
#include <string>
#include <string_view>

namespace corma::host::dwg {

struct Sentinels
{
    std::string_view begin;
    std::string_view end;
};

/// The streams between the sentinels; nothing when a sentinel, the size or the checksum is wrong.
/// Up to R2004 handles stand among the fields, so all of it is data then.
std::optional<Streams> openSection(std::string_view section, const Sentinels& sentinels,
                                   const FileForm& form);

/// The section with these fields. The bits behind the last of them mean nothing; they are those of
/// the section that it takes the place of, which may be empty.
std::string closeSection(const FieldsToBits& io, const Sentinels& sentinels, const FileForm& form,
                         std::string_view former);

} // namespace corma::host::dwg
