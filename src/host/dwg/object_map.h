#pragma once

#include "host/model/Group.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corma::host::dwg {

/// Where a record begins, counted in Parts::objects.
struct ObjectPlace
{
    Handle handle = Handle::none;
    std::uint64_t offset = 0;
};

/// The places in the order of the file, which is that of the handles. Nothing when a piece of the
/// map ends too early or does not have the checksum that stands behind it; a place that lies before
/// the begin of the objects counts as damage, too.
std::optional<std::vector<ObjectPlace>> decodeObjectMap(std::string_view map);

/// The map of places, which must be in the order of their handles.
std::string encodeObjectMap(const std::vector<ObjectPlace>& places);

} // namespace corma::host::dwg
